#pragma once

#include <string>

class VstPlugin;

// Moves a plug-in's state between the plug-in and a program file (see PresetFile): its chunk
// when the plug-in saves chunks, otherwise its parameter values.
class PluginState
{
public:
    // Reads `path` and applies it. Fails when the file cannot be read, is no program file, or
    // belongs to another plug-in. Returns an empty string on success, otherwise a one-line reason.
    static std::string load(VstPlugin& plugin, const std::string& path);

    // Writes the present state to `path`, over an existing file only with `replaceExisting`.
    // Returns an empty string on success, otherwise a one-line reason.
    static std::string save(VstPlugin& plugin, const std::string& path, bool replaceExisting);
};
