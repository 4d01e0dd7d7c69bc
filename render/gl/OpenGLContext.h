#pragma once

#include "foundation/string/String.h"
#include "render/context/RenderingContext.h"
#include "render/gl/OpenGLFunctions.h"

#include <cstdint>

namespace q1framework
{

class GLDrawable;
class OpenGLShader;

// The OpenGL rendering context of one window: legacy fixed-function state, immediate-mode
// drawing, and one shader, the anti-aliased circle. It draws through a GLDrawable that the
// window system made for the window, and knows nothing else of the platform.
//
// Buffering: the drawable decides. A single-buffered drawable (the framework's choice, and what
// Mesa offers on X11) ends a frame with glFlush; the front buffer is presented at the flush, and nothing
// waits for the vertical blank. A double-buffered drawable ends it with a swap.
//
// Clip arithmetic, with height the drawable's height: setClip(x, y, w, h) sets the scissor box
// (x, height - (y + h), w, h) and enables it; an empty clip disables the scissor test (no clip
// at all); getClip reads the scissor box (x, sy, w, h) back as (x, height - (sy + h), w, h).
//
// Colour quirks, kept on purpose: the outline and the line pass their colour bytes to
// glColor4b, whose arguments are signed, so a channel of 128 or more draws as 0 and 127 is full
// intensity; the outline stops one pixel short of the fill's right and bottom edges.
//
// Thread contract: main thread (see native/window/UiThread.h). A frame makes the context current
// (beginFrame) and releases it (endFrame); other calls expect it current, as inside a frame.
// Textures must be deleted before the context; its listeners are told while it can still delete
// them.
class OpenGLContext : public RenderingContext
{
public:
    // A context drawing through drawable (not owned; it must outlive the context), set up and
    // released from the calling thread again. Null when the drawable cannot be made current or
    // the GL lacks the pixel buffers, shaders or framebuffers the presenter uses.
    static OpenGLContext* create(GLDrawable& drawable);
    // Tells the listeners (with the context current, so that they can delete their textures),
    // deletes the circle shader, leaves the list of contexts, releases the drawable.
    ~OpenGLContext() override;

    // The context whose drawable is current on the calling thread, or null.
    static OpenGLContext* getCurrent();

    // Makes the drawable current on the calling thread.
    void makeCurrent();
    // Leaves the calling thread with no current context, if this one was current.
    void releaseCurrent();
    // Ends a frame: a swap when double-buffered, otherwise glFlush.
    void flush();
    bool isDoubleBuffered() const { return doubleBuffered; }

    // GL_VERSION as text, its number before the first "." in major and the number after it (up
    // to the next blank or ".") in minor; 0 for a part that is not a number.
    String getVersion(int& major, int& minor);
    // Switches the program: shader's, or the default program for null. Nothing when unchanged.
    void useShader(OpenGLShader* shader);
    // If shader is the one in use, returns to the default program.
    void releaseShader(OpenGLShader* shader);
    // Null when the circle shader did not compile or link.
    OpenGLShader* getCircleShader() const { return circleShader; }
    const OpenGLFunctions& getFunctions() const { return functions; }
    GLDrawable& getDrawable() const { return drawable; }

    // Always an OpenGLTexture with a pixel buffer; mode is dropped.
    Texture* createTexture(int width, int height, int mode, int kind) override;
    Rectangle getClip() override;
    void setClip(const Rectangle& area) override;
    // GL_LINE_LOOP through (x, y), (x + w - 1, y), (x + w - 1, y + h - 1), (x, y + h - 1).
    void drawGradientRect(const Rectangle& area, const Colour corners[4]) override;
    // GL_QUADS through (x, y), (x + w, y), (x + w, y + h), (x, y + h), texturing off.
    void fillGradientRect(const Rectangle& area, const Colour corners[4]) override;
    void drawLine(int x1, int y1, int x2, int y2, const Colour& colour) override;
    // The square of bounds through the circle shader: radius bounds.w / 2, centre the box's
    // centre, alpha times sqrt(1 - smoothstep(r - 0.5, r + 0.5, distance)) per fragment, in
    // window coordinates. Without the shader a filled square.
    void fillCircle(const Rectangle& bounds, const Colour& colour) override;
    void setSize(int width, int height) override;
    Point getSize() override { return Point(width, height); }
    // The window system's context handle.
    void* getNativeContext() override;
    // makeCurrent; scissor on; projection glOrtho(0, w, h, 0, 0, 1) (the identity is loaded
    // before the switch to the projection matrix, so in the first frame it resets the model
    // view and from the second on, the mode staying on the projection, the projection); viewport
    // and scissor over the whole drawable; source-over blending; no depth test; cleared to
    // opaque black.
    void beginFrame() override;
    // flush, then releaseCurrent.
    void endFrame() override;

private:
    explicit OpenGLContext(GLDrawable& drawable);
    // Everything of construction after the drawable was made current; false when the GL lacks
    // an entry point.
    bool setUp();

    GLDrawable& drawable;
    OpenGLFunctions functions;
    OpenGLShader* circleShader = nullptr;
    int32_t radiusAttribute = 0;
    int32_t centerAttribute = 0;
    bool doubleBuffered = false;
    int32_t width = 0;
    int32_t height = 0;
    uint32_t defaultProgram = 0;
    OpenGLShader* currentShader = nullptr;
    bool listed = false;  // in the list of live contexts
};

}  // namespace q1framework
