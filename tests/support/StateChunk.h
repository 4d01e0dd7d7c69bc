#pragma once

#include <cstdint>
#include <string>

// Kelvane's state chunk around a document, as the plug-in writes it and a host hands it back:
// "VC2!", the little-endian 32-bit length of the text and its terminating zero, the text, the zero.
inline std::string chunkOf(const std::string& text)
{
    const uint32_t length = static_cast<uint32_t>(text.size() + 1);
    std::string chunk = "VC2!";
    for (int shift = 0; shift < 32; shift += 8)
        chunk += static_cast<char>((length >> shift) & 0xFF);
    return chunk + text + '\0';
}
