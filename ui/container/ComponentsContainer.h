#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleList.h"
#include "render/region/Region.h"
#include "ui/component/PaintContext.h"
#include "ui/input/KeyEvent.h"
#include "ui/input/Mouse.h"
#include "ui/input/MouseEvent.h"

#include <cstdint>

namespace q1framework
{

class Component;
class Window;

// Stands between a tree of Components and whatever shows it (a ComponentsWindow, or an
// AdapterComponent that shows an inner tree inside an outer one). It owns the root, keeps the
// regions still to be painted and shown, the pointer records, the keyboard focus and the drag
// state, and tells its Listener what has to be redrawn. The only pixels it knows are the buffer
// handed to paint.
//
// Coordinates: the container's logical space, which is the root's parent space: (0, 0) is the
// root's top-left when the root sits at (0, 0), as it normally does.
//
// Regions: dirty is what paint still has to paint; presentDirty is what the window still has to
// show (it also receives areas that a scroll moved without painting them). paint consumes
// neither unless asked; the window clears both after each frame.
//
// Thread contract: main thread only; nothing here locks and, once the tree is built and sized
// and its regions have reached their working size, a frame allocates nothing.
class ComponentsContainer
{
public:
    // Hears what has to be redrawn. Not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // area, in container coordinates and not clipped to the size, is to be redrawn.
        virtual void areaInvalidated(const Rectangle& area) = 0;
        // The pixels of source move to destination now (scrolling without copying).
        virtual void areaMoved(const Rectangle& source, const Point& destination) = 0;
        // The same when the container copies for scrolling (setCopyForScroll).
        virtual void areaCopied(const Rectangle& source, const Point& destination) = 0;
    };

    // One pointer's record: what its handlers receive as a MouseEvent, and the components of its
    // gesture. Hovering while no button is held; captured while one is.
    struct PointerState : MouseEvent
    {
        // What lay under the first button of the gesture.
        Component* pressedComponent = nullptr;
        // The component that receives this pointer's events; kept while a button is held.
        Component* hoverComponent = nullptr;
    };

    static constexpr int pointerCount = 11;

    // Event kinds of sendMouseEvent.
    static constexpr int wheelEvent = 0;
    static constexpr int pressEvent = 1;
    static constexpr int moveEvent = 2;  // move, or drag while a button is held
    static constexpr int releaseEvent = 3;
    static constexpr int enterEvent = 4;
    static constexpr int exitEvent = 5;

    // window: the window that shows the tree, not owned; null for an inner container.
    explicit ComponentsContainer(Window* window);
    // Detaches and deletes the root with its tree.
    virtual ~ComponentsContainer();

    ComponentsContainer(const ComponentsContainer&) = delete;
    ComponentsContainer& operator=(const ComponentsContainer&) = delete;

    // ---- The tree ----

    // The old root is detached (and its tree forgotten by the pointer records, the focus and the
    // popup), and deleted with deleteOld. The new root (may be null) is attached, made visible
    // with makeVisible, and told of a scale other than 1.
    void setRootComponent(Component* root, bool deleteOld, bool makeVisible);
    Component* getRootComponent() const { return root; }
    // The root's size, (0, 0) without a root.
    Point getSize() const;
    // Nothing when equal to the size set last. Otherwise stores it, sizes the root to it and
    // invalidates the whole area.
    void setSize(const Point& newSize);
    double getScale() const { return scale; }
    // A new value is stored and the root told; nothing is invalidated.
    void setScale(double newScale);

    Window* getWindow() const { return window; }
    void setWindow(Window* newWindow) { window = newWindow; }
    Listener* getListener() const { return listener; }
    void setListener(Listener* newListener) { listener = newListener; }
    void setCopyForScroll(bool copy) { copyForScroll = copy; }
    // The open popup, told of the next press (popupDismissed) and then forgotten.
    void setPendingPopup(Component* popup) { pendingPopup = popup; }
    Component* getPendingPopup() const { return pendingPopup; }

    // ---- Repainting ----

    // area cut to the size goes into dirty and presentDirty when not empty; the listener hears
    // of area as given in any case.
    void invalidate(const Rectangle& area);
    // invalidate of the whole size.
    void invalidateAll();
    // Moves the pixels of area by (dx, dy) instead of repainting them: the dirty part of area
    // travels with them, and only the strips the move uncovers are invalidated. The listener
    // moves (or copies) the pixels.
    void scrollArea(const Rectangle& area, int dx, int dy);
    // Paints the dirty part of the tree into width by height pixels (stride bytes per line,
    // premultiplied, see SoftwareGraphics) and answers true; false, touching nothing, when
    // nothing is dirty. clearAfterwards empties dirty and presentDirty.
    bool paint(void* pixels, const Point& size, int stride, bool clearAfterwards);
    void clearDirty();
    const Region& getDirtyRegion() const { return dirty; }
    // presentDirty cut to the root's area. The region is scratch, valid until the next call.
    const Region& getPresentRegion();

    // ---- Frames ----

    // Once a frame: tick() on every visible component, parents first; hidden subtrees skipped.
    void tick();
    void beginFrame();
    void endFrame();

    // ---- Hit testing and input ----

    // Null for a negative coordinate or without a root; else the root's hit test.
    Component* getComponentAt(const Point& position);
    // While the list is not empty, the mouse reaches only these components.
    void setAllowedComponents(const Array<Component*>& components) { allowedComponents = components; }
    void clearAllowedComponents() { allowedComponents.clear(); }
    // Removes every reference to component: popup, focus, pointer records, drag source, allowed
    // list. The tree calls it for each component it removes or deletes.
    void forgetComponent(Component* component);

    // A pointer event at position (relative to the root) of the given kind; button 1, 2 or 4 for
    // presses and releases, the platform's click count for presses, wheel deltas for the wheel.
    // A pointer index outside 0 to 10 is ignored. See ComponentsContainerInput.cpp for the
    // routing: capture while a button is held, enter and exit, wheel bubbling, drag and drop.
    // screenPosition: where the pointer is on the screen, for a container whose coordinates are
    // not the window's pixels (an inner tree shown scaled); null takes the window's position
    // plus position.
    void sendMouseEvent(int pointer, int kind, const Point& position, int button, int clickCount, float wheelX,
                        float wheelY, const Point* screenPosition = nullptr);
    const PointerState& getPointer(int index) const { return pointers[index]; }
    // Record 0's pressed component while a button is held (else null) with pressed set; its hover
    // component without.
    Component* getMouseComponent(bool pressed) const;

    // A key went down: it joins the process-wide held keys, the root's globalKeyPressed sees it
    // first, then keyPressed from the focused component (else the root) up its parents. Answers
    // whether someone used it; an unused key goes on to the host.
    bool keyDown(int64_t code, uint32_t nativeCode);
    bool keyUp(int64_t code, uint32_t nativeCode);
    // Whether the key is held, in any container of the process.
    static bool isKeyDown(int64_t code);

    Component* getFocusedComponent() const { return focused; }
    // Moves the focus: the old component gets focusLost and its listeners componentFocusLost,
    // then the new one focusGained.
    void setFocus(Component* component);
    // Tab: the next component after the focused one, in depth-first order, that wants focus
    // takes it (searching on from the start if none follows); the root itself never does.
    // Answers it, or null.
    Component* focusNext();

    // A drag within the tree from source: refused (false) while one is active. The cursor shows
    // at once and until the drag ends with the release of the buttons.
    bool startDrag(Component* source, void* data, const Mouse::Cursor& cursor);
    bool isDragActive() const { return dragSource != nullptr; }

    // Files dragged over or dropped at position: asked of the component there, then its parents,
    // with positions local to each.
    bool isInterestedInFiles(const Point& position, const Array<String>& files);
    bool filesDropped(const Point& position, const Array<String>& files);

    // ---- What the container asks of its window ----

    // The window's position on the screen, (0, 0) without a window.
    Point getWindowScreenPosition() const;
    // Shows cursor over the window and remembers it.
    void applyCursor(const Mouse::Cursor& cursor);
    const Mouse::Cursor& getAppliedCursor() const { return appliedCursor; }
    // Asks the window for the relative pointer mode (a control's drag) or ends it. The window
    // ends it by itself when the last button is released.
    void setMouseLocked(bool locked);
    // Whether the relative pointer mode was asked for during the present press.
    bool isMouseLockRequested() const { return mouseLockRequested; }

private:
    static void tickWalk(Component& component);
    // Exit on the record's hover component, enter on entered, which becomes the hover component.
    void changeHover(PointerState& state, Component* entered);
    // The drag target at or above component, null if none.
    static Component* findDragTarget(Component* component);
    // The end of a drag at position (relative to the root) over hit.
    void dropDraggedItem(Component* hit, const Point& position);

    bool copyForScroll = false;
    double scale = 1.0;
    Array<Component*> allowedComponents;
    Component* pendingPopup = nullptr;
    Component* focused = nullptr;
    Window* window = nullptr;
    Listener* listener = nullptr;
    PointerState pointers[pointerCount];
    Point size;
    Component* root = nullptr;
    Region dirty{10};
    Region presentDirty{10};
    Region scrollScratch{10};
    RectangleList rectangles;           // scratch of scrollArea
    PaintContext::Storage paintStorage; // the paint walks' scratch
    Array<Component*> focusOrder;       // scratch of focusNext
    Component* dragSource = nullptr;
    void* dragData = nullptr;
    Mouse::Cursor dragCursor;
    Mouse::Cursor appliedCursor;
    bool mouseLockRequested = false;
};

}  // namespace q1framework
