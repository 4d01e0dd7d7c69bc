#pragma once

#include "media/geometry/RectangleList.h"
#include "render/region/Region.h"
#include "render/surface/ImagePresenter.h"

#include <X11/Xlib.h>
#include <X11/extensions/XShm.h>

namespace q1framework
{

class X11Connection;

// The image put of an X window, for windows that draw without GL. With MIT-SHM (a local
// server) the rectangles are copied into a shared-memory image of the window's size and put
// with XShmPutImage. Without it (a remote display, or a server without the extension, or after
// the attach failed) each rectangle is put with XPutImage straight from the caller's pixels,
// with no copy. Either way a present sends its requests and returns without a round trip.
//
// Pixels can be shown only on a TrueColor window of depth 24 or 32 whose pixels are 32 bits
// with red, green and blue in the masks ff0000, ff00 and ff, which is what X servers use today;
// on any other visual nothing is shown.
//
// Thread contract: main thread. Owned by its window's peer.
class X11ImagePresenter : public ImagePresenter
{
public:
    X11ImagePresenter(X11Connection& connection, ::Window window, Visual* visual, int depth, const Point& windowSize);
    // Detaches and frees the shared segment.
    ~X11ImagePresenter() override;

    X11ImagePresenter(const X11ImagePresenter&) = delete;
    X11ImagePresenter& operator=(const X11ImagePresenter&) = delete;

    void presentPixels(const uint8_t* pixels, int stride, const Point& size, const Rectangle* rectangles,
                       int count) override;

    // The server lost area of the window (an Expose event): it is put again at the next present.
    void addLostArea(const Rectangle& area);
    // The window has a new size: the segment is remade at the next present, and the whole
    // window counts as lost.
    void setWindowSize(const Point& size);
    // Whether the presenter may use MIT-SHM where the connection offers it (true at first).
    void setSharedMemoryAllowed(bool allowed);
    // Whether the last present went through MIT-SHM.
    bool usedSharedMemory() const { return lastUsedSharedMemory; }
    // Whether the window's visual can show the framework's pixels.
    bool canShowPixels() const { return formatSupported; }

private:
    // A shared image of the window's size, made now if needed; false when MIT-SHM cannot serve.
    bool ensureSegment();
    void releaseSegment();
    void putShared(const uint8_t* pixels, int stride, const Rectangle& area);
    void putPlain(const uint8_t* pixels, int stride, const Point& size, const Rectangle& area);

    X11Connection& connection;
    Display* display;
    ::Window window;
    Visual* visual;
    int depth;
    GC gc;
    bool formatSupported;
    Point windowSize;
    bool sharedMemoryAllowed = true;
    bool lastUsedSharedMemory = false;

    XShmSegmentInfo segment{};
    XImage* sharedImage = nullptr;  // of the window's size, over the segment; null without one
    Region lost;                    // window area to put again
    RectangleList puts;             // scratch: the rectangles of one present
};

}  // namespace q1framework
