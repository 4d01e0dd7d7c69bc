#pragma once

#include "foundation/var/Array.h"
#include "host/AEffEditor.h"

#include <cstdint>

namespace q1framework
{

// The adapter's editor as the host sees it, apart from what shows it: the rectangle the host
// sizes its window to, and the keys the host passes on. VST2Editor adds the window.
//
// Rectangle: top 0, left 0, bottom the height, right the width, each narrowed to 16 bits; 1000 by
// 1000 until an editor has opened and given its own size.
//
// Keys (onKeyDown, onKeyUp): a host key becomes a framework code (native/window/KeyCodes.h):
//   - character 189 is the minus sign, 45;
//   - otherwise the virtual keys BACK, TAB, RETURN, SPACE, LEFT, UP, RIGHT, DOWN, ENTER, DELETE,
//     SHIFT, CONTROL and ALT take their framework codes (see translateKey);
//   - otherwise a lower-case ASCII letter or a digit is its own code, and anything else is not
//     passed on (answer false).
// While the shift key is held (in heldKeys) a lower-case letter becomes its capital. A key is
// passed on once when it goes down and once when it comes up: a second key-down of a held key, or
// a key-up of a key not held, passes nothing. So shift held with "a" passes 65, and the matching
// key-up after shift was released looks for 97, which is not held: 65 then stays in heldKeys.
//
// Thread contract: the host's user-interface calls (see native/window/UiThread.h); each call
// enters the framework's user-interface thread first.
class VST2EditorBase : public AEffEditor
{
public:
    static constexpr int initialWidth = 1000;
    static constexpr int initialHeight = 1000;

    // effect: the effect the editor belongs to, not owned; may be null.
    explicit VST2EditorBase(AudioEffect* effect);

    bool getRect(ERect** rectangle) override;
    bool onKeyDown(VstKeyCode& key) override;
    bool onKeyUp(VstKeyCode& key) override;

    // The size given to the host, in pixels.
    void setSize(int width, int height);
    int getWidth() const { return width; }
    int getHeight() const { return height; }
    // Framework codes of the keys down now, in the order they went down.
    const Array<int64_t>& getHeldKeys() const { return heldKeys; }

    // The framework code of a host key before the shift rule; 0 for a key that is not passed on.
    static int translateKey(const VstKeyCode& key);

protected:
    // Hands a translated key to whatever shows the editor; answers whether it was used.
    virtual bool forwardKey(bool down, int key) = 0;

private:
    // translateKey with the shift rule.
    int keyOf(const VstKeyCode& key) const;

    int width = initialWidth;
    int height = initialHeight;
    Array<int64_t> heldKeys;
    ERect rect{};
};

}  // namespace q1framework
