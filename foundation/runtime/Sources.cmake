list(APPEND foundation_sources
  runtime/AlignedAllocation.cpp
  runtime/AsyncCallback.cpp
  runtime/DeletedAtShutdown.cpp
  runtime/FrameworkInitialiser.cpp
  runtime/HiResCounterHandler.cpp
  runtime/Message.cpp
  runtime/MessagePoster.cpp
  runtime/MessagePump.cpp
  runtime/ReferenceCountedObject.cpp
  runtime/Timer.cpp
  runtime/VSyncTimer.cpp
)

# The operating system's locks, threads and clocks, one source file each per platform family.
# They sit in the foundation rather than in native/ because the foundation depends on nothing.
if(UNIX)
  list(APPEND foundation_sources
    runtime/posix/Mutex.cpp
    runtime/posix/StackSize.cpp
    runtime/posix/SystemClock.cpp
    runtime/posix/Thread.cpp
  )
  find_package(Threads REQUIRED)
  list(APPEND foundation_dependencies Threads::Threads)
else()
  message(FATAL_ERROR "foundation/runtime: no platform sources for ${CMAKE_SYSTEM_NAME}")
endif()
