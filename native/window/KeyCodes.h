#pragma once

#include <cstdint>

// The framework's key codes, as Window::keyPressed and keyReleased receive them. An ordinary key
// is its UTF-16 unit (a printable character is its own code); the keys below have codes of their
// own. The four modifiers arrive as presses and releases of their codes.
namespace q1framework::KeyCodes
{
constexpr int32_t backspace = 0x10000000;
constexpr int32_t leftArrow = 0x10000001;
constexpr int32_t rightArrow = 0x10000002;
constexpr int32_t upArrow = 0x10000003;
constexpr int32_t downArrow = 0x10000004;
constexpr int32_t control = 0x10000005;
constexpr int32_t option = 0x10000006;   // Alt
constexpr int32_t shift = 0x10000007;
constexpr int32_t command = 0x10000008;  // Super
constexpr int32_t forwardDelete = 0x7F;
constexpr int32_t returnKey = 13;        // Return and Enter
constexpr int32_t tab = 9;
constexpr int32_t escape = 27;
// A line feed is swallowed: no call, but it counts as handled.
constexpr int32_t lineFeed = 10;

// The modifier state that Window::deliverModifiers takes: an or of these masks.
constexpr uint32_t shiftMask = 0x20000;
constexpr uint32_t controlMask = 0x40000;
constexpr uint32_t optionMask = 0x80000;
constexpr uint32_t commandMask = 0x100000;

// Whether code is one of the four modifier codes.
constexpr bool isModifierKeyCode(int64_t code)
{
    return code >= control && code <= command;
}
}  // namespace q1framework::KeyCodes
