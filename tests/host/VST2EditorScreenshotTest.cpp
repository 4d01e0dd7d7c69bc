// The editor as a host shows it, held to golden pictures: through the X image put, on a server
// without GL, its pixels are compared exactly (the software renderer's, put as they are); through
// GL, which another Mesa may filter or blend a little differently, the same picture is only
// required to be shown closely.
//
// Golden pictures: tests/host/golden/editor/<TestName>.png; Q1_UPDATE_GOLDENS=1 writes them anew
// (see tests/render/README.md).

#include "EditorHost.h"

#include "GoldenImage.h"
#include "support/SineBlock.h"

#include "editor/LevelMeter.h"
#include "editor/MainComponent.h"
#include "media/image/Image.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLParameters.h"

#include <cmath>
#include <cstdlib>

using namespace q1framework;
using Pattern = EditorHost::Pattern;

namespace
{
// The scene of the pictures: the editor at width x height with settings away from their
// defaults, after one block of a loud 110 Hz sine: the needles up, the drive lamp glowing.
Image editorScene(EditorHost& host, int width, int height)
{
    host.dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    host.dispatch(effSetBlockSize, 0, 512);
    host.getPlugin().setEditorSize(width, height);
    const float settings[KLParameters::count] = {0.75f, 0.35f, 0.0f, 0.6f, 0.5f, 0.9f, 0.8f};
    for (int index = 0; index < KLParameters::count; ++index)
        host.getEffect()->setParameter(host.getEffect(), index, settings[index]);
    EXPECT_TRUE(host.open(Pattern::carlaLike));
    host.idle(3);
    std::vector<float> left = sineBlock(0.9f, 512), right = left;
    host.process(left, right);
    // Exactly one frame after the block: the frame takes the drive peak, and a later one would
    // put the lamp out again.
    for (int attempt = 0; attempt < 50 && host.getMainComponent().getInputMeter()->getLevel() == 0.0f; ++attempt)
        host.idle();
    return host.screenshot();
}

// Whether two pictures of the same size agree closely: no channel of any pixel further apart
// than 48, and 99 % of the pixels within 6.
::testing::AssertionResult showsClosely(const Image& actual, const Image& expected)
{
    if (actual.getSize() != expected.getSize())
        return ::testing::AssertionFailure() << "sizes differ";
    int far = 0, largest = 0;
    for (int y = 0; y < actual.getHeight(); ++y)
        for (int x = 0; x < actual.getWidth(); ++x)
        {
            int difference = 0;
            for (int channel = 0; channel < 3; ++channel)
                difference = std::max(difference, std::abs(actual.getPixelPointer(x, y)[channel]
                                                            - expected.getPixelPointer(x, y)[channel]));
            largest = std::max(largest, difference);
            far += difference > 6 ? 1 : 0;
        }
    const int pixels = actual.getWidth() * actual.getHeight();
    if (largest > 48 || far * 100 > pixels)
        return ::testing::AssertionFailure() << far << " of " << pixels << " pixels differ by more than 6, "
                                             << "the largest difference is " << largest;
    return ::testing::AssertionSuccess();
}

Image goldenPicture(const char* name)
{
    return Image::loadFromFile(String(GOLDEN_FOLDER "/editor/") + name);
}
}  // namespace

TEST(VST2EditorScreenshot, At750x175ThroughTheImagePut)
{
    DisplayWithoutGL server;
    EditorHost host;
    EXPECT_TRUE(GoldenImage::matchesGolden(editorScene(host, 750, 175), "editor"));
}

TEST(VST2EditorScreenshot, At1100x257ThroughTheImagePut)
{
    DisplayWithoutGL server;
    EditorHost host;
    EXPECT_TRUE(GoldenImage::matchesGolden(editorScene(host, 1100, 257), "editor"));
}

TEST(VST2EditorScreenshot, At1100x257ThroughGLLikeTheImagePut)
{
    EditorHost host;
    const Image shown = editorScene(host, 1100, 257);
    const Image expected = goldenPicture("At1100x257ThroughTheImagePut.png");
    ASSERT_FALSE(expected.isNull());
    EXPECT_TRUE(showsClosely(shown, expected));
}
