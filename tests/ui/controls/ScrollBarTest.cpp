#include "ui/controls/ScrollBar.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
using namespace PointerKind;

struct StartListener : ScrollBar::Listener
{
    void scrollBarMoved(ScrollBar*, int newStart) override { starts.push_back(newStart); }
    std::vector<int> starts;
};

// A vertical bar of 10 x 100 at (0, 0) over 400 pixels, 100 of them visible.
struct BarHarness : TreeHarness
{
    BarHarness() : TreeHarness(100, 100)
    {
        bar = new ScrollBar(true);
        bar->setBounds(Rectangle(0, 0, 10, 100), false);
        root->addAndMakeVisible(bar);
        bar->setRange(400, 100);
        bar->addListener(&listener);
    }

    ScrollBar* bar;
    StartListener listener;
};
}

TEST(ScrollBarTest, ThumbIsTheVisibleShareAtTheStartsShareOfTheTrack)
{
    BarHarness tree;
    EXPECT_EQ(tree.bar->getThumbBounds(), Rectangle(0, 0, 10, 25));
    tree.bar->setStart(150, false);
    EXPECT_EQ(tree.bar->getThumbBounds(), Rectangle(0, 37, 10, 25));
    tree.bar->setRange(100, 100);
    EXPECT_TRUE(tree.bar->getThumbBounds().isEmpty());
    EXPECT_EQ(tree.bar->getStart(), 0);
}

TEST(ScrollBarTest, StartIsLimitedAndHeardOnlyWhenAsked)
{
    BarHarness tree;
    tree.bar->setStart(500, false);
    EXPECT_EQ(tree.bar->getStart(), 300);
    tree.bar->setStart(-5, true);
    EXPECT_EQ(tree.listener.starts, (std::vector<int>{0}));
}

TEST(ScrollBarTest, DraggingTheThumbMovesTheStartByTheSameShare)
{
    BarHarness tree;
    tree.send(move, Point(5, 10));
    tree.send(press, Point(5, 10), 1);
    tree.send(move, Point(5, 25));
    tree.send(release, Point(5, 25), 1);
    EXPECT_EQ(tree.bar->getStart(), 60);
    EXPECT_EQ(tree.listener.starts, (std::vector<int>{60}));
}

TEST(ScrollBarTest, PressOnTheTrackPagesTowardsThePress)
{
    BarHarness tree;
    tree.click(Point(5, 80));
    EXPECT_EQ(tree.bar->getStart(), 100);
    tree.click(Point(5, 2));
    EXPECT_EQ(tree.bar->getStart(), 0);
}

TEST(ScrollBarTest, HandOverTheThumbArrowOnTheTrack)
{
    BarHarness tree;
    tree.send(move, Point(5, 10));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::pointingHandCursor);
    tree.send(move, Point(5, 70));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::arrowCursor);
}

TEST(ScrollBarTest, WheelNotchMovesByTheWheelStep)
{
    BarHarness tree;
    tree.send(move, Point(5, 70));
    tree.send(ComponentsContainer::wheelEvent, Point(5, 70), 0, 0, -1.0f);
    EXPECT_EQ(tree.bar->getStart(), ScrollBar::wheelStep);
}
