#pragma once

#include <cstdint>

namespace q1framework
{

class OpenGLContext;

// One GLSL program of a context: a vertex and a fragment shader, compiled and linked. A stage
// that fails to compile, or a program that fails to link, writes its log to the standard error
// stream with the prefix "[VERTEX SHADER]: ", "[FRAGMENT SHADER]: " or "[PROGRAM]: ", and the
// factory then answers null. This log is the framework's one diagnostic output.
//
// Thread contract: main thread, with the context current.
class OpenGLShader
{
public:
    // The program from the two sources, or null when a step failed (logged as above). The
    // attributes named in attributes (count of them) are bound to the locations 1, 2, ... before
    // linking.
    static OpenGLShader* create(OpenGLContext& context, const char* vertexSource, const char* fragmentSource,
                                const char* const* attributes = nullptr, int count = 0);
    // Stops using it if it is in use, then deletes the program and both shaders.
    ~OpenGLShader();

    OpenGLShader(const OpenGLShader&) = delete;
    OpenGLShader& operator=(const OpenGLShader&) = delete;

    uint32_t getProgram() const { return program; }

private:
    OpenGLShader(OpenGLContext& context, const char* vertexSource, const char* fragmentSource,
                 const char* const* attributes, int count);
    // The shader name, in every case; a failure clears valid.
    uint32_t compile(uint32_t type, const char* source);

    OpenGLContext& context;
    uint32_t vertexShader = 0;
    uint32_t fragmentShader = 0;
    uint32_t program = 0;
    bool valid = true;
};

}  // namespace q1framework
