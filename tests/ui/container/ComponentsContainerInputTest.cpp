// ComponentsContainer: pointer routing (capture, enter and exit, wheel, popups, allowed
// components, cursors), drag and drop inside the tree, files, keys and focus, and components
// deleted from inside their own handlers.

#include "ui/container/ComponentsContainer.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <vector>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
using namespace PointerKind;

constexpr int left = 1;
constexpr int right = 4;

// A tree with two probes side by side, a (0..50) and b (50..100), both 50 high.
struct TwoProbes : TreeHarness
{
    TwoProbes() : TreeHarness(100, 100)
    {
        a = root->addProbe("a", Rectangle(0, 0, 50, 50));
        b = root->addProbe("b", Rectangle(50, 0, 50, 50));
        settle();
    }

    Probe* a;
    Probe* b;
};
}

// ---- Enter, exit and capture ----

TEST(ComponentsContainerInputTest, MovingBetweenSiblingsExitsOneThenEntersTheOther)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.a->actions["exit"] = [&] { EXPECT_EQ(tree.a->lastEvent.otherComponent, tree.b); };
    tree.b->actions["enter"] = [&] { EXPECT_EQ(tree.b->lastEvent.otherComponent, tree.a); };
    tree.log.clear();
    tree.send(move, Point(60, 10));
    EXPECT_EQ(tree.log, (Log{"a.exit", "b.enter", "b.move"}));
    EXPECT_FALSE(tree.a->isMouseOver());
    EXPECT_TRUE(tree.b->isMouseOver());
}

TEST(ComponentsContainerInputTest, PressCapturesThePointerUntilTheRelease)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.log.clear();
    tree.send(move, Point(60, 10));
    tree.send(release, Point(60, 10), left);
    EXPECT_EQ(tree.log, (Log{"a.drag", "a.up", "a.exit", "b.enter"}));
    EXPECT_EQ(tree.a->lastEvent.x, 60);
}

TEST(ComponentsContainerInputTest, DragPositionsAreLocalToThePressedComponentFromBeforeThePress)
{
    TwoProbes tree;
    tree.send(move, Point(58, 5));
    tree.send(press, Point(60, 5), left);
    tree.send(move, Point(20, 30));
    const MouseEvent& event = tree.b->lastEvent;
    EXPECT_EQ(Point(event.x, event.y), Point(-30, 30));
    EXPECT_EQ(Point(event.downX, event.downY), Point(10, 5));
    EXPECT_EQ(event.getDistanceFromDragStartX(), -40);
    EXPECT_EQ(event.heldButtons, 1u);
}

TEST(ComponentsContainerInputTest, PressOfASecondButtonGoesToTheComponentThatHasThePointer)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.send(move, Point(60, 10));
    tree.log.clear();
    tree.send(press, Point(60, 10), right);
    tree.send(release, Point(60, 10), right);
    EXPECT_EQ(tree.log, (Log{"a.down", "a.up"}));
}

TEST(ComponentsContainerInputTest, DoubleClickSendsASecondDownBalancedByTheReleases)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left, 1);
    tree.send(press, Point(10, 10), left, 2);
    EXPECT_EQ(tree.a->lastEvent.clickCount, 2);
    EXPECT_TRUE(tree.a->isPressed());
    tree.send(release, Point(10, 10), left);
    EXPECT_TRUE(tree.a->isPressed());
    tree.log.clear();
    tree.send(release, Point(10, 10), left);
    EXPECT_TRUE(tree.log.empty());
    EXPECT_TRUE(tree.a->isPressed());
}

TEST(ComponentsContainerInputTest, ExitLeavesTheHoverButNotACapturedComponent)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.send(exited, Point(-1, -1));
    EXPECT_EQ(tree.log, (Log{"a.enter", "a.move", "a.exit"}));
    EXPECT_EQ(tree.container.getMouseComponent(false), nullptr);
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.log.clear();
    tree.send(exited, Point(-1, -1));
    EXPECT_TRUE(tree.log.empty());
    EXPECT_EQ(tree.container.getMouseComponent(true), tree.a);
}

TEST(ComponentsContainerInputTest, HoveredComponentsCursorIsShown)
{
    TwoProbes tree;
    tree.b->setCursor(Mouse::Cursor(Mouse::crosshairCursor));
    tree.send(move, Point(60, 10));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::crosshairCursor);
    tree.b->setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::pointingHandCursor);
}

// ---- Wheel, popups, allowed components ----

TEST(ComponentsContainerInputTest, WheelBubblesToTheFirstTakerWithItsOwnPosition)
{
    TwoProbes tree;
    Probe* inner = tree.b->addProbe("inner", Rectangle(5, 5, 20, 20));
    tree.b->usesWheel = true;
    tree.send(move, Point(60, 10));
    tree.log.clear();
    tree.send(wheel, Point(60, 10), 0, 0, 1.5f);
    EXPECT_EQ(tree.log, (Log{"inner.wheel", "b.wheel"}));
    EXPECT_EQ(Point(inner->lastEvent.x, inner->lastEvent.y), Point(5, 5));
    EXPECT_EQ(Point(tree.b->lastEvent.x, tree.b->lastEvent.y), Point(10, 10));
    EXPECT_EQ(tree.b->lastEvent.wheelY, 1.5f);
}

TEST(ComponentsContainerInputTest, PendingPopupHearsOfTheNextPressOnce)
{
    TwoProbes tree;
    tree.container.setPendingPopup(tree.b);
    tree.send(press, Point(10, 10), left);
    tree.send(release, Point(10, 10), left);
    tree.send(press, Point(10, 10), left);
    EXPECT_EQ(tree.log, (Log{"a.enter", "b.popupDismissed", "a.down", "a.up", "a.down"}));
}

TEST(ComponentsContainerInputTest, PressOutsideTheAllowedComponentsIsDroppedWhole)
{
    TwoProbes tree;
    Array<Component*> allowed;
    allowed.add(tree.b);
    tree.container.setAllowedComponents(allowed);
    tree.container.setPendingPopup(tree.b);
    tree.send(press, Point(10, 10), left);
    EXPECT_TRUE(tree.log.empty());
    EXPECT_EQ(tree.container.getPendingPopup(), tree.b);
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::dragRefusedCursor);
    EXPECT_EQ(tree.container.getPointer(0).heldButtons, 0u);
}

// ---- Drag and drop inside the tree, files ----

TEST(ComponentsContainerInputTest, StartDragIsRefusedWhileOneIsActive)
{
    TwoProbes tree;
    EXPECT_TRUE(tree.container.startDrag(tree.a, nullptr, Mouse::Cursor(Mouse::closedHandCursor)));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::closedHandCursor);
    EXPECT_FALSE(tree.container.startDrag(tree.b, nullptr, Mouse::Cursor()));
}

TEST(ComponentsContainerInputTest, DragOverATargetShowsWhetherItAccepts)
{
    TwoProbes tree;
    tree.b->dragTarget = true;
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.a->startDrag(nullptr, Mouse::Cursor(Mouse::closedHandCursor));
    tree.send(move, Point(60, 10));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::dragCopyCursor);
    tree.b->acceptsDrags = false;
    tree.send(move, Point(70, 10));
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::dragRefusedCursor);
}

TEST(ComponentsContainerInputTest, ReleaseDropsOnTheTargetAboveTheHit)
{
    TwoProbes tree;
    tree.b->dragTarget = true;
    Probe* inner = tree.b->addProbe("inner", Rectangle(10, 10, 20, 20));
    inner->setCursor(Mouse::Cursor(Mouse::crosshairCursor));
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.a->startDrag(nullptr, Mouse::Cursor(Mouse::closedHandCursor));
    tree.send(move, Point(65, 15));
    tree.log.clear();
    tree.send(release, Point(65, 15), left);
    EXPECT_EQ(tree.log, (Log{"a.up", "a.exit", "inner.enter", "b.interested a 15,15", "b.dropped a on inner 15,15"}));
    EXPECT_FALSE(tree.container.isDragActive());
    EXPECT_EQ(tree.container.getAppliedCursor().getSystemIndex(), Mouse::crosshairCursor);
}

TEST(ComponentsContainerInputTest, FilesGoUpTheChainToTheFirstInterestedComponent)
{
    TwoProbes tree;
    Probe* inner = tree.b->addProbe("inner", Rectangle(10, 10, 20, 20));
    tree.b->wantsFiles = tree.b->takesFiles = true;
    Array<String> files;
    files.add(String("/tmp/one.wav"));
    EXPECT_TRUE(tree.container.isInterestedInFiles(Point(65, 15), files));
    tree.log.clear();
    EXPECT_TRUE(tree.container.filesDropped(Point(65, 15), files));
    EXPECT_EQ(tree.log, (Log{"inner.filesInterest 5,5", "b.filesInterest 15,15", "b.filesDropped 15,15 1"}));
    EXPECT_FALSE(inner->wantsFiles);
}

// ---- Keys and focus ----

TEST(ComponentsContainerInputTest, RootSeesAKeyFirstThenTheFocusedComponentAndItsParents)
{
    TwoProbes tree;
    Probe* inner = tree.b->addProbe("inner", Rectangle(10, 10, 20, 20));
    inner->setWantsFocus(true);
    inner->grabFocus();
    tree.b->usesKey = 'x';
    tree.log.clear();
    EXPECT_TRUE(tree.container.keyDown('x', 7));
    EXPECT_EQ(tree.log, (Log{"root.globalKey 120", "inner.key 120", "b.key 120"}));
    tree.container.keyUp('x', 7);
}

TEST(ComponentsContainerInputTest, UnusedKeyAnswersFalse)
{
    TwoProbes tree;
    EXPECT_FALSE(tree.container.keyDown('q', 0));
    tree.container.keyUp('q', 0);
}

TEST(ComponentsContainerInputTest, HeldKeysAreSharedByEveryContainer)
{
    TwoProbes first;
    TwoProbes second;
    first.container.keyDown(KeyEvent::shift, 0);
    EXPECT_TRUE(second.a->isModifierKeyDown(KeyEvent::shift));
    EXPECT_TRUE(second.a->isAnyModifierDown());
    first.container.keyUp(KeyEvent::shift, 0);
    EXPECT_FALSE(ComponentsContainer::isKeyDown(KeyEvent::shift));
    first.container.keyDown(KeyEvent::command, 0);
    EXPECT_FALSE(second.a->isAnyModifierDown());
    first.container.keyUp(KeyEvent::command, 0);
}

TEST(ComponentsContainerInputTest, FocusMovesFromTheOldComponentToTheNew)
{
    TwoProbes tree;
    tree.a->setWantsFocus(true);
    tree.b->setWantsFocus(true);
    tree.a->grabFocus();
    tree.b->grabFocus();
    EXPECT_EQ(tree.log, (Log{"a.focusGained", "a.focusLost", "b.focusGained"}));
    EXPECT_TRUE(tree.b->hasFocus());
    tree.b->releaseFocus();
    EXPECT_EQ(tree.container.getFocusedComponent(), nullptr);
}

TEST(ComponentsContainerInputTest, GrabFocusNeedsTheWish)
{
    TwoProbes tree;
    tree.a->grabFocus();
    EXPECT_EQ(tree.container.getFocusedComponent(), nullptr);
}

TEST(ComponentsContainerInputTest, TabMovesTheFocusDepthFirstAndWrapsAround)
{
    TwoProbes tree;
    Probe* a1 = tree.a->addProbe("a1", Rectangle(0, 0, 10, 10));
    for (Probe* probe : {tree.a, a1, tree.b})
        probe->setWantsFocus(true);
    a1->grabFocus();
    EXPECT_TRUE(tree.container.keyDown(KeyEvent::tab, 0));
    tree.container.keyUp(KeyEvent::tab, 0);
    EXPECT_EQ(tree.container.getFocusedComponent(), tree.b);
    EXPECT_EQ(tree.container.focusNext(), tree.a);
}

TEST(ComponentsContainerInputTest, TabWithNothingFocusedSkipsTheFirstComponent)
{
    TwoProbes tree;
    tree.a->setWantsFocus(true);
    EXPECT_EQ(tree.container.focusNext(), nullptr);
    tree.b->setWantsFocus(true);
    EXPECT_EQ(tree.container.focusNext(), tree.b);
}

// ---- Components deleted from their own handlers ----

TEST(ComponentsContainerInputTest, PressedComponentDeletedInItsMouseDownEndsTheGesture)
{
    TwoProbes tree;
    tree.a->actions["down"] = [&tree] { delete tree.a; };
    tree.send(move, Point(10, 10));
    tree.send(press, Point(10, 10), left);
    tree.send(move, Point(60, 10));
    tree.send(release, Point(60, 10), left);
    EXPECT_EQ(tree.log, (Log{"a.enter", "a.move", "a.down", "root.childRemoved ?", "b.enter"}));
    EXPECT_EQ(tree.container.getMouseComponent(false), tree.b);
}

TEST(ComponentsContainerInputTest, HoveredComponentDeletedInItsMouseMoveIsForgotten)
{
    TwoProbes tree;
    tree.a->actions["move"] = [&tree] { delete tree.a; };
    tree.send(move, Point(10, 10));
    EXPECT_EQ(tree.container.getMouseComponent(false), nullptr);
    tree.send(move, Point(12, 10));
    EXPECT_EQ(tree.container.getMouseComponent(false), tree.root);
}

TEST(ComponentsContainerInputTest, ComponentDeletedInItsMouseExitLetsTheNextOneEnter)
{
    TwoProbes tree;
    tree.send(move, Point(10, 10));
    tree.a->actions["exit"] = [&tree] { delete tree.a; };
    tree.send(move, Point(60, 10));
    EXPECT_EQ(tree.container.getMouseComponent(false), tree.b);
    EXPECT_TRUE(tree.b->isMouseOver());
}

TEST(ComponentsContainerInputTest, ParentDeletingTheChildOnItsPressStopsTheChildsHandlers)
{
    TwoProbes tree;
    struct Deleting : Probe
    {
        using Probe::Probe;
        void childMouseDown(Component* child, const MouseEvent&) override { delete child; }
    };
    auto* parent = new Deleting("parent", &tree.log);
    parent->setBounds(Rectangle(0, 50, 100, 50), false);
    tree.root->addAndMakeVisible(parent);
    parent->addProbe("child", Rectangle(0, 0, 50, 50));
    tree.log.clear();
    tree.send(move, Point(10, 60));
    tree.send(press, Point(10, 60), left);
    tree.send(release, Point(10, 60), left);
    EXPECT_EQ(tree.log, (Log{"child.enter", "child.move", "parent.childRemoved ?", "parent.enter"}));
}

TEST(ComponentsContainerInputTest, FocusedComponentDeletedInItsKeyHandlerStopsTheWalk)
{
    TwoProbes tree;
    tree.a->setWantsFocus(true);
    tree.a->grabFocus();
    tree.a->actions["key 97"] = [&tree] { delete tree.a; };
    tree.log.clear();
    EXPECT_FALSE(tree.container.keyDown('a', 0));
    tree.container.keyUp('a', 0);
    EXPECT_EQ(tree.container.getFocusedComponent(), nullptr);
    EXPECT_EQ(tree.log, (Log{"root.globalKey 97", "a.key 97", "root.childRemoved ?"}));
}
