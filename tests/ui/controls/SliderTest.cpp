#include "ui/controls/Slider.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace q1framework;

namespace
{
using namespace PointerKind;

struct LoggingSliderListener : Slider::Listener
{
    explicit LoggingSliderListener(Probe::Log& log) : log(log) {}
    void dragStarted(Slider*) override { log.push_back("started"); }
    void valueChanged(Slider* slider) override { log.push_back("value " + std::to_string(slider->getValue())); }
    void dragEnded(Slider*) override { log.push_back("ended"); }
    Probe::Log& log;
};

// A slider at (0, 0) of the given size, value 0, heard by a logging listener.
struct SliderHarness : TreeHarness
{
    SliderHarness(int width, int height) : TreeHarness(200, 200), listener(log)
    {
        slider = new Slider();
        slider->setBounds(Rectangle(0, 0, width, height), false);
        root->addAndMakeVisible(slider);
        slider->addListener(&listener);
        settle();
    }

    Slider* slider;
    LoggingSliderListener listener;
};
}

TEST(SliderTest, PressOffTheThumbJumpsAlongX)
{
    SliderHarness tree(110, 10);
    tree.send(move, Point(60, 5));
    tree.send(press, Point(60, 5), 1);
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.55);
    EXPECT_EQ(tree.log, (Probe::Log{"value 0.550000", "root.childValueChanged ?", "started"}));
}

TEST(SliderTest, DragAddsTheTravelAsAShareOfTheWidth)
{
    SliderHarness tree(110, 10);
    tree.send(move, Point(5, 5));
    tree.send(press, Point(5, 5), 1);
    tree.send(move, Point(38, 5));
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.3);
    EXPECT_TRUE(tree.container.isMouseLockRequested());
}

TEST(SliderTest, VerticalDragUpwardsRaisesTheValueAsAShareOfTheHeight)
{
    SliderHarness tree(10, 110);
    tree.send(move, Point(5, 105));
    tree.send(press, Point(5, 105), 1);
    tree.send(move, Point(5, 50));
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.5);
}

TEST(SliderTest, SilentDragTellsTheValueOnceAtTheRelease)
{
    SliderHarness tree(110, 10);
    tree.slider->setSilentDrag(true);
    tree.send(move, Point(5, 5));
    tree.send(press, Point(5, 5), 1);
    tree.send(move, Point(27, 5));
    tree.send(move, Point(38, 5));
    tree.send(release, Point(38, 5), 1);
    EXPECT_EQ(tree.log, (Probe::Log{"started", "value 0.300000", "ended"}));
}

TEST(SliderTest, CursorIsTheHandOverTheThumbOnly)
{
    SliderHarness tree(110, 10);
    tree.send(move, Point(5, 5));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::pointingHandCursor);
    tree.send(move, Point(50, 5));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::arrowCursor);
}

TEST(SliderTest, ControlPressResetsToTheDefault)
{
    SliderHarness tree(110, 10);
    tree.slider->setDefaultValue(0.25);
    tree.slider->setValue(0.9, false);
    tree.container.keyDown(KeyEvent::control, 0);
    tree.click(Point(80, 5));
    tree.container.keyUp(KeyEvent::control, 0);
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.25);
}

TEST(SliderTest, ControlKeyDuringAPressResets)
{
    SliderHarness tree(110, 10);
    tree.slider->setDefaultValue(0.25);
    tree.send(move, Point(5, 5));
    tree.send(press, Point(5, 5), 1);
    tree.slider->grabFocus();
    EXPECT_TRUE(tree.container.keyDown(KeyEvent::control, 0));
    tree.container.keyUp(KeyEvent::control, 0);
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.25);
}

TEST(SliderTest, ValueIsLimitedToTheRangeAndMovesTheFramePosition)
{
    SliderHarness tree(110, 10);
    tree.slider->setRange(-1.0, 3.0, false);
    tree.slider->setValue(5.0, false);
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 3.0);
    EXPECT_FLOAT_EQ(tree.slider->getFramePosition(), 1.0f);
    tree.slider->setValue(0.0, false);
    EXPECT_FLOAT_EQ(tree.slider->getFramePosition(), 0.25f);
    tree.slider->setValue(std::nan(""), false);
    EXPECT_DOUBLE_EQ(tree.slider->getValue(), 0.0);
}

TEST(SliderTest, NewRangeMovesThePositionOfAnUnchangedValue)
{
    SliderHarness tree(110, 10);
    tree.slider->setValue(0.5, false);
    tree.slider->setRange(0.0, 2.0, true);
    EXPECT_FLOAT_EQ(tree.slider->getFramePosition(), 0.25f);
    EXPECT_TRUE(tree.log.empty());
}
