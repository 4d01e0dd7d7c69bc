// Real input through XTest reaches the window with the framework's codes: buttons, wheel, click
// counts, crossing, keys and modifiers, and the relative pointer mode of a control drag.

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "RecordingWindow.h"
#include "TestDisplay.h"

#include "native/window/KeyCodes.h"

#include <X11/keysym.h>

#include <algorithm>
#include <memory>

using namespace q1framework;

namespace
{
using Calls = std::vector<std::string>;

// An editor window inside a host window at (100, 100) of the screen, opened with the pointer
// parked outside it; the calls of its opening are cleared.
struct Editor
{
    TestDisplay test;
    ::Window host = test.makeHostWindow(Rectangle(100, 100, 600, 300));
    std::unique_ptr<RecordingWindow> window;

    template <typename WindowType = RecordingWindow>
    void open()
    {
        test.movePointer(10, 10);
        window = std::make_unique<WindowType>(Rectangle(0, 0, 600, 300), 0, String(),
                                              reinterpret_cast<void*>(static_cast<uintptr_t>(host)));
        test.settle();
        window->calls.clear();
    }

    // Waits until the window has heard count calls in all.
    bool waitForCalls(size_t count)
    {
        return test.pumpUntil([&] { return window->calls.size() >= count; });
    }

    std::string keyCall(const char* direction, int code, unsigned long keysym)
    {
        return std::string("key ") + direction + " " + std::to_string(code) + " native "
               + std::to_string(XKeysymToKeycode(test.get(), keysym));
    }
};

// Locks the pointer on every press, as a knob does in its mouseDown.
class KnobWindow : public RecordingWindow
{
public:
    using RecordingWindow::RecordingWindow;
    void mouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY) override
    {
        RecordingWindow::mouseEvent(type, position, button, clickCount, deltaX, deltaY);
        if (type == 1)
            setMouseLocked(true);
    }
};
}  // namespace

TEST(X11WindowPeerEvents, ButtonsArriveAsPressAndReleaseWithTheFrameworksCodes)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(150, 120);
    editor.test.click(1);
    editor.test.click(3);
    editor.test.click(2);
    ASSERT_TRUE(editor.waitForCalls(8));
    EXPECT_EQ(editor.window->calls, (Calls{"mouse 4 (50,20) button 0 clicks 0 wheel 0,0",
                                           "mouse 2 (50,20) button 0 clicks 0 wheel 0,0",
                                           "mouse 1 (50,20) button 1 clicks 1 wheel 0,0",
                                           "mouse 3 (50,20) button 1 clicks 1 wheel 0,0",
                                           "mouse 1 (50,20) button 4 clicks 1 wheel 0,0",
                                           "mouse 3 (50,20) button 4 clicks 1 wheel 0,0",
                                           "mouse 1 (50,20) button 2 clicks 1 wheel 0,0",
                                           "mouse 3 (50,20) button 2 clicks 1 wheel 0,0"}));
}

TEST(X11WindowPeerEvents, QuickPressesOfOneButtonCountClicksAndReleasesCountOne)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(150, 120);
    editor.test.click(1);
    editor.test.click(1);
    editor.test.click(1);
    ASSERT_TRUE(editor.waitForCalls(8));
    EXPECT_EQ(editor.window->callsStartingWith("mouse 1"),
              (Calls{"mouse 1 (50,20) button 1 clicks 1 wheel 0,0", "mouse 1 (50,20) button 1 clicks 2 wheel 0,0",
                     "mouse 1 (50,20) button 1 clicks 3 wheel 0,0"}));
    EXPECT_EQ(editor.window->callsStartingWith("mouse 3"), Calls(3, "mouse 3 (50,20) button 1 clicks 1 wheel 0,0"));
}

TEST(X11WindowPeerEvents, WheelButtonsArriveAsWheelEvents)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(110, 110);
    for (unsigned int button : {4u, 5u, 6u, 7u})
        editor.test.click(button);
    ASSERT_TRUE(editor.waitForCalls(6));
    EXPECT_EQ(editor.window->callsStartingWith("mouse 0"),
              (Calls{"mouse 0 (10,10) button 0 clicks 0 wheel 0,1", "mouse 0 (10,10) button 0 clicks 0 wheel 0,-1",
                     "mouse 0 (10,10) button 0 clicks 0 wheel 1,0", "mouse 0 (10,10) button 0 clicks 0 wheel -1,0"}));
}

TEST(X11WindowPeerEvents, ADragPastTheEdgeStaysWithTheWindowUntilTheRelease)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(150, 150);
    editor.test.button(1, true);
    editor.test.movePointer(80, 500);
    editor.test.button(1, false);
    ASSERT_TRUE(editor.test.pumpUntil([&] { return !editor.window->callsStartingWith("mouse 3").empty(); }));
    const Calls& calls = editor.window->calls;
    const auto drag = std::find(calls.begin(), calls.end(), "mouse 2 (-20,400) button 0 clicks 0 wheel 0,0");
    const auto release = std::find(calls.begin(), calls.end(), "mouse 3 (-20,400) button 1 clicks 1 wheel 0,0");
    ASSERT_NE(drag, calls.end());
    ASSERT_NE(release, calls.end());
    EXPECT_LT(drag, release);
}

TEST(X11WindowPeerEvents, KeysArriveWithTheFrameworksCodes)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(150, 150);  // without a window manager the pointer's window has the keys
    const std::pair<unsigned long, int> keys[] = {{XK_a, 'a'},
                                                  {XK_Return, 13},
                                                  {XK_BackSpace, KeyCodes::backspace},
                                                  {XK_Left, KeyCodes::leftArrow},
                                                  {XK_Delete, KeyCodes::forwardDelete},
                                                  {XK_KP_Enter, 13}};
    Calls expected;
    for (const auto& [keysym, code] : keys)
    {
        editor.test.key(keysym, true);
        editor.test.key(keysym, false);
        expected.push_back(editor.keyCall("down", code, keysym));
        expected.push_back(editor.keyCall("up", code, keysym));
    }
    ASSERT_TRUE(editor.test.pumpUntil([&] { return editor.window->callsStartingWith("key").size() == expected.size(); }));
    EXPECT_EQ(editor.window->callsStartingWith("key"), expected);
}

TEST(X11WindowPeerEvents, ShiftSendsTheFourModifierCallsAndShiftsTheLetter)
{
    Editor editor;
    editor.open();
    editor.test.movePointer(150, 150);
    editor.test.key(XK_Shift_L, true);
    editor.test.key(XK_a, true);
    editor.test.key(XK_a, false);
    editor.test.key(XK_Shift_L, false);
    ASSERT_TRUE(editor.test.pumpUntil([&] { return editor.window->callsStartingWith("key").size() == 10; }));
    const Calls keys = editor.window->callsStartingWith("key");
    EXPECT_EQ(Calls(keys.begin(), keys.begin() + 4),
              (Calls{"key up 268435462 native 0", "key up 268435464 native 0", "key down 268435463 native 0",
                     "key up 268435461 native 0"}));
    EXPECT_EQ(keys[4], editor.keyCall("down", 'A', XK_a));
    EXPECT_EQ(keys[5], editor.keyCall("up", 'A', XK_a));
    EXPECT_EQ(keys[8], "key up 268435463 native 0");
}

TEST(X11WindowPeerEvents, ARelativeDragAddsUpMovesPastTheScreensEdge)
{
    Editor editor;
    editor.open<KnobWindow>();
    editor.test.movePointer(150, 150);
    editor.test.button(1, true);
    ASSERT_TRUE(editor.test.pumpUntil([&] { return editor.window->isMouseLocked(); }));
    EXPECT_TRUE(editor.test.isCursorInvisible());
    editor.window->calls.clear();
    // 100 moves of (+3, +20) would end 2000 pixels down, far below the 1080 of the screen.
    for (int step = 0; step < 100; ++step)
    {
        editor.test.movePointerBy(3, 20);
        editor.test.settle();
    }
    const Calls drags = editor.window->callsStartingWith("mouse 2");
    ASSERT_FALSE(drags.empty());
    EXPECT_EQ(drags.back(), "mouse 2 (350,2050) button 0 clicks 0 wheel 0,0");
    EXPECT_EQ(editor.test.getPointer(), Point(150, 150));

    editor.test.button(1, false);
    ASSERT_TRUE(editor.test.pumpUntil([&] { return !editor.window->isMouseLocked(); }));
    EXPECT_FALSE(editor.test.isCursorInvisible());
    EXPECT_EQ(editor.test.getPointer(), Point(150, 150));
}
