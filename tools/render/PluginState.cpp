#include "PluginState.h"

#include "PresetFile.h"
#include "VstPlugin.h"
#include "common/PendingFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace
{
std::string codeText(q1framework::VstInt32 code)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        const char character = static_cast<char>((code >> shift) & 0xff);
        text += character >= ' ' && character <= '~' ? character : '?';
    }
    return text;
}
}

std::string PluginState::load(VstPlugin& plugin, const std::string& path)
{
    Preset preset;
    const std::string failure = PresetFile::read(path, preset);
    if (!failure.empty())
        return failure;
    if (preset.pluginId != plugin.uniqueId())
        return "state file " + path + " belongs to the plug-in '" + codeText(preset.pluginId) + "', not to this one ('"
               + codeText(plugin.uniqueId()) + "')";
    if (preset.holdsChunk)
    {
        if (!plugin.savesChunks())
            return "state file " + path + " holds a chunk, but this plug-in takes its state as parameters";
        plugin.setChunk(preset.chunk);
        return {};
    }
    if (static_cast<int>(preset.parameters.size()) != plugin.parameterCount())
        return "state file " + path + " has " + std::to_string(preset.parameters.size())
               + " parameter values; this plug-in has " + std::to_string(plugin.parameterCount());
    for (int index = 0; index < plugin.parameterCount(); ++index)
        plugin.setParameter(index, preset.parameters[static_cast<std::size_t>(index)]);
    return {};
}

std::string PluginState::save(VstPlugin& plugin, const std::string& path, bool replaceExisting)
{
    Preset preset;
    preset.pluginId = plugin.uniqueId();
    preset.pluginVersion = plugin.version();
    preset.parameterCount = plugin.parameterCount();
    preset.name = plugin.programName();
    preset.holdsChunk = plugin.savesChunks();
    if (preset.holdsChunk)
        preset.chunk = plugin.chunk();
    else
        for (int index = 0; index < plugin.parameterCount(); ++index)
            preset.parameters.push_back(plugin.parameter(index));
    const std::vector<char> bytes = PresetFile::encode(preset);

    PendingFile file;
    std::string failure = file.create(path);
    if (!failure.empty())
        return failure;
    std::size_t written = 0;
    while (written < bytes.size())
    {
        const ssize_t count = ::write(file.descriptor(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return "cannot write state file " + path + ": " + std::strerror(errno);
        written += static_cast<std::size_t>(count);
    }
    return file.publish(replaceExisting);
}
