// The command line of kelvane-standalone.

#include "StandaloneOptions.h"

#include <gtest/gtest.h>

namespace
{
StandaloneOptions parsed(const std::vector<std::string>& arguments)
{
    StandaloneOptions options;
    EXPECT_EQ(StandaloneOptions::parse(arguments, options), "");
    return options;
}

std::string refusal(const std::vector<std::string>& arguments)
{
    StandaloneOptions options;
    return StandaloneOptions::parse(arguments, options);
}
}  // namespace

TEST(StandaloneOptions, WithoutArgumentsTheDemoLoopPlaysInTheInstalledPlugin)
{
    const StandaloneOptions options = parsed({});
    EXPECT_EQ(options.audioFile, "");
    EXPECT_EQ(options.pluginPath, "");
    EXPECT_EQ(options.screenshot, "");
    EXPECT_EQ(options.width, 0);
}

TEST(StandaloneOptions, OptionsTakeTheirValuesAfterABlankOrAnEqualsSign)
{
    const StandaloneOptions options =
        parsed({"--plugin=/p/K.so", "--screenshot", "shot.png", "--size=1100x257", "--force", "--", "-loop.wav"});
    EXPECT_EQ(options.pluginPath, "/p/K.so");
    EXPECT_EQ(options.screenshot, "shot.png");
    EXPECT_EQ(options.width, 1100);
    EXPECT_EQ(options.height, 257);
    EXPECT_TRUE(options.force);
    EXPECT_EQ(options.audioFile, "-loop.wav");
}

TEST(StandaloneOptions, ASizeIs300To1499WideWithThePicturesAspectRoundedEitherWay)
{
    int width = 0, height = 0;
    EXPECT_EQ(StandaloneOptions::parseSize("750x175", width, height), "");
    EXPECT_EQ(StandaloneOptions::parseSize("1100x256", width, height), "");
    EXPECT_EQ(StandaloneOptions::parseSize("300x70", width, height), "");
    EXPECT_EQ(StandaloneOptions::parseSize("1499x349", width, height), "");
    EXPECT_EQ(width, 1499);
    EXPECT_EQ(height, 349);
    EXPECT_EQ(StandaloneOptions::parseSize("299x69", width, height), "the editor is 300 to 1499 pixels wide, not 299");
    EXPECT_EQ(StandaloneOptions::parseSize("1500x350", width, height), "the editor is 300 to 1499 pixels wide, not 1500");
    EXPECT_EQ(StandaloneOptions::parseSize("750x200", width, height),
              "the editor keeps its picture's aspect: at 750 pixels wide it is 175 pixels high, not 200");
    EXPECT_EQ(StandaloneOptions::parseSize("750", width, height),
              "--size takes WIDTHxHEIGHT in pixels, as in --size 1100x257, not '750'");
    EXPECT_EQ(StandaloneOptions::parseSize("750x175px", width, height),
              "--size takes WIDTHxHEIGHT in pixels, as in --size 1100x257, not '750x175px'");
}

TEST(StandaloneOptions, WrongCommandLinesAreRefusedWithAReason)
{
    EXPECT_EQ(refusal({"--volume", "3"}), "unknown option --volume; see --help");
    EXPECT_EQ(refusal({"--screenshot"}), "--screenshot needs a value; see --help");
    EXPECT_EQ(refusal({"a.wav", "b.wav"}), "one audio file at most; without one the demo drum loop plays");
    EXPECT_EQ(refusal({"--force"}), "--force goes with --screenshot: it lets the picture replace a file");
}

TEST(StandaloneOptions, HelpWinsOverEverythingElse)
{
    StandaloneOptions options;
    EXPECT_EQ(StandaloneOptions::parse({"a.wav", "b.wav", "--help"}, options), "");
    EXPECT_TRUE(options.help);
    EXPECT_NE(std::string(StandaloneOptions::usage()).find("--screenshot FILE.png"), std::string::npos);
}
