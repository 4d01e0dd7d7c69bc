// Decodes arbitrary bytes as a program file (.fxp). Whatever decodes must encode back to the
// same bytes, as the format has exactly one spelling of each program (the name's padding aside,
// which is why the input is compared after its own re-encoding).
#include "PresetFile.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<char> bytes(data, data + size);
    Preset preset;
    if (!PresetFile::decode(bytes, preset).empty())
        return 0;
    const std::vector<char> encoded = PresetFile::encode(preset);
    Preset again;
    if (!PresetFile::decode(encoded, again).empty() || PresetFile::encode(again) != encoded
        || encoded.size() != bytes.size())
        std::abort();
    return 0;
}
