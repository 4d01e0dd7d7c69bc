#include "ui/controls/Button.h"

#include "support/TreeHarness.h"

#include "foundation/runtime/MessagePump.h"

#include <gtest/gtest.h>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
using namespace PointerKind;

struct LoggingButtonListener : Button::Listener
{
    LoggingButtonListener(Log& log, std::string name) : log(log), name(std::move(name)) {}
    void buttonPressed(Button*) override { log.push_back(name + ".pressed"); }
    void buttonClicked(Button* button) override
    {
        log.push_back(name + ".clicked");
        source = button;
    }
    void buttonReleased(Button*) override { log.push_back(name + ".released"); }
    Log& log;
    std::string name;
    Button* source = nullptr;
};

// A 40 x 20 button at (10, 10) with one listener, "listener".
struct ButtonHarness : TreeHarness
{
    ButtonHarness() : TreeHarness(100, 100), listener(log, "listener")
    {
        button = new Button("OK");
        button->setBounds(Rectangle(10, 10, 40, 20), false);
        root->addAndMakeVisible(button);
        button->addListener(&listener);
        settle();
    }

    Button* button;
    LoggingButtonListener listener;
};

void pumpMessages()
{
    MessagePump::getInstance()->pump();
}
}

TEST(ButtonTest, ClickTellsPressClickAndReleaseThenTheParent)
{
    ButtonHarness tree;
    tree.click(Point(20, 20));
    EXPECT_EQ(tree.log, (Log{"listener.pressed", "listener.clicked", "root.childValueChanged ?", "listener.released"}));
    EXPECT_EQ(tree.listener.source, tree.button);
    EXPECT_FALSE(tree.button->isDown());
}

TEST(ButtonTest, ReleaseOutsideFiresNothingButStillTellsTheRelease)
{
    ButtonHarness tree;
    tree.send(move, Point(20, 20));
    tree.send(press, Point(20, 20), 1);
    EXPECT_TRUE(tree.button->isDown());
    tree.send(move, Point(80, 80));
    tree.send(release, Point(80, 80), 1);
    EXPECT_EQ(tree.log, (Log{"listener.pressed", "listener.released", "root.enter"}));
}

TEST(ButtonTest, TriggerOnPressFiresOnTheWayDownOnly)
{
    ButtonHarness tree;
    tree.button->setTriggerOnPress(true);
    tree.click(Point(20, 20));
    EXPECT_EQ(tree.log, (Log{"listener.pressed", "listener.clicked", "listener.released"}));
}

TEST(ButtonTest, DisabledButtonIgnoresTheMouse)
{
    ButtonHarness tree;
    tree.button->setEnabled(false, true);
    tree.click(Point(20, 20));
    EXPECT_TRUE(tree.log.empty());
}

TEST(ButtonTest, ButtonDisabledDuringThePressStaysDown)
{
    ButtonHarness tree;
    tree.send(move, Point(20, 20));
    tree.send(press, Point(20, 20), 1);
    tree.button->setEnabled(false, true);
    tree.send(release, Point(20, 20), 1);
    EXPECT_TRUE(tree.button->isDown());
}

TEST(ButtonTest, AsynchronousClickArrivesThroughThePumpToTheListenersOfTheClick)
{
    ButtonHarness tree;
    LoggingButtonListener later(tree.log, "later");
    tree.button->setAsync(true);
    tree.click(Point(20, 20));
    EXPECT_EQ(tree.log, (Log{"listener.pressed", "root.childValueChanged ?", "listener.released"}));
    tree.button->removeListener(&tree.listener);
    tree.button->addListener(&later);
    tree.log.clear();
    pumpMessages();
    EXPECT_EQ(tree.log, (Log{"listener.clicked"}));
    EXPECT_EQ(tree.listener.source, tree.button);
}

TEST(ButtonTest, AsynchronousClickOfADeletedButtonIsDropped)
{
    ButtonHarness tree;
    tree.button->setAsync(true);
    tree.click(Point(20, 20));
    delete tree.button;
    tree.log.clear();
    pumpMessages();
    EXPECT_TRUE(tree.log.empty());
}

TEST(ButtonTest, ShowsThePointingHandAndRepaintsOnEnter)
{
    ButtonHarness tree;
    tree.send(move, Point(20, 20));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::pointingHandCursor);
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 10, 40, 20)}));
}
