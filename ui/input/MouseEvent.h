#pragma once

#include <cstdint>

namespace q1framework
{

class Component;

// What a mouse handler of Component receives: the state of one pointer at this event. It is the
// container's own pointer record (PointerState), so it is valid only during the call.
//
// Positions are whole pixels. x, y are local to the component that receives the event: for a
// press, a drag and the release that ends it, that is the component pressed first, even when the
// pointer has left it. "Down" positions are the last ones seen with no button held, so a drag
// measures from the position just before the press. Screen positions are in the screen's pixels,
// (0, 0) when the tree has no window.
struct MouseEvent
{
    // Button codes.
    static constexpr uint32_t leftButton = 1;
    static constexpr uint32_t otherButton = 2;
    static constexpr uint32_t rightButton = 4;

    int32_t getDistanceFromDragStartX() const { return x - downX; }
    int32_t getDistanceFromDragStartY() const { return y - downY; }
    int32_t getScreenDistanceFromDragStartX() const { return screenX - downScreenX; }
    int32_t getScreenDistanceFromDragStartY() const { return screenY - downScreenY; }

    uint32_t button = 0;          // button of the last press
    int32_t x = 0;                // local position
    int32_t y = 0;
    int32_t downX = 0;            // local position last seen with no button held
    int32_t downY = 0;
    int32_t screenX = 0;          // position on the screen
    int32_t screenY = 0;
    int32_t downScreenX = 0;      // screen position last seen with no button held
    int32_t downScreenY = 0;
    int32_t deltaX = 0;           // screen movement since the previous event; 0 on a press
    int32_t deltaY = 0;
    float wheelX = 0.0f;          // wheel deltas of this event, else 0
    float wheelY = 0.0f;
    int32_t clickCount = 0;       // the platform's click count of the last press
    uint32_t heldButtons = 0;     // mask of the buttons down now
    // During mouseExit, the component being entered; during mouseEnter, the one left. May be null.
    Component* otherComponent = nullptr;
};

}  // namespace q1framework
