#include "ui/layout/Viewport.h"

#include "support/TreeHarness.h"
#include "ui/layout/HolderComponent.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q1framework;

namespace
{
using namespace PointerKind;

// A 100 x 80 viewport at (10, 10) of a 200 x 150 tree, viewing a content probe of the given size
// with horizontal stripes of colour every 10 pixels.
struct ViewportHarness : TreeHarness
{
    explicit ViewportHarness(const Point& contentSize) : TreeHarness(200, 150)
    {
        viewport = new Viewport();
        viewport->setBounds(Rectangle(10, 10, 100, 80), false);
        root->addAndMakeVisible(viewport);
        content = new Probe("content", &log, Colour(20, 30, 40, 255));
        content->setOpaque(true);
        content->setBounds(Rectangle(Point(), contentSize), false);
        for (int y = 0; y < contentSize.y; y += 10)
            content->addProbe("stripe", Rectangle(0, y, contentSize.x, 4),
                              Colour(y * 2 % 256, 255 - y % 256, (y * 7) % 256, 255));
        viewport->setViewedComponent(content);
        settle();
    }

    // Paints as a window does: the pixels of each scroll move first, then the dirty part.
    void paintAsAWindow()
    {
        for (const Move& step : moved)
            picture.moveRect(step.source, step.destination);
        moved.clear();
        paint();
        container.clearDirty();
    }

    Viewport* viewport;
    Probe* content;
};

}

TEST(ViewportTest, ScrollBarsAppearAlongTheAxesTheContentIsLongerOn)
{
    ViewportHarness tall(Point(90, 300));
    EXPECT_TRUE(tall.viewport->getVerticalScrollBar().isVisible());
    EXPECT_FALSE(tall.viewport->getHorizontalScrollBar().isVisible());
    EXPECT_EQ(tall.viewport->getViewSize(), Point(100 - Viewport::defaultScrollBarThickness, 80));
    // 95 wide fits 100, but not the 90 that the vertical bar leaves.
    ViewportHarness both(Point(95, 300));
    EXPECT_TRUE(both.viewport->getHorizontalScrollBar().isVisible());
    EXPECT_EQ(both.viewport->getViewSize(), Point(90, 70));
}

TEST(ViewportTest, ViewPositionIsLimitedToTheContent)
{
    ViewportHarness tree(Point(90, 300));
    tree.viewport->setViewPosition(Point(50, 400));
    EXPECT_EQ(tree.viewport->getViewPosition(), Point(0, 220));
    EXPECT_EQ(tree.viewport->getVerticalScrollBar().getStart(), 220);
}

TEST(ViewportTest, ScrollMovesThePixelsAndRepaintsOnlyTheStripThatComesIntoView)
{
    ViewportHarness tree(Point(90, 300));
    tree.viewport->setViewPosition(Point(0, 30));
    ASSERT_EQ(tree.moved.size(), 1u);
    EXPECT_EQ(tree.moved[0].source, Rectangle(10, 40, 90, 50));
    EXPECT_EQ(tree.moved[0].destination, Point(10, 10));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 60, 90, 30), Rectangle(100, 10, 10, 80)}));
}

TEST(ViewportTest, ScrolledPictureIsWhatAFreshPaintingShows)
{
    ViewportHarness tree(Point(90, 300));
    for (int position : {30, 35, 220, 100, 0})
    {
        tree.viewport->setViewPosition(Point(0, position));
        tree.paintAsAWindow();
        const Image scrolled = tree.picture.duplicate();
        tree.container.invalidateAll();
        tree.paint();
        EXPECT_TRUE(samePixels(scrolled, tree.picture)) << "at " << position;
        tree.container.clearDirty();
    }
}

TEST(ViewportTest, ScrollBarDragScrollsTheView)
{
    ViewportHarness tree(Point(90, 300));
    const Point thumb = Point(10 + 95, 10 + 5);
    tree.send(move, thumb);
    tree.send(press, thumb, 1);
    tree.send(move, thumb + Point(0, 10));
    tree.send(release, thumb + Point(0, 10), 1);
    EXPECT_EQ(tree.viewport->getViewPosition().y, tree.viewport->getVerticalScrollBar().getStart());
    EXPECT_GT(tree.viewport->getViewPosition().y, 0);
}

TEST(ViewportTest, WheelScrollsTheView)
{
    ViewportHarness tree(Point(90, 300));
    tree.send(move, Point(30, 30));
    tree.send(ComponentsContainer::wheelEvent, Point(30, 30), 0, 0, -1.0f);
    EXPECT_EQ(tree.viewport->getViewPosition(), Point(0, ScrollBar::wheelStep));
}

TEST(ViewportTest, DragBesideTheContentScrollsItWithTheClosedHand)
{
    ViewportHarness tree(Point(90, 300));
    tree.content->setHitTestable(false);
    for (int index = 0; index < tree.content->getNumChildren(); ++index)
        tree.content->getChild(index)->setHitTestable(false);
    tree.send(move, Point(30, 30));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::openHandCursor);
    tree.send(press, Point(30, 30), 1);
    tree.send(move, Point(30, 10));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::closedHandCursor);
    tree.send(release, Point(30, 10), 1);
    EXPECT_EQ(tree.viewport->getViewPosition(), Point(0, 20));
}

TEST(ViewportTest, ResizedContentBringsTheBarsUpToDate)
{
    ViewportHarness tree(Point(90, 300));
    tree.viewport->setViewPosition(Point(0, 200));
    tree.content->setSize(90, 60);
    EXPECT_FALSE(tree.viewport->getVerticalScrollBar().isVisible());
    EXPECT_EQ(tree.viewport->getViewPosition(), Point(0, 0));
    EXPECT_EQ(tree.viewport->getViewSize(), Point(100, 80));
}
