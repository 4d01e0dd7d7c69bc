// The LV2 user interface shows the same pixels as the VST 2.4 editor: the scene of the VST
// editor's golden pictures (tests/host/VST2EditorScreenshotTest.cpp), set through the control
// ports and shown through the X image put, compared exactly with those pictures
// (tests/host/golden/editor/), with the meters from the plug-in (instance access) and from the
// meter ports.

#include "LV2UIHost.h"

#include "GoldenImage.h"
#include "support/SineBlock.h"

#include "editor/LevelMeter.h"
#include "editor/MainComponent.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLParameters.h"

using namespace q1framework;

namespace
{
// The VST editor's scene: the editor at width x height with settings away from their defaults,
// set on the control ports in their physical units and told to the interface, after one block
// of a loud 110 Hz sine: the needles up, the drive lamp glowing.
Image editorScene(LV2UIHost& host, int width, int height)
{
    host.getPlugin().setEditorSize(width, height);
    const float settings[KLParameters::count] = {0.75f, 0.35f, 0.0f, 0.6f, 0.5f, 0.9f, 0.8f};
    for (int index = 0; index < KLParameters::count; ++index)
        host.port(host.getLayout().getControlPort(index)) = KLParameters::toPhysical(settings[index], index);
    EXPECT_TRUE(host.open());
    host.notifyControls();
    host.idle(3);
    std::vector<float> left = sineBlock(0.9f, 512), right = left;
    host.process(left, right);
    host.notifyMeters();
    // Exactly one frame after the block, as the VST editor's pictures: the frame takes the drive
    // peak, and a later one would put the lamp out again.
    for (int attempt = 0; attempt < 50 && host.getMainComponent().getInputMeter()->getLevel() == 0.0f; ++attempt)
        host.idle();
    return host.screenshot();
}
}  // namespace

TEST(LV2UIScreenshot, At750x175ThroughTheImagePutAsTheVSTEditor)
{
    DisplayWithoutGL server;
    LV2UIHost host;
    EXPECT_TRUE(GoldenImage::matchesGoldenOf(editorScene(host, 750, 175), "editor", "At750x175ThroughTheImagePut"));
}

TEST(LV2UIScreenshot, At1100x257ThroughTheImagePutAsTheVSTEditor)
{
    DisplayWithoutGL server;
    LV2UIHost host;
    EXPECT_TRUE(GoldenImage::matchesGoldenOf(editorScene(host, 1100, 257), "editor", "At1100x257ThroughTheImagePut"));
}

TEST(LV2UIScreenshot, WithoutInstanceAccessMetersFromThePortsAsTheVSTEditor)
{
    DisplayWithoutGL server;
    LV2UIHost::Features features;
    features.instanceAccess = false;
    LV2UIHost host(features);
    EXPECT_TRUE(GoldenImage::matchesGoldenOf(editorScene(host, 750, 175), "editor", "At750x175ThroughTheImagePut"));
}
