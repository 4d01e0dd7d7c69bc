// Hit testing of Component: random trees, with components hidden, not hit-testable, excluded and
// sticking out of their parents, against a picture of component numbers; and the drag target.

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

TEST(ComponentHitTestingTest, DragTargetIsTheFirstTargetAboveTheHit)
{
    TreeHarness tree(100, 100);
    Probe* target = tree.root->addProbe("target", Rectangle(0, 0, 50, 50));
    target->dragTarget = true;
    target->addProbe("inside", Rectangle(10, 10, 10, 10));
    EXPECT_EQ(tree.root->getDragTargetAt(Point(15, 15)), target);
    EXPECT_EQ(tree.root->getDragTargetAt(Point(70, 70)), nullptr);
}
