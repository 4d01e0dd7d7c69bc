// ComponentsContainer: what it asks of the window that shows its tree.

#include "ui/container/ComponentsContainer.h"

namespace q1framework
{

Point ComponentsContainer::getWindowScreenPosition() const
{
    return Point();
}

void ComponentsContainer::applyCursor(const Mouse::Cursor& cursor)
{
    appliedCursor = cursor;
}

void ComponentsContainer::setMouseLocked(bool locked)
{
    mouseLockRequested = locked;
}

}  // namespace q1framework
