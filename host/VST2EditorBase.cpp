#include "host/VST2EditorBase.h"

#include "native/window/KeyCodes.h"
#include "native/window/UiThread.h"

namespace q1framework
{

namespace
{
// The host's code of the minus key on some keyboards, in the character field.
constexpr VstInt32 minusCharacter = 189;
constexpr int minusSign = 45;

struct VirtualKey
{
    unsigned char virt;
    int key;
};
constexpr VirtualKey virtualKeys[] = {
    {VKEY_BACK, KeyCodes::backspace}, {VKEY_TAB, KeyCodes::tab},           {VKEY_RETURN, KeyCodes::returnKey},
    {VKEY_SPACE, ' '},                {VKEY_LEFT, KeyCodes::leftArrow},    {VKEY_UP, KeyCodes::upArrow},
    {VKEY_RIGHT, KeyCodes::rightArrow}, {VKEY_DOWN, KeyCodes::downArrow},  {VKEY_ENTER, KeyCodes::returnKey},
    {VKEY_DELETE, KeyCodes::forwardDelete}, {VKEY_SHIFT, KeyCodes::shift}, {VKEY_CONTROL, KeyCodes::control},
    {VKEY_ALT, KeyCodes::option},
};

bool isLowerCaseLetter(int key)
{
    return key >= 'a' && key <= 'z';
}
}  // namespace

VST2EditorBase::VST2EditorBase(AudioEffect* owner) : AEffEditor(owner) {}

bool VST2EditorBase::getRect(ERect** rectangle)
{
    UiThread::enter();
    rect.top = 0;
    rect.left = 0;
    rect.bottom = static_cast<VstInt16>(height);
    rect.right = static_cast<VstInt16>(width);
    *rectangle = &rect;
    return true;
}

void VST2EditorBase::setSize(int newWidth, int newHeight)
{
    width = newWidth;
    height = newHeight;
}

int VST2EditorBase::translateKey(const VstKeyCode& key)
{
    if (key.character == minusCharacter)
        return minusSign;
    for (const VirtualKey& entry : virtualKeys)
        if (entry.virt == key.virt)
            return entry.key;
    const VstInt32 character = key.character;
    if (isLowerCaseLetter(character) || (character >= '0' && character <= '9'))
        return character;
    return 0;
}

int VST2EditorBase::keyOf(const VstKeyCode& key) const
{
    const int code = translateKey(key);
    if (heldKeys.contains(KeyCodes::shift) && isLowerCaseLetter(code))
        return code - ('a' - 'A');
    return code;
}

bool VST2EditorBase::onKeyDown(VstKeyCode& key)
{
    UiThread::enter();
    const int code = keyOf(key);
    if (code == 0 || heldKeys.contains(code))
        return false;
    heldKeys.add(code);
    return forwardKey(true, code);
}

bool VST2EditorBase::onKeyUp(VstKeyCode& key)
{
    UiThread::enter();
    const int code = keyOf(key);
    if (code == 0 || !heldKeys.contains(code))
        return false;
    heldKeys.removeFirstMatching(code);
    return forwardKey(false, code);
}

}  // namespace q1framework
