#pragma once

#include "media/geometry/Point.h"

#include <X11/Xlib.h>

namespace q1framework
{

class Image;

// The cursors of the framework's windows on one display. The system cursors (SystemCursor's
// indices) are made on first use and kept until the connection closes: the stock cursors of the
// X cursor font (themed by libXcursor where a theme is installed), the open and closed hand
// from the cursor theme where it has them (else the font's hand and move cursors), and an
// invisible cursor for the relative pointer mode. Picture cursors are made on request and
// belong to the caller.
//
// Thread contract: main thread.
class X11Cursors
{
public:
    explicit X11Cursors(Display* display);
    // Frees every kept cursor.
    ~X11Cursors();

    X11Cursors(const X11Cursors&) = delete;
    X11Cursors& operator=(const X11Cursors&) = delete;

    // The cursor of a SystemCursor index; unknown indices give the arrow.
    Cursor getSystemCursor(int index);
    // A new cursor showing picture (premultiplied pixels, as Image keeps them) with its hot spot
    // at hotSpot, cut to the picture; None for an empty picture or when the server refuses.
    // The caller frees it with XFreeCursor.
    Cursor createPictureCursor(const Image& picture, const Point& hotSpot);

private:
    Cursor makeSystemCursor(int index);

    Display* display;
    Cursor cursors[17] = {};
};

}  // namespace q1framework
