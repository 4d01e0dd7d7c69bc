#include "RenderOptions.h"

#include <gtest/gtest.h>

TEST(RenderOptions, FilesAndOptionsInAnyOrderAndBoundsThatAreInclusive)
{
    RenderOptions options;
    ASSERT_EQ(RenderOptions::parse({"in.wav", "--set", "Attack Time=0", "--block=65536", "out.flac", "--set=a=b=1",
                                    "--plugin", "/p.so", "--force"},
                                   options),
              "");
    EXPECT_TRUE(options.renders());
    EXPECT_EQ(options.input + " " + options.output + " " + options.pluginPath, "in.wav out.flac /p.so");
    EXPECT_EQ(options.blockSize, 65536);
    EXPECT_TRUE(options.force);
    ASSERT_EQ(options.settings.size(), 2u);
    EXPECT_EQ(options.settings[0].parameter, "Attack Time");
    EXPECT_EQ(options.settings[0].value, 0.0f);
    EXPECT_EQ(options.settings[1].parameter, "a=b");
    EXPECT_EQ(options.settings[1].value, 1.0f);

    RenderOptions list;
    ASSERT_EQ(RenderOptions::parse({"--block", "1", "--", "-in.wav", "-out.wav"}, list), "");
    EXPECT_EQ(list.input, "-in.wav");  // after "--" a name that starts with a dash is a file
    EXPECT_EQ(list.blockSize, 1);
}
