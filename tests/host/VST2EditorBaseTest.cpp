// VST2EditorBase: the rectangle given to the host, and the keys it passes on.

#include "host/VST2EditorBase.h"

#include "native/window/KeyCodes.h"

#include <gtest/gtest.h>

#include <vector>

using namespace q1framework;

namespace
{
// Records the keys passed on; answers that each was used.
class KeyRecorder : public VST2EditorBase
{
public:
    KeyRecorder() : VST2EditorBase(nullptr) {}

    struct Forwarded
    {
        bool down;
        int key;
        bool operator==(const Forwarded& other) const { return down == other.down && key == other.key; }
    };

    bool down(VstInt32 character, unsigned char virt = 0)
    {
        VstKeyCode key{character, virt, 0};
        return onKeyDown(key);
    }
    bool up(VstInt32 character, unsigned char virt = 0)
    {
        VstKeyCode key{character, virt, 0};
        return onKeyUp(key);
    }

    std::vector<Forwarded> forwarded;

protected:
    bool forwardKey(bool isDown, int key) override
    {
        forwarded.push_back({isDown, key});
        return true;
    }
};
}  // namespace

TEST(VST2EditorBase, TheRectangleIs1000By1000UntilAnEditorGivesItsSize)
{
    KeyRecorder editor;
    ERect* rect = nullptr;
    ASSERT_TRUE(editor.getRect(&rect));
    EXPECT_EQ(std::vector<int>({rect->top, rect->left, rect->bottom, rect->right}), std::vector<int>({0, 0, 1000, 1000}));
    editor.setSize(750, 175);
    editor.getRect(&rect);
    EXPECT_EQ(std::vector<int>({rect->bottom, rect->right}), std::vector<int>({175, 750}));
}

TEST(VST2EditorBase, VirtualKeysTakeTheirFrameworkCodes)
{
    const struct
    {
        unsigned char virt;
        int key;
    } table[] = {{VKEY_BACK, KeyCodes::backspace}, {VKEY_TAB, 9},          {VKEY_RETURN, 13},
                 {VKEY_SPACE, 32},                 {VKEY_LEFT, 0x10000001}, {VKEY_UP, 0x10000003},
                 {VKEY_RIGHT, 0x10000002},         {VKEY_DOWN, 0x10000004}, {VKEY_ENTER, 13},
                 {VKEY_DELETE, 127},               {VKEY_SHIFT, 0x10000007}, {VKEY_CONTROL, 0x10000005},
                 {VKEY_ALT, 0x10000006}};
    for (const auto& entry : table)
        EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{0, entry.virt, 0}), entry.key) << int(entry.virt);
}

TEST(VST2EditorBase, LettersAndDigitsPassAndOtherCharactersDoNot)
{
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{'q', 0, 0}), 'q');
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{'7', 0, 0}), '7');
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{189, 0, 0}), '-');
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{'Q', 0, 0}), 0);
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{'+', 0, 0}), 0);
    EXPECT_EQ(VST2EditorBase::translateKey(VstKeyCode{0, VKEY_F1, 0}), 0);
    KeyRecorder editor;
    EXPECT_FALSE(editor.down('+'));
    EXPECT_TRUE(editor.forwarded.empty());
}

TEST(VST2EditorBase, AHeldKeyIsPassedOnOnceDownAndOnceUp)
{
    KeyRecorder editor;
    EXPECT_TRUE(editor.down('a'));
    EXPECT_FALSE(editor.down('a'));
    EXPECT_TRUE(editor.up('a'));
    EXPECT_FALSE(editor.up('a'));
    EXPECT_FALSE(editor.up('b'));
    EXPECT_EQ(editor.forwarded, (std::vector<KeyRecorder::Forwarded>{{true, 'a'}, {false, 'a'}}));
    EXPECT_TRUE(editor.getHeldKeys().isEmpty());
}

TEST(VST2EditorBase, ShiftMakesALetterCapitalAndItsReleaseAfterShiftsIsLost)
{
    KeyRecorder editor;
    editor.down(0, VKEY_SHIFT);
    editor.down('a');
    editor.up(0, VKEY_SHIFT);
    // The key-up looks for 97, which is not held: nothing is passed, and 65 stays held.
    EXPECT_FALSE(editor.up('a'));
    EXPECT_EQ(editor.forwarded, (std::vector<KeyRecorder::Forwarded>{
                                    {true, KeyCodes::shift}, {true, 'A'}, {false, KeyCodes::shift}}));
    EXPECT_TRUE(editor.getHeldKeys().contains('A'));
}
