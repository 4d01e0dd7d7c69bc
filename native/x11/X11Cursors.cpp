#include "native/x11/X11Cursors.h"

#include "media/image/Image.h"
#include "native/window/SystemCursor.h"

#include <X11/Xcursor/Xcursor.h>
#include <X11/cursorfont.h>

#include <algorithm>
#include <cstring>

namespace q1framework
{

static_assert(SystemCursor::count == 17, "one slot per system cursor");

namespace
{
// A cursor of the theme by name, or of the cursor font when the theme has none.
Cursor themeCursor(Display* display, const char* name, unsigned int fallbackShape)
{
    const Cursor themed = XcursorLibraryLoadCursor(display, name);
    return themed != None ? themed : XCreateFontCursor(display, fallbackShape);
}

// A cursor with no visible pixel.
Cursor invisibleCursor(Display* display)
{
    const char empty[1] = {0};
    const Pixmap blank = XCreateBitmapFromData(display, DefaultRootWindow(display), empty, 1, 1);
    XColor black{};
    const Cursor cursor = XCreatePixmapCursor(display, blank, blank, &black, &black, 0, 0);
    XFreePixmap(display, blank);
    return cursor;
}
}  // namespace

X11Cursors::X11Cursors(Display* cursorDisplay) : display(cursorDisplay) {}

X11Cursors::~X11Cursors()
{
    for (Cursor cursor : cursors)
        if (cursor != None)
            XFreeCursor(display, cursor);
}

Cursor X11Cursors::getSystemCursor(int index)
{
    if (index < 0 || index >= SystemCursor::count)
        index = SystemCursor::arrow;
    if (cursors[index] == None)
        cursors[index] = makeSystemCursor(index);
    return cursors[index];
}

Cursor X11Cursors::makeSystemCursor(int index)
{
    switch (index)
    {
        case SystemCursor::pointingHand:
            return XCreateFontCursor(display, XC_hand2);
        case SystemCursor::resizeUpDown:
            return XCreateFontCursor(display, XC_sb_v_double_arrow);
        case SystemCursor::resizeLeftRight:
            return XCreateFontCursor(display, XC_sb_h_double_arrow);
        case SystemCursor::resizeLeft:
        case 7:
            return XCreateFontCursor(display, XC_left_side);
        case SystemCursor::resizeRight:
        case 8:
            return XCreateFontCursor(display, XC_right_side);
        case SystemCursor::openHand:
            return themeCursor(display, "openhand", XC_hand1);
        case SystemCursor::closedHand:
            return themeCursor(display, "closedhand", XC_fleur);
        case SystemCursor::crosshair:
            return XCreateFontCursor(display, XC_crosshair);
        case SystemCursor::dragCopy:
            return themeCursor(display, "copy", XC_plus);
        case SystemCursor::invisible:
            return invisibleCursor(display);
        default:
            return XCreateFontCursor(display, XC_left_ptr);
    }
}

Cursor X11Cursors::createPictureCursor(const Image& picture, const Point& hotSpot)
{
    if (picture.isEmpty() || picture.getData() == nullptr)
        return None;
    XcursorImage* image = XcursorImageCreate(picture.getWidth(), picture.getHeight());
    if (image == nullptr)
        return None;
    image->xhot = static_cast<XcursorDim>(std::clamp(hotSpot.x, 0, picture.getWidth() - 1));
    image->yhot = static_cast<XcursorDim>(std::clamp(hotSpot.y, 0, picture.getHeight() - 1));
    // Xcursor's pixels are premultiplied 0xAARRGGBB words, as the framework's are.
    for (int y = 0; y < picture.getHeight(); ++y)
        std::memcpy(image->pixels + static_cast<size_t>(y) * picture.getWidth(), picture.getPixelPointer(0, y),
                    static_cast<size_t>(picture.getWidth()) * 4);
    const Cursor cursor = XcursorImageLoadCursor(display, image);
    XcursorImageDestroy(image);
    return cursor;
}

}  // namespace q1framework
