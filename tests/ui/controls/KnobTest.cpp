#include "ui/controls/Knob.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
using namespace PointerKind;

struct CountingListener : Slider::Listener
{
    void dragStarted(Slider*) override { ++starts; }
    void valueChanged(Slider*) override { ++changes; }
    void dragEnded(Slider*) override { ++ends; }
    int starts = 0;
    int changes = 0;
    int ends = 0;
};

// A 40 x 40 knob at (10, 10) at value 0.2, range 0 to 1, with a counting listener.
struct KnobHarness : TreeHarness
{
    KnobHarness() : TreeHarness(100, 100)
    {
        knob = new Knob();
        knob->setBounds(Rectangle(10, 10, 40, 40), false);
        root->addAndMakeVisible(knob);
        knob->setValue(0.2, false);
        knob->addListener(&listener);
        settle();
    }

    // Presses at (30, y) and drags to each of the given heights.
    void dragFrom(int y, std::initializer_list<int> heights)
    {
        send(move, Point(30, y));
        send(press, Point(30, y), 1);
        for (int height : heights)
            send(move, Point(30, height));
    }

    Knob* knob;
    CountingListener listener;
};
}

TEST(KnobTest, DraggingUpOneHundredPixelsSpansTheWholeRange)
{
    KnobHarness tree;
    tree.dragFrom(30, {20});
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.2 + 0.1);
    tree.send(move, Point(30, 40));
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.2 - 0.1);
    EXPECT_EQ(tree.listener.changes, 2);
    EXPECT_TRUE(tree.container.isMouseLockRequested());
}

TEST(KnobTest, ValueAtTheMaximumStaysThereAndNotifiesNobody)
{
    KnobHarness tree;
    tree.dragFrom(30, {-70});
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 1.0);
    const int changes = tree.listener.changes;
    tree.send(move, Point(30, -90));
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 1.0);
    EXPECT_EQ(tree.listener.changes, changes);
}

TEST(KnobTest, ShiftReAnchorsTheDragWithoutAJump)
{
    KnobHarness tree;
    tree.dragFrom(30, {20});
    const double before = tree.knob->getValue();
    tree.container.keyDown(KeyEvent::shift, 0);
    tree.send(move, Point(30, 10));
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), before);
    tree.send(move, Point(30, 0));
    EXPECT_NEAR(tree.knob->getValue(), before + 0.01, 1e-12);
    tree.container.keyUp(KeyEvent::shift, 0);
    tree.send(move, Point(30, -10));
    EXPECT_NEAR(tree.knob->getValue(), before + 0.01, 1e-12);
    tree.send(move, Point(30, -20));
    EXPECT_NEAR(tree.knob->getValue(), before + 0.01 + 0.1, 1e-12);
}

TEST(KnobTest, DragStartsAndEndsWithoutTellingTheListener)
{
    KnobHarness tree;
    tree.dragFrom(30, {25});
    tree.send(release, Point(30, 25), 1);
    EXPECT_EQ(tree.listener.starts, 0);
    EXPECT_EQ(tree.listener.ends, 0);
}

TEST(KnobTest, SilentDragChangesTheValueQuietly)
{
    KnobHarness tree;
    tree.knob->setSilentDrag(true);
    tree.dragFrom(30, {25, 20});
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.3);
    EXPECT_EQ(tree.listener.changes, 0);
}

TEST(KnobTest, WheelStepsByTheWheelStepWhateverTheDelta)
{
    KnobHarness tree;
    tree.send(move, Point(30, 30));
    tree.send(wheel, Point(30, 30), 0, 0, 3.0f);
    EXPECT_NEAR(tree.knob->getValue(), 0.201, 1e-9);
    tree.send(wheel, Point(30, 30), 0, 0, -0.1f);
    tree.send(wheel, Point(30, 30), 0, 0, -0.1f);
    EXPECT_NEAR(tree.knob->getValue(), 0.199, 1e-9);
    tree.container.keyDown(KeyEvent::shift, 0);
    tree.send(wheel, Point(30, 30), 0, 0, 1.0f);
    tree.container.keyUp(KeyEvent::shift, 0);
    EXPECT_NEAR(tree.knob->getValue(), 0.1991, 1e-9);
    EXPECT_EQ(tree.listener.changes, 4);
}

TEST(KnobTest, DoubleClickResetsToTheDefault)
{
    KnobHarness tree;
    tree.knob->setDefaultValue(0.5);
    tree.click(Point(30, 30));
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.2);
    tree.send(press, Point(30, 30), 1, 2);
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.5);
}

TEST(KnobTest, ControlClickResetsOnlyInItsResetMode)
{
    KnobHarness tree;
    tree.knob->setDefaultValue(0.5);
    tree.container.keyDown(KeyEvent::control, 0);
    tree.click(Point(30, 30));
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.2);
    tree.knob->setResetMode(Knob::resetOnDoubleClick | Knob::resetOnControlClick);
    tree.click(Point(30, 30));
    tree.container.keyUp(KeyEvent::control, 0);
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.5);
}

TEST(KnobTest, ValueReachesTheParent)
{
    KnobHarness tree;
    tree.knob->setValue(0.7, true);
    EXPECT_EQ(tree.log, (Probe::Log{"root.childValueChanged ?"}));
    tree.log.clear();
    tree.knob->setValue(0.7, true);
    tree.knob->setValue(0.8, false);
    EXPECT_TRUE(tree.log.empty());
}

TEST(KnobTest, ShowsStepsWithoutSnappingTheValue)
{
    EXPECT_DOUBLE_EQ(Knob::snapProportion(0.3, 3), 0.5);
    EXPECT_DOUBLE_EQ(Knob::snapProportion(0.2, 3), 0.0);
    EXPECT_DOUBLE_EQ(Knob::snapProportion(0.2, 0), 0.2);
    EXPECT_DOUBLE_EQ(Knob::snapProportion(0.7, 1), 0.0);
    KnobHarness tree;
    // Five frames of one line each, frame f opaque blue 40 * (f + 1). Unsnapped, 0.3 shows frame 1;
    // three steps show 0.5, frame 2.
    Image strip(4, 5, true);
    for (int frame = 0; frame < 5; ++frame)
        for (int x = 0; x < 4; ++x)
        {
            uint8_t* pixel = strip.getPixelPointer(x, frame);
            pixel[0] = static_cast<uint8_t>(40 * (frame + 1));
            pixel[3] = 255;
        }
    tree.knob->setImage(strip, 5);
    tree.knob->setSteps(3);
    tree.knob->setValue(0.3, false);
    tree.container.invalidateAll();
    tree.paint();
    EXPECT_EQ(tree.picture.getPixelPointer(10, 10)[0], 120);
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.3);
    EXPECT_FLOAT_EQ(tree.knob->getFramePosition(), 0.3f);
}

TEST(KnobTest, OneStepAndAnEmptyRangePaintWithoutFailing)
{
    KnobHarness tree;
    tree.knob->setSteps(1);
    tree.container.invalidateAll();
    EXPECT_TRUE(tree.paint());
    tree.knob->setRange(0.5, 0.5, false);
    EXPECT_DOUBLE_EQ(tree.knob->getValue(), 0.5);
    tree.container.invalidateAll();
    EXPECT_TRUE(tree.paint());
}
