#pragma once

#include "host/VstAbi.h"

namespace q1framework
{
class AudioEffect;

// The effect's editor as the VST 2.4 dispatcher sees it. AudioEffect turns the editor opcodes
// (effEditGetRect, effEditOpen, effEditClose, effEditIdle, effEditKeyDown, effEditKeyUp,
// effSetEditKnobMode) into calls of these operations; a concrete editor overrides what it
// supports. The defaults describe an editor that shows nothing and handles no key.
//
// Ownership: the AudioEffect that the editor is given to with setEditor owns and deletes it.
// Thread contract: main thread (the thread on which the host calls the editor opcodes).
class AEffEditor
{
public:
    // `effect` is not owned and may be null.
    explicit AEffEditor(AudioEffect* effect = nullptr);
    virtual ~AEffEditor();

    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    // Main thread. The effect this editor belongs to, or null.
    virtual AudioEffect* getEffect();

    // Main thread. Stores the address of the editor's rectangle, in pixels, in *rect; the record
    // belongs to the editor and stays valid until the next call. Default: stores null, answers false.
    virtual bool getRect(ERect** rect);

    // Main thread. Opens the editor inside the host's window `parent` (an X11 Window id on Linux).
    // Default: stores the parent as systemWindow and answers false (no editor was made).
    virtual bool open(void* parent);

    // Main thread. Closes the editor. Default: clears systemWindow.
    virtual void close();

    // Main thread. True while systemWindow is set.
    virtual bool isOpen();

    // Main thread. The host's periodic editor call. Default: nothing.
    virtual void idle();

    // Main thread. A key pressed or released while the editor has the focus; answers true when the
    // editor used it, so the host does not. Default: false.
    virtual bool onKeyDown(VstKeyCode& key);
    virtual bool onKeyUp(VstKeyCode& key);

    // Main thread. Mouse wheel turned by `distance` steps. Default: false, not used.
    virtual bool onWheel(float distance);

    // Main thread. The host's knob mode: 0 circular, 1 relative circular, 2 linear. Default: false.
    virtual bool setKnobMode(VstInt32 mode);

protected:
    AudioEffect* effect;
    void* systemWindow;  // the host's parent window while open, null while closed
};
}
