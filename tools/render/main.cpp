// kelvane-render: a small offline VST 2.4 host. It loads a plug-in (Kelvane by default), applies
// a saved state and parameter settings, and renders an audio file, or the built-in demo drum loop,
// through it block by block. See RenderOptions::usage for the command line.

#include "BlockRenderer.h"
#include "PluginSearch.h"
#include "PluginState.h"
#include "ProgressBar.h"
#include "RenderInput.h"
#include "RenderOptions.h"
#include "VstPlugin.h"
#include "common/AudioFileWriter.h"
#include "common/CommandLine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{
constexpr int failureStatus = 1;
constexpr int usageStatus = 2;
constexpr double rateWithoutInput = 44100.0;

int fail(const std::string& reason, int status = failureStatus)
{
    std::fprintf(stderr, "kelvane-render: %s\n", reason.c_str());
    return status;
}

void listParameters(VstPlugin& plugin)
{
    std::vector<std::string> names;
    std::size_t width = 4;
    for (int index = 0; index < plugin.parameterCount(); ++index)
    {
        names.push_back(plugin.parameterName(index));
        width = std::max(width, names.back().size());
    }
    std::printf("%5s  %-*s  %-8s  %s\n", "index", static_cast<int>(width), "name", "value", "display");
    for (int index = 0; index < plugin.parameterCount(); ++index)
        std::printf("%5d  %-*s  %.6f  %s\n", index, static_cast<int>(width), names[static_cast<std::size_t>(index)].c_str(),
                    plugin.parameter(index), plugin.parameterDisplay(index).c_str());
}

std::string pluginPath(const RenderOptions& options, std::string& path)
{
    if (!options.pluginPath.empty())
    {
        path = options.pluginPath;
        return {};
    }
    return PluginSearch::find(PluginSearch::candidates(std::getenv("VST_PATH"), std::getenv("HOME"), KELVANE_BUILT_PLUGIN),
                              path);
}

std::string applySettings(VstPlugin& plugin, const std::vector<RenderOptions::Setting>& settings)
{
    for (const RenderOptions::Setting& setting : settings)
    {
        const int index = plugin.parameterIndex(setting.parameter);
        if (index < 0)
            return "unknown parameter '" + setting.parameter + "'; --list shows the names and indices";
        plugin.setParameter(index, setting.value);
    }
    return {};
}
}

int main(int argc, char** argv)
{
    RenderOptions options;
    const std::string wrongCommandLine = RenderOptions::parse(std::vector<std::string>(argv + 1, argv + argc), options);
    if (!wrongCommandLine.empty())
        return fail(wrongCommandLine, usageStatus);
    if (options.help)
    {
        std::fputs(RenderOptions::usage(), stdout);
        return 0;
    }

    // Everything that can be checked without the plug-in is checked before it is loaded.
    RenderInput input;
    std::string failure;
    if (options.renders())
    {
        if (options.demo)
            input.openDemo();
        else
            failure = input.openFile(options.input);
        if (failure.empty())
            failure = AudioFileWriter::checkFormat(options.output);
        if (failure.empty())
            failure = CommandLine::checkWritable(options.output, {options.input}, options.force);
    }
    if (failure.empty() && !options.saveState.empty())
        failure = CommandLine::checkWritable(options.saveState, {options.input}, options.force);
    std::string path;
    if (failure.empty())
        failure = pluginPath(options, path);
    if (!failure.empty())
        return fail(failure);

    std::unique_ptr<VstPlugin> plugin = VstPlugin::load(path, failure);
    if (plugin == nullptr)
        return fail(failure);
    plugin->prepare(options.renders() ? input.sampleRate() : rateWithoutInput, options.blockSize);
    if (!options.loadState.empty())
        failure = PluginState::load(*plugin, options.loadState);
    if (failure.empty())
        failure = applySettings(*plugin, options.settings);
    if (failure.empty() && options.list)
        listParameters(*plugin);
    if (failure.empty() && !options.saveState.empty())
        failure = PluginState::save(*plugin, options.saveState, options.force);
    if (!failure.empty() || !options.renders())
        return failure.empty() ? 0 : fail(failure);

    AudioFileWriter output;
    failure = output.open(options.output, input.channels(), input.sampleRate());
    ProgressBar progress(ProgressBar::terminalFor(static_cast<double>(input.frames()) / input.sampleRate()), input.frames());
    if (failure.empty())
        failure = BlockRenderer::render(*plugin, input, output, options.blockSize, progress);
    if (failure.empty())
        failure = output.finish(options.force);
    if (!failure.empty())
        return fail(failure);
    std::printf("wrote %s (%s, %d Hz)\n", options.output.c_str(), input.channels() == 1 ? "mono" : "stereo",
                input.sampleRate());
    return 0;
}
