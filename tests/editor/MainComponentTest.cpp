// MainComponent: its children at the picture's coordinates, the meter law, the controls' values
// both ways, the frame update, and the resize drag.

#include "EditorTestSupport.h"

#include "editor/DriveLed.h"
#include "editor/LevelMeter.h"
#include "editor/MultiStateButton.h"
#include "plugin/AudioBus.h"
#include "plugin/KLParameters.h"
#include "foundation/memory/MemoryStream.h"
#include "ui/controls/Knob.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace q1framework;

namespace
{
// What the editor's listeners hear, as text.
struct HostLog : AudioPluginEditor::Listener
{
    void sizeChanged(const Point& size) override
    {
        log.push_back("size " + std::to_string(size.x) + "x" + std::to_string(size.y));
    }
    void gestureBegan(AudioPluginEditor*, int index) override { log.push_back("begin " + std::to_string(index)); }
    void valueChanged(float value, AudioPluginEditor*, int index) override
    {
        log.push_back("value " + std::to_string(index));
        lastValue = value;
    }
    void gestureEnded(AudioPluginEditor*, int index) override { log.push_back("end " + std::to_string(index)); }

    std::vector<std::string> log;
    float lastValue = -1.0f;
};

// One block of a steady level on both channels, through the plug-in's buses, prepared for
// 44.1 kHz so that the meters fall by only 0.25 a second.
void processLevel(KLAudioPlugin& plugin, float level, int frames = 256)
{
    plugin.prepare(frames, true, 44100.0);
    plugin.releaseChannelBuffers();
    std::vector<float> left(static_cast<size_t>(frames), level), right = left;
    float* channels[2] = {left.data(), right.data()};
    plugin.getAudioInput(0).setChannelPointers(channels, 2);
    plugin.getAudioOutput(0).setChannelPointers(channels, 2);
    TimeInfo timeInfo;
    plugin.process(timeInfo, frames);
}
}  // namespace

TEST(MainComponent, TenChildrenStandAtThePicturesCoordinatesInTheirOrder)
{
    EditorWindow editor;
    MainComponent& main = editor.main();
    EXPECT_EQ(main.getBounds(), Rectangle(0, 0, 1500, 350));
    EXPECT_EQ(main.getComponentId(), MainComponent::ownTag);
    const struct
    {
        Rectangle bounds;
        int64_t tag;
    } table[] = {{{510, 128, 127, 129}, 0}, {{645, 110, 101, 106}, 6}, {{755, 127, 123, 131}, 1},
                 {{891, 110, 96, 105}, 3},  {{897, 228, 84, 57}, 2},   {{177, 56, 272, 131}, -1},
                 {{1055, 56, 272, 131}, -1}, {{673, 228, 43, 40}, -1}, {{519, 260, 110, 34}, 4},
                 {{767, 261, 107, 31}, 5}};
    ASSERT_EQ(main.getNumChildren(), 10);
    for (int index = 0; index < 10; ++index)
    {
        EXPECT_EQ(main.getChild(index)->getBounds(), table[index].bounds) << index;
        EXPECT_EQ(main.getChild(index)->getComponentId(), table[index].tag) << index;
    }
}

TEST(MainComponent, KnobsTakeTheirPicturesAndTheirSettings)
{
    EditorWindow editor;
    const Knob* attack = editor.main().getAttackKnob();
    EXPECT_EQ(attack->getFrameCount(), 101);
    EXPECT_EQ(attack->getFrameHeight(), 129);
    EXPECT_EQ(attack->getSensitivity(), 0.0025);
    EXPECT_EQ(attack->getDefaultValue(), 0.5);
    EXPECT_EQ(static_cast<Knob*>(editor.main().getControl(KLParameters::drive))->getDefaultValue(), 0.0);
}

TEST(MainComponent, LevelToPositionTakesTheTablesRowsAndInterpolatesBetweenThem)
{
    const float rows[][2] = {{1.412f, 1.0f}, {1.0f, 0.66f}, {0.707f, 0.39f}, {0.5f, 0.22f}, {0.25f, 0.07f}, {0.1f, 0.0f}};
    for (const auto& row : rows)
        EXPECT_NEAR(MainComponent::levelToPosition(row[0]), row[1], 1e-6) << row[0];
    // Halfway between 0.5 and 0.707 lies halfway between 0.22 and 0.39.
    EXPECT_NEAR(MainComponent::levelToPosition(0.6035f), 0.305f, 1e-5);
    EXPECT_EQ(MainComponent::levelToPosition(1.5f), 1.0f);
    EXPECT_EQ(MainComponent::levelToPosition(0.05f), 0.0f);
    EXPECT_EQ(MainComponent::levelToPosition(0.0f), 0.0f);
}

TEST(MainComponent, ControlsShowThePluginsValuesWhenTheEditorOpens)
{
    EditorServices services;
    KLAudioPlugin plugin;
    plugin.setParameter(0.8f, KLParameters::attack);
    plugin.setParameter(1.0f, KLParameters::bypass);
    plugin.setParameter(0.1f, KLParameters::releaseTime);
    std::unique_ptr<AudioPluginEditor> owner(plugin.createEditor());
    MainComponent& main = static_cast<KLAudioPluginEditor&>(*owner).getMainComponent();
    EXPECT_FLOAT_EQ(static_cast<float>(main.getControl(KLParameters::attack)->getValue()), 0.8f);
    EXPECT_EQ(main.getControl(KLParameters::bypass)->getValue(), 1.0);
    EXPECT_EQ(static_cast<MultiStateButton*>(main.getControl(KLParameters::releaseTime))->getFrameIndex(), 0);
}

TEST(MainComponent, AKnobDragBeginsSendsValuesAndEndsAGesture)
{
    EditorWindow editor;
    HostLog host;
    editor.editor->addListener(&host);
    const Point knob = editor.toWindow(570, 190);
    editor.drag(knob, knob - Point(0, 20));
    EXPECT_EQ(host.log, (std::vector<std::string>{"begin 0", "value 0", "end 0"}));
    // 20 window pixels are 40 picture pixels at half size: 40 * 0.0025 = 0.1 up from 0.5.
    EXPECT_FLOAT_EQ(host.lastValue, 0.6f);
}

TEST(MainComponent, HostValuesWaitWhileTheirControlIsPressedAndShowAfterTheRelease)
{
    EditorWindow editor;
    const Point knob = editor.toWindow(570, 190);
    editor.mouse(2, knob);
    editor.mouse(1, knob, 1);
    editor.plugin.setParameter(0.9f, KLParameters::attack);
    editor.frame();
    EXPECT_EQ(editor.main().getAttackKnob()->getValue(), 0.5);
    editor.mouse(3, knob, 1);
    editor.frame();
    EXPECT_FLOAT_EQ(static_cast<float>(editor.main().getAttackKnob()->getValue()), 0.9f);
}

TEST(MainComponent, AfterAChunkIsLoadedEveryControlShowsItsNewValue)
{
    EditorWindow editor;
    KLAudioPlugin source;
    const float values[KLParameters::count] = {0.1f, 0.2f, 1.0f, 0.4f, 0.9f, 0.5f, 0.7f};
    for (int index = 0; index < KLParameters::count; ++index)
        source.setParameter(values[index], index);
    MemoryStream chunk;
    source.getState(chunk);
    chunk.setPosition(0);
    editor.plugin.setState(chunk);
    editor.frame();
    for (int index = 0; index < KLParameters::count; ++index)
        EXPECT_FLOAT_EQ(static_cast<float>(editor.main().getControl(index)->getValue()), values[index]) << index;
}

TEST(MainComponent, MetersFollowThePluginsPeaksAndTheLedTheSquareOfTheDrivePeak)
{
    EditorWindow editor;
    editor.plugin.setParameter(1.0f, KLParameters::drive);
    processLevel(editor.plugin, 0.5f);
    // The same block through a twin gives the drive peak that the frame takes.
    KLAudioPlugin twin;
    twin.setParameter(1.0f, KLParameters::drive);
    processLevel(twin, 0.5f);
    const float drive = twin.takeDriveLevel();
    ASSERT_GT(drive, 0.0f);
    editor.frame();
    EXPECT_FLOAT_EQ(editor.main().getInputMeter()->getLevel(),
                    MainComponent::levelToPosition(editor.plugin.getInputLevel()));
    EXPECT_FLOAT_EQ(editor.main().getOutputMeter()->getLevel(),
                    MainComponent::levelToPosition(editor.plugin.getOutputLevel()));
    EXPECT_GT(editor.main().getInputMeter()->getLevel(), 0.2f);
    EXPECT_FLOAT_EQ(static_cast<float>(editor.main().getDriveLed()->getValue()), drive * drive);
}

TEST(MainComponent, ADragInTheResizeZoneStopsAt300AndAt1499AndKeepsTheAspect)
{
    EditorWindow editor;
    HostLog host;
    editor.editor->addListener(&host);
    const Point zone = editor.toWindow(1400, 300);
    editor.mouse(2, zone);
    EXPECT_TRUE(editor.main().isInResizeZone());
    editor.mouse(1, zone, 1);
    editor.mouse(2, zone + Point(100, 0));
    EXPECT_EQ(editor.editor->getSize(), Point(850, 198));
    editor.mouse(2, zone - Point(2000, 0));
    EXPECT_EQ(editor.editor->getSize(), Point(300, 70));
    editor.mouse(2, zone + Point(5000, 0));
    editor.mouse(3, zone + Point(5000, 0), 1);
    EXPECT_EQ(editor.editor->getSize(), Point(1499, 349));
    EXPECT_EQ(Point(editor.plugin.getEditorWidth(), editor.plugin.getEditorHeight()), Point(1499, 349));
    EXPECT_EQ(host.log, (std::vector<std::string>{"size 850x198", "size 300x70", "size 1499x349"}));
}

TEST(MainComponent, ADragThatStartsLeftOfTheZoneDoesNotResize)
{
    EditorWindow editor;
    const Point left = editor.toWindow(1300, 300);
    editor.drag(left, left + Point(200, 0));
    EXPECT_FALSE(editor.main().isInResizeZone());
    EXPECT_EQ(editor.editor->getSize(), Point(750, 175));
}

TEST(MainComponent, TheResizeZoneShowsTheLeftRightCursor)
{
    EditorWindow editor;
    editor.mouse(2, editor.toWindow(1400, 300));
    EXPECT_EQ(editor.peer->getCursor(), Mouse::resizeLeftRightCursor);
    editor.mouse(2, editor.toWindow(1200, 300));
    EXPECT_EQ(editor.peer->getCursor(), Mouse::arrowCursor);
}
