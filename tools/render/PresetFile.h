#pragma once

#include "host/VstAbi.h"

#include <string>
#include <vector>

// The state of one plug-in as a program file in the common VST 2 format (".fxp"), which other
// hosts read too. All numbers are big-endian 32-bit:
//
//   offset  size  content
//   0       4     "CcnK"
//   4       4     bytes that follow this field (file size - 8)
//   8       4     "FPCh" (an opaque chunk follows) or "FxCk" (parameter values follow)
//   12      4     format version, 1
//   16      4     the plug-in's unique id
//   20      4     the plug-in's version
//   24      4     number of parameters
//   28      28    program name, zero-terminated
//   56            "FPCh": chunk size, then the chunk's bytes
//                 "FxCk": one float per parameter
struct Preset
{
    q1framework::VstInt32 pluginId = 0;
    q1framework::VstInt32 pluginVersion = 0;
    q1framework::VstInt32 parameterCount = 0;
    std::string name;             // at most 27 bytes are kept
    bool holdsChunk = false;      // true: `chunk`; false: `parameters`
    std::vector<char> chunk;
    std::vector<float> parameters;
};

class PresetFile
{
public:
    static constexpr std::size_t maximumFileSize = 64 * 1024 * 1024;

    static std::vector<char> encode(const Preset& preset);
    // Returns an empty string on success, otherwise a one-line reason why `bytes` is no preset.
    static std::string decode(const std::vector<char>& bytes, Preset& preset);

    // Reads and decodes a file. Returns an empty string on success, otherwise a one-line reason
    // that names the file.
    static std::string read(const std::string& path, Preset& preset);
};
