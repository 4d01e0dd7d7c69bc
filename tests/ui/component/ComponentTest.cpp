#include "ui/component/Component.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
// Records what a Component::Listener hears about the probe it listens to, into the probes' log.
struct LoggingListener : Component::Listener
{
    LoggingListener(Log& log, Probe* probe) : log(log), probe(probe), watched(probe), name(probe->name)
    {
        probe->addListener(this);
    }
    ~LoggingListener() override
    {
        if (watched)
            watched->removeListener(this);
    }
    void componentDeleted(Component* c) override { note("deleted", c); }
    void componentResized(Component* c) override { note("resized", c); }
    void componentMoved(Component* c) override { note("moved", c); }
    void componentVisibilityChanged(Component* c) override { note("visibility", c); }
    // Names the probe, which a deleted one can no longer tell itself.
    void note(const std::string& call, Component* c) { log.push_back("listener." + call + (c == probe ? " " + name : " ?")); }
    Log& log;
    Probe* probe;
    Component::SafePointer watched;
    std::string name;
};

std::vector<std::string> childNames(Component& parent)
{
    std::vector<std::string> names;
    for (int index = 0; index < parent.getNumChildren(); ++index)
        names.push_back(Probe::nameOf(parent.getChild(index)));
    return names;
}
}

// What setBounds repaints and whom it tells: moved() and the parent's childMoved() only when
// asked to notify, resized() always, the listeners after the handlers; nothing for the same
// rectangle.
TEST(ComponentTest, SetBoundsRepaintsBothAreasAndTellsTheHandlersItIsAskedTo)
{
    const Rectangle start(10, 10, 20, 20);
    const struct
    {
        Rectangle bounds;
        bool notify;
        Log calls;
    } cases[] = {
        {start, true, {}},
        {Rectangle(50, 40, 20, 20), false, {}},
        {Rectangle(10, 10, 25, 20), false, {"child.resized"}},
        {Rectangle(12, 10, 30, 20), true,
         {"child.moved", "root.childMoved child", "child.resized", "root.childResized child", "listener.resized child",
          "listener.moved child"}},
    };
    for (const auto& each : cases)
    {
        TreeHarness tree(100, 100);
        Probe* child = tree.root->addProbe("child", start);
        LoggingListener listener(tree.log, child);
        tree.settle();
        child->setBounds(each.bounds, each.notify);
        SCOPED_TRACE(::testing::PrintToString(each.bounds));
        EXPECT_EQ(tree.log, each.calls);
        EXPECT_EQ(tree.container.getDirtyRegion(),
                  each.bounds == start ? Region() : TreeHarness::regionOf({start, each.bounds}));
    }
}

TEST(ComponentTest, AddingAChildItAlreadyHasAtAnotherIndexMovesIt)
{
    TreeHarness tree(100, 100);
    tree.root->addProbe("a", Rectangle(0, 0, 10, 10));
    tree.root->addProbe("b", Rectangle(0, 0, 10, 10));
    Probe* c = tree.root->addProbe("c", Rectangle(0, 0, 10, 10));
    tree.root->addChild(c, 0);
    EXPECT_EQ(childNames(*tree.root), (std::vector<std::string>{"c", "a", "b"}));
    tree.root->addChild(c);
    EXPECT_EQ(childNames(*tree.root), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(ComponentTest, AddingAChildOfAnotherParentTakesItOver)
{
    TreeHarness tree(100, 100);
    Probe* first = tree.root->addProbe("first", Rectangle(0, 0, 50, 50));
    Probe* second = tree.root->addProbe("second", Rectangle(50, 0, 50, 50));
    Probe* child = first->addProbe("child", Rectangle(0, 0, 10, 10));
    tree.settle();
    second->addChild(child);
    EXPECT_EQ(child->getParent(), second);
    EXPECT_EQ(first->getNumChildren(), 0);
    EXPECT_EQ(tree.log, (Log{"first.childRemoved child"}));
}

TEST(ComponentTest, AddingItselfOrAnAncestorIsRefused)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(0, 0, 50, 50));
    child->addChild(tree.root);
    child->addChild(child);
    EXPECT_EQ(child->getNumChildren(), 0);
    EXPECT_EQ(tree.root->getParent(), nullptr);
}

TEST(ComponentTest, MoveInZOrderClampsAtTheBottomAndAppendsAtTheTop)
{
    TreeHarness tree(100, 100);
    tree.root->addProbe("a", Rectangle(0, 0, 10, 10));
    Probe* b = tree.root->addProbe("b", Rectangle(0, 0, 10, 10));
    tree.root->addProbe("c", Rectangle(0, 0, 10, 10));
    b->moveInZOrder(-100);
    EXPECT_EQ(childNames(*tree.root), (std::vector<std::string>{"b", "a", "c"}));
    b->moveInZOrder(100);
    EXPECT_EQ(childNames(*tree.root), (std::vector<std::string>{"a", "c", "b"}));
    b->moveInZOrder(-1);
    EXPECT_EQ(childNames(*tree.root), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(ComponentTest, FindChildByIdLooksAtDirectChildrenOrTheWholeSubtree)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(0, 0, 10, 10));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(0, 0, 10, 10));
    grandchild->setComponentId(7);
    tree.root->setComponentId(3);
    EXPECT_EQ(tree.root->findChildById(3, false), tree.root);
    EXPECT_EQ(tree.root->findChildById(7, false), nullptr);
    EXPECT_EQ(tree.root->findChildById(7, true), grandchild);
    EXPECT_EQ(tree.root->findChildById(8, true), nullptr);
}

TEST(ComponentTest, CollectDescendantsListsParentsBeforeTheirChildren)
{
    TreeHarness tree(100, 100);
    Probe* a = tree.root->addProbe("a", Rectangle(0, 0, 10, 10));
    a->addProbe("a1", Rectangle(0, 0, 10, 10));
    tree.root->addProbe("b", Rectangle(0, 0, 10, 10));
    Array<Component*> all;
    tree.root->collectDescendants(all);
    std::vector<std::string> names;
    for (Component* component : all)
        names.push_back(Probe::nameOf(component));
    EXPECT_EQ(names, (std::vector<std::string>{"a", "a1", "b"}));
}

TEST(ComponentTest, ClearingTheOverlayLeavesTheOverlayBitAsTheOnlyFlag)
{
    Component component;
    component.setVisible(true);
    component.setOverlay(true);
    EXPECT_EQ(component.getFlags(), Component::defaultFlags | Component::flagVisible | Component::flagOverlay);
    component.setOverlay(false);
    EXPECT_EQ(component.getFlags(), Component::flagOverlay);
    EXPECT_FALSE(component.isVisible());
    EXPECT_FALSE(component.isEnabled());
}

TEST(ComponentTest, IsShowingLooksOneLevelUp)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(0, 0, 50, 50));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(0, 0, 10, 10));
    tree.root->setVisible(false);
    EXPECT_TRUE(grandchild->isShowing());
    child->setVisible(false);
    EXPECT_FALSE(grandchild->isShowing());
}

TEST(ComponentTest, AbsoluteBoundsAddEveryAncestorPositionAndMayClipToThem)
{
    TreeHarness tree(100, 100);
    tree.root->setBounds(Rectangle(5, 5, 100, 100), false);
    Probe* child = tree.root->addProbe("child", Rectangle(10, 20, 30, 30));
    Probe* grandchild = child->addProbe("grandchild", Rectangle(20, -5, 20, 20));
    EXPECT_EQ(tree.root->getAbsoluteBounds(false), Rectangle(5, 5, 100, 100));
    EXPECT_EQ(grandchild->getAbsoluteBounds(false), Rectangle(35, 20, 20, 20));
    EXPECT_EQ(grandchild->getAbsoluteBounds(true), Rectangle(35, 25, 10, 15));
}

TEST(ComponentTest, DestructorTellsListenersFirstThenLeavesTheParent)
{
    TreeHarness tree(100, 100);
    Probe* child = tree.root->addProbe("child", Rectangle(0, 0, 50, 50));
    child->addProbe("grandchild", Rectangle(0, 0, 10, 10));
    LoggingListener listener(tree.log, child);
    tree.settle();
    delete child;
    // By then the child is a plain Component, which the probe cannot name.
    EXPECT_EQ(tree.log, (Log{"listener.deleted child", "root.childRemoved ?"}));
    EXPECT_EQ(tree.root->getNumChildren(), 0);
}

TEST(ComponentTest, SafePointerBecomesNullWhenTheComponentIsDeleted)
{
    auto* component = new Component();
    Component::SafePointer first(component);
    Component::SafePointer second(first);
    Component::SafePointer unrelated(new Component());
    delete component;
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(second.get(), nullptr);
    EXPECT_NE(unrelated.get(), nullptr);
    delete unrelated.get();
}

TEST(ComponentTest, TypeNameIsTheClassName)
{
    Probe probe("probe", nullptr);
    EXPECT_EQ(std::string(probe.getTypeName().getCString()), "Probe");
    Component plain;
    EXPECT_EQ(std::string(plain.getTypeName().getCString()), "q1framework::Component");
}
