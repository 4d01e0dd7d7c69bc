// The repaint requests and the paint walks of Component, through a container painting into memory.

#include "ui/component/Component.h"

#include "support/TreeHarness.h"

#include "render/graphics/SoftwareGraphics.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
const Colour opaqueRed(220, 40, 40, 255);
const Colour opaqueBlue(40, 40, 220, 255);
const Colour translucentGreen(40, 220, 40, 128);
}

// ---- Repaint requests ----

TEST(ComponentPaintingTest, RepaintIsClippedByThePaintAreaOfEveryAncestor)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 40, 40));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(30, 30, 20, 20));
    tree.settle();
    grandchild->repaint();
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(40, 40, 10, 10)}));
}

TEST(ComponentPaintingTest, PaintMarginWidensTheRepaintOnEverySide)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 40, 40));
    child->setPaintMargin(3);
    tree.settle();
    child->repaint();
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(7, 7, 46, 46)}));
}

TEST(ComponentPaintingTest, HiddenComponentOrHiddenParentRefusesRepaint)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 40, 40));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(5, 5, 10, 10));
    grandchild->setVisible(false);
    tree.settle();
    grandchild->repaint();
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
    grandchild->setVisible(true);
    child->setVisible(false);
    tree.settle();
    grandchild->repaint();
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
}

TEST(ComponentPaintingTest, HiddenGrandparentDoesNotStopRepaint)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 40, 40));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(5, 5, 10, 10));
    tree.root->setVisible(false);
    tree.settle();
    grandchild->repaint();
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(15, 15, 10, 10)}));
}

TEST(ComponentPaintingTest, HidingAndShowingInvalidateTheCoveredArea)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 20, 30, 40));
    tree.settle();
    child->setVisible(false);
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 20, 30, 40)}));
    tree.settle();
    child->setVisible(true);
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 20, 30, 40)}));
}

TEST(ComponentPaintingTest, ZOrderChangeRepaintsTheWholeParent)
{
    TreeHarness tree(100, 100);
    Probe* parent = tree.root->addProbe("parent", Rectangle(10, 10, 50, 50));
    Probe* child = parent->addProbe("child", Rectangle(0, 0, 10, 10));
    parent->addProbe("other", Rectangle(20, 20, 10, 10));
    tree.settle();
    child->moveInZOrder(1);
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 10, 50, 50)}));
}

TEST(ComponentPaintingTest, RepaintOutsideTheContainerMarksNothingButIsReported)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 40, 40));
    tree.settle();
    tree.root->setBounds(Rectangle(0, 0, 300, 300), false);
    tree.settle();
    child->setBounds(Rectangle(150, 150, 40, 40), false);
    EXPECT_EQ(tree.dirtyRectangles(), (std::vector<Rectangle>{Rectangle(10, 10, 40, 40)}));
    EXPECT_EQ(tree.invalidated, (std::vector<Rectangle>{Rectangle(10, 10, 40, 40), Rectangle(150, 150, 40, 40)}));
}

// ---- The paint walk ----

TEST(ComponentPaintingTest, EachRectangleOfTheVisibleDirtyPartIsOnePaintWithItsClip)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 50, 50), translucentGreen);
    tree.settle();
    child->paintedClips.clear();
    tree.container.invalidate(Rectangle(0, 0, 20, 20));
    tree.container.invalidate(Rectangle(50, 50, 30, 30));
    tree.paint();
    EXPECT_EQ(child->paintedClips, (std::vector<Rectangle>{Rectangle(10, 10, 10, 10), Rectangle(50, 50, 10, 10)}));
}

TEST(ComponentPaintingTest, OpaqueComponentHidesWhatLiesBeneathIt)
{
    TreeHarness tree(100, 100);
    Probe* below = tree.root->addProbe("below", Rectangle(0, 0, 60, 60), translucentGreen);
    Probe* above = tree.root->addProbe("above", Rectangle(20, 0, 40, 60), opaqueRed);
    above->setOpaque(true);
    tree.settle();
    below->paintedClips.clear();
    tree.root->paintedClips.clear();
    tree.container.invalidate(Rectangle(0, 0, 100, 100));
    tree.paint();
    EXPECT_EQ(below->paintedClips, (std::vector<Rectangle>{Rectangle(0, 0, 20, 60)}));
    tree.root->paintedClips.clear();
    below->paintedClips.clear();
    tree.container.clearDirty();
    tree.container.invalidate(Rectangle(30, 10, 10, 10));
    tree.paint();
    EXPECT_TRUE(below->paintedClips.empty());
    EXPECT_TRUE(tree.root->paintedClips.empty());
}

TEST(ComponentPaintingTest, BufferedComponentPaintsItsImageOnceUntilItRepaints)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 10, 30, 30), opaqueRed);
    child->setBuffered(true);
    child->logPaints = true;
    tree.log.clear();
    tree.container.invalidateAll();
    tree.paint();
    tree.container.clearDirty();
    tree.container.invalidateAll();
    tree.paint();
    EXPECT_EQ(tree.log, (Log{"child.paint"}));
    EXPECT_EQ(std::memcmp(tree.picture.getPixelPointer(20, 20), tree.picture.getPixelPointer(10, 10), 4), 0);
    child->repaint();
    tree.paint();
    EXPECT_EQ(tree.log, (Log{"child.paint", "child.paint"}));
}

TEST(ComponentPaintingTest, PaintWithNothingDirtyReturnsFalseAndLeavesThePixels)
{
    TreeHarness tree(20, 20);
    tree.picture.fill(1, 2, 3, 4);
    EXPECT_FALSE(tree.paint());
    EXPECT_EQ(tree.picture.getPixelPointer(5, 5)[0], 3);
}

TEST(ComponentPaintingTest, ImageOfComponentHoldsItsOwnPaintAtItsSize)
{
    Probe probe("probe", nullptr, opaqueBlue);
    probe.setBounds(Rectangle(40, 30, 8, 6), false);
    const Image picture = probe.getImageOfComponent();
    ASSERT_EQ(picture.getSize(), Point(8, 6));
    const uint8_t* pixel = picture.getPixelPointer(7, 5);
    EXPECT_EQ((std::vector<int>{pixel[0], pixel[1], pixel[2], pixel[3]}), (std::vector<int>{220, 40, 40, 255}));
    EXPECT_EQ(probe.getPosition(), Point(40, 30));
}

// ---- Random changes against a fresh painting ----

namespace
{
// The plain model of a painted tree: every visible component fills its visible area, cut by its
// clipping ancestors, parents before children and children in array order; overlays, and their
// children once more, in a pass after the rest; with no regions and no occlusion.
void paintNaively(Component& component, SoftwareGraphics& graphics, const Point& offset, const Rectangle& clip,
                  int pass)
{
    auto* probe = dynamic_cast<Probe*>(&component);
    if (!component.isVisible() || !probe)
        return;
    const Rectangle own = component.getBounds().translated(offset);
    const Rectangle narrowed = component.clipsChildren() ? clip.getIntersection(own) : clip;
    const Rectangle visible = component.getPaintBounds().translated(offset).getIntersection(narrowed);
    if (visible.isEmpty())
        return;
    if ((component.isOverlay() ? 1 : 0) == pass)
    {
        graphics.setClip(visible, false);
        Colour fill = probe->colour;
        graphics.fillRect(visible, fill, true);
        pass = 0;
    }
    for (int index = 0; index < component.getNumChildren(); ++index)
        paintNaively(*component.getChild(index), graphics, own.getPosition(),
                     component.clipsChildren() ? visible : clip, pass);
}

Image paintFresh(Component& root, const Point& size)
{
    Image picture(size, true);
    SoftwareGraphics graphics(picture);
    for (int pass = 0; pass < 2; ++pass)
        paintNaively(root, graphics, Point(), Rectangle(Point(), size), pass);
    return picture;
}

// A random tree: a clipping content layer holding groups of leaves, and a clipping overlay with
// leaves of its own as the root's last child. Opaque components have opaque colours, so that
// hiding what lies beneath them changes no pixel.
class RandomTree
{
public:
    RandomTree(TreeHarness& tree, std::mt19937& random) : tree(tree), random(random)
    {
        content = tree.root->addProbe("content", Rectangle(0, 0, width, height), Colour(0, 0, 0, 0));
        content->setClipsChildren(true);
        for (int group = 0; group < 3; ++group)
        {
            Probe* added = addTo(content, "group", true);
            groups.push_back(added);
            for (int leaf = uniform(0, 3); leaf > 0; --leaf)
                addTo(added, "leaf", false);
        }
        overlay = addTo(tree.root, "overlay", true);
        overlay->setOverlay(true);
        groups.push_back(overlay);
        for (int leaf = uniform(1, 2); leaf > 0; --leaf)
            addTo(overlay, "leaf", false);
    }

    // One random change that repaints what it changes.
    void change()
    {
        Probe* target = pickMovable();
        const int kind = uniform(0, 6);
        lastChange = "change " + std::to_string(kind) + " of a " + target->name;
        switch (kind)
        {
        case 0:
            target->setBounds(randomBounds(*target->getParent()), uniform(0, 1) == 1);
            break;
        case 1:
            target->setVisible(!target->isVisible());
            break;
        case 2:
            if (target != overlay)
                target->moveInZOrder(uniform(-3, 3));
            break;
        case 3:
            target->colour = randomColour(target->isOpaque());
            target->repaint();
            break;
        case 4:
            target->setOpaque(!target->isOpaque());
            target->colour = randomColour(target->isOpaque());
            target->repaint();
            break;
        case 5:
            if (target->getNumChildren() == 0 && target->getParent() != content && target->getParent() != tree.root)
                delete target;
            break;
        default:
            addTo(groups[static_cast<size_t>(uniform(0, static_cast<int>(groups.size()) - 1))], "leaf", false);
            break;
        }
    }

    std::string lastChange;  // for failure messages
    static constexpr int width = 120;
    static constexpr int height = 90;

private:
    int uniform(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    Colour randomColour(bool opaque)
    {
        return Colour(uniform(0, 255), uniform(0, 255), uniform(0, 255), opaque ? 255 : uniform(0, 254));
    }

    Rectangle randomBounds(const Component& parent)
    {
        const int w = uniform(1, parent.getWidth() * 2 / 3 + 1);
        const int h = uniform(1, parent.getHeight() * 2 / 3 + 1);
        return Rectangle(uniform(-4, parent.getWidth() - 2), uniform(-4, parent.getHeight() - 2), w, h);
    }

    Probe* addTo(Probe* parent, const std::string& name, bool clips)
    {
        const bool opaque = uniform(0, 2) == 0;
        auto* added = new Probe(name, &tree.log, randomColour(opaque));
        added->setBounds(randomBounds(*parent), false);
        added->setOpaque(opaque);
        added->setClipsChildren(clips);
        if (!clips)
            added->setPaintMargin(uniform(0, 2));
        parent->addAndMakeVisible(added);
        return added;
    }

    // A group, a leaf or the overlay.
    Probe* pickMovable()
    {
        Array<Component*> all;
        tree.root->collectDescendants(all);
        Component* picked = all[uniform(0, all.getCount() - 1)];
        return picked == content ? overlay : static_cast<Probe*>(picked);
    }

    TreeHarness& tree;
    std::mt19937& random;
    Probe* content;
    Probe* overlay;
    std::vector<Probe*> groups;
};
}

TEST(ComponentPaintingTest, RandomChangesRepaintToWhatAFreshPaintingShows)
{
    for (uint32_t seed = 1; seed <= 40; ++seed)
    {
        std::mt19937 random(seed);
        TreeHarness tree(RandomTree::width, RandomTree::height);
        RandomTree changes(tree, random);
        tree.settle();
        ASSERT_TRUE(samePixels(tree.picture, paintFresh(*tree.root, tree.picture.getSize()))) << "seed " << seed;
        for (int step = 0; step < 60; ++step)
        {
            changes.change();
            tree.paint();
            tree.container.clearDirty();
            const Image fresh = paintFresh(*tree.root, tree.picture.getSize());
            ASSERT_TRUE(samePixels(tree.picture, fresh)) << "seed " << seed << ", step " << step << ": " << changes.lastChange;
        }
    }
}
