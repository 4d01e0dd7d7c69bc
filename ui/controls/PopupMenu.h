#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "ui/component/Component.h"

#include <cstdint>

namespace q1framework
{

class PopupMenuInnerComponent;

// A list of items shown over a tree until one is chosen or the user presses elsewhere. It shows
// itself as an overlay child of the tree's root (painted over everything) and as the container's
// pending popup, so the next press anywhere outside it dismisses it; that press still reaches
// what lies under it.
//
// A shown menu belongs to the tree and deletes itself when it closes: after a listener hears
// popupMenuItemChosen or popupMenuDismissed, the menu is gone. Made with new, filled, given a
// listener and shown; a menu that is never shown is deleted by its maker.
//
// Thread contract: main thread only.
class PopupMenu : public Component
{
public:
    // Not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // An item was clicked; the menu closes after this returns.
        virtual void popupMenuItemChosen(PopupMenu*, int /*itemId*/) {}
        // The menu closed without a choice.
        virtual void popupMenuDismissed(PopupMenu*) {}
    };

    PopupMenu();

    void addItem(int itemId, const String& text);
    int getNumItems() const { return items.getCount(); }
    int getItemId(int index) const { return index >= 0 && index < items.getCount() ? items[index].id : -1; }
    const String& getItemText(int index) const { return items[index].text; }
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    // Sized to its items, placed with its top-left at position (root coordinates; moved to stay
    // inside the root where it fits), added to root as an overlay and made the pending popup of
    // root's container.
    void show(Component& root, const Point& position);
    // Closes the menu with the item at index chosen, or without a choice for an index out of
    // range, and deletes it.
    void close(int chosenIndex);

    bool isPopup() override;
    // A press outside the menu closes it without a choice; a press on it keeps it open.
    void popupDismissed(Component* clicked) override;
    void paint(SoftwareGraphics& graphics) override;

private:
    struct Item
    {
        int id;
        String text;
    };

    Array<Item> items;
    Array<Listener*> menuListeners;
    PopupMenuInnerComponent* inner;  // owned as a child
};

}  // namespace q1framework
