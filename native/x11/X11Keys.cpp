#include "native/x11/X11Keys.h"

#include "native/window/KeyCodes.h"

#include <X11/XKBlib.h>
#include <X11/keysym.h>

namespace q1framework
{

int32_t X11Keys::toKeyCode(KeySym keysym)
{
    switch (keysym)
    {
        case XK_BackSpace:
            return KeyCodes::backspace;
        case XK_Left:
        case XK_KP_Left:
            return KeyCodes::leftArrow;
        case XK_Right:
        case XK_KP_Right:
            return KeyCodes::rightArrow;
        case XK_Up:
        case XK_KP_Up:
            return KeyCodes::upArrow;
        case XK_Down:
        case XK_KP_Down:
            return KeyCodes::downArrow;
        case XK_Delete:
        case XK_KP_Delete:
            return KeyCodes::forwardDelete;
        case XK_Return:
        case XK_KP_Enter:
        case XK_ISO_Enter:
            return KeyCodes::returnKey;
        case XK_Linefeed:
            return KeyCodes::lineFeed;
        case XK_Tab:
        case XK_KP_Tab:
        case XK_ISO_Left_Tab:
            return KeyCodes::tab;
        case XK_Escape:
            return KeyCodes::escape;
        case XK_KP_Space:
            return ' ';
        case XK_KP_Decimal:
            return '.';
        case XK_KP_Separator:
            return ',';
        case XK_KP_Add:
            return '+';
        case XK_KP_Subtract:
            return '-';
        case XK_KP_Multiply:
            return '*';
        case XK_KP_Divide:
            return '/';
        case XK_KP_Equal:
            return '=';
        default:
            break;
    }
    if (keysym >= XK_KP_0 && keysym <= XK_KP_9)
        return static_cast<int32_t>('0' + (keysym - XK_KP_0));
    // Latin-1 keysyms are their code points.
    if ((keysym >= 0x20 && keysym <= 0x7e) || (keysym >= 0xa0 && keysym <= 0xff))
        return static_cast<int32_t>(keysym);
    // Unicode keysyms: 0x1000000 plus the code point; one UTF-16 unit only, no surrogates.
    if (keysym >= 0x1000100 && keysym <= 0x100ffff)
    {
        const int32_t codePoint = static_cast<int32_t>(keysym - 0x1000000);
        if (codePoint < 0xd800 || codePoint > 0xdfff)
            return codePoint;
    }
    return 0;
}

uint32_t X11Keys::toModifierMask(KeySym keysym)
{
    switch (keysym)
    {
        case XK_Shift_L:
        case XK_Shift_R:
            return KeyCodes::shiftMask;
        case XK_Control_L:
        case XK_Control_R:
            return KeyCodes::controlMask;
        case XK_Alt_L:
        case XK_Alt_R:
        case XK_Meta_L:
        case XK_Meta_R:
            return KeyCodes::optionMask;
        case XK_Super_L:
        case XK_Super_R:
            return KeyCodes::commandMask;
        default:
            return 0;
    }
}

uint32_t X11Keys::toModifierMask(unsigned int state)
{
    uint32_t mask = 0;
    if ((state & ShiftMask) != 0)
        mask |= KeyCodes::shiftMask;
    if ((state & ControlMask) != 0)
        mask |= KeyCodes::controlMask;
    if ((state & Mod1Mask) != 0)
        mask |= KeyCodes::optionMask;
    if ((state & Mod4Mask) != 0)
        mask |= KeyCodes::commandMask;
    return mask;
}

uint32_t X11Keys::modifiersAfter(unsigned int stateBefore, KeySym keysym, bool pressed)
{
    const uint32_t before = toModifierMask(stateBefore);
    const uint32_t key = toModifierMask(keysym);
    return pressed ? before | key : before & ~key;
}

}  // namespace q1framework
