#pragma once

#include "render/surface/TextureSurface.h"

#include <cstdint>

namespace q1framework
{

class OpenGLContext;

// The surface of a window drawing through OpenGL: a TextureSurface over the context's texture,
// which also copies regions of that texture on the device (copyRegion), for scrolling in the
// copying mode. The copy goes through a scratch texture of the surface's size, made on first use,
// and two framebuffers: source to scratch, then scratch to the destination.
//
// Thread contract: main thread, inside a frame of the context (it is current).
class OpenGLSurface : public TextureSurface
{
public:
    OpenGLSurface(OpenGLContext& context, int width, int height);
    // Deletes the scratch texture and the framebuffers, if they were made.
    ~OpenGLSurface() override;

    // Copies source (surface pixels) to the rectangle of the same size at destination, in the
    // texture; parts outside the texture are not copied.
    void copyRegion(void* ignored, const Rectangle& source, const Point& destination) override;

private:
    OpenGLContext& glContext;
    Texture* scratch = nullptr;  // owned; null until the first copy
    uint32_t framebuffers[2] = {0, 0};
};

}  // namespace q1framework
