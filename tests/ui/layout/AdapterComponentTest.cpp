// AdapterComponent: an inner tree shown scaled inside an outer one, with pointer events mapped in
// and repaints mapped out.

#include "ui/layout/AdapterComponent.h"

#include "GoldenImage.h"
#include "support/TreeHarness.h"
#include "render/graphics/SoftwareGraphics.h"
#include "render/image/ImageScaling.h"
#include "ui/controls/Button.h"
#include "ui/controls/Knob.h"
#include "ui/controls/Slider.h"
#include "ui/controls/ToggleButton.h"
#include "ui/lookandfeel/LookAndFeel.h"
#include "ui/window/ComponentsWindow.h"
#include "native/window/WindowFlags.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
using namespace PointerKind;

// A 96 x 64 inner panel of controls: a knob, a toggle, a slider and a button, on the palette's
// background.
Probe* makeInnerPanel(Log* log)
{
    auto* panel = new Probe("panel", log, LookAndFeel::getDefault().getColour(LookAndFeel::backgroundColourId));
    panel->setOpaque(true);
    panel->setBounds(Rectangle(0, 0, 96, 64), false);
    auto* knob = new Knob();
    knob->setBounds(Rectangle(4, 4, 36, 36), false);
    knob->setValue(0.6, false);
    knob->setComponentId(1);
    panel->addAndMakeVisible(knob);
    auto* toggle = new ToggleButton(String("On"));
    toggle->setBounds(Rectangle(46, 6, 46, 16), false);
    toggle->setOn(true, false);
    panel->addAndMakeVisible(toggle);
    auto* slider = new Slider();
    slider->setBounds(Rectangle(46, 26, 46, 12), false);
    slider->setValue(0.4, false);
    panel->addAndMakeVisible(slider);
    auto* button = new Button(String("Go"));
    button->setBounds(Rectangle(4, 44, 88, 16), false);
    panel->addAndMakeVisible(button);
    return panel;
}

// An outer tree of 170 x 120 with an adapter at (10, 10) of the given size showing a probe or the
// panel.
struct AdapterHarness : TreeHarness
{
    explicit AdapterHarness(const Point& adapterSize) : TreeHarness(170, 120)
    {
        adapter = new AdapterComponent();
        adapter->setBounds(Rectangle(Point(10, 10), adapterSize), false);
        root->addAndMakeVisible(adapter);
    }

    // The adapter's part of the picture.
    Image adapterPixels() const
    {
        Image part(adapter->getSize(), true);
        for (int y = 0; y < part.getHeight(); ++y)
            std::memcpy(part.getLine(static_cast<unsigned>(y)), picture.getPixelPointer(10, 10 + y),
                        static_cast<size_t>(part.getWidth()) * 4);
        return part;
    }

    // What the adapter must show: a fresh painting of the inner tree, scaled whole and blended over
    // the outer root's colour (the scaled edges are translucent).
    Image expectedPixels() const
    {
        Image inner(adapter->getInnerComponent()->getSize(), true);
        ComponentsContainer& innerContainer = adapter->getInnerContainer();
        innerContainer.invalidateAll();
        innerContainer.paint(inner.getPixelPointer(0, 0), inner.getSize(), inner.getStride(), true);
        Image scaled(adapter->getSize(), true);
        const Rectangle whole = scaled.getBounds();
        resampleImage(inner, scaled, &whole, 1, -1);
        Image shown(adapter->getSize(), true);
        shown.fill(root->colour.getRed(), root->colour.getGreen(), root->colour.getBlue(), 255);
        SoftwareGraphics graphics(shown);
        graphics.drawImage(scaled, Point(), true, 255);
        return shown;
    }

    AdapterComponent* adapter;
};

}

TEST(AdapterComponentTest, InnerTreeScaledByANonIntegerFactor)
{
    AdapterHarness tree(Point(150, 100));
    tree.adapter->setInnerComponent(makeInnerPanel(&tree.log));
    tree.paint();
    EXPECT_TRUE(GoldenImage::matchesGolden(tree.picture, "adapter"));
    EXPECT_TRUE(samePixels(tree.adapterPixels(), tree.expectedPixels()));
}

TEST(AdapterComponentTest, InnerChangeRepaintsAllThatTheScaledPictureShowsOfIt)
{
    AdapterHarness tree(Point(150, 100));
    tree.adapter->setInnerComponent(makeInnerPanel(&tree.log));
    tree.settle();
    tree.adapter->getInnerComponent()->findChildById(1, false)->setValue(0.1, false);
    EXPECT_FALSE(tree.container.getDirtyRegion().isEmpty());
    tree.paint();
    EXPECT_TRUE(samePixels(tree.adapterPixels(), tree.expectedPixels()));
}

TEST(AdapterComponentTest, InnerTreeOfTheAdaptersSizeIsDrawnAsItIs)
{
    AdapterHarness tree(Point(96, 64));
    tree.adapter->setInnerComponent(makeInnerPanel(&tree.log));
    tree.paint();
    Image inner(96, 64, true);
    ComponentsContainer& innerContainer = tree.adapter->getInnerContainer();
    innerContainer.invalidateAll();
    innerContainer.paint(inner.getPixelPointer(0, 0), inner.getSize(), inner.getStride(), true);
    EXPECT_TRUE(samePixels(tree.adapterPixels(), inner));
    tree.settle();
    tree.adapter->getInnerComponent()->findChildById(1, false)->repaint(Rectangle(2, 3, 4, 5));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(16, 17, 4, 5)}));
}

TEST(AdapterComponentTest, PositionsMapByTheRatioOfSizes)
{
    AdapterHarness tree(Point(150, 100));
    tree.adapter->setInnerComponent(new Probe("inner", &tree.log));
    tree.adapter->getInnerComponent()->setSize(60, 40);
    EXPECT_EQ(tree.adapter->mapToInner(Point(149, 99)), Point(59, 39));
    EXPECT_EQ(tree.adapter->mapFromInner(Point(30, 20)), Point(75, 50));
    const RectangleF mapped = tree.adapter->mapRectFromInner(Rectangle(1, 1, 2, 2));
    EXPECT_DOUBLE_EQ(mapped.x, 2.5);
    EXPECT_DOUBLE_EQ(mapped.w, 5.0);
}

TEST(AdapterComponentTest, PointerEventsReachTheInnerTreeAtInnerPositions)
{
    AdapterHarness tree(Point(150, 100));
    auto* inner = new Probe("inner", &tree.log);
    inner->setBounds(Rectangle(0, 0, 60, 40), false);
    tree.adapter->setInnerComponent(inner);
    Probe* target = inner->addProbe("target", Rectangle(20, 10, 20, 20));
    tree.log.clear();
    tree.send(move, Point(10 + 75, 10 + 50));
    tree.send(press, Point(10 + 75, 10 + 50), 1);
    tree.send(move, Point(10 + 80, 10 + 50));
    tree.send(release, Point(10 + 80, 10 + 50), 1);
    EXPECT_EQ(tree.log, (Log{"target.enter", "target.move", "target.down", "target.drag", "target.up"}));
    EXPECT_EQ(Point(target->lastEvent.x, target->lastEvent.y), Point(12, 10));
    tree.log.clear();
    tree.send(move, Point(5, 5));
    EXPECT_EQ(tree.log, (Log{"target.exit", "root.enter", "root.move"}));
}

TEST(AdapterComponentTest, InnerEventsCarryTheScreenPositionOfTheOuterEvent)
{
    // A top-level window at (100, 50) on the screen; the adapter shows a 60 x 40 tree at 150 x 100.
    ComponentsWindow window(Rectangle(100, 50, 170, 120), WindowFlags::imageSurface, String(), nullptr);
    Log log;
    auto* root = new Probe("root", &log);
    root->setBounds(Rectangle(0, 0, 170, 120), false);
    window.setContent(root, true);
    auto* adapter = new AdapterComponent();
    adapter->setBounds(Rectangle(10, 10, 150, 100), false);
    root->addAndMakeVisible(adapter);
    auto* inner = new Probe("inner", &log);
    inner->setBounds(Rectangle(0, 0, 60, 40), false);
    adapter->setInnerComponent(inner);
    window.getContainer().sendMouseEvent(0, ComponentsContainer::moveEvent, Point(85, 60), 0, 0, 0.0f, 0.0f);
    window.getContainer().sendMouseEvent(0, ComponentsContainer::moveEvent, Point(95, 60), 0, 0, 0.0f, 0.0f);
    // The inner position is (85 - 10) * 0.4 = 30 and then 34, but the screen moved by 10 pixels.
    EXPECT_EQ(Point(inner->lastEvent.x, inner->lastEvent.y), Point(34, 20));
    EXPECT_EQ(Point(inner->lastEvent.screenX, inner->lastEvent.screenY), Point(100 + 95, 50 + 60));
    EXPECT_EQ(inner->lastEvent.deltaX, 10);
}

TEST(AdapterComponentTest, CursorIsTheInnerComponentsUnderThePointer)
{
    AdapterHarness tree(Point(150, 100));
    auto* inner = new Probe("inner", &tree.log);
    inner->setBounds(Rectangle(0, 0, 60, 40), false);
    tree.adapter->setInnerComponent(inner);
    inner->addProbe("target", Rectangle(20, 10, 20, 20))->setCursor(Mouse::Cursor(Mouse::crosshairCursor));
    tree.send(move, Point(10 + 75, 10 + 50));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::crosshairCursor);
    tree.send(move, Point(12, 12));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::arrowCursor);
}

TEST(AdapterComponentTest, WheelIsAlwaysTakenByTheAdapter)
{
    AdapterHarness tree(Point(150, 100));
    tree.root->usesWheel = true;
    auto* inner = new Probe("inner", &tree.log);
    inner->setBounds(Rectangle(0, 0, 60, 40), false);
    tree.adapter->setInnerComponent(inner);
    tree.send(move, Point(20, 20));
    tree.log.clear();
    tree.send(ComponentsContainer::wheelEvent, Point(20, 20), 0, 0, 1.0f);
    EXPECT_EQ(tree.log, (Log{"inner.wheel"}));
}

TEST(AdapterComponentTest, ResizedInnerTreeGetsAPictureOfItsNewSize)
{
    AdapterHarness tree(Point(150, 100));
    tree.adapter->setInnerComponent(makeInnerPanel(&tree.log));
    tree.paint();
    tree.adapter->getInnerComponent()->setSize(120, 80);
    EXPECT_EQ(tree.adapter->getInnerContainer().getSize(), Point(120, 80));
    tree.paint();
    EXPECT_TRUE(samePixels(tree.adapterPixels(), tree.expectedPixels()));
}
