#pragma once

// GoogleTest and the X11 support first: Xlib's macros (None, Bool) would break GoogleTest.
#include <gtest/gtest.h>

#include "DisplayWithoutGL.h"
#include "TestDisplay.h"

#include "host/VstAbi.h"
#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class KLAudioPlugin;
class MainComponent;

namespace q1framework
{
class Holder;
class Knob;
class VST2Editor;
class VST2Wrapper;
}  // namespace q1framework

// A host of Kelvane's editor, for the X11 tests: the plug-in built into the test program (set up
// as the shared object sets itself up, with the build's resource pack), made through the entry
// point with a host callback that records what the plug-in tells the host, and host windows of
// the test's own X connection, made the way two kinds of Linux hosts make them:
//   ardourLike: a plain child window inside a top-level window is the editor's parent; the host
//     passes its Display in effEditOpen's value and idles from an event-loop thread of its own at
//     about 25 Hz;
//   carlaLike: a top-level window of the host is the parent, the value is 0, and the host idles
//     on its main thread at 50 Hz.
// One EditorHost at a time: the callback reaches it through a static pointer.
class EditorHost
{
public:
    enum class Pattern
    {
        ardourLike,
        carlaLike
    };

    struct Call
    {
        q1framework::VstInt32 opcode;
        q1framework::VstInt32 index;
        q1framework::VstIntPtr value;
        float opt;
    };

    EditorHost();
    // Closes the editor, then the effect (effClose).
    ~EditorHost();

    EditorHost(const EditorHost&) = delete;
    EditorHost& operator=(const EditorHost&) = delete;

    q1framework::AEffect* getEffect() const { return effect; }
    q1framework::VstIntPtr dispatch(q1framework::VstInt32 opcode, q1framework::VstInt32 index = 0,
                                    q1framework::VstIntPtr value = 0, void* pointer = nullptr, float opt = 0.0f);

    // Makes the host's windows of the pattern (the top-level one at hostBounds) and opens the
    // editor in them; answers effEditOpen's answer.
    bool open(Pattern pattern, const q1framework::Rectangle& hostBounds = q1framework::Rectangle(0, 0, 1600, 400));
    // effEditClose.
    void close();
    // count idles as the pattern's host makes them: each after a pause of the host's idle period
    // (40 ms or 20 ms), on the calling thread for carlaLike, on a thread of the host's own for
    // ardourLike (started and joined here).
    void idle(int count = 1);
    // One block of processReplacing on the calling thread; left and right are processed in place.
    void process(std::vector<float>& left, std::vector<float>& right);
    // The editor's rectangle as effEditGetRect gives it: width, height.
    q1framework::Point getRect();

    // What the plug-in told the host since the last take.
    std::vector<Call> takeCalls();
    // The answer to audioMasterSizeWindow: whether the host resizes its window.
    std::atomic<bool> acceptsSizeWindow{true};

    // The plug-in's side, reached in the test program directly.
    q1framework::VST2Wrapper& getWrapper() const;
    KLAudioPlugin& getPlugin() const;
    q1framework::VST2Editor& getEditor() const;
    q1framework::Holder* getHolder() const;
    MainComponent& getMainComponent() const;

    TestDisplay& getDisplay() { return display; }
    // The window the editor was opened in, and the editor's own window; 0 when there is none.
    ::Window getParentWindow() const { return parent; }
    ::Window getEditorWindow() const;
    // A window's place in its parent and size, once both connections have settled (the
    // framework's requests reach the server when it flushes them).
    q1framework::Rectangle getGeometry(::Window window);
    // The editor's window as it shows now: XGetImage of its whole area, as an opaque picture.
    q1framework::Image screenshot();

private:
    static q1framework::VstIntPtr callback(q1framework::AEffect* effect, q1framework::VstInt32 opcode,
                                           q1framework::VstInt32 index, q1framework::VstIntPtr value, void* pointer,
                                           float opt);

    TestDisplay display;
    q1framework::AEffect* effect = nullptr;
    Pattern pattern = Pattern::carlaLike;
    ::Window parent = 0;
    std::mutex callLock;
    std::vector<Call> calls;
};
