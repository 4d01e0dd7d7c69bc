// kelvane-standalone as a user runs it, on the test program's own X server: the picture it takes
// of the editor, and how it refuses.

#include "ToolTest.h"
#include "XvfbServer.h"

#include "media/image/Image.h"

#include <fstream>
#include <iterator>

namespace
{
class KelvaneStandalone : public ToolTest
{
protected:
    KelvaneStandalone() : ToolTest(KELVANE_STANDALONE) {}

    Run standalone(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--plugin", KELVANE_PLUGIN});
        return run(arguments);
    }

    q1framework::Image picture(const std::string& name) const
    {
        const std::string bytes = read(name);
        return q1framework::Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
    }
};

// The share of a picture's pixels that are not black.
double litShare(const q1framework::Image& image)
{
    int lit = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            const uint8_t* pixel = image.getPixelPointer(x, y);
            lit += pixel[0] + pixel[1] + pixel[2] > 30 ? 1 : 0;
        }
    return static_cast<double>(lit) / (image.getWidth() * image.getHeight());
}
}  // namespace

TEST_F(KelvaneStandalone, TakesAPictureOfTheEditorAtTheSizeAskedForAfterSomeAudio)
{
    // On a server without GLX: the image put, whose pixels are the program's own. (Mesa's
    // software GL keeps allocations for the life of its driver, which goes when the plug-in's
    // connection closes, and the sanitizer build would count them as the program's.)
    XvfbServer server({"-extension", "GLX"});
    ASSERT_TRUE(server.isRunning());
    const Run result = run({"--plugin", KELVANE_PLUGIN, "--screenshot", "editor.png", "--size", "1100x257"},
                           {"DISPLAY=" + server.getDisplayName()});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const q1framework::Image shot = picture("editor.png");
    ASSERT_FALSE(shot.isNull());
    EXPECT_EQ(shot.getSize(), q1framework::Point(1100, 257));
    EXPECT_GT(litShare(shot), 0.5);
}

TEST_F(KelvaneStandalone, HelpDescribesTheCommandLine)
{
    const Run result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("usage: kelvane-standalone [options] [AUDIO]"), std::string::npos);
}

TEST_F(KelvaneStandalone, RefusalsSayWhyExitNonZeroAndWriteNothing)
{
    write("loop.wav", "not really audio, but an input all the same");
    write("taken.png", "precious");
    const auto before = contents();
    const int failed = 1, wrongCommandLine = 2;
    const struct
    {
        std::vector<std::string> arguments;
        int status;
        std::string text;
    } refusals[] = {
        {{"--size", "2000x467"}, wrongCommandLine, "the editor is 300 to 1499 pixels wide, not 2000"},
        {{"--colour", "red"}, wrongCommandLine, "unknown option --colour"},
        {{"missing.wav"}, failed, "input missing.wav does not exist"},
        {{"--screenshot", "taken.png"}, failed, "taken.png already exists; add --force to replace it"},
        // An input is never written over, even with --force.
        {{"--force", "--screenshot", "loop.wav", "loop.wav"}, failed, "loop.wav is the input file"},
    };
    for (const auto& refusal : refusals)
        expectFailure(standalone(refusal.arguments), refusal.status, refusal.text);
    expectFailure(run({"--plugin", "nothing.so"}), failed, "cannot load nothing.so");
    EXPECT_EQ(contents(), before);
}

TEST_F(KelvaneStandalone, WithoutADisplayItSaysSo)
{
    const Run result = run({"--plugin", KELVANE_PLUGIN, "--screenshot", "shot.png"}, {"DISPLAY="});
    expectFailure(result, 1, "cannot open the X display");
    EXPECT_TRUE(contents().empty());
}
