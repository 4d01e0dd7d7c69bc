#include "ui/controls/ToggleButton.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
struct LoggingToggleListener : ToggleButton::Listener
{
    explicit LoggingToggleListener(Log& log) : log(log) {}
    void toggleStateChanged(ToggleButton* button) override
    {
        log.push_back(std::string(button->getText().getCString()) + (button->isOn() ? " on" : " off"));
    }
    Log& log;
};

// Three toggles side by side, 20 x 20 from (0, 0), named "a", "b", "c", all heard by one listener.
struct ToggleHarness : TreeHarness
{
    ToggleHarness() : TreeHarness(100, 100), listener(log)
    {
        for (const char* name : {"a", "b", "c"})
        {
            auto* toggle = new ToggleButton(String(name));
            toggle->setBounds(Rectangle(static_cast<int>(toggles.size()) * 20, 0, 20, 20), false);
            root->addAndMakeVisible(toggle);
            toggle->addListener(&listener);
            toggles.push_back(toggle);
        }
        settle();
    }

    void clickToggle(size_t index) { click(Point(static_cast<int>(index) * 20 + 5, 5)); }

    LoggingToggleListener listener;
    std::vector<ToggleButton*> toggles;
};
}

TEST(ToggleButtonTest, PressFlipsItAndTellsTheListenersThenTheParent)
{
    ToggleHarness tree;
    tree.clickToggle(0);
    EXPECT_TRUE(tree.toggles[0]->isOn());
    EXPECT_FLOAT_EQ(tree.toggles[0]->getFramePosition(), 1.0f);
    tree.clickToggle(0);
    EXPECT_FALSE(tree.toggles[0]->isOn());
    EXPECT_EQ(tree.log, (Log{"a on", "root.childValueChanged ?", "a off", "root.childValueChanged ?"}));
}

TEST(ToggleButtonTest, SettingWithoutNotifyTellsNobody)
{
    ToggleHarness tree;
    tree.toggles[1]->setValue(0.5, false);
    EXPECT_TRUE(tree.toggles[1]->isOn());
    EXPECT_DOUBLE_EQ(tree.toggles[1]->getValue(), 1.0);
    tree.toggles[1]->setValue(0.49, false);
    EXPECT_FALSE(tree.toggles[1]->isOn());
    EXPECT_TRUE(tree.log.empty());
}

TEST(ToggleButtonTest, RadioGroupKeepsOneOnAndTurnsTheOldOneOffSilently)
{
    ToggleHarness tree;
    for (ToggleButton* toggle : tree.toggles)
        toggle->setRadioGroup(1);
    tree.toggles[2]->setRadioGroup(2);
    tree.toggles[2]->setOn(true, false);
    tree.clickToggle(0);
    tree.log.clear();
    tree.clickToggle(0);
    EXPECT_TRUE(tree.toggles[0]->isOn());
    EXPECT_TRUE(tree.log.empty());
    tree.clickToggle(1);
    EXPECT_FALSE(tree.toggles[0]->isOn());
    EXPECT_FLOAT_EQ(tree.toggles[0]->getFramePosition(), 0.0f);
    EXPECT_TRUE(tree.toggles[1]->isOn());
    EXPECT_TRUE(tree.toggles[2]->isOn());
    EXPECT_EQ(tree.log, (Log{"b on", "root.childValueChanged ?"}));
}

TEST(ToggleButtonTest, ListenerIsAddedOnce)
{
    ToggleHarness tree;
    tree.toggles[0]->addListener(&tree.listener);
    tree.toggles[0]->setOn(true, true);
    EXPECT_EQ(tree.log, (Log{"a on", "root.childValueChanged ?"}));
}

TEST(ToggleButtonTest, DisabledToggleIgnoresTheMouse)
{
    ToggleHarness tree;
    tree.toggles[0]->setEnabled(false, true);
    tree.clickToggle(0);
    EXPECT_FALSE(tree.toggles[0]->isOn());
}
