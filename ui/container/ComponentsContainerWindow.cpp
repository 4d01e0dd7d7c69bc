// ComponentsContainer: what it asks of the window that shows its tree.

#include "ui/container/ComponentsContainer.h"

#include "native/window/Window.h"

namespace q1framework
{

Point ComponentsContainer::getWindowScreenPosition() const
{
    return window ? window->getScreenPosition() : Point();
}

void ComponentsContainer::applyCursor(const Mouse::Cursor& cursor)
{
    appliedCursor = cursor;
    if (window)
        window->setCursor(cursor.getSystemIndex());
}

void ComponentsContainer::setMouseLocked(bool locked)
{
    mouseLockRequested = locked;
    if (window)
        window->setMouseLocked(locked);
}

}  // namespace q1framework
