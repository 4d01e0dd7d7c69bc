// MultiStateButton: a press sends where it was made, and the frame shown is the state the value
// is in by the parameter's rule.

#include "editor/MultiStateButton.h"

#include "plugin/KLParameters.h"
#include "ui/container/ComponentsContainer.h"

#include <gtest/gtest.h>

#include <vector>

using namespace q1framework;

namespace
{
// A parent that records its selector's values, in a container, with a 110 x 34 selector of three
// frames at (10, 10).
struct SelectorHarness
{
    class Parent : public Component
    {
    public:
        void childValueChanged(Component* child) override { values.push_back(child->getValue()); }
        std::vector<double> values;
    };

    SelectorHarness() : container(nullptr)
    {
        parent = new Parent();
        container.setRootComponent(parent, true, true);
        container.setSize(Point(200, 60));
        selector = new MultiStateButton();
        selector->setBounds(Rectangle(10, 10, 110, 34), false);
        selector->setImage(Image(110, 3 * 34, true), 3);
        selector->setNumStates(3);
        selector->setStateRule([](double value) { return KLParameters::getTimeState(static_cast<float>(value)); });
        parent->addAndMakeVisible(selector);
    }

    void send(int kind, int x) { container.sendMouseEvent(0, kind, Point(10 + x, 20), kind == 2 ? 0 : 1, 1, 0, 0); }

    ComponentsContainer container;
    Parent* parent;
    MultiStateButton* selector;
};
}  // namespace

TEST(MultiStateButton, APressSendsItsPlaceAcrossTheButtonAsTheValue)
{
    SelectorHarness harness;
    harness.send(ComponentsContainer::moveEvent, 0);
    harness.send(ComponentsContainer::pressEvent, 0);
    harness.send(ComponentsContainer::moveEvent, 55);
    // A drag beyond the right end sends 1.0, and the same place twice sends nothing new.
    harness.send(ComponentsContainer::moveEvent, 300);
    harness.send(ComponentsContainer::moveEvent, 400);
    harness.send(ComponentsContainer::releaseEvent, 400);
    EXPECT_EQ(harness.parent->values, (std::vector<double>{0.5, 1.0}));
    EXPECT_EQ(harness.selector->getValue(), 1.0);
}

TEST(MultiStateButton, AClickAnywhereInAThirdShowsThatThirdsSetting)
{
    SelectorHarness harness;
    // 33 / 110 = 0.3 is "sharp" for the parameter, though a plain rounding of the value to the
    // nearest of three frames would show "mid".
    const int expected[][2] = {{0, 0}, {33, 0}, {36, 0}, {37, 1}, {55, 1}, {73, 1}, {74, 2}, {109, 2}};
    for (const auto& click : expected)
    {
        harness.send(ComponentsContainer::moveEvent, click[0]);
        harness.send(ComponentsContainer::pressEvent, click[0]);
        harness.send(ComponentsContainer::releaseEvent, click[0]);
        EXPECT_EQ(harness.selector->getFrameIndex(), click[1]) << "click at " << click[0];
        EXPECT_EQ(harness.selector->getFrameIndex(),
                  KLParameters::getTimeState(static_cast<float>(harness.selector->getValue())));
    }
}

TEST(MultiStateButton, AValueFromTheHostShowsItsSettingWithoutTellingTheParent)
{
    SelectorHarness harness;
    harness.selector->setValue(0.3331, false);
    EXPECT_EQ(harness.selector->getFrameIndex(), 1);
    harness.selector->setValue(0.6659, false);
    EXPECT_EQ(harness.selector->getFrameIndex(), 1);
    harness.selector->setValue(0.666, false);
    EXPECT_EQ(harness.selector->getFrameIndex(), 2);
    EXPECT_TRUE(harness.parent->values.empty());
}

TEST(MultiStateButton, WithoutARuleTheStatesShareTheRangeEvenly)
{
    MultiStateButton button;
    button.setImage(Image(10, 40, true), 4);
    EXPECT_EQ(button.getNumStates(), 4);
    button.setValue(0.24, false);
    EXPECT_EQ(button.getState(), 0);
    button.setValue(0.26, false);
    EXPECT_EQ(button.getState(), 1);
    button.setValue(1.0, false);
    EXPECT_EQ(button.getState(), 3);
    EXPECT_EQ(button.getFrameIndex(), 3);
}
