#include "StandaloneOptions.h"

#include "common/CommandLine.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace
{
// A whole number from text, all of it; false for anything else.
bool wholeNumber(const std::string& text, long& value)
{
    char* end = nullptr;
    errno = 0;
    value = std::strtol(text.c_str(), &end, 10);
    return errno == 0 && end != text.c_str() && *end == '\0';
}
}  // namespace

std::string StandaloneOptions::parseSize(const std::string& text, int& width, int& height)
{
    const std::size_t cross = text.find('x');
    long across = 0, down = 0;
    if (cross == std::string::npos || !wholeNumber(text.substr(0, cross), across)
        || !wholeNumber(text.substr(cross + 1), down))
        return "--size takes WIDTHxHEIGHT in pixels, as in --size 1100x257, not '" + text + "'";
    if (across < smallestWidth || across > largestWidth)
        return "the editor is " + std::to_string(smallestWidth) + " to " + std::to_string(largestWidth)
               + " pixels wide, not " + std::to_string(across);
    const double exact = static_cast<double>(across) * pictureHeight / pictureWidth;
    const long lower = static_cast<long>(std::floor(exact)), upper = static_cast<long>(std::ceil(exact));
    if (down != lower && down != upper)
        return "the editor keeps its picture's aspect: at " + std::to_string(across) + " pixels wide it is "
               + std::to_string(lower) + (upper != lower ? " or " + std::to_string(upper) : std::string())
               + " pixels high, not " + std::to_string(down);
    width = static_cast<int>(across);
    height = static_cast<int>(down);
    return {};
}

std::string StandaloneOptions::parse(const std::vector<std::string>& arguments, StandaloneOptions& options)
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
        else if (argument == "--force")
            options.force = true;
        else if (CommandLine::takesValue(argument, "--plugin"))
        {
            if (needValue("--plugin"))
                options.pluginPath = value;
        }
        else if (CommandLine::takesValue(argument, "--screenshot"))
        {
            if (needValue("--screenshot"))
                options.screenshot = value;
        }
        else if (CommandLine::takesValue(argument, "--size"))
        {
            if (needValue("--size"))
                failure = parseSize(value, options.width, options.height);
        }
        else if (argument == "--")
        {
            positional.insert(positional.end(), arguments.begin() + static_cast<long>(position) + 1, arguments.end());
            break;
        }
        else if (argument.size() > 1 && argument[0] == '-')
            failure = "unknown option " + argument + "; see --help";
        else
            positional.push_back(argument);
        if (!failure.empty())
            return failure;
    }
    if (options.help)
        return {};
    if (positional.size() > 1)
        return "one audio file at most; without one the demo drum loop plays";
    if (!positional.empty())
        options.audioFile = positional[0];
    if (options.screenshot.empty() && options.force)
        return "--force goes with --screenshot: it lets the picture replace a file";
    return {};
}

const char* StandaloneOptions::usage()
{
    return "usage: kelvane-standalone [options] [AUDIO]\n"
           "\n"
           "Opens Kelvane's editor in a window of its own and plays AUDIO (any file libsndfile reads,\n"
           "mono or stereo, looped) or, without it, the built-in demo drum loop through the plug-in in\n"
           "real time: to the sound card through ALSA, or, with no sound card, silently at the same\n"
           "pace, so that the meters and the drive lamp move either way. Close the window (or press\n"
           "Ctrl-C) to stop. The plug-in is loaded like a host loads it, through its entry point.\n"
           "\n"
           "options:\n"
           "  --plugin PATH          the plug-in to load; by default the installed one\n"
           "                         (~/.vst/Kelvane/Kelvane.so, or the first folder of VST_PATH),\n"
           "                         then the one this build made\n"
           "  --size WxH             open the editor at this size: 300 to 1499 pixels wide, the height\n"
           "                         keeping the picture's aspect (for example 750x175 or 1100x257)\n"
           "  --screenshot FILE.png  write a picture of the editor after two seconds of audio, and exit\n"
           "  --force                let the picture replace an existing file (never an input)\n"
           "  --help                 this text\n"
           "\n"
           "Exit status: 0 when done, 1 when something failed, 2 for a wrong command line.\n";
}
