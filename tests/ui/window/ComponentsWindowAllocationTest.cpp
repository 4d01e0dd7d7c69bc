// Once a window's tree is built and sized, its frames allocate nothing: the tick walk, the paint
// walks with their regions, the controls' drawing, the scaled blit and the put into the screen.
// A program of its own, since it counts the allocations of the whole process.

#include "AllocationCounter.h"

#include "native/null/NullWindowPeer.h"
#include "native/window/WindowFlags.h"
#include "render/graphics/SoftwareGraphics.h"
#include "ui/controls/Button.h"
#include "ui/controls/Knob.h"
#include "ui/controls/Slider.h"
#include "ui/controls/ToggleButton.h"
#include "ui/layout/AdapterComponent.h"
#include "ui/window/ComponentsWindow.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
class Panel : public Component
{
public:
    Panel() { setOpaque(true); }
    void paint(SoftwareGraphics& graphics) override
    {
        Colour grey(40, 40, 40, 255);
        graphics.fillAll(grey, false);
    }
};

// A 300 x 120 panel with a knob, a slider, a toggle and a button; the knob is returned.
Panel* makePanel(Knob*& knob)
{
    auto* panel = new Panel();
    panel->setBounds(Rectangle(0, 0, 300, 120), false);
    knob = new Knob();
    knob->setBounds(Rectangle(10, 10, 40, 40), false);
    panel->addAndMakeVisible(knob);
    auto* slider = new Slider();
    slider->setBounds(Rectangle(60, 20, 120, 16), false);
    panel->addAndMakeVisible(slider);
    auto* toggle = new ToggleButton(String("Mute"));
    toggle->setBounds(Rectangle(190, 16, 80, 20), false);
    panel->addAndMakeVisible(toggle);
    auto* button = new Button(String("Reset"));
    button->setBounds(Rectangle(10, 70, 100, 24), false);
    panel->addAndMakeVisible(button);
    return panel;
}

// Allocations of frames 2 to 21, each with the knob at a new value and the pointer moving over
// the button.
long countSteadyFrames(ComponentsWindow& window, Knob& knob)
{
    NullWindowPeer& peer = *NullWindowPeer::of(window);
    const auto frame = [&](int index) {
        knob.setValue((index % 10) / 10.0, true);
        peer.injectMouse(ComponentsContainer::moveEvent, Point(20 + index % 3, 80));
        Window::runFrame();
        peer.clearInvalidated();
    };
    frame(0);
    AllocationCounter::start();
    for (int index = 1; index <= 20; ++index)
        frame(index);
    return AllocationCounter::stop();
}
}

TEST(ComponentsWindowAllocation, CounterSeesAnAllocation)
{
    AllocationCounter::start();
    auto* component = new Component();
    const long counted = AllocationCounter::stop();
    delete component;
    EXPECT_GE(counted, 1);
}

TEST(ComponentsWindowAllocation, NormalFramesAfterTheFirstAllocateNothing)
{
    ComponentsWindow window(Rectangle(0, 0, 10, 10), WindowFlags::imageSurface, String(), &window);
    Knob* knob = nullptr;
    window.setContent(makePanel(knob), true);
    EXPECT_EQ(countSteadyFrames(window, *knob), 0);
}

TEST(ComponentsWindowAllocation, ScaledFramesAfterTheFirstAllocateNothing)
{
    ComponentsWindow window(Rectangle(0, 0, 10, 10), WindowFlags::imageSurface | WindowFlags::scaledContent, String(),
                            &window);
    Knob* knob = nullptr;
    window.setContent(makePanel(knob), true);
    NullWindowPeer::of(window)->injectResize(Point(220, 88));
    EXPECT_EQ(countSteadyFrames(window, *knob), 0);
}

TEST(ComponentsWindowAllocation, FramesOfAnAdapterShowingItsTreeScaledAllocateNothing)
{
    ComponentsWindow window(Rectangle(0, 0, 10, 10), WindowFlags::imageSurface, String(), &window);
    auto* root = new Panel();
    root->setBounds(Rectangle(0, 0, 250, 100), false);
    auto* adapter = new AdapterComponent();
    adapter->setBounds(root->getBounds(), false);
    root->addAndMakeVisible(adapter);
    Knob* knob = nullptr;
    adapter->setInnerComponent(makePanel(knob));
    window.setContent(root, true);
    EXPECT_EQ(countSteadyFrames(window, *knob), 0);
}
