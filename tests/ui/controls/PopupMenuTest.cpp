#include "ui/controls/PopupMenu.h"

#include "support/TreeHarness.h"
#include "ui/controls/PopupMenuInnerComponent.h"
#include "ui/lookandfeel/LookAndFeel.h"

#include <gtest/gtest.h>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
struct MenuListener : PopupMenu::Listener
{
    explicit MenuListener(Log& log) : log(log) {}
    void popupMenuItemChosen(PopupMenu*, int itemId) override { log.push_back("chosen " + std::to_string(itemId)); }
    void popupMenuDismissed(PopupMenu*) override { log.push_back("dismissed"); }
    Log& log;
};

// A menu of three items, 10, 20 and 30, shown at (50, 40) over a 200 x 150 tree with a probe,
// "below", under part of it.
struct MenuHarness : TreeHarness
{
    MenuHarness() : TreeHarness(200, 150), listener(menuLog)
    {
        below = root->addProbe("below", Rectangle(0, 0, 60, 150));
        menu = new PopupMenu();
        for (int id : {10, 20, 30})
            menu->addItem(id, String("Item"));
        menu->addListener(&listener);
        menu->show(*root, Point(50, 40));
        watched = menu;
        settle();
    }

    // The middle of item index, in root coordinates.
    Point itemCentre(int index) const
    {
        const int height = LookAndFeel::getDefault().getPopupMenuItemHeight();
        return Point(menu->getX() + 20, menu->getY() + 1 + index * height + height / 2);
    }

    Log menuLog;  // what the menu's listener hears
    MenuListener listener;
    Probe* below;
    PopupMenu* menu;
    Component::SafePointer watched;
};
}

TEST(PopupMenuTest, ShownMenuIsAnOverlayOfTheRootAndThePendingPopup)
{
    MenuHarness tree;
    EXPECT_EQ(tree.menu->getParent(), tree.root);
    EXPECT_TRUE(tree.menu->isOverlay());
    EXPECT_EQ(tree.container.getPendingPopup(), tree.menu);
    EXPECT_EQ(tree.menu->getPosition(), Point(50, 40));
    EXPECT_EQ(tree.menu->getHeight(), 3 * LookAndFeel::getDefault().getPopupMenuItemHeight() + 2);
}

TEST(PopupMenuTest, ClickOnAnItemChoosesItAndTheMenuGoes)
{
    MenuHarness tree;
    tree.click(tree.itemCentre(1));
    EXPECT_EQ(tree.menuLog, (Log{"chosen 20"}));
    EXPECT_FALSE(tree.watched);
    EXPECT_EQ(tree.container.getPendingPopup(), nullptr);
}

TEST(PopupMenuTest, PressElsewhereDismissesItAndReachesWhatLiesThere)
{
    MenuHarness tree;
    tree.click(Point(10, 10));
    EXPECT_EQ(tree.menuLog, (Log{"dismissed"}));
    EXPECT_EQ(tree.below->lastEvent.clickCount, 1);
    EXPECT_FALSE(tree.below->isPressed());
    EXPECT_EQ(tree.log.back(), "below.up");
    EXPECT_FALSE(tree.watched);
}

TEST(PopupMenuTest, ReleaseAwayFromThePressedItemChoosesNothingAndKeepsTheMenu)
{
    MenuHarness tree;
    tree.send(ComponentsContainer::moveEvent, tree.itemCentre(0));
    tree.send(ComponentsContainer::pressEvent, tree.itemCentre(0), 1);
    tree.send(ComponentsContainer::moveEvent, Point(150, 140));
    tree.send(ComponentsContainer::releaseEvent, Point(150, 140), 1);
    EXPECT_TRUE(tree.menuLog.empty());
    ASSERT_TRUE(tree.watched);
    EXPECT_EQ(tree.container.getPendingPopup(), tree.menu);
}

TEST(PopupMenuTest, ItemUnderThePointerIsHighlighted)
{
    MenuHarness tree;
    auto* inner = dynamic_cast<PopupMenuInnerComponent*>(tree.menu->getChild(0));
    ASSERT_NE(inner, nullptr);
    tree.send(ComponentsContainer::moveEvent, tree.itemCentre(2));
    EXPECT_EQ(inner->getHighlightedItem(), 2);
    tree.send(ComponentsContainer::moveEvent, Point(150, 140));
    EXPECT_EQ(inner->getHighlightedItem(), -1);
}

TEST(PopupMenuTest, MenuStaysInsideTheRoot)
{
    TreeHarness tree(200, 150);
    auto* menu = new PopupMenu();
    menu->addItem(1, String("One"));
    menu->show(*tree.root, Point(190, 145));
    EXPECT_LE(menu->getRight(), 200);
    EXPECT_LE(menu->getBottom(), 150);
    EXPECT_TRUE(menu->isPopup());
}
