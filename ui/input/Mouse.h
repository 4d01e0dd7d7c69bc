#pragma once

#include "native/window/SystemCursor.h"

#include <cstdint>

namespace q1framework
{

// The pointer as the toolkit sees it. Only the cursor lives here: positions and buttons reach
// components as MouseEvent records through ComponentsContainer.
class Mouse
{
public:
    // A pointer shape, named by the index of one of the system cursors (SystemCursor). The window
    // that shows the tree maps an index to its platform's shape (9 and 10 come from the system's
    // cursor theme where it has them); the toolkit never touches a platform cursor itself.
    //
    //   0  arrow: the default; a Slider off its thumb; a ScrollBar track
    //   1  pointing hand: Button, ToggleButton, Knob; a Slider over its thumb; a ScrollBar thumb
    //   2  resize up and down: the thumb edge of a vertical ScrollBar
    //   3  resize left and right: the thumb edge of a horizontal ScrollBar
    //   4, 11, 13, 15  arrow; 13 means a drag is refused, or the pointer is outside the
    //                  container's allowed components
    //   5, 7  resize towards the left     6, 8  resize towards the right
    //   9  open hand: a Viewport at rest  10  closed hand: a Viewport being dragged
    //   12 crosshair                      14  drag copy: a drag is accepted
    //   16 invisible
    //
    // A value handle; an index outside 0 to 16 is taken as 0.
    class Cursor
    {
    public:
        static constexpr int32_t systemCursorCount = SystemCursor::count;

        Cursor() = default;
        explicit Cursor(int32_t systemIndex)
            : index(systemIndex >= 0 && systemIndex < systemCursorCount ? systemIndex : 0)
        {
        }

        int32_t getSystemIndex() const { return index; }

        bool operator==(const Cursor& other) const { return index == other.index; }
        bool operator!=(const Cursor& other) const { return index != other.index; }

    private:
        int32_t index = 0;
    };

    // The indices the toolkit itself uses.
    static constexpr int32_t arrowCursor = SystemCursor::arrow;
    static constexpr int32_t pointingHandCursor = SystemCursor::pointingHand;
    static constexpr int32_t resizeUpDownCursor = SystemCursor::resizeUpDown;
    static constexpr int32_t resizeLeftRightCursor = SystemCursor::resizeLeftRight;
    static constexpr int32_t openHandCursor = SystemCursor::openHand;
    static constexpr int32_t closedHandCursor = SystemCursor::closedHand;
    static constexpr int32_t crosshairCursor = SystemCursor::crosshair;
    static constexpr int32_t dragRefusedCursor = SystemCursor::refused;
    static constexpr int32_t dragCopyCursor = SystemCursor::dragCopy;
};

}  // namespace q1framework
