// Every way kelvane-render refuses: a one-line message that says what to do, a non-zero exit
// status (2 for a wrong command line, 1 otherwise), and no file written or changed.

#include "KelvaneRenderFixture.h"
#include "PresetFile.h"

#include <sndfile.h>
#include <unistd.h>

#include <fstream>

namespace
{
constexpr int failed = 1;
constexpr int wrongCommandLine = 2;
}

TEST_F(KelvaneRender, MissingOrUnreadableInputIsRefused)
{
    expectFailure(renderWith({path("missing.wav"), output}), failed, "input " + path("missing.wav") + " does not exist");
    std::ofstream(input) << "RIFF but not really a wave file";
    expectFailure(renderWith({input, output}), failed, "cannot read " + input);
    expectFailure(renderWith({input, output}), failed, "give a WAV, FLAC, AIFF or Ogg file");
    expectFailure(renderWith({folder.string(), output}), failed, "is a folder; give an audio file");
    EXPECT_EQ(files(), std::vector<std::string>{"in.wav"});
}

TEST_F(KelvaneRender, MoreThanTwoChannelsIsRefused)
{
    writeAudio(input, signal(3, 100, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    expectFailure(renderWith({input, output}), failed, "has 3 channels; only mono and stereo files can be rendered");
    EXPECT_EQ(files(), std::vector<std::string>{"in.wav"});
}

TEST_F(KelvaneRender, TheInputIsNeverTheOutputWhateverItsSpellingOrForce)
{
    writeAudio(input, signal(2, 100, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    const Audio before = readAudio(input);
    expectFailure(renderWith({"--force", input, input}), failed, "is the input file; write the result to another file");
    expectFailure(renderWith({"--force", input, "./in.wav"}), failed, "is the input file");
    ASSERT_EQ(link(input.c_str(), path("alias.wav").c_str()), 0);
    expectFailure(renderWith({"--force", input, path("alias.wav")}), failed, "is the input file");
    EXPECT_EQ(readAudio(input).samples, before.samples);
    EXPECT_EQ(files(), (std::vector<std::string>{"alias.wav", "in.wav"}));
}

TEST_F(KelvaneRender, OutputMustBeWavOrFlacAndNotAFolder)
{
    writeAudio(input, signal(1, 100, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    expectFailure(renderWith({input, path("out.mp3")}), failed, "unknown output format; name the file .wav or .flac");
    std::filesystem::create_directory(path("out.flac"));
    expectFailure(renderWith({"--force", input, path("out.flac")}), failed, "is a folder; give a file name");
    expectFailure(renderWith({input, path("no/such/folder/out.wav")}), failed, "cannot write in");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.flac"}));
}

TEST_F(KelvaneRender, PluginsThatCannotBeUsedAreNamedWithTheReason)
{
    writeAudio(input, signal(2, 100, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    const std::string missing = path("Missing.so");
    expectFailure(render({"--plugin", missing, input, output}), failed, "no plug-in at " + missing + "; pass the .so file");
    std::ofstream(path("Text.so")) << "#!/bin/sh\n";
    expectFailure(render({"--plugin", path("Text.so"), input, output}), failed, "cannot load plug-in " + path("Text.so"));
    expectFailure(render({"--plugin", NO_ENTRY_POINT_PLUGIN, input, output}), failed,
                  "is not a VST 2.4 plug-in: it has no entry point VSTPluginMain or main");
    expectFailure(render({"--plugin", NULL_EFFECT_PLUGIN, input, output}), failed, "returned no effect");
    EXPECT_EQ(files(), (std::vector<std::string>{"Text.so", "in.wav"}));
}

TEST_F(KelvaneRender, UnknownParametersAreRefusedByNameAndByIndex)
{
    for (const char* parameter : {"Volume", "3", "99", "-1x"})
        expectFailure(renderWith({"--set", std::string(parameter) + "=0.5", "--list"}), failed,
                      "unknown parameter '" + std::string(parameter) + "'; --list shows the names and indices");
}

TEST_F(KelvaneRender, ValuesOutside0To1OrNotNumbersAreACommandLineError)
{
    expectFailure(renderWith({"--set", "Gain=1.5", "--list"}), wrongCommandLine, "the value 1.5 of Gain is outside 0..1");
    expectFailure(renderWith({"--set", "Gain=-0.1", "--list"}), wrongCommandLine, "outside 0..1");
    expectFailure(renderWith({"--set", "Gain=loud", "--list"}), wrongCommandLine, "'loud' of Gain is not a number");
    expectFailure(renderWith({"--set", "Gain=nan", "--list"}), wrongCommandLine, "is not a number");
    expectFailure(renderWith({"--set", "Gain", "--list"}), wrongCommandLine, "--set takes NAME=VALUE");
}

TEST_F(KelvaneRender, UnreadableOrInvalidStateFilesAreRefused)
{
    expectFailure(renderWith({"--load-state", path("none.fxp"), "--list"}), failed,
                  "cannot read state file " + path("none.fxp"));
    std::ofstream(path("garbage.fxp")) << "this is no preset at all, though it is long enough to have a header";
    expectFailure(renderWith({"--load-state", path("garbage.fxp"), "--list"}), failed,
                  "invalid state file " + path("garbage.fxp") + ": it is not a VST program file (.fxp)");
    Preset foreign;
    foreign.pluginId = q1framework::fourCharacterCode('K', 'e', 'L', 'v');
    foreign.holdsChunk = true;
    foreign.chunk = {'V', 'C', '2', '!'};
    const std::vector<char> bytes = PresetFile::encode(foreign);
    std::ofstream(path("foreign.fxp"), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    expectFailure(renderWith({"--load-state", path("foreign.fxp"), "--list"}), failed,
                  "belongs to the plug-in 'KeLv', not to this one ('TGai')");
}

TEST_F(KelvaneRender, BadBlockSizesAreACommandLineError)
{
    for (const char* size : {"0", "-5", "many", "65537", "12abc"})
        expectFailure(renderWith({"--block", size, "--list"}), wrongCommandLine,
                      "--block takes a whole number of frames from 1 to 65536, not '" + std::string(size) + "'");
    expectFailure(renderWith({"--list", "--block"}), wrongCommandLine, "--block needs a value");
}

TEST_F(KelvaneRender, IncompleteOrUnknownCommandLinesAreRefused)
{
    expectFailure(renderWith({}), wrongCommandLine, "missing IN and OUT");
    expectFailure(renderWith({input}), wrongCommandLine, "missing OUT");
    expectFailure(renderWith({"--demo"}), wrongCommandLine, "missing OUT: where to write the rendered demo loop");
    expectFailure(renderWith({"a.wav", "b.wav", "c.wav"}), wrongCommandLine, "too many files; give IN and OUT");
    expectFailure(renderWith({"--loud", "--list"}), wrongCommandLine, "unknown option --loud; see --help");
    const Run help = render({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("usage: kelvane-render [options] IN OUT\n", 0), 0u);
}
