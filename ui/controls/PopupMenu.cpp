#include "ui/controls/PopupMenu.h"

#include "ui/container/ComponentsContainer.h"
#include "ui/controls/PopupMenuInnerComponent.h"
#include "ui/lookandfeel/LookAndFeel.h"

#include <algorithm>

namespace q1framework
{

namespace
{
constexpr int border = 1;
constexpr int minimumWidth = 80;
constexpr int textPadding = 24;
}

PopupMenu::PopupMenu() : inner(new PopupMenuInnerComponent(*this))
{
    setOpaque(true);
    addAndMakeVisible(inner);
}

void PopupMenu::addItem(int itemId, const String& text)
{
    items.add(Item{itemId, text});
}

void PopupMenu::addListener(Listener* listener)
{
    if (listener)
        menuListeners.addIfNotAlreadyThere(listener);
}

void PopupMenu::removeListener(Listener* listener)
{
    menuListeners.removeFirstMatching(listener);
}

void PopupMenu::show(Component& root, const Point& position)
{
    LookAndFeel& lookAndFeel = *getLookAndFeel();
    const Font& font = lookAndFeel.getDefaultFont();
    int width = minimumWidth;
    for (const Item& item : items)
        width = std::max(width, static_cast<int>(font.getTextWidth(item.text.getCString())) + textPadding);
    const int height = items.getCount() * lookAndFeel.getPopupMenuItemHeight() + 2 * border;
    const int x = std::max(0, std::min(position.x, root.getWidth() - width - 2 * border));
    const int y = std::max(0, std::min(position.y, root.getHeight() - height));
    setBounds(Rectangle(x, y, width + 2 * border, height), false);
    inner->setBounds(Rectangle(border, border, width, height - 2 * border), false);
    root.addChild(this);
    setOverlay(true);
    setVisible(true);
    if (ComponentsContainer* container = getContainer())
        container->setPendingPopup(this);
}

void PopupMenu::close(int chosenIndex)
{
    SafePointer self(this);
    const bool chosen = chosenIndex >= 0 && chosenIndex < items.getCount();
    const int id = chosen ? items[chosenIndex].id : -1;
    for (int32_t index = 0; self && index < menuListeners.getCount(); ++index)
        if (chosen)
            menuListeners[index]->popupMenuItemChosen(this, id);
        else
            menuListeners[index]->popupMenuDismissed(this);
    if (!self)
        return;
    if (ComponentsContainer* container = getContainer())
        if (container->getPendingPopup() == this)
            container->setPendingPopup(nullptr);
    if (getParent())
        getParent()->removeChild(this, true);
    else
        delete this;
}

bool PopupMenu::isPopup()
{
    return true;
}

void PopupMenu::popupDismissed(Component* clicked)
{
    if (clicked == this || (clicked && clicked->isDescendantOf(this)))
    {
        if (ComponentsContainer* container = getContainer())
            container->setPendingPopup(this);
        return;
    }
    close(-1);
}

void PopupMenu::paint(SoftwareGraphics& graphics)
{
    getLookAndFeel()->drawPopupMenuBackground(graphics, Rectangle(0, 0, getWidth(), getHeight()));
}

}  // namespace q1framework
