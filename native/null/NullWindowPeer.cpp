#include "native/null/NullWindowPeer.h"

#include "native/window/SystemCursor.h"
#include "native/window/Window.h"

#include <algorithm>
#include <cstring>

namespace q1framework
{

namespace
{
Rectangle atLeastOnePixel(const Rectangle& bounds)
{
    return Rectangle(bounds.x, bounds.y, std::max(bounds.w, 1), std::max(bounds.h, 1));
}
}  // namespace

WindowPeer* WindowPeer::create(Window& window, const Rectangle& bounds, int flags, const String& title, void* parent)
{
    return new NullWindowPeer(window, bounds, flags, title, parent);
}

void WindowPeer::dispatchNativeEvents() {}

NullWindowPeer* NullWindowPeer::of(const Window& window)
{
    return dynamic_cast<NullWindowPeer*>(window.getPeer());
}

NullWindowPeer::NullWindowPeer(Window& owner, const Rectangle& initialBounds, int initialFlags,
                               const String& initialTitle, void* initialParent)
    : window(owner), kind(initialParent != nullptr ? childKind : topLevelKind), flags(initialFlags),
      bounds(atLeastOnePixel(initialBounds)), title(initialTitle), parent(initialParent),
      parentSize(bounds.getSize())
{
    resetScreen();
}

void NullWindowPeer::resetScreen()
{
    screen = Image(bounds.w, bounds.h, true, 0);
    lost.clear();
    lost.addRectangle(Rectangle(Point(), bounds.getSize()));
}

void NullWindowPeer::setBounds(const Rectangle& newBounds)
{
    const Rectangle previous = bounds;
    bounds = atLeastOnePixel(newBounds);
    if (bounds.getSize() != previous.getSize())
        resetScreen();
}

void NullWindowPeer::invalidate(const Rectangle& area)
{
    invalidated.add(area);
}

void NullWindowPeer::setCursor(int systemCursor)
{
    cursor = systemCursor >= 0 && systemCursor < SystemCursor::count ? systemCursor : SystemCursor::arrow;
    cursorImage = Image();
}

void NullWindowPeer::setCursorImage(const Image& picture, const Point& hotSpot)
{
    if (picture.isEmpty())
    {
        setCursor(SystemCursor::arrow);
        return;
    }
    cursor = -1;
    cursorImage = picture;
    cursorHotSpot = hotSpot;
}

void NullWindowPeer::setPointerLocked(bool locked, const Point& newAnchor)
{
    pointerLocked = locked;
    anchor = newAnchor;
    pointer = newAnchor;
    ++warpCount;
}

bool NullWindowPeer::takeLockedMovement(const Point& position, Point& movement)
{
    movement = position - anchor;
    pointer = anchor;
    if (movement == Point())
        return false;
    ++warpCount;
    return true;
}

void NullWindowPeer::resizeParent(const Point& newSize)
{
    if (kind != childKind)
        return;
    parentSize = parentSize + (newSize - bounds.getSize());
    ++parentResizeCount;
}

void NullWindowPeer::presentPixels(const uint8_t* pixels, int stride, const Point& size, const Rectangle* rectangles,
                                   int count)
{
    ++presentCount;
    lastPresented.clear();
    if (pixels == nullptr)
        return;
    const Rectangle visible = Rectangle(Point(), size).getIntersection(screen.getBounds());
    for (int index = 0; rectangles != nullptr && index < count; ++index)
    {
        const Rectangle part = rectangles[index].getIntersection(visible);
        if (!part.isEmpty())
            lastPresented.add(part);
    }
    lost.getRectangles(lostRectangles);
    for (const RectangleList* list : {&lastPresented, &lostRectangles})
        for (const Rectangle& rectangle : *list)
        {
            const Rectangle part = rectangle.getIntersection(visible);
            for (int32_t y = part.y; y < part.getBottom(); ++y)
                std::memcpy(screen.getPixelPointer(part.x, y),
                            pixels + static_cast<ptrdiff_t>(y) * stride + static_cast<ptrdiff_t>(part.x) * 4,
                            static_cast<size_t>(part.w) * 4);
        }
    lost.clear();
}

void NullWindowPeer::injectMouse(int type, const Point& position, int button, int clickCount, float deltaX,
                                 float deltaY)
{
    if (!pointerLocked)
        pointer = position;
    window.deliverMouseEvent(type, position, button, clickCount, deltaX, deltaY);
}

bool NullWindowPeer::injectKey(bool down, int key, int nativeKeyCode)
{
    return window.deliverKey(down, key, nativeKeyCode);
}

void NullWindowPeer::injectModifiers(uint32_t modifierMask)
{
    window.deliverModifiers(modifierMask);
}

void NullWindowPeer::injectBackingScale(double scale)
{
    backingScale = scale;
    window.deliverBackingScale(scale);
}

bool NullWindowPeer::injectFilesDropped(const Point& position, const Array<String>& paths)
{
    return window.deliverFilesDropped(position, paths);
}

void NullWindowPeer::injectResize(const Point& newSize)
{
    setBounds(Rectangle(bounds.getPosition(), newSize));
    window.deliverResized(bounds.getSize(), false);
}

void NullWindowPeer::injectExposed(const Rectangle& area)
{
    lost.addRectangle(area.getIntersection(screen.getBounds()));
    window.deliverExposed(area);
}

void NullWindowPeer::injectActiveChanged(bool active)
{
    window.deliverActiveChanged(active);
}

void NullWindowPeer::injectMouseLeft(const Point& position)
{
    window.deliverMouseLeft(position);
}

void NullWindowPeer::injectCloseRequest()
{
    window.deliverCloseRequest();
}

void NullWindowPeer::injectDestroyed()
{
    window.deliverNativeDestroyed();
}

}  // namespace q1framework
