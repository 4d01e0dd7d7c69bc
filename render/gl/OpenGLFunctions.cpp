#include "render/gl/OpenGLFunctions.h"

#include "render/context/GLDrawable.h"

namespace q1framework
{

namespace
{
template <typename Function>
bool lookUp(GLDrawable& drawable, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(drawable.getProcAddress(name));
    return function != nullptr;
}
}  // namespace

bool OpenGLFunctions::load(GLDrawable& drawable)
{
    // Every lookup runs, so that a missing one leaves only itself null.
    bool all = true;
    all &= lookUp(drawable, "glGenBuffers", genBuffers);
    all &= lookUp(drawable, "glDeleteBuffers", deleteBuffers);
    all &= lookUp(drawable, "glBindBuffer", bindBuffer);
    all &= lookUp(drawable, "glBufferData", bufferData);
    all &= lookUp(drawable, "glMapBuffer", mapBuffer);
    all &= lookUp(drawable, "glUnmapBuffer", unmapBuffer);
    all &= lookUp(drawable, "glCreateShader", createShader);
    all &= lookUp(drawable, "glShaderSource", shaderSource);
    all &= lookUp(drawable, "glCompileShader", compileShader);
    all &= lookUp(drawable, "glGetShaderiv", getShaderiv);
    all &= lookUp(drawable, "glGetShaderInfoLog", getShaderInfoLog);
    all &= lookUp(drawable, "glDeleteShader", deleteShader);
    all &= lookUp(drawable, "glCreateProgram", createProgram);
    all &= lookUp(drawable, "glAttachShader", attachShader);
    all &= lookUp(drawable, "glDetachShader", detachShader);
    all &= lookUp(drawable, "glLinkProgram", linkProgram);
    all &= lookUp(drawable, "glGetProgramiv", getProgramiv);
    all &= lookUp(drawable, "glGetProgramInfoLog", getProgramInfoLog);
    all &= lookUp(drawable, "glDeleteProgram", deleteProgram);
    all &= lookUp(drawable, "glUseProgram", useProgram);
    all &= lookUp(drawable, "glBindAttribLocation", bindAttribLocation);
    all &= lookUp(drawable, "glGetAttribLocation", getAttribLocation);
    all &= lookUp(drawable, "glVertexAttrib1f", vertexAttrib1f);
    all &= lookUp(drawable, "glVertexAttrib2f", vertexAttrib2f);
    all &= lookUp(drawable, "glGenFramebuffers", genFramebuffers);
    all &= lookUp(drawable, "glDeleteFramebuffers", deleteFramebuffers);
    all &= lookUp(drawable, "glBindFramebuffer", bindFramebuffer);
    all &= lookUp(drawable, "glFramebufferTexture2D", framebufferTexture2D);
    all &= lookUp(drawable, "glBlitFramebuffer", blitFramebuffer);
    return all;
}

}  // namespace q1framework
