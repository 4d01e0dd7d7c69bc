#include "RenderOptions.h"

#include <gtest/gtest.h>

namespace
{
RenderOptions parsed(const std::vector<std::string>& arguments)
{
    RenderOptions options;
    EXPECT_EQ(RenderOptions::parse(arguments, options), "");
    return options;
}
}

TEST(RenderOptions, FilesAndOptionsInAnyOrder)
{
    const RenderOptions options = parsed({"in.wav", "--set", "Attack Time=0.25", "--block=64", "out.flac",
                                          "--set=2=1", "--plugin", "/p.so", "--force"});
    EXPECT_EQ(options.input, "in.wav");
    EXPECT_EQ(options.output, "out.flac");
    EXPECT_EQ(options.blockSize, 64);
    EXPECT_EQ(options.pluginPath, "/p.so");
    EXPECT_TRUE(options.force);
    ASSERT_EQ(options.settings.size(), 2u);
    EXPECT_EQ(options.settings[0].parameter, "Attack Time");
    EXPECT_EQ(options.settings[0].value, 0.25f);
    EXPECT_EQ(options.settings[1].parameter, "2");
    EXPECT_EQ(options.settings[1].value, 1.0f);
    EXPECT_TRUE(options.renders());
}

TEST(RenderOptions, DefaultsAndTheRunsWithoutAudio)
{
    const RenderOptions list = parsed({"--list"});
    EXPECT_FALSE(list.renders());
    EXPECT_EQ(list.blockSize, 512);
    EXPECT_EQ(list.pluginPath, "");
    EXPECT_FALSE(parsed({"--save-state", "a.fxp"}).renders());
    const RenderOptions demo = parsed({"--demo", "out.wav"});
    EXPECT_TRUE(demo.demo);
    EXPECT_EQ(demo.input, "");
    EXPECT_EQ(demo.output, "out.wav");
    // After "--" a name that starts with a dash is a file.
    EXPECT_EQ(parsed({"--", "-in.wav", "-out.wav"}).input, "-in.wav");
}

TEST(RenderOptions, ValueBoundsAreInclusive)
{
    EXPECT_EQ(parsed({"--set", "a=0", "--list"}).settings[0].value, 0.0f);
    EXPECT_EQ(parsed({"--set", "a=1.0", "--list"}).settings[0].value, 1.0f);
    EXPECT_EQ(parsed({"--set", "a=b=0.5", "--list"}).settings[0].parameter, "a=b");
    EXPECT_EQ(parsed({"--block", "1", "--list"}).blockSize, 1);
    EXPECT_EQ(parsed({"--block", "65536", "--list"}).blockSize, 65536);
    RenderOptions options;
    EXPECT_NE(RenderOptions::parse({"--set", "a=1.0000001", "--list"}, options), "");
    EXPECT_NE(RenderOptions::parse({"--set", "a=inf", "--list"}, options), "");
    EXPECT_NE(RenderOptions::parse({"--set", "=0.5", "--list"}, options), "");
}
