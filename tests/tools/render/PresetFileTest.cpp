#include "PresetFile.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
// A program of Kelvane's, as kelvane-render saves one, and its bytes in the common layout.
Preset chunkPreset()
{
    Preset preset;
    preset.pluginId = fourCharacterCode('K', 'e', 'L', 'v');
    preset.pluginVersion = 0x02050300;
    preset.parameterCount = 7;
    preset.name = "Punchy";
    preset.holdsChunk = true;
    preset.chunk = {'V', 'C', '2', '!', 0, 1, 2};
    return preset;
}

const std::string chunkPresetBytes = std::string("CcnK\0\0\0\x3b" "FPCh\0\0\0\x01" "KeLv\x02\x05\x03\0" "\0\0\0\x07", 28)
                                     + "Punchy" + std::string(22, '\0') + std::string("\0\0\0\x07" "VC2!\0\x01\x02", 11);

std::string textOf(const std::vector<char>& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}
}  // namespace

TEST(PresetFile, ProgramsHaveTheCommonLayoutByteForByte)
{
    EXPECT_EQ(textOf(PresetFile::encode(chunkPreset())), chunkPresetBytes);

    Preset preset;
    preset.pluginId = 1;
    preset.parameters = {1.0f, -2.5f};
    preset.name = "a name much longer than the twenty-seven bytes a program name keeps";
    // 1.0f is 0x3f800000 and -2.5f is 0xc0200000.
    EXPECT_EQ(textOf(PresetFile::encode(preset)),
              std::string("CcnK\0\0\0\x38" "FxCk\0\0\0\x01" "\0\0\0\x01" "\0\0\0\0" "\0\0\0\x02", 28)
                  + preset.name.substr(0, 27) + std::string("\0" "\x3f\x80\0\0" "\xc0\x20\0\0", 9));
}

TEST(PresetFile, DamagedOrForeignFilesAreRefusedAndLeaveThePresetAlone)
{
    Preset parameters;
    parameters.parameters = {0.5f};
    const std::string oneValue = textOf(PresetFile::encode(parameters));
    // `bytes` with `replacement` written at `offset`.
    const auto changed = [](std::string bytes, std::size_t offset, const std::string& replacement) {
        return bytes.replace(offset, replacement.size(), replacement);
    };
    const std::string notAProgram = "it is not a VST program file (.fxp)";
    const std::string wrongCount = "its parameter count does not match its length; the file is damaged";
    const std::pair<std::string, std::string> refusals[] = {
        {"", notAProgram},
        {chunkPresetBytes.substr(0, 55), notAProgram},
        {changed(chunkPresetBytes, 0, "c"), notAProgram},
        {chunkPresetBytes.substr(0, chunkPresetBytes.size() - 1), "its length field does not match its size; the file is damaged"},
        {changed(chunkPresetBytes, 8, "FBCh"), "it holds no single program (a bank file?)"},
        {changed(chunkPresetBytes, 59, "\x08"), "its chunk size does not match its length; the file is damaged"},
        {changed(oneValue, 27, "\x02"), wrongCount},
        {changed(oneValue, 24, std::string("\x80\0\0\x02", 4)), wrongCount},  // a negative count
    };
    for (const auto& [bytes, reason] : refusals)
    {
        Preset preset;
        preset.name = "before";
        EXPECT_EQ(PresetFile::decode(std::vector<char>(bytes.begin(), bytes.end()), preset), reason);
        EXPECT_EQ(preset.name, "before");
    }
}
