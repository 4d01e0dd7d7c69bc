#pragma once

#include "render/gl/OpenGLContext.h"

namespace q1framework
{

// Makes a context current for the life of the object, then restores whichever context was
// current before (or none), for work on a context's objects outside its frames (making and
// deleting textures and framebuffers).
//
// Thread contract: main thread; lives on the stack.
class ScopedCurrentContext
{
public:
    explicit ScopedCurrentContext(OpenGLContext& context) : previous(OpenGLContext::getCurrent()), made(context)
    {
        if (previous != &context)
            context.makeCurrent();
    }

    ~ScopedCurrentContext()
    {
        if (previous == &made)
            return;
        if (previous != nullptr)
            previous->makeCurrent();
        else
            made.releaseCurrent();
    }

    ScopedCurrentContext(const ScopedCurrentContext&) = delete;
    ScopedCurrentContext& operator=(const ScopedCurrentContext&) = delete;

private:
    OpenGLContext* previous;
    OpenGLContext& made;
};

}  // namespace q1framework
