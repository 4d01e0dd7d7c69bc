#pragma once

// The framework's runtime services: reference counting, ordered shutdown, clocks, timers, the
// main-thread message pump, deferred callbacks and messages, locks, threads and aligned memory.
#include "foundation/runtime/AlignedAllocation.h"
#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/Date.h"
#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ReferenceCountedObject.h"
#include "foundation/runtime/ScopedLock.h"
#include "foundation/runtime/StackSize.h"
#include "foundation/runtime/StaticInitOrder.h"
#include "foundation/runtime/SystemClock.h"
#include "foundation/runtime/Thread.h"
#include "foundation/runtime/Timer.h"
#include "foundation/runtime/VSyncTimer.h"
