#pragma once

#include "render/context/Texture.h"

#include <cstdint>

namespace q1framework
{

class OpenGLContext;

// A texture of an OpenGLContext: GL_RGBA8 inside, texels sent as GL_BGRA with
// GL_UNSIGNED_INT_8_8_8_8_REV (the framework's pixel words as they are), linear filtering, wrap
// GL_REPEAT, no mipmaps.
//
// Uploads go through a pixel buffer (the context's textures always have one): each upload first
// orphans the buffer (new storage, so the driver need not wait for the previous frame), maps
// it, fills only the rectangles being sent, and sends exactly those with glTexSubImage2D. Without
// a pixel buffer the rectangles are staged in memory of the texture's size instead.
//
// Thread contract: main thread. Construction and destruction make the owner's context current
// and restore whichever context was current before (none included); the other calls expect the
// owner current, as inside a frame.
class OpenGLTexture : public Texture
{
public:
    // width by height texels, all undefined until uploaded or cleared.
    OpenGLTexture(OpenGLContext& context, int width, int height, int kind, bool usePixelBuffer);
    // Deletes the texture, then the pixel buffer or the staging memory.
    ~OpenGLTexture() override;

    // Zeroes every texel and sends them all.
    void clear() override;
    // See Texture::upload. Rectangles are sent as given (not cut), so a rectangle reaching
    // outside the image sends undefined texels there, and one outside the texture is refused by
    // GL; only the part inside both is copied from the image.
    void upload(const Image& image, const Rectangle* rectangles, int count, bool unpremultiply) override;
    // Texture coordinates from source over the size: the four corners in the order bottom-left,
    // bottom-right, top-right, top-left, with alpha as the colour's alpha and white.
    void drawQuad(const double source[4], const double corners[8], float alpha) override;
    uint32_t getNativeHandle() const override { return textureName; }

    bool usesPixelBuffer() const { return pixelBuffer != 0; }

private:
    // Binds the texture (and the buffer) and points pixels at memory to write the texels into.
    void mapForWrite();
    // Sends the rectangles from pixels into the texture and lets go of the mapping.
    void unmap(const Rectangle* rectangles, int count);

    OpenGLContext& owner;
    uint32_t textureName = 0;
    uint32_t pixelBuffer = 0;
    uint8_t* pixels = nullptr;   // the mapped buffer during an upload, or the staging memory
    uint8_t* staging = nullptr;  // malloc'ed width * height * 4 bytes, without a pixel buffer
};

}  // namespace q1framework
