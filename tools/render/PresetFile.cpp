#include "PresetFile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>

using namespace q1framework;

namespace
{
constexpr VstInt32 fileMagic = fourCharacterCode('C', 'c', 'n', 'K');
constexpr VstInt32 chunkProgramMagic = fourCharacterCode('F', 'P', 'C', 'h');
constexpr VstInt32 parameterProgramMagic = fourCharacterCode('F', 'x', 'C', 'k');
constexpr VstInt32 formatVersion = 1;
constexpr std::size_t nameSize = 28;
constexpr std::size_t headerSize = 56;         // up to the content
constexpr std::size_t sizeFieldsSize = 8;      // the magic and the size that byteSize leaves out

void putInteger(std::vector<char>& bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<char>((value >> shift) & 0xff));
}

std::uint32_t getInteger(const std::vector<char>& bytes, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        value = (value << 8) | static_cast<unsigned char>(bytes[offset + byte]);
    return value;
}

std::uint32_t floatBits(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float bitsFloat(std::uint32_t bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
}

std::vector<char> PresetFile::encode(const Preset& preset)
{
    std::vector<char> bytes;
    putInteger(bytes, static_cast<std::uint32_t>(fileMagic));
    putInteger(bytes, 0);  // byteSize, filled in below
    putInteger(bytes, static_cast<std::uint32_t>(preset.holdsChunk ? chunkProgramMagic : parameterProgramMagic));
    putInteger(bytes, formatVersion);
    putInteger(bytes, static_cast<std::uint32_t>(preset.pluginId));
    putInteger(bytes, static_cast<std::uint32_t>(preset.pluginVersion));
    putInteger(bytes, static_cast<std::uint32_t>(preset.holdsChunk ? preset.parameterCount
                                                                   : static_cast<VstInt32>(preset.parameters.size())));
    char name[nameSize] = {};
    std::strncpy(name, preset.name.c_str(), nameSize - 1);
    bytes.insert(bytes.end(), name, name + nameSize);
    if (preset.holdsChunk)
    {
        putInteger(bytes, static_cast<std::uint32_t>(preset.chunk.size()));
        bytes.insert(bytes.end(), preset.chunk.begin(), preset.chunk.end());
    }
    else
    {
        for (float value : preset.parameters)
            putInteger(bytes, floatBits(value));
    }
    const std::uint32_t byteSize = static_cast<std::uint32_t>(bytes.size() - sizeFieldsSize);
    std::vector<char> size;
    putInteger(size, byteSize);
    std::copy(size.begin(), size.end(), bytes.begin() + 4);
    return bytes;
}

std::string PresetFile::decode(const std::vector<char>& bytes, Preset& preset)
{
    if (bytes.size() < headerSize || static_cast<VstInt32>(getInteger(bytes, 0)) != fileMagic)
        return "it is not a VST program file (.fxp)";
    if (getInteger(bytes, 4) != bytes.size() - sizeFieldsSize)
        return "its length field does not match its size; the file is damaged";
    const VstInt32 kind = static_cast<VstInt32>(getInteger(bytes, 8));
    if (kind != chunkProgramMagic && kind != parameterProgramMagic)
        return "it holds no single program (a bank file?)";
    Preset result;
    result.pluginId = static_cast<VstInt32>(getInteger(bytes, 16));
    result.pluginVersion = static_cast<VstInt32>(getInteger(bytes, 20));
    result.parameterCount = static_cast<VstInt32>(getInteger(bytes, 24));
    result.name.assign(bytes.data() + 28, strnlen(bytes.data() + 28, nameSize - 1));
    result.holdsChunk = kind == chunkProgramMagic;
    const std::size_t contentSize = bytes.size() - headerSize;
    if (result.holdsChunk)
    {
        if (contentSize < 4 || getInteger(bytes, headerSize) != contentSize - 4)
            return "its chunk size does not match its length; the file is damaged";
        result.chunk.assign(bytes.begin() + headerSize + 4, bytes.end());
    }
    else
    {
        if (result.parameterCount < 0 || static_cast<std::size_t>(result.parameterCount) * 4 != contentSize)
            return "its parameter count does not match its length; the file is damaged";
        for (std::size_t offset = headerSize; offset < bytes.size(); offset += 4)
            result.parameters.push_back(bitsFloat(getInteger(bytes, offset)));
    }
    preset = std::move(result);
    return {};
}

std::string PresetFile::read(const std::string& path, Preset& preset)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return "cannot read state file " + path + "; check the path";
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size < 0)
        return "cannot read state file " + path + "; is it a regular file?";
    if (static_cast<std::uint64_t>(size) > maximumFileSize)
        return "state file " + path + " is too large to be a preset";
    file.seekg(0, std::ios::beg);
    std::vector<char> bytes(static_cast<std::size_t>(size));
    if (!file.read(bytes.data(), size))
        return "cannot read state file " + path;
    const std::string invalid = decode(bytes, preset);
    if (!invalid.empty())
        return "invalid state file " + path + ": " + invalid;
    return {};
}
