#include "RenderOptions.h"

#include "common/CommandLine.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace
{
std::string parseSetting(const std::string& text, RenderOptions::Setting& setting)
{
    const std::size_t equals = text.rfind('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size())
        return "--set takes NAME=VALUE, as in --set Attack=0.75";
    setting.parameter = text.substr(0, equals);
    const std::string valueText = text.substr(equals + 1);
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(valueText.c_str(), &end);
    if (errno != 0 || end == valueText.c_str() || *end != '\0' || !std::isfinite(value))
        return "the value '" + valueText + "' of " + setting.parameter + " is not a number; give one from 0 to 1";
    if (value < 0.0 || value > 1.0)
        return "the value " + valueText + " of " + setting.parameter + " is outside 0..1; parameter values run from 0 to 1";
    setting.value = static_cast<float>(value);
    return {};
}

std::string parseBlockSize(const std::string& text, int& blockSize)
{
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (errno != 0 || end == text.c_str() || *end != '\0' || value < 1 || value > RenderOptions::largestBlockSize)
        return "--block takes a whole number of frames from 1 to " + std::to_string(RenderOptions::largestBlockSize)
               + ", not '" + text + "'";
    blockSize = static_cast<int>(value);
    return {};
}
}

std::string RenderOptions::parse(const std::vector<std::string>& arguments, RenderOptions& options)
{
    std::vector<std::string> positional;
    for (std::size_t position = 0; position < arguments.size(); ++position)
    {
        const std::string& argument = arguments[position];
        std::string value;
        std::string failure;
        const auto needValue = [&](const char* name) {
            if (!CommandLine::optionValue(arguments, position, name, value))
                failure = std::string(name) + " needs a value; see --help";
            return failure.empty();
        };
        if (argument == "--help" || argument == "-h")
            options.help = true;
        else if (argument == "--list")
            options.list = true;
        else if (argument == "--demo")
            options.demo = true;
        else if (argument == "--force")
            options.force = true;
        else if (CommandLine::takesValue(argument, "--plugin"))
        {
            if (needValue("--plugin"))
                options.pluginPath = value;
        }
        else if (CommandLine::takesValue(argument, "--set"))
        {
            Setting setting;
            if (needValue("--set"))
                failure = parseSetting(value, setting);
            if (failure.empty())
                options.settings.push_back(setting);
        }
        else if (CommandLine::takesValue(argument, "--block"))
        {
            if (needValue("--block"))
                failure = parseBlockSize(value, options.blockSize);
        }
        else if (CommandLine::takesValue(argument, "--load-state"))
        {
            if (needValue("--load-state"))
                options.loadState = value;
        }
        else if (CommandLine::takesValue(argument, "--save-state"))
        {
            if (needValue("--save-state"))
                options.saveState = value;
        }
        else if (argument.size() > 1 && argument[0] == '-' && argument != "--")
            failure = "unknown option " + argument + "; see --help";
        else if (argument == "--")
        {
            positional.insert(positional.end(), arguments.begin() + static_cast<long>(position) + 1, arguments.end());
            break;
        }
        else
            positional.push_back(argument);
        if (!failure.empty())
            return failure;
    }
    if (options.help)
        return {};

    const bool audioOptional = options.list || !options.saveState.empty();
    const std::size_t audioArguments = options.demo ? 1 : 2;
    if (positional.size() == audioArguments)
    {
        if (!options.demo)
            options.input = positional[0];
        options.output = positional.back();
        return {};
    }
    if (positional.empty() && audioOptional)
        return {};
    if (positional.size() > audioArguments)
        return "too many files; give " + std::string(options.demo ? "OUT with --demo" : "IN and OUT");
    return options.demo ? "missing OUT: where to write the rendered demo loop"
                        : "missing " + std::string(positional.empty() ? "IN and OUT" : "OUT")
                              + ": kelvane-render [options] IN OUT (see --help)";
}

const char* RenderOptions::usage()
{
    return "usage: kelvane-render [options] IN OUT\n"
           "       kelvane-render [options] --demo OUT\n"
           "       kelvane-render [options] --list | --save-state FILE\n"
           "\n"
           "Renders an audio file through a VST 2.4 plug-in, Kelvane unless --plugin names another.\n"
           "IN is any format libsndfile reads, mono or stereo; OUT is written as 32-bit float WAV,\n"
           "or 24-bit FLAC when its name ends in .flac. A mono IN feeds both inputs and gives a mono OUT.\n"
           "\n"
           "  --plugin PATH        the plug-in's .so file (default: Kelvane/Kelvane.so in the first\n"
           "                       folder of VST_PATH or in ~/.vst, else the one in the build tree)\n"
           "  --set NAME=VALUE     set a parameter, by name or index, to a value from 0 to 1 (repeatable)\n"
           "  --list               print each parameter's index, name, value and display text\n"
           "  --block N            frames per process call, 1 to 65536 (default 512)\n"
           "  --load-state FILE    apply a saved state (.fxp) before the settings\n"
           "  --save-state FILE    write the state (.fxp) after the settings\n"
           "  --demo               render the built-in drum loop instead of IN\n"
           "  --force              replace an existing OUT or state file\n"
           "\n"
           "Exit status: 0 on success, 1 when the work fails, 2 for a wrong command line.\n";
}
