#include "render/gl/OpenGLShader.h"

#include "render/gl/OpenGLContext.h"

#include <cstdio>

namespace q1framework
{

namespace
{
// The longest log kept; a longer one is cut.
constexpr int logCapacity = 50000;

// Prints the info log of a shader or a program (getLog is glGetShaderInfoLog or
// glGetProgramInfoLog, which take the same arguments) after prefix.
void printLog(const char* prefix, PFNGLGETSHADERINFOLOGPROC getLog, GLuint name)
{
    static char log[logCapacity];
    log[0] = 0;
    getLog(name, logCapacity, nullptr, log);
    std::fprintf(stderr, "%s%s\n", prefix, log);
}
}  // namespace

OpenGLShader* OpenGLShader::create(OpenGLContext& context, const char* vertexSource, const char* fragmentSource,
                                   const char* const* attributes, int count)
{
    auto* shader = new OpenGLShader(context, vertexSource, fragmentSource, attributes, count);
    if (shader->valid)
        return shader;
    delete shader;
    return nullptr;
}

OpenGLShader::OpenGLShader(OpenGLContext& owner, const char* vertexSource, const char* fragmentSource,
                           const char* const* attributes, int count)
    : context(owner)
{
    const OpenGLFunctions& gl = context.getFunctions();
    vertexShader = compile(GL_VERTEX_SHADER, vertexSource);
    fragmentShader = compile(GL_FRAGMENT_SHADER, fragmentSource);
    program = gl.createProgram();
    gl.attachShader(program, vertexShader);
    gl.attachShader(program, fragmentShader);
    for (int index = 0; attributes != nullptr && index < count; ++index)
        gl.bindAttribLocation(program, static_cast<GLuint>(index + 1), attributes[index]);
    gl.linkProgram(program);
    GLint linked = 0;
    gl.getProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked == 0)
    {
        printLog("[PROGRAM]: ", gl.getProgramInfoLog, program);
        valid = false;
    }
    gl.detachShader(program, vertexShader);
    gl.detachShader(program, fragmentShader);
}

uint32_t OpenGLShader::compile(uint32_t type, const char* source)
{
    const OpenGLFunctions& gl = context.getFunctions();
    const GLuint shader = gl.createShader(type);
    gl.shaderSource(shader, 1, &source, nullptr);
    gl.compileShader(shader);
    GLint compiled = 0;
    gl.getShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == 0)
    {
        printLog(type == GL_FRAGMENT_SHADER ? "[FRAGMENT SHADER]: " : "[VERTEX SHADER]: ", gl.getShaderInfoLog, shader);
        valid = false;
    }
    return shader;
}

OpenGLShader::~OpenGLShader()
{
    const OpenGLFunctions& gl = context.getFunctions();
    context.releaseShader(this);
    gl.deleteProgram(program);
    gl.deleteShader(vertexShader);
    gl.deleteShader(fragmentShader);
}

}  // namespace q1framework
