// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "native/window/KeyCodes.h"
#include "native/x11/X11Keys.h"

#include <X11/X.h>
#include <X11/keysym.h>

using namespace q1framework;

TEST(X11Keys, CharactersAreTheirCodePoints)
{
    EXPECT_EQ(X11Keys::toKeyCode(XK_a), 'a');
    EXPECT_EQ(X11Keys::toKeyCode(XK_A), 'A');
    EXPECT_EQ(X11Keys::toKeyCode(XK_space), ' ');
    EXPECT_EQ(X11Keys::toKeyCode(XK_udiaeresis), 0xfc);
    EXPECT_EQ(X11Keys::toKeyCode(XK_KP_7), '7');
    EXPECT_EQ(X11Keys::toKeyCode(XK_KP_Add), '+');
    EXPECT_EQ(X11Keys::toKeyCode(0x10020ac), 0x20ac);  // the euro sign as a Unicode keysym
}

TEST(X11Keys, KeysWithoutACodeAreLeftToTheHost)
{
    EXPECT_EQ(X11Keys::toKeyCode(XK_F1), 0);
    EXPECT_EQ(X11Keys::toKeyCode(XK_Home), 0);
    EXPECT_EQ(X11Keys::toKeyCode(XK_Shift_L), 0);
    EXPECT_EQ(X11Keys::toKeyCode(0x101f600), 0);  // beyond one UTF-16 unit
    EXPECT_EQ(X11Keys::toKeyCode(NoSymbol), 0);
}

TEST(X11Keys, AltIsOptionAndSuperIsCommand)
{
    EXPECT_EQ(X11Keys::toModifierMask(KeySym{XK_Alt_L}), KeyCodes::optionMask);
    EXPECT_EQ(X11Keys::toModifierMask(KeySym{XK_Super_R}), KeyCodes::commandMask);
    EXPECT_EQ(X11Keys::toModifierMask(KeySym{XK_Control_R}), KeyCodes::controlMask);
    EXPECT_EQ(X11Keys::toModifierMask(KeySym{XK_a}), 0u);
    EXPECT_EQ(X11Keys::toModifierMask(static_cast<unsigned int>(ShiftMask | Mod1Mask | Mod4Mask)),
              KeyCodes::shiftMask | KeyCodes::optionMask | KeyCodes::commandMask);
}

TEST(X11Keys, AModifierEventChangesTheStateBeforeIt)
{
    // X reports the state before the event: Control held, Shift going down, then Shift up.
    EXPECT_EQ(X11Keys::modifiersAfter(ControlMask, XK_Shift_L, true), KeyCodes::controlMask | KeyCodes::shiftMask);
    EXPECT_EQ(X11Keys::modifiersAfter(ControlMask | ShiftMask, XK_Shift_L, false), KeyCodes::controlMask);
}
