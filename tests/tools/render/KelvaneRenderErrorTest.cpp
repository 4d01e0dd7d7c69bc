// Every way kelvane-render refuses: a one-line message that says what to do, a non-zero exit
// status (2 for a wrong command line, 1 otherwise), and no file written or changed.

#include "RenderTest.h"

#include <unistd.h>

using KelvaneRender = RenderTest;

TEST_F(KelvaneRender, EveryRefusalIsOneLineWithItsStatusAndChangesNoFile)
{
    writeAudio("in.wav", signal(2, 100, 44100));
    writeAudio("three.wav", signal(3, 100, 44100));
    write("fake.wav", "RIFF but not really a wave file");
    write("Text.so", "#!/bin/sh\n");
    write("taken.wav", "precious");
    write("garbage.fxp", "this is no preset at all, though it is long enough to have a header");
    ASSERT_EQ(kelvane({"--save-state", "foreign.fxp"}).status, 0);  // Kelvane's, not the gain plug-in's
    std::filesystem::create_directory(path("folder.flac"));
    ASSERT_EQ(link(path("in.wav").c_str(), path("alias.wav").c_str()), 0);
    const auto before = contents();

    const int failed = 1;
    const int wrongCommandLine = 2;
    // Each run goes to the test gain plug-in unless its arguments name another with --plugin.
    const struct { std::vector<std::string> arguments; int status; std::string text; } refusals[] = {
        {{"missing.wav", "out.wav"}, failed, "input missing.wav does not exist"},
        // After "--" a name that starts with a dash is a file.
        {{"--", "-in.wav", "out.wav"}, failed, "input -in.wav does not exist"},
        {{"fake.wav", "out.wav"}, failed, "cannot read fake.wav"},
        {{"fake.wav", "out.wav"}, failed, "give a WAV, FLAC, AIFF or Ogg file"},
        {{".", "out.wav"}, failed, "is a folder; give an audio file"},
        {{"three.wav", "out.wav"}, failed, "has 3 channels; only mono and stereo files can be rendered"},
        {{"in.wav", "out.mp3"}, failed, "unknown output format; name the file .wav or .flac"},
        {{"--force", "in.wav", "folder.flac"}, failed, "is a folder; give a file name"},
        {{"in.wav", "no/such/folder/out.wav"}, failed, "cannot write in"},
        {{"in.wav", "taken.wav"}, failed, "taken.wav already exists; add --force to replace it"},
        {{"--save-state", "garbage.fxp"}, failed, "garbage.fxp already exists; add --force"},
        // The input is never the output, whatever its spelling, even with --force.
        {{"--force", "in.wav", "in.wav"}, failed, "is the input file; write the result to another file"},
        {{"--force", "in.wav", path("in.wav")}, failed, "is the input file"},
        {{"--force", "in.wav", "./alias.wav"}, failed, "is the input file"},
        {{"--plugin", "Missing.so", "in.wav", "out.wav"}, failed, "no plug-in at Missing.so; pass the .so file"},
        {{"--plugin", "Text.so", "in.wav", "out.wav"}, failed, "cannot load plug-in Text.so"},
        {{"--plugin", NO_ENTRY_POINT_PLUGIN, "in.wav", "out.wav"}, failed,
         "is not a VST 2.4 plug-in: it has no entry point VSTPluginMain or main"},
        {{"--plugin", NULL_EFFECT_PLUGIN, "in.wav", "out.wav"}, failed, "returned no effect"},
        {{"--set", "Volume=0.5", "--list"}, failed, "unknown parameter 'Volume'; --list shows the names and indices"},
        {{"--set=a=b=1", "--list"}, failed, "unknown parameter 'a=b'"},  // the name ends at the last '='
        {{"--set", "3=0.5", "--list"}, failed, "unknown parameter '3'"},
        {{"--set", "99999999999999999999=0.5", "--list"}, failed, "unknown parameter '99999999999999999999'"},
        {{"--set", "Gain=1.0000001", "--list"}, wrongCommandLine, "the value 1.0000001 of Gain is outside 0..1"},
        {{"--set", "Gain=-0.1", "--list"}, wrongCommandLine, "outside 0..1"},
        {{"--set", "Gain=loud", "--list"}, wrongCommandLine, "'loud' of Gain is not a number"},
        {{"--set", "Gain=nan", "--list"}, wrongCommandLine, "is not a number"},
        {{"--set", "Gain", "--list"}, wrongCommandLine, "--set takes NAME=VALUE"},
        {{"--set", "=0.5", "--list"}, wrongCommandLine, "--set takes NAME=VALUE"},
        {{"--load-state", "none.fxp", "--list"}, failed, "cannot read state file none.fxp"},
        {{"--load-state", "garbage.fxp", "--list"}, failed,
         "invalid state file garbage.fxp: it is not a VST program file (.fxp)"},
        {{"--load-state", "foreign.fxp", "--list"}, failed, "belongs to the plug-in 'KeLv', not to this one ('TGai')"},
        {{"--block", "0", "--list"}, wrongCommandLine, "--block takes a whole number of frames from 1 to 65536, not '0'"},
        {{"--block", "65537", "--list"}, wrongCommandLine, "not '65537'"},
        {{"--block", "12abc", "--list"}, wrongCommandLine, "not '12abc'"},
        {{"--list", "--block"}, wrongCommandLine, "--block needs a value"},
        {{}, wrongCommandLine, "missing IN and OUT"},
        {{"in.wav"}, wrongCommandLine, "missing OUT"},
        {{"--demo"}, wrongCommandLine, "missing OUT: where to write the rendered demo loop"},
        {{"a.wav", "b.wav", "c.wav"}, wrongCommandLine, "too many files; give IN and OUT"},
        {{"--loud", "--list"}, wrongCommandLine, "unknown option --loud; see --help"},
    };
    for (const auto& refusal : refusals)
    {
        SCOPED_TRACE(::testing::PrintToString(refusal.arguments));
        expectFailure(gain(refusal.arguments), refusal.status, refusal.text);
    }
    EXPECT_EQ(contents(), before);

    const Run help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("usage: kelvane-render [options] IN OUT\n", 0), 0u);
}
