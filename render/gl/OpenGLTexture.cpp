#include "render/gl/OpenGLTexture.h"

#include "media/image/Image.h"
#include "render/gl/OpenGLContext.h"
#include "render/gl/ScopedCurrentContext.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
size_t byteCount(int width, int height)
{
    return static_cast<size_t>(width) * static_cast<size_t>(height) * 4;
}
}  // namespace

OpenGLTexture::OpenGLTexture(OpenGLContext& context, int newWidth, int newHeight, int newKind, bool usePixelBuffer)
    : Texture(&context, std::max(newWidth, 0), std::max(newHeight, 0), newKind), owner(context)
{
    ScopedCurrentContext scope(owner);
    const OpenGLFunctions& gl = owner.getFunctions();
    if (!usePixelBuffer)
        staging = static_cast<uint8_t*>(std::malloc(std::max<size_t>(byteCount(width, height), 1)));
    GLuint name = 0;
    glGenTextures(1, &name);
    textureName = name;
    glBindTexture(GL_TEXTURE_2D, textureName);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, nullptr);
    glBindTexture(GL_TEXTURE_2D, 0);
    if (usePixelBuffer)
    {
        GLuint buffer = 0;
        gl.genBuffers(1, &buffer);
        pixelBuffer = buffer;
        gl.bindBuffer(GL_PIXEL_UNPACK_BUFFER, pixelBuffer);
        gl.bufferData(GL_PIXEL_UNPACK_BUFFER, static_cast<GLsizeiptr>(byteCount(width, height)), nullptr, GL_STREAM_DRAW);
        gl.bindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    }
}

OpenGLTexture::~OpenGLTexture()
{
    ScopedCurrentContext scope(owner);
    const GLuint name = textureName;
    glDeleteTextures(1, &name);
    if (pixelBuffer != 0)
    {
        const GLuint buffer = pixelBuffer;
        owner.getFunctions().deleteBuffers(1, &buffer);
    }
    std::free(staging);
}

void OpenGLTexture::mapForWrite()
{
    glBindTexture(GL_TEXTURE_2D, textureName);
    if (pixelBuffer == 0)
    {
        pixels = staging;
        return;
    }
    const OpenGLFunctions& gl = owner.getFunctions();
    gl.bindBuffer(GL_PIXEL_UNPACK_BUFFER, pixelBuffer);
    gl.bufferData(GL_PIXEL_UNPACK_BUFFER, static_cast<GLsizeiptr>(byteCount(width, height)), nullptr, GL_STREAM_DRAW);
    pixels = static_cast<uint8_t*>(gl.mapBuffer(GL_PIXEL_UNPACK_BUFFER, GL_WRITE_ONLY));
}

void OpenGLTexture::unmap(const Rectangle* rectangles, int count)
{
    if (pixelBuffer != 0)
    {
        const OpenGLFunctions& gl = owner.getFunctions();
        if (pixels == nullptr)
            return;
        gl.unmapBuffer(GL_PIXEL_UNPACK_BUFFER);
        pixels = nullptr;
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, width);
        for (int index = 0; index < count; ++index)
        {
            const Rectangle& area = rectangles[index];
            // With a buffer bound, the data argument is an offset into it.
            const uintptr_t offset = (static_cast<uintptr_t>(area.x) + static_cast<uintptr_t>(width) * area.y) * 4;
            glTexSubImage2D(GL_TEXTURE_2D, 0, area.x, area.y, area.w, area.h, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                            reinterpret_cast<const void*>(offset));
        }
        gl.bindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        return;
    }
    if (pixels == nullptr || count <= 0)
        return;
    for (int index = 0; index < count; ++index)
    {
        const Rectangle& area = rectangles[index];
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, width);
        glTexSubImage2D(GL_TEXTURE_2D, 0, area.x, area.y, area.w, area.h, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                        pixels + (static_cast<size_t>(area.x) + static_cast<size_t>(width) * area.y) * 4);
    }
}

void OpenGLTexture::clear()
{
    mapForWrite();
    if (pixels != nullptr)
        std::memset(pixels, 0, byteCount(width, height));
    const Rectangle whole(0, 0, width, height);
    unmap(&whole, 1);
}

void OpenGLTexture::upload(const Image& image, const Rectangle* rectangles, int count, bool unpremultiply)
{
    if (rectangles == nullptr || count <= 0)
        return;
    const Rectangle limit(0, 0, std::min(image.getWidth(), width), std::min(image.getHeight(), height));
    mapForWrite();
    if (pixels != nullptr && image.getData() != nullptr)
    {
        for (int index = 0; index < count; ++index)
        {
            const Rectangle part = rectangles[index].getIntersection(limit);
            if (!part.isEmpty())
                copyTexels(image, part, pixels, unpremultiply);
        }
    }
    unmap(rectangles, count);
}

void OpenGLTexture::drawQuad(const double source[4], const double corners[8], float alpha)
{
    if (width == 0 || height == 0)
        return;
    const double reciprocalWidth = 1.0 / width, reciprocalHeight = 1.0 / height;
    const double s0 = source[0] * reciprocalWidth, t0 = source[1] * reciprocalHeight;
    const double spanS = (source[0] + source[2]) * reciprocalWidth - s0;
    const double spanT = (source[1] + source[3]) * reciprocalHeight - t0;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, textureName);
    glColor4f(1.0f, 1.0f, 1.0f, alpha);
    glBegin(GL_QUADS);
    const auto vertex = [&](double s, double t, int corner) {
        glTexCoord2f(static_cast<float>(s), static_cast<float>(t));
        glVertex2f(static_cast<float>(corners[2 * corner]), static_cast<float>(corners[2 * corner + 1]));
    };
    vertex(s0, t0 + spanT, 3);
    vertex(s0 + spanS, t0 + spanT, 2);
    vertex(s0 + spanS, t0, 1);
    vertex(s0, t0, 0);
    glEnd();
    glDisable(GL_TEXTURE_2D);
}

}  // namespace q1framework
