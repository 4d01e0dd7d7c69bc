// Every way kelvane-render refuses: a one-line message that says what to do, a non-zero exit
// status (2 for a wrong command line, 1 otherwise), and no file written or changed.

#include "PresetFile.h"
#include "RenderTest.h"

#include <unistd.h>

using KelvaneRender = RenderTest;

namespace
{
constexpr int failed = 1;
constexpr int wrongCommandLine = 2;
}

TEST_F(KelvaneRender, MissingOrUnreadableInputIsRefused)
{
    expectFailure(gain({"missing.wav", "out.wav"}), failed, "input missing.wav does not exist");
    write("in.wav", "RIFF but not really a wave file");
    expectFailure(gain({"in.wav", "out.wav"}), failed, "cannot read in.wav");
    expectFailure(gain({"in.wav", "out.wav"}), failed, "give a WAV, FLAC, AIFF or Ogg file");
    expectFailure(gain({folder.string(), "out.wav"}), failed, "is a folder; give an audio file");
    EXPECT_EQ(files(), std::vector<std::string>{"in.wav"});
}

TEST_F(KelvaneRender, UnsupportedFormatsAndUnwritablePlacesAreRefused)
{
    writeAudio("in.wav", signal(3, 100, 44100));
    expectFailure(gain({"in.wav", "out.wav"}), failed, "has 3 channels; only mono and stereo files can be rendered");
    writeAudio("in.wav", signal(1, 100, 44100));
    expectFailure(gain({"in.wav", "out.mp3"}), failed, "unknown output format; name the file .wav or .flac");
    std::filesystem::create_directory(path("out.flac"));
    expectFailure(gain({"--force", "in.wav", "out.flac"}), failed, "is a folder; give a file name");
    expectFailure(gain({"in.wav", "no/such/folder/out.wav"}), failed, "cannot write in");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.flac"}));
}

TEST_F(KelvaneRender, TheInputIsNeverTheOutputWhateverItsSpellingOrForce)
{
    writeAudio("in.wav", signal(2, 100, 44100));
    const std::string before = read("in.wav");
    expectFailure(gain({"--force", "in.wav", "in.wav"}), failed, "is the input file; write the result to another file");
    expectFailure(gain({"--force", "in.wav", path("in.wav")}), failed, "is the input file");
    ASSERT_EQ(link(path("in.wav").c_str(), path("alias.wav").c_str()), 0);
    expectFailure(gain({"--force", "in.wav", "./alias.wav"}), failed, "is the input file");
    EXPECT_EQ(read("in.wav"), before);
    EXPECT_EQ(files(), (std::vector<std::string>{"alias.wav", "in.wav"}));
}

TEST_F(KelvaneRender, PluginsThatCannotBeUsedAreNamedWithTheReason)
{
    writeAudio("in.wav", signal(2, 100, 44100));
    expectFailure(renderWith("Missing.so", {"in.wav", "out.wav"}), failed, "no plug-in at Missing.so; pass the .so file");
    write("Text.so", "#!/bin/sh\n");
    expectFailure(renderWith("Text.so", {"in.wav", "out.wav"}), failed, "cannot load plug-in Text.so");
    expectFailure(renderWith(NO_ENTRY_POINT_PLUGIN, {"in.wav", "out.wav"}), failed,
                  "is not a VST 2.4 plug-in: it has no entry point VSTPluginMain or main");
    expectFailure(renderWith(NULL_EFFECT_PLUGIN, {"in.wav", "out.wav"}), failed, "returned no effect");
    EXPECT_EQ(files(), (std::vector<std::string>{"Text.so", "in.wav"}));
}

TEST_F(KelvaneRender, UnknownParametersAndValuesOutside0To1AreRefused)
{
    for (const std::string parameter : {"Volume", "3", "99", "-1x", "99999999999999999999"})
        expectFailure(gain({"--set", parameter + "=0.5", "--list"}), failed,
                      "unknown parameter '" + parameter + "'; --list shows the names and indices");
    expectFailure(gain({"--set", "Gain=1.5", "--list"}), wrongCommandLine, "the value 1.5 of Gain is outside 0..1");
    expectFailure(gain({"--set", "Gain=-0.1", "--list"}), wrongCommandLine, "outside 0..1");
    expectFailure(gain({"--set", "Gain=loud", "--list"}), wrongCommandLine, "'loud' of Gain is not a number");
    expectFailure(gain({"--set", "Gain=nan", "--list"}), wrongCommandLine, "is not a number");
    expectFailure(gain({"--set", "Gain", "--list"}), wrongCommandLine, "--set takes NAME=VALUE");
}

TEST_F(KelvaneRender, UnreadableOrInvalidStateFilesAreRefused)
{
    expectFailure(gain({"--load-state", "none.fxp", "--list"}), failed, "cannot read state file none.fxp");
    write("garbage.fxp", "this is no preset at all, though it is long enough to have a header");
    expectFailure(gain({"--load-state", "garbage.fxp", "--list"}), failed,
                  "invalid state file garbage.fxp: it is not a VST program file (.fxp)");
    Preset foreign;
    foreign.pluginId = q1framework::fourCharacterCode('K', 'e', 'L', 'v');
    foreign.holdsChunk = true;
    foreign.chunk = {'V', 'C', '2', '!'};
    const std::vector<char> bytes = PresetFile::encode(foreign);
    write("foreign.fxp", std::string(bytes.begin(), bytes.end()));
    expectFailure(gain({"--load-state", "foreign.fxp", "--list"}), failed,
                  "belongs to the plug-in 'KeLv', not to this one ('TGai')");
}

TEST_F(KelvaneRender, WrongCommandLinesAreRefused)
{
    for (const std::string size : {"0", "65537", "12abc"})
        expectFailure(gain({"--block", size, "--list"}), wrongCommandLine,
                      "--block takes a whole number of frames from 1 to 65536, not '" + size + "'");
    expectFailure(gain({"--list", "--block"}), wrongCommandLine, "--block needs a value");
    expectFailure(gain({}), wrongCommandLine, "missing IN and OUT");
    expectFailure(gain({"in.wav"}), wrongCommandLine, "missing OUT");
    expectFailure(gain({"--demo"}), wrongCommandLine, "missing OUT: where to write the rendered demo loop");
    expectFailure(gain({"a.wav", "b.wav", "c.wav"}), wrongCommandLine, "too many files; give IN and OUT");
    expectFailure(gain({"--loud", "--list"}), wrongCommandLine, "unknown option --loud; see --help");
    const Run help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("usage: kelvane-render [options] IN OUT\n", 0), 0u);
}
