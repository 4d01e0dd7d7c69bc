#pragma once

#include <cstdint>

namespace q1framework
{

// A key as the toolkit's key handlers receive it. A printable character is its own code (its
// UTF-16 unit); the other keys have the framework codes below. nativeCode is the platform's key
// code, 0 for the modifier notices.
struct KeyEvent
{
    // Framework key codes.
    static constexpr int64_t backspace = 0x10000000;
    static constexpr int64_t leftArrow = 0x10000001;
    static constexpr int64_t rightArrow = 0x10000002;
    static constexpr int64_t upArrow = 0x10000003;
    static constexpr int64_t downArrow = 0x10000004;
    static constexpr int64_t control = 0x10000005;
    static constexpr int64_t alt = 0x10000006;
    static constexpr int64_t shift = 0x10000007;
    static constexpr int64_t command = 0x10000008;
    static constexpr int64_t tab = 9;
    static constexpr int64_t returnKey = 13;
    static constexpr int64_t forwardDelete = 0x7F;

    // Control, Alt, Shift and Command: the keys whose presses and releases the window reports as
    // modifier changes.
    static constexpr bool isModifierKeyCode(int64_t code) { return code >= control && code <= command; }

    int64_t code = 0;
    uint32_t nativeCode = 0;
};

}  // namespace q1framework
