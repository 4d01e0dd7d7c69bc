// ComponentsContainer: the tree it owns, its regions, painting, scrolling and the tick walk.

#include "ui/container/ComponentsContainer.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <vector>

using namespace q1framework;
using Log = Probe::Log;

// The part inside the size is marked for painting and for showing; the listener hears of the
// whole area, even of one wholly outside.
TEST(ComponentsContainerTest, InvalidateMarksTheClippedAreaAndReportsTheWholeOne)
{
    TreeHarness tree(100, 100);
    tree.container.invalidate(Rectangle(90, -10, 20, 20));
    tree.container.invalidate(Rectangle(100, 10, 20, 20));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(90, 0, 10, 10)}));
    EXPECT_EQ(TreeHarness::rectanglesOf(tree.container.getPresentRegion()),
              (std::vector<Rectangle>{Rectangle(90, 0, 10, 10)}));
    EXPECT_EQ(tree.invalidated, (std::vector<Rectangle>{Rectangle(90, -10, 20, 20), Rectangle(100, 10, 20, 20)}));
}

TEST(ComponentsContainerTest, SetSizeSizesTheRootAndInvalidatesEverything)
{
    TreeHarness tree(100, 100);
    tree.container.setSize(Point(60, 40));
    EXPECT_EQ(tree.root->getSize(), Point(60, 40));
    EXPECT_EQ(tree.container.getSize(), Point(60, 40));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(0, 0, 60, 40)}));
    tree.settle();
    tree.container.setSize(Point(60, 40));
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
}

TEST(ComponentsContainerTest, PresentRegionIsCutToTheRootEvenWhenTheSizeIsLarger)
{
    TreeHarness tree(100, 100);
    tree.root->setSize(50, 50);
    tree.settle();
    tree.container.invalidate(Rectangle(40, 40, 30, 30));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(40, 40, 30, 30)}));
    EXPECT_EQ(TreeHarness::rectanglesOf(tree.container.getPresentRegion()),
              (std::vector<Rectangle>{Rectangle(40, 40, 10, 10)}));
}

TEST(ComponentsContainerTest, NewScaleIsToldToTheRootOnceAndInvalidatesNothing)
{
    TreeHarness tree(100, 100);
    tree.container.setScale(2.0);
    tree.container.setScale(2.0);
    EXPECT_EQ(tree.log, (Log{"root.scale 2.000000 from 1.000000"}));
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
}

TEST(ComponentsContainerTest, NewRootHearsOfAScaleOtherThanOne)
{
    TreeHarness tree(100, 100);
    tree.container.setScale(1.5);
    tree.log.clear();
    auto* next = new Probe("next", &tree.log);
    tree.container.setRootComponent(next, true, true);
    EXPECT_EQ(tree.log, (Log{"next.scale 1.500000 from 1.000000"}));
    EXPECT_TRUE(next->isVisible());
    EXPECT_EQ(next->getContainer(), &tree.container);
}

TEST(ComponentsContainerTest, ReplacedRootIsForgottenByThePointerAndTheFocus)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(0, 0, 50, 50));
    child->setWantsFocus(true);
    child->grabFocus();
    tree.container.sendMouseEvent(0, ComponentsContainer::moveEvent, Point(10, 10), 0, 0, 0.0f, 0.0f);
    ASSERT_EQ(tree.container.getMouseComponent(false), child);
    tree.container.setRootComponent(new Probe("next", &tree.log), true, true);
    tree.root = nullptr;
    EXPECT_EQ(tree.container.getMouseComponent(false), nullptr);
    EXPECT_EQ(tree.container.getFocusedComponent(), nullptr);
}

TEST(ComponentsContainerTest, PaintClearsBothRegionsOnlyWhenAsked)
{
    TreeHarness tree(100, 100);
    tree.container.invalidate(Rectangle(0, 0, 10, 10));
    EXPECT_TRUE(tree.paint());
    EXPECT_FALSE(tree.container.getDirtyRegion().isEmpty());
    EXPECT_TRUE(tree.container.paint(tree.picture.getPixelPointer(0, 0), tree.picture.getSize(),
                                     tree.picture.getStride(), true));
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
    EXPECT_TRUE(tree.container.getPresentRegion().isEmpty());
}

TEST(ComponentsContainerTest, TickVisitsVisibleComponentsParentsFirstAndSkipsHiddenSubtrees)
{
    TreeHarness tree(100, 100);
    Probe* a = tree.root->addProbe("a", Rectangle(0, 0, 10, 10));
    Probe* a1 = a->addProbe("a1", Rectangle(0, 0, 10, 10));
    Probe* hidden = tree.root->addProbe("hidden", Rectangle(0, 0, 10, 10));
    Probe* inside = hidden->addProbe("inside", Rectangle(0, 0, 10, 10));
    Probe* b = tree.root->addProbe("b", Rectangle(0, 0, 10, 10));
    hidden->setVisible(false);
    for (Probe* probe : {tree.root, a, a1, hidden, inside, b})
        probe->logTicks = true;
    tree.log.clear();
    tree.container.tick();
    EXPECT_EQ(tree.log, (Log{"root.tick", "a.tick", "a1.tick", "b.tick"}));
}

TEST(ComponentsContainerTest, TickMayDeleteTheComponentThatTicks)
{
    TreeHarness tree(100, 100);
    Probe* doomed = tree.root->addProbe("doomed", Rectangle(0, 0, 10, 10));
    doomed->addProbe("child", Rectangle(0, 0, 10, 10))->logTicks = true;
    Probe* after = tree.root->addProbe("after", Rectangle(0, 0, 10, 10));
    doomed->logTicks = after->logTicks = true;
    doomed->actions["tick"] = [doomed] { delete doomed; };
    tree.log.clear();
    tree.container.tick();
    EXPECT_EQ(tree.log, (Log{"doomed.tick", "root.childRemoved ?", "after.tick"}));
}

// ---- Scrolling ----

TEST(ComponentsContainerTest, ScrollMovesThePixelsAndRepaintsOnlyTheUncoveredStrip)
{
    TreeHarness tree(100, 100);
    tree.container.scrollArea(Rectangle(10, 10, 40, 40), 0, -15);
    ASSERT_EQ(tree.moved.size(), 1u);
    EXPECT_EQ(tree.moved[0].source, Rectangle(10, 25, 40, 25));
    EXPECT_EQ(tree.moved[0].destination, Point(10, 10));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 35, 40, 15)}));
    EXPECT_EQ(TreeHarness::rectanglesOf(tree.container.getPresentRegion()),
              (std::vector<Rectangle>{Rectangle(10, 10, 40, 40)}));
    EXPECT_EQ(tree.invalidated, (std::vector<Rectangle>{Rectangle(10, 35, 40, 15), Rectangle(10, 10, 40, 40)}));
}

TEST(ComponentsContainerTest, ScrollCarriesTheDirtyPartWithThePixels)
{
    TreeHarness tree(100, 100);
    tree.container.invalidate(Rectangle(20, 40, 5, 5));
    tree.container.invalidate(Rectangle(80, 80, 5, 5));
    tree.container.scrollArea(Rectangle(10, 10, 40, 40), 0, -15);
    EXPECT_EQ(tree.container.getDirtyRegion(),
              TreeHarness::regionOf({Rectangle(20, 25, 5, 5), Rectangle(10, 35, 40, 15), Rectangle(80, 80, 5, 5)}));
}

TEST(ComponentsContainerTest, ScrollFartherThanTheAreaMovesNothingAndRepaintsItAll)
{
    TreeHarness tree(100, 100);
    tree.container.scrollArea(Rectangle(10, 10, 40, 40), 0, 50);
    EXPECT_TRUE(tree.moved.empty());
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 10, 40, 40)}));
}

TEST(ComponentsContainerTest, CopyingScrollReportsACopyAndRepaintsTheStrip)
{
    TreeHarness tree(100, 100);
    tree.container.setCopyForScroll(true);
    tree.container.scrollArea(Rectangle(10, 10, 40, 40), 10, 0);
    EXPECT_TRUE(tree.moved.empty());
    ASSERT_EQ(tree.copied.size(), 1u);
    EXPECT_EQ(tree.copied[0].source, Rectangle(10, 10, 30, 40));
    EXPECT_EQ(tree.copied[0].destination, Point(20, 10));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 10, 10, 40)}));
    EXPECT_EQ(TreeHarness::rectanglesOf(tree.container.getPresentRegion()),
              (std::vector<Rectangle>{Rectangle(10, 10, 10, 40)}));
}

TEST(ComponentsContainerTest, SetPositionScrollsTheComponentsVisibleArea)
{
    TreeHarness tree(100, 100);
    Probe* holder = tree.root->addProbe("holder", Rectangle(10, 10, 50, 50));
    Probe* content = holder->addProbe("content", Rectangle(0, 0, 50, 200));
    tree.settle();
    content->setPosition(Point(0, -20));
    EXPECT_EQ(tree.log, (Log{"content.moved"}));
    ASSERT_EQ(tree.moved.size(), 1u);
    EXPECT_EQ(tree.moved[0].source, Rectangle(10, 30, 50, 30));
    EXPECT_EQ(tree.moved[0].destination, Point(10, 10));
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 40, 50, 20)}));
}
