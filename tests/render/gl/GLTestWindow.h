#pragma once

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "TestDisplay.h"

#include "native/window/Window.h"
#include "native/window/WindowFlags.h"
#include "render/gl/OpenGLContext.h"

#include <GL/gl.h>

#include <cstdint>
#include <vector>

// A window drawing through OpenGL inside a host window of the test, on the test program's own
// Xvfb with Mesa's software GL, for the tests of the OpenGL presenter. GL is checked as
// "presented correctly": exact where GL copies (texels read back), within one level where it
// filters or blends.
class GLTestWindow
{
public:
    explicit GLTestWindow(int width = 100, int height = 100)
        : host(test.makeHostWindow(q1framework::Rectangle(0, 0, width, height))),
          window(q1framework::Rectangle(0, 0, width, height), q1framework::WindowFlags::openGL, q1framework::String(),
                 reinterpret_cast<void*>(static_cast<uintptr_t>(host))),
          context(dynamic_cast<q1framework::OpenGLContext*>(window.getRenderingContext()))
    {
        test.settle();
    }

    ~GLTestWindow()
    {
        if (context != nullptr)
            context->releaseCurrent();
    }

    // Starts a frame on the window's context; false when the window got no GL context.
    bool beginFrame()
    {
        if (context == nullptr)
            return false;
        context->beginFrame();
        return true;
    }

    ::Window xWindow() const { return static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView())); }

    // The frame's pixels so far as 0xAARRGGBB words, row by row from the top, read from the
    // buffer being drawn (the front one when single-buffered) after glFinish.
    std::vector<uint32_t> readFrame(const q1framework::Rectangle& area)
    {
        glFinish();
        std::vector<uint32_t> pixels(static_cast<size_t>(area.w) * area.h);
        const int height = context->getSize().y;
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glReadPixels(area.x, height - area.getBottom(), area.w, area.h, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                     pixels.data());
        // GL's rows run upwards.
        std::vector<uint32_t> flipped;
        for (int row = area.h - 1; row >= 0; --row)
            flipped.insert(flipped.end(), pixels.begin() + row * area.w, pixels.begin() + (row + 1) * area.w);
        return flipped;
    }

    uint32_t readPixel(int x, int y) { return readFrame(q1framework::Rectangle(x, y, 1, 1)).at(0); }

    // A texture's texels as 0xAARRGGBB words, row by row from its first row.
    static std::vector<uint32_t> readTexels(uint32_t texture, int width, int height)
    {
        std::vector<uint32_t> texels(static_cast<size_t>(width) * height);
        glBindTexture(GL_TEXTURE_2D, texture);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, texels.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        return texels;
    }

    TestDisplay test;
    ::Window host;
    q1framework::Window window;
    q1framework::OpenGLContext* context;
};

// Whether every channel of two pixel words differs by at most tolerance.
inline bool closePixels(uint32_t first, uint32_t second, int tolerance)
{
    for (int shift = 0; shift < 32; shift += 8)
    {
        const int difference = static_cast<int>((first >> shift) & 0xff) - static_cast<int>((second >> shift) & 0xff);
        if (difference > tolerance || difference < -tolerance)
            return false;
    }
    return true;
}
