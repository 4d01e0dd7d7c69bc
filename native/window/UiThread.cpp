#include "native/window/UiThread.h"

#include "foundation/runtime/MessagePump.h"
#include "native/window/WindowPeer.h"

namespace q1framework
{

void UiThread::enter()
{
    MessagePump::adoptCurrentThread();
}

void UiThread::idle()
{
    enter();
    WindowPeer::dispatchNativeEvents();
    if (MessagePump* pump = MessagePump::getInstance())
        pump->pump();
}

}  // namespace q1framework
