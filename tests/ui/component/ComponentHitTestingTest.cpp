// Hit testing of Component: at the edges, through components that are not hit-testable or are
// excluded, and on random trees against a picture of component numbers.

#include "ui/component/Component.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace q1framework;

namespace
{
// A component that hit testing skips with its subtree.
class Excluded : public Probe
{
public:
    explicit Excluded(Probe::Log* log) : Probe("excluded", log) { setHitTestExcluded(true); }
};
}

TEST(ComponentHitTestingTest, RightAndBottomEdgesAreOutside)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 20, 30, 40));
    EXPECT_EQ(tree.container.getComponentAt(Point(10, 20)), child);
    EXPECT_EQ(tree.container.getComponentAt(Point(39, 59)), child);
    EXPECT_EQ(tree.container.getComponentAt(Point(40, 30)), tree.root);
    EXPECT_EQ(tree.container.getComponentAt(Point(20, 60)), tree.root);
    EXPECT_EQ(tree.container.getComponentAt(Point(100, 5)), nullptr);
    EXPECT_EQ(tree.container.getComponentAt(Point(-1, 5)), nullptr);
}

TEST(ComponentHitTestingTest, LaterSiblingIsOnTop)
{
    TreeHarness tree(100, 100);
    tree.root->addProbe("lower", Rectangle(0, 0, 50, 50));
    Probe* upper = tree.root->addProbe("upper", Rectangle(25, 25, 50, 50));
    EXPECT_EQ(tree.container.getComponentAt(Point(30, 30)), upper);
}

TEST(ComponentHitTestingTest, NonHitTestableChildPassesTheHitToWhatLiesBeneath)
{
    TreeHarness tree(100, 100);
    Probe* lower = tree.root->addProbe("lower", Rectangle(0, 0, 50, 50));
    Probe* glass = tree.root->addProbe("glass", Rectangle(0, 0, 100, 100));
    glass->setHitTestable(false);
    EXPECT_EQ(tree.container.getComponentAt(Point(10, 10)), lower);
    EXPECT_EQ(tree.container.getComponentAt(Point(70, 70)), tree.root);
}

TEST(ComponentHitTestingTest, HitTestableChildOfANonHitTestableOneCounts)
{
    TreeHarness tree(100, 100);
    Probe* glass = tree.root->addProbe("glass", Rectangle(0, 0, 100, 100));
    glass->setHitTestable(false);
    Probe* inside = glass->addProbe("inside", Rectangle(10, 10, 10, 10));
    EXPECT_EQ(tree.container.getComponentAt(Point(15, 15)), inside);
}

TEST(ComponentHitTestingTest, RootIsHitEvenWhenNotHitTestable)
{
    TreeHarness tree(100, 100);
    tree.root->setHitTestable(false);
    EXPECT_EQ(tree.container.getComponentAt(Point(15, 15)), tree.root);
}

TEST(ComponentHitTestingTest, ExcludedChildIsSkippedWithItsSubtree)
{
    TreeHarness tree(100, 100);
    Probe* lower = tree.root->addProbe("lower", Rectangle(0, 0, 50, 50));
    auto* excluded = new Excluded(&tree.log);
    excluded->setBounds(Rectangle(0, 0, 50, 50), false);
    tree.root->addAndMakeVisible(excluded);
    excluded->addProbe("inside", Rectangle(0, 0, 10, 10));
    EXPECT_EQ(tree.container.getComponentAt(Point(5, 5)), lower);
}

TEST(ComponentHitTestingTest, ChildOutsideItsParentIsNotHit)
{
    TreeHarness tree(100, 100);
    Probe* parent = tree.root->addProbe("parent", Rectangle(0, 0, 20, 20));
    parent->addProbe("sticking out", Rectangle(10, 10, 30, 30));
    EXPECT_EQ(tree.container.getComponentAt(Point(30, 30)), tree.root);
}

TEST(ComponentHitTestingTest, DragTargetIsTheFirstTargetAboveTheHit)
{
    TreeHarness tree(100, 100);
    Probe* target = tree.root->addProbe("target", Rectangle(0, 0, 50, 50));
    target->dragTarget = true;
    target->addProbe("inside", Rectangle(10, 10, 10, 10));
    EXPECT_EQ(tree.root->getDragTargetAt(Point(15, 15)), target);
    EXPECT_EQ(tree.root->getDragTargetAt(Point(70, 70)), nullptr);
}

// ---- Random trees against a picture of component numbers ----

namespace
{
// The plain model: every reachable component that counts for a hit paints its number over its
// area, cut to its ancestors' areas, parents before children and children in array order; the
// root always counts. The number on top at a point names the component hit there.
void paintNumbers(Component& component, const Point& parentOrigin, const Rectangle& clip, bool isRoot,
                  std::vector<Component*>& numbers, std::vector<int>& picture, int side)
{
    if (!component.isVisible() || component.isHitTestExcluded())
        return;
    const Rectangle bounds = component.getBounds().translated(parentOrigin);
    const Rectangle area = bounds.getIntersection(clip);
    if (isRoot || component.isHitTestable())
    {
        numbers.push_back(&component);
        for (int y = area.y; y < area.getBottom(); ++y)
            for (int x = area.x; x < area.getRight(); ++x)
                picture[static_cast<size_t>(y * side + x)] = static_cast<int>(numbers.size()) - 1;
    }
    for (int index = 0; index < component.getNumChildren(); ++index)
        paintNumbers(*component.getChild(index), bounds.getPosition(), area, false, numbers, picture, side);
}

void addRandomChildren(Probe& parent, std::mt19937& random, int depth)
{
    auto uniform = [&random](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    for (int count = uniform(0, 4); count > 0; --count)
    {
        Probe* child;
        if (uniform(0, 7) == 0)
        {
            child = new Excluded(nullptr);
            child->setBounds(Rectangle(0, 0, 1, 1), false);
            parent.addChild(child);
        }
        else
            child = parent.addProbe("child", Rectangle(0, 0, 1, 1));
        child->setBounds(Rectangle(uniform(-10, parent.getWidth()), uniform(-10, parent.getHeight()),
                                   uniform(1, parent.getWidth()), uniform(1, parent.getHeight())),
                         false);
        child->setVisible(uniform(0, 5) != 0);
        child->setHitTestable(uniform(0, 3) != 0);
        if (depth > 0)
            addRandomChildren(*child, random, depth - 1);
    }
}
}

TEST(ComponentHitTestingTest, RandomTreesHitWhatAPictureOfComponentNumbersShowsOnTop)
{
    constexpr int side = 40;
    for (uint32_t seed = 1; seed <= 200; ++seed)
    {
        std::mt19937 random(seed);
        TreeHarness tree(side - 8, side - 8);
        tree.root->setHitTestable(seed % 3 != 0);
        addRandomChildren(*tree.root, random, 2);
        std::vector<Component*> numbers;
        std::vector<int> picture(static_cast<size_t>(side * side), -1);
        paintNumbers(*tree.root, Point(), Rectangle(0, 0, side, side), true, numbers, picture, side);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
            {
                const int number = picture[static_cast<size_t>(y * side + x)];
                Component* expected = number < 0 ? nullptr : numbers[static_cast<size_t>(number)];
                ASSERT_EQ(tree.container.getComponentAt(Point(x, y)), expected)
                    << "seed " << seed << " at " << x << ", " << y;
            }
    }
}
