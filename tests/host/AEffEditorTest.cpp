// AEffEditor's defaults, and the editor opcodes of the dispatcher with and without an editor.

#include "TestHost.h"

#include "host/AEffEditor.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
// An X11 window id as hosts pass it in the pointer argument of effEditOpen.
void* const parentWindow = reinterpret_cast<void*>(static_cast<std::uintptr_t>(0x3a00007));
}

TEST(AEffEditor, DefaultEditorShowsNothingButRemembersItsWindow)
{
    AEffEditor editor;
    EXPECT_EQ(editor.getEffect(), nullptr);
    ERect sentinel{};
    ERect* rect = &sentinel;
    EXPECT_FALSE(editor.getRect(&rect));
    EXPECT_EQ(rect, nullptr);
    EXPECT_FALSE(editor.isOpen());
    EXPECT_FALSE(editor.open(parentWindow));
    EXPECT_TRUE(editor.isOpen());
    VstKeyCode key{'a', 0, 0};
    EXPECT_FALSE(editor.onKeyDown(key));
    EXPECT_FALSE(editor.onKeyUp(key));
    EXPECT_FALSE(editor.onWheel(1.0f));
    EXPECT_FALSE(editor.setKnobMode(2));
    editor.close();
    EXPECT_FALSE(editor.isOpen());
}

TEST(AEffEditor, EditorOpcodesReachTheEditor)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN)) << host.failure;
    ERect* rect = nullptr;
    ASSERT_EQ(host.dispatch(effEditGetRect, 0, 0, &rect), 1);
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 200);
    EXPECT_EQ(rect->right, 320);
    EXPECT_EQ(host.dispatch(effEditOpen, 0, 0, parentWindow), 1);
    EXPECT_EQ(host.dispatch(effEditIdle), 0);
    EXPECT_EQ(host.dispatch(effSetEditKnobMode, 0, 2), 1);
    EXPECT_EQ(host.dispatch(effSetEditKnobMode, 0, 3), 0);
    EXPECT_EQ(host.dispatch(effEditClose), 0);
}

TEST(AEffEditor, KeyArgumentsArriveAsAKeyCodeAndAHandledKeyIsAnsweredOne)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    host.dispatch(effEditOpen, 0, 0, parentWindow);
    host.calls.clear();
    // The up arrow raises Gain by 0.125 as a gesture: begin, automate, end.
    EXPECT_EQ(host.dispatch(effEditKeyDown, 0, VKEY_UP, nullptr, MODIFIER_SHIFT), 1);
    EXPECT_EQ(host.effect->getParameter(host.effect, 0), 0.625f);
    ASSERT_EQ(host.calls.size(), 3u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterBeginEdit);
    EXPECT_EQ(host.calls[1].opcode, audioMasterAutomate);
    EXPECT_EQ(host.calls[1].opt, 0.625f);
    EXPECT_EQ(host.calls[2].opcode, audioMasterEndEdit);
    EXPECT_EQ(host.dispatch(effEditKeyUp, 0, VKEY_UP), 1);
    EXPECT_EQ(host.dispatch(effEditKeyDown, 0, VKEY_DOWN), 1);
    EXPECT_EQ(host.effect->getParameter(host.effect, 0), 0.5f);
    // A plain character goes in the index; this editor does not use it, so the host may.
    EXPECT_EQ(host.dispatch(effEditKeyDown, 'a', 0), 0);
    EXPECT_EQ(host.dispatch(effEditKeyUp, 'a', 0), 0);
    host.dispatch(effEditClose);
}

TEST(AEffEditor, WithoutAnEditorEveryEditorOpcodeAnswersZero)
{
    TestHost host;
    ASSERT_TRUE(host.load(BARE_GAIN_PLUGIN)) << host.failure;
    ERect sentinel{};
    ERect* rect = &sentinel;
    EXPECT_EQ(host.dispatch(effEditGetRect, 0, 0, &rect), 0);
    EXPECT_EQ(host.dispatch(effEditOpen, 0, 0, parentWindow), 0);
    EXPECT_EQ(host.dispatch(effEditIdle), 0);
    EXPECT_EQ(host.dispatch(effEditKeyDown, 0, VKEY_UP), 0);
    EXPECT_EQ(host.dispatch(effEditKeyUp, 0, VKEY_UP), 0);
    EXPECT_EQ(host.dispatch(effSetEditKnobMode, 0, 2), 0);
    EXPECT_EQ(host.dispatch(effEditClose), 0);
    EXPECT_EQ(host.effect->getParameter(host.effect, 0), 0.5f);
    EXPECT_TRUE(host.calls.size() == 1 && host.calls[0].opcode == audioMasterVersion);
}
