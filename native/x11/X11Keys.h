#pragma once

#include <X11/X.h>

#include <cstdint>

namespace q1framework
{

// How X11 keys become the framework's key codes (native/window/KeyCodes.h).
//
// Keys are read as KeySyms after the shift and lock levels (XLookupString), so "A" arrives as
// 65 with Shift held. Control does not change the code: Control and "j" give "j" (106), not a
// line feed. Printable Latin-1 keysyms and Unicode keysyms of one UTF-16 unit are their code
// points; keypad keys are the characters printed on them; Return, keypad Enter and ISO Enter
// are 13; BackSpace, Delete, Tab, Escape and the four arrows have their framework codes;
// Linefeed is 10 (which the window swallows). Every other key has no code (0) and is left to
// the host.
//
// Modifiers: Shift, Control, Alt (for Option) and Super (for Command), with their X modifier
// bits ShiftMask, ControlMask, Mod1Mask and Mod4Mask.
//
// Thread contract: any thread; these are pure functions.
class X11Keys
{
public:
    // The framework code of keysym, or 0.
    static int32_t toKeyCode(KeySym keysym);
    // The framework modifier mask that a modifier key stands for; 0 for any other key.
    static uint32_t toModifierMask(KeySym keysym);
    // The framework modifier mask of an X event's state bits.
    static uint32_t toModifierMask(unsigned int state);
    // The modifiers held after a key event: the state before it (the event's state bits), with
    // the key's own modifier added for a press or taken away for a release.
    static uint32_t modifiersAfter(unsigned int stateBefore, KeySym keysym, bool pressed);
};

}  // namespace q1framework
