#pragma once

namespace q1framework
{

// The thread of the user interface, and how the framework keeps to it.
//
// Everything of the framework's user-interface side (windows and their native events, the
// toolkit, timers and the frame loop, rendering contexts and textures, the display connection
// of the framework's own) runs on one thread at a time and takes no lock. That thread is "the
// main thread": whichever host thread is calling in at the moment. The framework starts no
// thread for its interface.
//
// How hosts call in, and why that is safe:
//   - A host opens, idles and closes an editor (effEditOpen, effEditIdle, effEditClose, and its
//     key calls) from its user-interface thread. Some hosts make these calls from two threads in
//     turn: one opens and closes on its main thread and idles from an event-loop thread of its
//     own at about 25 Hz; another does everything on its main thread at 50 Hz. A VST 2.4 host
//     never makes two of these calls at once, for the same editor or for two editors, and
//     whatever it uses to hand the work from one of its threads to the other (a lock, a queue, a
//     join) also orders the framework's memory between the calls.
//   - An LV2 host makes the calls of a plug-in's user interface (instantiate, port_event, idle,
//     the interface's resize, cleanup) on its user-interface thread, one at a time, likewise.
//   - Each such call starts with UiThread::enter (idle does it itself), which makes the calling
//     thread the main thread of MessagePump and Thread::isMainThread.
//   - Nothing stays bound to a thread between calls. The GL context is made current at the
//     start of each frame and released at its end, and released again after a window has set
//     it up, so the next call may come from another thread. The display connection is the
//     framework's own (never the host's Display, which only the host's threads may use), and it
//     is used only inside these calls; Xlib's own locking is therefore not needed. Timers fire
//     only from MessagePump::pump inside idle.
//   - The audio thread never reaches any of this.
//
// Thread contract: the host's user-interface calls only, as above.
class UiThread
{
public:
    // At the start of a host call into the user interface: the calling thread becomes the main
    // thread.
    static void enter();
    // The host's idle call: enter, then deliver the native events waiting for the framework's
    // windows, then MessagePump::pump, which runs the posted messages, the deferred callbacks
    // and the due timers, among them the frame clock (Window::runFrame).
    static void idle();
};

}  // namespace q1framework
