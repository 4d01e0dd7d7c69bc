#include "native/x11/X11ImagePresenter.h"

#include "native/x11/X11Connection.h"

#include <X11/Xutil.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>

namespace q1framework
{

namespace
{
// Whether the visual holds blue, green and red in the low three bytes of 32-bit pixels.
bool showsFrameworkPixels(Display* display, Visual* visual, int depth)
{
    if (visual == nullptr || (depth != 24 && depth != 32) || visual->red_mask != 0xff0000
        || visual->green_mask != 0xff00 || visual->blue_mask != 0xff)
        return false;
    int count = 0;
    XPixmapFormatValues* formats = XListPixmapFormats(display, &count);
    bool thirtyTwoBits = false;
    for (int index = 0; index < count; ++index)
        if (formats[index].depth == depth)
            thirtyTwoBits = formats[index].bits_per_pixel == 32;
    if (formats != nullptr)
        XFree(formats);
    return thirtyTwoBits;
}
}  // namespace

X11ImagePresenter::X11ImagePresenter(X11Connection& owner, ::Window presentedWindow, Visual* windowVisual,
                                     int windowDepth, const Point& size)
    : connection(owner), display(owner.getDisplay()), window(presentedWindow), visual(windowVisual),
      depth(windowDepth), gc(XCreateGC(display, presentedWindow, 0, nullptr)),
      formatSupported(showsFrameworkPixels(display, windowVisual, windowDepth))
{
    setWindowSize(size);
}

X11ImagePresenter::~X11ImagePresenter()
{
    releaseSegment();
    XFreeGC(display, gc);
}

void X11ImagePresenter::addLostArea(const Rectangle& area)
{
    lost.addRectangle(area.getIntersection(Rectangle(Point(), windowSize)));
}

void X11ImagePresenter::setWindowSize(const Point& size)
{
    windowSize = size;
    lost.clear();
    lost.addRectangle(Rectangle(Point(), size));
}

void X11ImagePresenter::setSharedMemoryAllowed(bool allowed)
{
    sharedMemoryAllowed = allowed;
    if (!allowed)
        releaseSegment();
}

bool X11ImagePresenter::ensureSegment()
{
    if (!sharedMemoryAllowed || !connection.canUseSharedMemory())
        return false;
    if (sharedImage != nullptr && sharedImage->width == windowSize.x && sharedImage->height == windowSize.y)
        return true;
    releaseSegment();
    sharedImage = XShmCreateImage(display, visual, static_cast<unsigned>(depth), ZPixmap, nullptr, &segment,
                                  static_cast<unsigned>(windowSize.x), static_cast<unsigned>(windowSize.y));
    if (sharedImage == nullptr)
        return false;
    segment.shmid = shmget(IPC_PRIVATE, static_cast<size_t>(sharedImage->bytes_per_line) * sharedImage->height,
                           IPC_CREAT | 0600);
    segment.shmaddr = segment.shmid >= 0 ? static_cast<char*>(shmat(segment.shmid, nullptr, 0)) : reinterpret_cast<char*>(-1);
    bool attached = false;
    if (segment.shmaddr != reinterpret_cast<char*>(-1))
    {
        sharedImage->data = segment.shmaddr;
        segment.readOnly = False;
        // A remote server refuses the attach, and says so only asynchronously.
        X11Connection::ErrorTrap trap(connection);
        attached = XShmAttach(display, &segment) == True && !trap.failed();
    }
    // Marked for removal at once: the segment goes when both sides have detached.
    if (segment.shmid >= 0)
        shmctl(segment.shmid, IPC_RMID, nullptr);
    if (attached)
        return true;
    if (segment.shmaddr != reinterpret_cast<char*>(-1))
        shmdt(segment.shmaddr);
    sharedImage->data = nullptr;
    XDestroyImage(sharedImage);
    sharedImage = nullptr;
    segment = XShmSegmentInfo{};
    connection.disableSharedMemory();
    return false;
}

void X11ImagePresenter::releaseSegment()
{
    if (sharedImage == nullptr)
        return;
    XShmDetach(display, &segment);
    XSync(display, False);
    shmdt(segment.shmaddr);
    sharedImage->data = nullptr;
    XDestroyImage(sharedImage);
    sharedImage = nullptr;
    segment = XShmSegmentInfo{};
}

void X11ImagePresenter::presentPixels(const uint8_t* pixels, int stride, const Point& size,
                                      const Rectangle* rectangles, int count)
{
    if (!formatSupported || pixels == nullptr)
        return;
    const Rectangle visible = Rectangle(Point(), size).getIntersection(Rectangle(Point(), windowSize));
    lost.getRectangles(puts);
    lost.clear();
    for (int index = 0; rectangles != nullptr && index < count; ++index)
        puts.add(rectangles[index]);

    const bool shared = ensureSegment();
    lastUsedSharedMemory = shared;
    bool putAny = false;
    for (const Rectangle& rectangle : puts)
    {
        const Rectangle area = rectangle.getIntersection(visible);
        if (area.isEmpty())
            continue;
        putAny = true;
        if (shared)
            putShared(pixels, stride, area);
        else
            putPlain(pixels, stride, size, area);
    }
    // No round trip to wait for the server: it reads the segment while it processes the put,
    // and the next frame writes the segment only some 16 ms later. Should the server lag a whole
    // frame behind, a put shows the newer pixels of the same rectangles, which the next put shows
    // again; the segment is never freed before the server has answered (releaseSegment). So a
    // frame costs no round trip, and no allocation in Xlib for a reply.
    if (putAny)
        XFlush(display);
}

void X11ImagePresenter::putShared(const uint8_t* pixels, int stride, const Rectangle& area)
{
    const size_t lineBytes = static_cast<size_t>(area.w) * 4;
    for (int32_t y = area.y; y < area.getBottom(); ++y)
        std::memcpy(sharedImage->data + static_cast<size_t>(y) * sharedImage->bytes_per_line + static_cast<size_t>(area.x) * 4,
                    pixels + static_cast<ptrdiff_t>(y) * stride + static_cast<ptrdiff_t>(area.x) * 4, lineBytes);
    XShmPutImage(display, window, gc, sharedImage, area.x, area.y, area.x, area.y, static_cast<unsigned>(area.w),
                 static_cast<unsigned>(area.h), False);
}

void X11ImagePresenter::putPlain(const uint8_t* pixels, int stride, const Point& size, const Rectangle& area)
{
    // An image header over the caller's pixels, made on the stack: no copy, no allocation.
    XImage image{};
    image.width = size.x;
    image.height = size.y;
    image.format = ZPixmap;
    image.data = reinterpret_cast<char*>(const_cast<uint8_t*>(pixels));
    image.byte_order = LSBFirst;
    image.bitmap_unit = 32;
    image.bitmap_bit_order = LSBFirst;
    image.bitmap_pad = 32;
    image.depth = depth;
    image.bytes_per_line = stride;
    image.bits_per_pixel = 32;
    image.red_mask = visual->red_mask;
    image.green_mask = visual->green_mask;
    image.blue_mask = visual->blue_mask;
    if (XInitImage(&image) == 0)
        return;
    XPutImage(display, window, gc, &image, area.x, area.y, area.x, area.y, static_cast<unsigned>(area.w),
              static_cast<unsigned>(area.h));
}

}  // namespace q1framework
