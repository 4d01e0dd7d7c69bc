#pragma once

#include "native/window/KeyCodes.h"

#include <cstdint>

namespace q1framework
{

// A key as the toolkit's key handlers receive it. A printable character is its own code (its
// UTF-16 unit); the other keys have the framework codes below. nativeCode is the platform's key
// code, 0 for the modifier notices.
struct KeyEvent
{
    // Framework key codes, those of the native layer (native/window/KeyCodes.h).
    static constexpr int64_t backspace = KeyCodes::backspace;
    static constexpr int64_t leftArrow = KeyCodes::leftArrow;
    static constexpr int64_t rightArrow = KeyCodes::rightArrow;
    static constexpr int64_t upArrow = KeyCodes::upArrow;
    static constexpr int64_t downArrow = KeyCodes::downArrow;
    static constexpr int64_t control = KeyCodes::control;
    static constexpr int64_t alt = KeyCodes::option;
    static constexpr int64_t shift = KeyCodes::shift;
    static constexpr int64_t command = KeyCodes::command;
    static constexpr int64_t tab = KeyCodes::tab;
    static constexpr int64_t returnKey = KeyCodes::returnKey;
    static constexpr int64_t forwardDelete = KeyCodes::forwardDelete;

    // Control, Alt, Shift and Command: the keys whose presses and releases the window reports as
    // modifier changes.
    static constexpr bool isModifierKeyCode(int64_t code) { return KeyCodes::isModifierKeyCode(code); }

    int64_t code = 0;
    uint32_t nativeCode = 0;
};

}  // namespace q1framework
