#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "foundation/var/SortedMap.h"
#include "foundation/var/Var.h"
#include "media/geometry/Colour.h"
#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"
#include "ui/input/KeyEvent.h"
#include "ui/input/Mouse.h"
#include "ui/input/MouseEvent.h"

#include <cstdint>

namespace q1framework
{

class ComponentsContainer;
class LookAndFeel;
class PaintContext;
class RenderingContext;
class SoftwareGraphics;
class Window;

// The node of the user-interface tree: a rectangle inside its parent, with children, listeners,
// colours, properties, a cursor and a LookAndFeel. It knows nothing of the native window: the
// root of a tree is attached to a ComponentsContainer, and every service that needs the outside
// world (repaint, cursor, focus, drag, screen position) climbs the parent chain to the root and
// asks that container.
//
// Geometry: int32 pixels of the container's logical space. bounds.x and bounds.y are relative to
// the parent; "local" coordinates have (0, 0) at the component's top-left. A component may paint
// paintMargin pixels outside its bounds on every side.
//
// Ownership: a component owns its children (and deletes them with itself); the root is owned by
// its container. Listeners are never owned.
//
// Painting: the container's paint runs two walks over the tree (paintTree): a prepare walk that
// numbers the visible components and computes what each may touch, and a paint walk, run twice
// (normal components, then overlays), that calls paint once per rectangle of the visible dirty
// part of each component, with that rectangle as the clip. An opaque component hides what lies
// beneath it, so areas under an opaque component painted later are never painted. paint must
// therefore draw the same pixels however often it is called. Overlays (popups) are painted after
// all the rest, and their children once more over them; an overlay belongs after the siblings it
// covers, since occlusion goes by the order of the walk.
//
// Thread contract: main thread only; nothing here locks. Handlers may delete their own component
// (or any other, but not the container or window that is delivering the event) from inside a
// call: the container and the toolkit check after every call out.
class Component
{
public:
    // Bits of the flags word.
    static constexpr uint32_t flagOverlay = 1;        // painted in the overlay pass
    static constexpr uint32_t flagOpaque = 2;         // painted areas hide what lies beneath
    static constexpr uint32_t flagEnabled = 4;        // set by default; controls ignore the mouse when clear
    static constexpr uint32_t flagHitTestable = 8;    // set by default; a hit on this component counts
    static constexpr uint32_t flagVisible = 16;       // clear by default: a component starts hidden
    static constexpr uint32_t flagWantsFocus = 32;    // may take keyboard focus
    static constexpr uint32_t flagClipsChildren = 128; // children are clipped to the bounds
    static constexpr uint32_t flagBuffered = 512;     // paint goes through the cached image
    static constexpr uint32_t defaultFlags = flagEnabled | flagHitTestable;

    // Told of a component's life, size, place, visibility, focus and presses. Empty defaults;
    // not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // First thing in the component's destructor.
        virtual void componentDeleted(Component*) {}
        // After the component's focusLost.
        virtual void componentFocusLost(Component*, Component* /*newFocus*/) {}
        virtual void componentResized(Component*) {}
        virtual void componentMoved(Component*) {}
        virtual void componentVisibilityChanged(Component*) {}
        // After the component's mouseDown.
        virtual void componentMouseDown(Component*, const MouseEvent&) {}
        // Before the component's mouseUp.
        virtual void componentMouseUp(Component*, const MouseEvent&) {}
    };

    // Something a user of the toolkit hangs on a component; owned by it.
    class Attachment
    {
    public:
        virtual ~Attachment() = default;
    };

    // A pointer to a component that becomes null when the component is deleted. For code that
    // calls out (to a handler or a listener) and must know afterwards whether the component is
    // still there. Registered with the component, without allocation.
    class SafePointer
    {
    public:
        explicit SafePointer(Component* component = nullptr);
        SafePointer(const SafePointer& other) : SafePointer(other.component) {}
        SafePointer& operator=(const SafePointer& other);
        SafePointer& operator=(Component* other);
        ~SafePointer();

        Component* get() const { return component; }
        Component* operator->() const { return component; }
        Component& operator*() const { return *component; }
        explicit operator bool() const { return component != nullptr; }

    private:
        friend class Component;
        void attach(Component* target);
        void detach();

        Component* component = nullptr;
        SafePointer* next = nullptr;
    };

    Component();
    // Tells the listeners, leaves the parent (or, for a root, makes the container forget the
    // tree), then forgets and deletes the children, last first.
    virtual ~Component();

    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    // ---- Virtual operations ----

    virtual void setValue(double value, bool notify);
    virtual double getValue();
    // tick(), then repaint().
    virtual void refresh();
    virtual void setBounds(int x, int y, int width, int height, bool notify);
    // Nothing when the rectangle equals the bounds. Otherwise the old area is repainted, the
    // bounds stored and the new area repainted. resized() always follows a size change; moved(),
    // the parent's childMoved/childResized and the listeners only when notify is set.
    virtual void setBounds(const Rectangle& bounds, bool notify);
    // The bounds grown by paintMargin on every side, in the parent's coordinates.
    virtual Rectangle getPaintBounds();
    virtual Mouse::Cursor getCursor();
    virtual void mouseMove(const MouseEvent& event);
    virtual void mouseDrag(const MouseEvent& event);
    virtual void mouseDown(const MouseEvent& event);
    // An open popup hears of the press that dismisses it; clicked is what lay under it.
    virtual void popupDismissed(Component* clicked);
    virtual void mouseUp(const MouseEvent& event);
    virtual void mouseEnter(const MouseEvent& event);
    virtual void mouseExit(const MouseEvent& event);
    // True when the wheel event was used; otherwise it goes on to the parent.
    virtual bool mouseWheel(const MouseEvent& event);
    // Asks the container to begin a drag within the tree with this component as its source.
    virtual void startDrag(void* data, const Mouse::Cursor& cursor);
    // Called on a drag target when a drag from source ends over target; position is local to
    // this component.
    virtual void itemDropped(Component* source, Component* target, void* data, Point position);
    virtual bool isInterestedInDrag(Component* source, Component* target, void* data, Point position);
    // Files dragged in from outside; position is local. filesDropped answers whether it took them.
    virtual bool filesDropped(Point position, const Array<String>& files);
    virtual bool isInterestedInFiles(Point position, const Array<String>& files);
    virtual bool isDragTarget();
    // Tab (code 9) moves the focus to the next component that wants it and answers true; every
    // other key answers false, so that it goes on to the parent.
    virtual bool keyPressed(const KeyEvent& key);
    virtual bool keyReleased(const KeyEvent& key);
    // Offered to the root before the focused component sees the key.
    virtual bool globalKeyPressed(const KeyEvent& key);
    virtual bool globalKeyReleased(const KeyEvent& key);
    // Takes the keyboard focus when flagWantsFocus is set and the focus is elsewhere.
    virtual void grabFocus();
    virtual void focusGained();
    virtual void focusLost();
    virtual bool isPopup();
    // Nothing when unchanged. Tells the listeners, then repaints the area (also when hiding).
    virtual void setVisible(bool visible);
    // Setting adds flagOverlay. Clearing leaves flagOverlay as the only flag: the component then
    // counts as hidden and disabled as well, which is how a retired overlay leaves the tree's
    // painting and input.
    virtual void setOverlay(bool overlay);
    virtual bool isOverlay();
    // The paint area (getPaintBounds in local coordinates).
    virtual void repaint();
    // A local rectangle, clipped by the paint area of this component and of each ancestor, to
    // the container. Refused by a hidden component and by one whose parent is hidden.
    virtual void repaint(const Rectangle& area);
    // Once a frame, for visible components.
    virtual void tick();
    virtual void paint(SoftwareGraphics& graphics);
    // A hook for subclasses; the paint walk does not call it.
    virtual void paintOverChildren(SoftwareGraphics& graphics);
    virtual void moved();
    virtual void resized();
    // Forwarded to the parent, if any.
    virtual void childValueChanged(Component* child);
    virtual void childMouseDown(Component* child, const MouseEvent& event);
    virtual void childMouseMove(Component* child, const MouseEvent& event);
    virtual void childMouseDrag(Component* child, const MouseEvent& event);
    virtual void childMouseUp(Component* child, const MouseEvent& event);
    virtual void childMoved(Component* child);
    virtual void childResized(Component* child);
    virtual void childRemoved(Component* child);
    // Hooks for subclasses; the toolkit does not call them.
    virtual void lookAndFeelChanged();
    virtual void parentChanged();
    // The class's run-time type name, such as "q1framework::Knob".
    virtual String getTypeName();
    virtual void scaleChanged(double newScale, double oldScale);
    virtual void beginFrame();
    virtual void endFrame();
    // The root's drawing over the frame just shown, through a rendering context: the window's GL
    // context, or, over the image put, a software one that draws into the shown pixels (see
    // ComponentsWindow::setOverlayDrawing). Coordinates are window pixels. Only a window's root is
    // called, once per frame that the window shows; it passes the call on to whoever draws.
    // Nothing by default.
    virtual void afterRender(RenderingContext& context);

    // ---- Tree ----

    // index outside 0 to count - 1 means the end. A child of another parent leaves it first (as
    // does a child of this one that moves to another index); the child is then ticked and
    // repainted.
    void addChild(Component* child, int index = -1);
    // addChild, then setVisible(true).
    void addAndMakeVisible(Component* child, int index = -1);
    // Repaints the child's area, tells childRemoved, makes the container forget the child's
    // subtree, and takes it out; deletes it when asked. A child not there, or an index out of
    // range, does nothing.
    void removeChild(Component* child, bool deleteIt);
    void removeChildAt(int index, bool deleteIt);
    void removeFromParent();
    // Every child's subtree is forgotten by the container. With deleteThem the children are
    // deleted, last first. Without it the list is only emptied: nothing is repainted and the
    // children keep their parent pointer.
    void removeAllChildren(bool deleteThem);
    Component* getParent() const { return parent; }
    int getNumChildren() const { return children.getCount(); }
    // Null for an index out of range.
    Component* getChild(int index) const;
    int getIndexOfChild(const Component* child) const;
    Component* getRootComponent();
    bool isDescendantOf(const Component* ancestor) const;
    // Appends every descendant, depth first, a parent before its children.
    void collectDescendants(Array<Component*>& descendants);
    // Moves this component delta places up (towards the top, later in the array) or down among
    // its siblings, clamped at the bottom; then repaints the parent.
    void moveInZOrder(int delta);

    // ---- Identity ----

    void setComponentId(int64_t id) { componentId = id; }
    int64_t getComponentId() const { return componentId; }
    // This component when its own id matches; otherwise the first direct child with the id, or
    // with recursive the first in a depth-first search. Null when there is none.
    Component* findChildById(int64_t id, bool recursive);

    // ---- Geometry ----

    int getX() const { return bounds.x; }
    int getY() const { return bounds.y; }
    int getWidth() const { return bounds.w; }
    int getHeight() const { return bounds.h; }
    int getRight() const { return bounds.getRight(); }
    int getBottom() const { return bounds.getBottom(); }
    Point getPosition() const { return bounds.getPosition(); }
    Point getSize() const { return bounds.getSize(); }
    const Rectangle& getBounds() const { return bounds; }
    // Through setBounds with notify.
    void setX(int x);
    void setY(int y);
    void setWidth(int width);
    void setHeight(int height);
    void setSize(int width, int height);
    void setSize(const Point& size) { setSize(size.x, size.y); }
    void setPositionAndNotify(int x, int y, bool notify);
    // The move that scrolls instead of repainting: the container moves the pixels of the
    // component's visible area (scrollArea) and only the uncovered strips are repainted. Then
    // moved() and the listeners' componentMoved; the parent's childMoved is not called.
    void setPosition(const Point& position);
    void setPaintMargin(int margin) { paintMargin = margin; }
    int getPaintMargin() const { return paintMargin; }

    // ---- Conversions ----

    // The bounds in the root's parent's coordinates (the container's): each ancestor's position
    // is added, and with clipToAncestors the rectangle is first cut to each ancestor's own area.
    Rectangle getAbsoluteBounds(bool clipToAncestors);
    Rectangle getAbsolutePaintBounds(bool clipToAncestors);
    // Local to screen through the container's window; (0, 0) without a window.
    Point localToScreen(const Point& local);
    Point screenToLocal(const Point& screen);
    // A local rectangle on the screen; unchanged without a window.
    Rectangle getScreenBounds(const Rectangle& local);

    // ---- Hit testing ----

    // The component under position (relative to the root, right and bottom edges excluded),
    // searched from this component down, topmost child first. Children that are not
    // hit-testable pass the hit on to what lies beneath them, and in the end to their parent,
    // which is returned whether it is hit-testable or not. Null for a negative coordinate, a
    // hidden component or a point outside.
    Component* getComponentAt(const Point& position);
    // The component under position, then up its parents to the first drag target.
    Component* getDragTargetAt(const Point& position);

    // ---- State ----

    void setEnabled(bool enabled, bool repaintNow);
    bool isEnabled() const { return (flags & flagEnabled) != 0; }
    bool isVisible() const { return (flags & flagVisible) != 0; }
    // Visible, and the parent (one level only) visible too.
    bool isShowing() const;
    void setOpaque(bool opaque) { setFlag(flagOpaque, opaque); }
    bool isOpaque() const { return (flags & flagOpaque) != 0; }
    // A buffered component paints into an image of its own when that image is new (first paint,
    // new size) or after a repaint, and otherwise only draws the image.
    void setBuffered(bool buffered) { setFlag(flagBuffered, buffered); }
    bool isBuffered() const { return (flags & flagBuffered) != 0; }
    void setClipsChildren(bool clips) { setFlag(flagClipsChildren, clips); }
    bool clipsChildren() const { return (flags & flagClipsChildren) != 0; }
    void setHitTestable(bool hitTestable) { setFlag(flagHitTestable, hitTestable); }
    bool isHitTestable() const { return (flags & flagHitTestable) != 0; }
    void setWantsFocus(bool wants) { setFlag(flagWantsFocus, wants); }
    bool wantsFocus() const { return (flags & flagWantsFocus) != 0; }
    uint32_t getFlags() const { return flags; }
    // Left out of hit testing with its whole subtree. Fixed at construction by subclasses.
    bool isHitTestExcluded() const { return hitTestExcluded; }
    bool isPressed() const { return pressCount > 0; }
    bool isMouseOver() const { return mouseOver; }
    // Which pointer events repaint the component by themselves: enter and exit, moves and
    // drags, presses and releases.
    void setRepaintTriggers(bool enterExit, bool move, bool press);
    // Stores the cursor and shows it at once when the pointer is over this component.
    void setCursor(const Mouse::Cursor& newCursor);

    // ---- Colours, properties, attachment ----

    void setColour(int id, const Colour& colour) { colours.set(id, colour); }
    bool hasColour(int id) const { return colours.contains(id); }
    // Opaque black for an id that was never set.
    Colour getColour(int id) const;
    void setProperty(int id, const Var& value) { properties.set(id, value); }
    // The stored value, null when absent; void after the next setProperty or removeProperty.
    const Var* getProperty(int id) const { return properties.find(id); }
    void removeProperty(int id) { properties.remove(id); }
    // Takes ownership; the previous attachment is deleted.
    void setAttachment(Attachment* newAttachment, uint64_t userData);
    Attachment* getAttachment() const { return attachment; }
    uint64_t getAttachmentData() const { return attachmentData; }
    void setTooltip(const String& text) { tooltip = text; }
    const String& getTooltip() const { return tooltip; }

    // ---- Listeners ----

    // A listener already present is ignored.
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    // ---- Services through the root ----

    // The container of the root, or null.
    ComponentsContainer* getContainer();
    Window* getWindow();
    // The container's scale; 1 without a container.
    double getScale();
    bool hasFocus();
    void releaseFocus();
    // Whether the key (a KeyEvent code) is held now; false without a container.
    bool isModifierKeyDown(int64_t keyCode);
    // Alt, Control or Shift (not Command) held; false without a container.
    bool isAnyModifierDown();
    // Asks the window for the relative pointer mode until the buttons are released, so that a
    // drag can go on past the screen's edge. For a control's mouseDown.
    void lockMouse();

    // ---- Look and feel ----

    // The component's own, else the global default (made on first use). No inheritance from the
    // parent.
    LookAndFeel* getLookAndFeel();
    // Not owned; null returns to the default.
    void setLookAndFeel(LookAndFeel* newLookAndFeel) { lookAndFeel = newLookAndFeel; }

    // ---- Painting ----

    // The two walks over the tree from root, as the container's paint runs them; clip is the
    // painted area in the container's coordinates.
    static void paintTree(Component& root, PaintContext& context, const Rectangle& clip);
    // A picture of this component's own paint (not its children's), at its size, without a
    // window. Null for an empty component.
    Image getImageOfComponent();
    // Debugging aid for all trees: after each paint, the dirty rectangles are tinted with a
    // random translucent colour.
    static void setShowRepaints(bool show);

protected:
    // For subclasses that exclude themselves from hit testing.
    void setHitTestExcluded(bool excluded) { hitTestExcluded = excluded; }
    void setFlag(uint32_t flag, bool on);
    // The layout of flags directly, as setOverlay needs it.
    void setFlags(uint32_t newFlags) { flags = newFlags; }

private:
    friend class ComponentsContainer;

    // The pointer handlers that the container runs, each around the public handler (see
    // ComponentsContainer::sendMouseEvent).
    void internalMouseEnter(const MouseEvent& event);
    void internalMouseExit(const MouseEvent& event);
    void internalMouseMove(const MouseEvent& event);
    void internalMouseDrag(const MouseEvent& event);
    void internalMouseDown(const MouseEvent& event);
    void internalMouseUp(const MouseEvent& event);

    // The container forgets component and each of its descendants, depth first.
    void forgetSubtree(Component* top);
    static void prepare(Component& component, PaintContext& context, const Point& offset, Rectangle clip,
                        uint32_t& counter);
    static void paintPass(Component& component, PaintContext& context, const Rectangle& clip, int pass);
    void paintBuffered(PaintContext& context);
    Component* hitTest(int x, int y, const Point& parentOrigin);

    bool mouseOver = false;
    int32_t paintMargin = 0;
    Rectangle bounds;
    Component* parent = nullptr;
    bool repaintOnEnterExit = false;
    bool repaintOnMove = false;
    bool repaintOnPress = false;
    Mouse::Cursor cursor;
    bool hitTestExcluded = false;
    uint32_t flags = defaultFlags;
    int32_t pressCount = 0;
    LookAndFeel* lookAndFeel = nullptr;
    int64_t componentId = -1;
    Array<Component*> children;  // owned, in z-order: index 0 is painted first and lies lowest
    Attachment* attachment = nullptr;
    uint64_t attachmentData = 0;
    String tooltip;
    SortedMap<int, Colour> colours;
    Rectangle visibleClip;   // absolute; written by the prepare walk
    uint32_t paintOrder = 0; // written by the prepare walk
    Array<Listener*> listeners;
    SortedMap<int, Var> properties;
    bool bufferDirty = true;
    Image buffer;            // the cached paint of a buffered component
    ComponentsContainer* container = nullptr;  // meaningful at the root only
    SafePointer* safePointers = nullptr;       // registered SafePointers, nulled on deletion
};

}  // namespace q1framework
