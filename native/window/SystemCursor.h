#pragma once

#include <cstdint>

// The system cursors by index, as Window::setCursor takes them. Several indices share a picture;
// the native layer maps each to the nearest stock cursor of the window system.
namespace q1framework::SystemCursor
{
constexpr int32_t arrow = 0;            // also 4, 11, 13 (refused), 15
constexpr int32_t pointingHand = 1;
constexpr int32_t resizeUpDown = 2;
constexpr int32_t resizeLeftRight = 3;
constexpr int32_t resizeLeft = 5;       // also 7
constexpr int32_t resizeRight = 6;      // also 8
constexpr int32_t openHand = 9;
constexpr int32_t closedHand = 10;
constexpr int32_t crosshair = 12;
constexpr int32_t refused = 13;
constexpr int32_t dragCopy = 14;
constexpr int32_t invisible = 16;       // no picture: the pointer is hidden
constexpr int32_t count = 17;
}  // namespace q1framework::SystemCursor
