#include "PresetFile.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q1framework;

namespace
{
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

std::vector<char> bytesOf(std::initializer_list<int> values)
{
    std::vector<char> bytes;
    for (int value : values)
        bytes.push_back(static_cast<char>(value));
    return bytes;
}
}

TEST(PresetFile, ChunkProgramHasTheCommonLayoutByteForByte)
{
    const std::vector<char> bytes = PresetFile::encode(chunkPreset());
    ASSERT_EQ(bytes.size(), 56u + 4u + 7u);
    EXPECT_EQ(std::vector<char>(bytes.begin(), bytes.begin() + 28),
              bytesOf({'C', 'c', 'n', 'K', 0, 0, 0, 59, 'F', 'P', 'C', 'h', 0, 0, 0, 1,
                       'K', 'e', 'L', 'v', 2, 5, 3, 0, 0, 0, 0, 7}));
    EXPECT_STREQ(bytes.data() + 28, "Punchy");
    EXPECT_EQ(bytes[55], 0);
    EXPECT_EQ(std::vector<char>(bytes.begin() + 56, bytes.end()), bytesOf({0, 0, 0, 7, 'V', 'C', '2', '!', 0, 1, 2}));
}

TEST(PresetFile, ParameterProgramStoresBigEndianFloats)
{
    Preset preset;
    preset.pluginId = 1;
    preset.parameters = {1.0f, -2.5f};
    preset.name = "a name much longer than the twenty-seven bytes a program name keeps";
    const std::vector<char> bytes = PresetFile::encode(preset);
    ASSERT_EQ(bytes.size(), 64u);
    EXPECT_EQ(std::string(bytes.data() + 28), preset.name.substr(0, 27));
    EXPECT_EQ(std::memcmp(bytes.data() + 8, "FxCk", 4), 0);
    EXPECT_EQ(bytes[27], 2);
    // 1.0f is 0x3f800000 and -2.5f is 0xc0200000.
    EXPECT_EQ(std::vector<char>(bytes.begin() + 56, bytes.end()), bytesOf({0x3f, 0x80, 0, 0, 0xc0, 0x20, 0, 0}));
}

TEST(PresetFile, DamagedOrForeignFilesAreRefusedAndLeaveThePresetAlone)
{
    const std::vector<char> good = PresetFile::encode(chunkPreset());
    Preset untouched;
    untouched.name = "before";
    const auto refuse = [&](std::vector<char> bytes, const std::string& reason) {
        Preset preset = untouched;
        EXPECT_EQ(PresetFile::decode(bytes, preset), reason);
        EXPECT_EQ(preset.name, "before");
    };
    refuse({}, "it is not a VST program file (.fxp)");
    refuse(std::vector<char>(good.begin(), good.begin() + 55), "it is not a VST program file (.fxp)");
    std::vector<char> wrongMagic = good;
    wrongMagic[0] = 'c';
    refuse(wrongMagic, "it is not a VST program file (.fxp)");
    std::vector<char> truncated(good.begin(), good.end() - 1);
    refuse(truncated, "its length field does not match its size; the file is damaged");
    std::vector<char> bank = good;
    std::memcpy(bank.data() + 8, "FBCh", 4);
    refuse(bank, "it holds no single program (a bank file?)");
    std::vector<char> longChunk = good;
    longChunk[59] = 8;
    refuse(longChunk, "its chunk size does not match its length; the file is damaged");

    Preset parameters;
    parameters.parameters = {0.5f};
    std::vector<char> wrongCount = PresetFile::encode(parameters);
    wrongCount[27] = 2;
    refuse(wrongCount, "its parameter count does not match its length; the file is damaged");
    wrongCount[24] = static_cast<char>(0x80);  // a negative count
    refuse(wrongCount, "its parameter count does not match its length; the file is damaged");
}
