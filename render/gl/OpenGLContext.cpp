#include "render/gl/OpenGLContext.h"

#include "foundation/runtime/StaticInitOrder.h"
#include "render/context/GLDrawable.h"
#include "render/gl/OpenGLShader.h"
#include "render/gl/OpenGLTexture.h"

#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
// Every live context, so that the current GL context can be mapped back to its owner.
__attribute__((init_priority(StaticInitOrder::openGLLayer))) Array<OpenGLContext*> liveContexts;

// The circle: the vertex stage passes the radius, the centre, the colour and the untransformed
// vertex (window coordinates) on; the fragment stage fades alpha over one pixel centred on the
// radius, with a square root that keeps the edge fuller than a plain smoothstep.
const char* const circleVertexSource =
    "attribute float radiusIn;\t\t\n"
    "attribute vec2 centerIn;\t\t\n"
    "varying vec4 vColor;\t\t\n"
    "varying vec4 vPos;\t\t\n"
    "varying float r;\t\t\n"
    "varying vec2 cnt;\t\t\n"
    "void main()\n"
    "{\n"
    "    r = radiusIn;\n"
    "    cnt = centerIn;\n"
    "    vColor = gl_Color;\n"
    "    vPos = gl_Vertex;\n"
    "    gl_Position = ftransform();\n"
    "}\n";

const char* const circleFragmentSource =
    "varying float r;\t\t\n"
    "varying vec2 cnt;\t\t\n"
    "varying vec4 vColor;\t\t\n"
    "varying vec4 vPos;\t\t\n"
    "void main()\n"
    "{\n"
    "    vec4 colour = vColor;\n"
    "    float dist = length(vec2(vPos.x - cnt.x, vPos.y - cnt.y));\n"
    "    float a = smoothstep(r - 0.5, r + 0.5, dist);\n"
    "    colour.a *= sqrt(1.0 - a);\n"
    "    gl_FragColor = colour;\n"
    "}\n";

// The circle's attributes get locations of their own, away from 0, which aliases the vertex
// position in the compatibility profile.
const char* const circleAttributes[] = {"radiusIn", "centerIn"};

// A colour byte as glColor4b takes it: reinterpreted as signed.
GLbyte signedByte(uint8_t value)
{
    return static_cast<GLbyte>(value);
}

// The leading decimal number of text, 0 when there is none.
int leadingNumber(const char* text)
{
    return static_cast<int>(std::strtol(text, nullptr, 10));
}
}  // namespace

OpenGLContext* OpenGLContext::create(GLDrawable& drawable)
{
    if (!drawable.makeCurrent())
        return nullptr;
    auto* context = new OpenGLContext(drawable);
    if (!context->setUp())
    {
        delete context;
        drawable.releaseCurrent();
        return nullptr;
    }
    drawable.releaseCurrent();
    return context;
}

OpenGLContext::OpenGLContext(GLDrawable& windowDrawable)
    : drawable(windowDrawable), doubleBuffered(windowDrawable.isDoubleBuffered())
{
}

bool OpenGLContext::setUp()
{
    if (!functions.load(drawable))
        return false;
    glShadeModel(GL_SMOOTH);
    glClearColor(0.0f, 0.0f, 0.0f, 0.5f);
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    GLint largestSide = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largestSide);
    maximumTextureSize = largestSide;

    liveContexts.add(this);
    listed = true;

    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    defaultProgram = static_cast<uint32_t>(program);
    circleShader = OpenGLShader::create(*this, circleVertexSource, circleFragmentSource, circleAttributes, 2);
    if (circleShader != nullptr)
    {
        radiusAttribute = functions.getAttribLocation(circleShader->getProgram(), "radiusIn");
        centerAttribute = functions.getAttribLocation(circleShader->getProgram(), "centerIn");
    }
    currentShader = nullptr;
    return true;
}

OpenGLContext::~OpenGLContext()
{
    if (listed)
    {
        makeCurrent();
        notifyDeletion();
        delete circleShader;
        liveContexts.removeFirstMatching(this);
    }
    releaseCurrent();
}

OpenGLContext* OpenGLContext::getCurrent()
{
    for (OpenGLContext* context : liveContexts)
        if (context->drawable.isCurrent())
            return context;
    return nullptr;
}

void OpenGLContext::makeCurrent()
{
    drawable.makeCurrent();
}

void OpenGLContext::releaseCurrent()
{
    drawable.releaseCurrent();
}

void OpenGLContext::flush()
{
    if (doubleBuffered)
        drawable.swapBuffers();
    else
        glFlush();
}

String OpenGLContext::getVersion(int& major, int& minor)
{
    const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    if (version == nullptr)
    {
        major = minor = 0;
        return String();
    }
    major = leadingNumber(version);
    const char* dot = std::strchr(version, '.');
    minor = dot != nullptr ? leadingNumber(dot + 1) : 0;
    return String(version);
}

void OpenGLContext::useShader(OpenGLShader* shader)
{
    if (shader == currentShader)
        return;
    currentShader = shader;
    functions.useProgram(shader != nullptr ? shader->getProgram() : defaultProgram);
}

void OpenGLContext::releaseShader(OpenGLShader* shader)
{
    if (shader != nullptr && shader == currentShader)
    {
        currentShader = nullptr;
        functions.useProgram(defaultProgram);
    }
}

Texture* OpenGLContext::createTexture(int textureWidth, int textureHeight, int, int kind)
{
    return new OpenGLTexture(*this, textureWidth, textureHeight, kind, true);
}

Rectangle OpenGLContext::getClip()
{
    GLint box[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_SCISSOR_BOX, box);
    return Rectangle(box[0], height - (box[1] + box[3]), box[2], box[3]);
}

void OpenGLContext::setClip(const Rectangle& area)
{
    if (area.isEmpty())
    {
        glDisable(GL_SCISSOR_TEST);
        return;
    }
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x, height - (area.y + area.h), area.w, area.h);
}

void OpenGLContext::drawGradientRect(const Rectangle& area, const Colour corners[4])
{
    const int right = area.x + area.w - 1, bottom = area.y + area.h - 1;
    const int xs[4] = {area.x, right, right, area.x};
    const int ys[4] = {area.y, area.y, bottom, bottom};
    glBegin(GL_LINE_LOOP);
    for (int corner = 0; corner < 4; ++corner)
    {
        const Colour& colour = corners[corner];
        glColor4b(signedByte(colour.getRed()), signedByte(colour.getGreen()), signedByte(colour.getBlue()),
                  signedByte(colour.getAlpha()));
        glVertex2i(xs[corner], ys[corner]);
    }
    glEnd();
}

void OpenGLContext::fillGradientRect(const Rectangle& area, const Colour corners[4])
{
    const int xs[4] = {area.x, area.x + area.w, area.x + area.w, area.x};
    const int ys[4] = {area.y, area.y, area.y + area.h, area.y + area.h};
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    for (int corner = 0; corner < 4; ++corner)
    {
        const Colour& colour = corners[corner];
        glColor4f(static_cast<float>(colour.getRed() / 255.0), static_cast<float>(colour.getGreen() / 255.0),
                  static_cast<float>(colour.getBlue() / 255.0), static_cast<float>(colour.getAlpha() / 255.0));
        glVertex2i(xs[corner], ys[corner]);
    }
    glEnd();
}

void OpenGLContext::drawLine(int x1, int y1, int x2, int y2, const Colour& colour)
{
    glLineWidth(1.0f);
    glColor4b(signedByte(colour.getRed()), signedByte(colour.getGreen()), signedByte(colour.getBlue()),
              signedByte(colour.getAlpha()));
    glBegin(GL_LINES);
    glVertex2f(static_cast<float>(x1), static_cast<float>(y1));
    glVertex2f(static_cast<float>(x2), static_cast<float>(y2));
    glEnd();
}

void OpenGLContext::fillCircle(const Rectangle& bounds, const Colour& colour)
{
    OpenGLShader* previous = currentShader;
    useShader(circleShader);
    // Without the shader the square is drawn plain: the attributes would land on location 0,
    // which is the vertex position itself.
    if (circleShader != nullptr)
    {
        functions.vertexAttrib1f(static_cast<GLuint>(radiusAttribute), static_cast<float>(bounds.w * 0.5));
        functions.vertexAttrib2f(static_cast<GLuint>(centerAttribute),
                                 static_cast<float>(bounds.x * 0.5 + (bounds.x + bounds.w) * 0.5),
                                 static_cast<float>(bounds.y * 0.5 + (bounds.y + bounds.h) * 0.5));
    }
    fillRect(bounds, colour);
    useShader(previous);
}

void OpenGLContext::setSize(int newWidth, int newHeight)
{
    width = newWidth;
    height = newHeight;
}

void* OpenGLContext::getNativeContext()
{
    return drawable.getNativeContext();
}

void OpenGLContext::beginFrame()
{
    makeCurrent();
    glEnable(GL_SCISSOR_TEST);
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glOrtho(0.0, width, height, 0.0, 0.0, 1.0);
    glViewport(0, 0, width, height);
    glScissor(0, 0, width, height);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_DEPTH_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void OpenGLContext::endFrame()
{
    flush();
    releaseCurrent();
}

}  // namespace q1framework
