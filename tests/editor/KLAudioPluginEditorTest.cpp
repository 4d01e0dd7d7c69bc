// KLAudioPluginEditor: made at the plug-in's editor size, its container following its size, and
// its pictures on the screen of a window without GL: the background, and the needles and the
// lamp drawn over it in software.

#include "EditorTestSupport.h"

#include "editor/LevelMeter.h"
#include "plugin/AudioBus.h"
#include "ui/layout/AdapterComponent.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
// One block of a steady level through the plug-in, prepared for 44.1 kHz.
void processLevel(KLAudioPlugin& plugin, float level)
{
    plugin.prepare(64, true, 44100.0);
    plugin.releaseChannelBuffers();
    std::vector<float> left(64, level), right = left;
    float* channels[2] = {left.data(), right.data()};
    plugin.getAudioInput(0).setChannelPointers(channels, 2);
    plugin.getAudioOutput(0).setChannelPointers(channels, 2);
    TimeInfo timeInfo;
    plugin.process(timeInfo, 64);
}

// The sizes the editor asked its listeners for.
struct SizeLog : AudioPluginEditor::Listener
{
    void sizeChanged(const Point& size) override { sizes.push_back(size); }
    std::vector<Point> sizes;
};

// Red, green, blue of the screen's pixel.
std::vector<int> shownAt(const EditorWindow& editor, const Point& position)
{
    const uint8_t* pixel = editor.peer->getScreen().getPixelPointer(position.x, position.y);
    return {pixel[2], pixel[1], pixel[0]};
}
}  // namespace

TEST(KLAudioPluginEditor, OpensAtTheSizeKeptInThePlugin)
{
    EditorWindow editor(1100, 257);
    EXPECT_EQ(editor.editor->getSize(), Point(1100, 257));
    EXPECT_EQ(editor.window->getClientSize(), Point(1100, 257));
    EXPECT_EQ(editor.editor->getContainer().getBounds(), Rectangle(0, 0, 1100, 257));
    EXPECT_EQ(editor.editor->getContainer().getInnerComponent(), &editor.main());
}

TEST(KLAudioPluginEditor, TheContainerFollowsTheEditorsSize)
{
    EditorWindow editor;
    editor.editor->resize(900, 210, false);
    EXPECT_EQ(editor.editor->getContainer().getBounds(), Rectangle(0, 0, 900, 210));
    double innerPerOuter = 0.0;
    editor.editor->getContainer().getScaleToInner(&innerPerOuter, nullptr);
    EXPECT_DOUBLE_EQ(innerPerOuter, 1500.0 / 900.0);
}

TEST(KLAudioPluginEditor, AnOfferedSizeIsTakenWithinTheLimitsAtThePicturesAspectAndKeptInThePlugin)
{
    EditorWindow editor;
    SizeLog log;
    editor.editor->addListener(&log);
    editor.editor->offerSize(Point(1100, 400));
    EXPECT_EQ(editor.editor->getSize(), Point(1100, 256));
    EXPECT_EQ(Point(editor.plugin.getEditorWidth(), editor.plugin.getEditorHeight()), Point(1100, 256));
    editor.editor->offerSize(Point(5000, 10));
    EXPECT_EQ(editor.editor->getSize(), Point(1499, 349));
    EXPECT_EQ(log.sizes, (std::vector<Point>{Point(1100, 256), Point(1499, 349)}));
}

TEST(KLAudioPluginEditor, AnOfferOfItsOwnWidthOrOfNoAreaChangesNothing)
{
    EditorWindow editor;
    SizeLog log;
    editor.editor->addListener(&log);
    editor.editor->offerSize(Point(750, 300));
    editor.editor->offerSize(Point(0, 0));
    editor.editor->offerSize(Point(900, -1));
    EXPECT_EQ(editor.editor->getSize(), Point(750, 175));
    EXPECT_TRUE(log.sizes.empty());
}

TEST(KLAudioPluginEditor, AMovingNeedleIsDrawnOverThePictureAndLeavesNoTrace)
{
    EditorWindow editor(1499, 349);
    // The input meter's centre column, a little below the face's top.
    const Point upright = editor.toWindow(313, 130);
    const std::vector<int> face = shownAt(editor, upright);
    // A level of 0.8264 puts the needle upright (position 0.5).
    processLevel(editor.plugin, 0.8264f);
    editor.frame();
    EXPECT_NEAR(editor.main().getInputMeter()->getLevel(), 0.5f, 0.001f);
    const std::vector<int> needle = shownAt(editor, upright);
    EXPECT_LT(needle[0] + needle[1] + needle[2], 150);
    EXPECT_GT(face[0] + face[1] + face[2], 300);
    // Full scale leans it far to the right.
    processLevel(editor.plugin, 1.5f);
    editor.frame();
    EXPECT_EQ(shownAt(editor, upright), face);
}
