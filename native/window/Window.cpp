#include "native/window/Window.h"

#include "foundation/runtime/StaticInitOrder.h"
#include "foundation/runtime/VSyncTimer.h"
#include "native/window/KeyCodes.h"
#include "native/window/SystemCursor.h"
#include "native/window/WindowFlags.h"
#include "native/window/WindowPeer.h"
#include "render/context/GLDrawable.h"
#include "render/gl/OpenGLContext.h"

#include <algorithm>

namespace q1framework
{

namespace
{
// The live windows in creation order, and the top-level ones still open; made at load time
// before any window can exist.
__attribute__((init_priority(StaticInitOrder::nativeViews))) Array<Window*> liveWindows;
__attribute__((init_priority(StaticInitOrder::nativeViews))) Array<Window*> frameSnapshot;
int openTopLevelCount = 0;
// Counts the frames from 1; a window that joins during frame n waits for frame n + 1.
uint64_t frameNumber = 0;

// The frame loop's hold on the frame clock, listening while any window is live.
class FrameClock : public VSyncTimer::Listener
{
public:
    void vsyncTick() override { Window::runFrame(); }
};
FrameClock frameClock;
}  // namespace

// Notices, across calls that may delete the window, whether one did. Chains to a flag that a
// caller gave the window, so that caller learns of the deletion as well.
class Window::DeletionWatch
{
public:
    // The window holds the address of this object's flag only while the object lives: the
    // destructor takes it back, unless the window is gone by then.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer"
#endif
    explicit DeletionWatch(Window& watched) : window(watched), previous(watched.deletionFlag)
    {
        watched.deletionFlag = &deleted;
    }
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

    ~DeletionWatch()
    {
        if (!deleted)
            window.deletionFlag = previous;
        else if (previous != nullptr)
            *previous = true;
    }

    DeletionWatch(const DeletionWatch&) = delete;
    DeletionWatch& operator=(const DeletionWatch&) = delete;

    bool deleted = false;

private:
    Window& window;
    bool* previous;
};

Window::Window(const Rectangle& bounds, int newFlags, const String& title, void* parent)
{
    Window::createNative(bounds, newFlags, title, parent);
}

Window::~Window()
{
    if (deletionFlag != nullptr)
        *deletionFlag = true;
    Window::destroyNative();
}

bool Window::createNative(const Rectangle& bounds, int newFlags, const String& title, void* parent)
{
    if (peer != nullptr)
        return true;
    flags = newFlags;
    kind = parent != nullptr ? WindowPeer::childKind : WindowPeer::topLevelKind;
    backingScale = 1.0;
    peer = WindowPeer::create(*this, bounds, flags, title, parent);
    if (peer != nullptr)
    {
        kind = peer->getKind();
        backingScale = peer->getBackingScale();
        size = peer->getBounds().getSize();
        if ((flags & WindowFlags::openGL) != 0)
            renderingContext = createRenderingContext();
    }
    // Without a rendering context the toolkit shows the window through the image put.
    if ((flags & WindowFlags::openGL) != 0 && renderingContext == nullptr)
        flags = (flags & ~WindowFlags::openGL) | WindowFlags::imageSurface;
    if (peer == nullptr)
        return false;
    paintPending = true;
    if (kind == WindowPeer::topLevelKind)
    {
        countedAsOpenTopLevel = true;
        ++openTopLevelCount;
    }
    joinedFrame = frameNumber;
    if (liveWindows.addIfNotAlreadyThere(this))
        VSyncTimer::addListener(&frameClock);
    return true;
}

RenderingContext* Window::createRenderingContext()
{
    GLDrawable* drawable = peer->getGLDrawable();
    if (drawable == nullptr)
        return nullptr;
    OpenGLContext* context = OpenGLContext::create(*drawable);
    if (context == nullptr)
        return nullptr;
    context->setSize(size.x, size.y);
    // One vertical blank per swap unless the window asks for none; only a double-buffered
    // drawable swaps at all.
    context->makeCurrent();
    drawable->setSwapInterval((flags & WindowFlags::swapIntervalZero) != 0 ? 0 : 1);
    context->releaseCurrent();
    return context;
}

void Window::destroyNative()
{
    leaveFrameLoop();
    if (peer == nullptr)
        return;
    setMouseLocked(false);
    delete renderingContext;
    renderingContext = nullptr;
    delete peer;
    peer = nullptr;
    size = Point();
}

void Window::leaveFrameLoop()
{
    if (countedAsOpenTopLevel)
    {
        countedAsOpenTopLevel = false;
        --openTopLevelCount;
    }
    if (liveWindows.removeFirstMatching(this) && liveWindows.isEmpty())
        VSyncTimer::removeListener(&frameClock);
}

ImagePresenter* Window::getImagePresenter() const
{
    return peer != nullptr ? &peer->getImagePresenter() : nullptr;
}

Rectangle Window::getBounds() const
{
    return peer != nullptr ? peer->getBounds() : Rectangle();
}

Point Window::getScreenPosition() const
{
    return peer != nullptr ? peer->getScreenPosition() : Point();
}

void Window::setSize(const Point& newSize)
{
    setBounds(Rectangle(getBounds().getPosition(), newSize));
}

void Window::setBounds(const Rectangle& bounds)
{
    if (peer == nullptr)
        return;
    peer->setBounds(bounds);
    deliverResized(Point(std::max(bounds.w, 1), std::max(bounds.h, 1)), false);
}

void Window::invalidate(const Rectangle& area)
{
    const Rectangle inside = area.getIntersection(Rectangle(Point(), size));
    if (peer == nullptr || inside.isEmpty())
        return;
    paintPending = true;
    peer->invalidate(inside);
}

void* Window::getNativeView() const
{
    return peer != nullptr ? peer->getNativeHandle() : nullptr;
}

void Window::setCursor(int systemCursor)
{
    if (peer != nullptr)
        peer->setCursor(systemCursor);
}

void Window::setCursorImage(const Image& picture, const Point& hotSpot)
{
    if (peer != nullptr)
        peer->setCursorImage(picture, hotSpot);
}

void Window::setMouseLocked(bool locked)
{
    if (peer == nullptr || locked == mouseLocked)
        return;
    mouseLocked = locked;
    lockedMovement = Point();
    peer->setPointerLocked(locked, lastMouseDownPosition);
}

void Window::resizeParent(const Point& newSize)
{
    if (peer != nullptr)
        peer->resizeParent(newSize);
}

void Window::setTitle(const String& title)
{
    if (peer != nullptr)
        peer->setTitle(title);
}

String Window::getTitle() const
{
    return peer != nullptr ? peer->getTitle() : String();
}

int Window::getWindowCount()
{
    return liveWindows.getCount();
}

Window* Window::getWindow(int index)
{
    return index >= 0 && index < liveWindows.getCount() ? liveWindows[index] : nullptr;
}

int Window::getOpenTopLevelCount()
{
    return openTopLevelCount;
}

void Window::runFrame()
{
    // A paint may pump (a modal loop); the windows it ticks then are not ticked twice.
    static bool running = false;
    if (running)
        return;
    running = true;
    const uint64_t frame = ++frameNumber;
    // The snapshot keeps its block, so a frame allocates nothing once the window count is steady.
    // A window deleted during the frame is no longer listed; one made during it (perhaps at a
    // deleted one's address) joined in this frame.
    frameSnapshot = liveWindows;
    const auto isDue = [frame](Window* window) { return liveWindows.contains(window) && window->joinedFrame < frame; };
    for (Window* window : frameSnapshot)
    {
        if (!isDue(window))
            continue;
        window->frameTick();
        if (isDue(window) && window->takePaintDue())
            window->paint();
    }
    running = false;
}

bool Window::takePaintDue()
{
    if (peer == nullptr)
        return false;
    const bool due = paintPending || renderingContext != nullptr || (flags & WindowFlags::paintEveryFrame) != 0;
    paintPending = false;
    return due;
}

Point Window::toWindowPosition(const Point& position) const
{
    if ((flags & WindowFlags::highResolution) == 0 || backingScale == 1.0)
        return position;
    return Point(static_cast<int32_t>(position.x * backingScale), static_cast<int32_t>(position.y * backingScale));
}

void Window::deliverMouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY)
{
    if (peer == nullptr)
        return;
    switch (type)
    {
        case 0:
            mouseEvent(0, toWindowPosition(position), 0, 0, deltaX, deltaY);
            return;
        case 1:
            lastMouseDownPosition = position;
            mouseEvent(1, toWindowPosition(position), button, clickCount, 0.0f, 0.0f);
            return;
        case 2:
            if (mouseLocked)
            {
                Point movement;
                if (!peer->takeLockedMovement(position, movement))
                    return;
                lockedMovement = lockedMovement + movement;
                position = lastMouseDownPosition + lockedMovement;
            }
            mouseEvent(2, toWindowPosition(position), 0, 0, 0.0f, 0.0f);
            return;
        case 3:
            setMouseLocked(false);
            mouseEvent(3, toWindowPosition(position), button, 1, 0.0f, 0.0f);
            return;
        case 4:
            mouseEvent(4, toWindowPosition(position), 0, 0, 0.0f, 0.0f);
            return;
        case 5:
            peer->setCursor(SystemCursor::arrow);
            mouseEvent(5, toWindowPosition(position), 0, 0, 0.0f, 0.0f);
            return;
        default:
            return;
    }
}

bool Window::deliverKey(bool down, int key, int nativeKeyCode)
{
    if (peer == nullptr || key == 0)
        return false;
    if (key == KeyCodes::lineFeed)
        return true;
    return down ? keyPressed(key, nativeKeyCode) : keyReleased(key, nativeKeyCode);
}

void Window::deliverModifiers(uint32_t modifierMask)
{
    if (peer == nullptr)
        return;
    static constexpr struct
    {
        uint32_t mask;
        int code;
    } modifiers[] = {{KeyCodes::optionMask, KeyCodes::option},
                     {KeyCodes::commandMask, KeyCodes::command},
                     {KeyCodes::shiftMask, KeyCodes::shift},
                     {KeyCodes::controlMask, KeyCodes::control}};
    DeletionWatch watch(*this);
    for (const auto& modifier : modifiers)
    {
        if ((modifierMask & modifier.mask) == modifier.mask)
            keyPressed(modifier.code, 0);
        else
            keyReleased(modifier.code, 0);
        if (watch.deleted)
            return;
    }
}

bool Window::deliverFilesDropped(const Point& position, const Array<String>& paths)
{
    if (peer == nullptr)
        return false;
    const Point at = toWindowPosition(position);
    DeletionWatch watch(*this);
    if (!isInterestedInFiles(at, paths) || watch.deleted)
        return false;
    filesDropped(at, paths);
    return true;
}

void Window::deliverBackingScale(double scale)
{
    if (peer == nullptr || scale == backingScale)
        return;
    backingScale = scale;
    backingScaleChanged();
}

void Window::deliverResized(const Point& newSize, bool force)
{
    if (peer == nullptr || (newSize == size && !force))
        return;
    size = newSize;
    paintPending = true;
    if (renderingContext != nullptr)
        renderingContext->setSize(size.x, size.y);
    resized();
}

void Window::deliverCloseRequest()
{
    if (peer == nullptr)
        return;
    leaveFrameLoop();
    closeRequested();
}

void Window::deliverActiveChanged(bool active)
{
    if (peer != nullptr)
        activeChanged(active);
}

void Window::deliverMouseLeft(Point position)
{
    if (peer != nullptr)
        mouseLeft(toWindowPosition(position));
}

void Window::deliverExposed(const Rectangle& area)
{
    if (peer != nullptr && !area.isEmpty())
        paintPending = true;
}

void Window::deliverNativeDestroyed()
{
    if (peer != nullptr)
        destroyNative();
}

}  // namespace q1framework
