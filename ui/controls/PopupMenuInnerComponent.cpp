#include "ui/controls/PopupMenuInnerComponent.h"

#include "ui/controls/PopupMenu.h"
#include "ui/lookandfeel/LookAndFeel.h"

namespace q1framework
{

PopupMenuInnerComponent::PopupMenuInnerComponent(PopupMenu& owner) : menu(owner)
{
    setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
}

int PopupMenuInnerComponent::getItemAt(int y)
{
    const int itemHeight = getLookAndFeel()->getPopupMenuItemHeight();
    if (y < 0 || itemHeight < 1)
        return -1;
    const int item = y / itemHeight;
    return item < menu.getNumItems() ? item : -1;
}

bool PopupMenuInnerComponent::isPopup()
{
    return true;
}

void PopupMenuInnerComponent::highlight(int item)
{
    if (item == highlighted)
        return;
    highlighted = item;
    repaint();
}

void PopupMenuInnerComponent::mouseMove(const MouseEvent& event)
{
    highlight(Rectangle(0, 0, getWidth(), getHeight()).contains(Point(event.x, event.y)) ? getItemAt(event.y) : -1);
}

void PopupMenuInnerComponent::mouseDrag(const MouseEvent& event)
{
    mouseMove(event);
}

void PopupMenuInnerComponent::mouseExit(const MouseEvent&)
{
    highlight(-1);
}

void PopupMenuInnerComponent::mouseUp(const MouseEvent& event)
{
    if (!Rectangle(0, 0, getWidth(), getHeight()).contains(Point(event.x, event.y)))
        return;
    const int item = getItemAt(event.y);
    if (item >= 0)
        menu.close(item);
}

void PopupMenuInnerComponent::paint(SoftwareGraphics& graphics)
{
    LookAndFeel& lookAndFeel = *getLookAndFeel();
    const int itemHeight = lookAndFeel.getPopupMenuItemHeight();
    for (int item = 0; item < menu.getNumItems(); ++item)
        lookAndFeel.drawPopupMenuItem(graphics, Rectangle(0, item * itemHeight, getWidth(), itemHeight),
                                      menu.getItemText(item), item == highlighted);
}

}  // namespace q1framework
