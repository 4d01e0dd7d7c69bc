#include "render/gl/OpenGLSurface.h"

#include "render/context/Texture.h"
#include "render/gl/OpenGLContext.h"
#include "render/gl/ScopedCurrentContext.h"

namespace q1framework
{

namespace
{
// The texture's rows run from the top of the picture, and framebuffer blits count rows the same
// way (row 0 first), so the surface's rectangles need no flip here.
void blit(const OpenGLFunctions& gl, const Rectangle& from, const Point& to)
{
    gl.blitFramebuffer(from.x, from.y, from.getRight(), from.getBottom(), to.x, to.y, to.x + from.w, to.y + from.h,
                       GL_COLOR_BUFFER_BIT, GL_NEAREST);
}
}  // namespace

OpenGLSurface::OpenGLSurface(OpenGLContext& context, int width, int height)
    : TextureSurface(context, width, height), glContext(context)
{
}

OpenGLSurface::~OpenGLSurface()
{
    if (scratch == nullptr)
        return;
    ScopedCurrentContext scope(glContext);
    delete scratch;
    const GLuint names[2] = {framebuffers[0], framebuffers[1]};
    glContext.getFunctions().deleteFramebuffers(2, names);
}

void OpenGLSurface::copyRegion(void*, const Rectangle& source, const Point& destination)
{
    if (texture == nullptr)
        return;
    const Rectangle whole(Point(), size);
    // Cut source so that both it and the destination lie in the texture.
    const Rectangle from = source.getIntersection(whole);
    const Point shifted = destination + (from.getPosition() - source.getPosition());
    const Rectangle to = Rectangle(shifted, from.getSize()).getIntersection(whole);
    const Rectangle cut(from.getPosition() + (to.getPosition() - shifted), to.getSize());
    if (cut.isEmpty())
        return;

    const OpenGLFunctions& gl = glContext.getFunctions();
    if (scratch == nullptr)
    {
        scratch = context.createTexture(size.x, size.y, 0, 1);
        GLuint names[2] = {0, 0};
        gl.genFramebuffers(2, names);
        framebuffers[0] = names[0];
        framebuffers[1] = names[1];
    }
    const auto attach = [&](GLenum target, GLuint framebuffer, const Texture* attached) {
        gl.bindFramebuffer(target, framebuffer);
        gl.framebufferTexture2D(target, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, attached->getNativeHandle(), 0);
    };
    attach(GL_READ_FRAMEBUFFER, framebuffers[0], texture);
    attach(GL_DRAW_FRAMEBUFFER, framebuffers[1], scratch);
    blit(gl, cut, cut.getPosition());
    attach(GL_READ_FRAMEBUFFER, framebuffers[1], scratch);
    attach(GL_DRAW_FRAMEBUFFER, framebuffers[0], texture);
    blit(gl, cut, to.getPosition());
    gl.bindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    gl.bindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
}

}  // namespace q1framework
