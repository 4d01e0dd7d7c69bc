#pragma once

#include "foundation/memory/MemoryBlock.h"
#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/string/String.h"
#include "render/font/FontEngine.h"
#include "render/font/FontFace.h"
#include "render/font/SystemFontPaths.h"

#include <gtest/gtest.h>

#include <memory>

// A face of its own on the system font, for tests that make fonts other than the fallback one.
// Each test ends with the framework's shutdown of its singletons, so that the next one starts with
// no engine, no fallback font and an empty glyph cache (whose entries name faces by address).
class SystemFaceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const q1framework::MemoryBlock data = q1framework::MemoryBlock::loadFromFile(q1framework::getFallbackFontPath());
        face.reset(q1framework::FontEngine::getInstance()->loadFace(data));
        ASSERT_NE(face, nullptr) << "the system font " << q1framework::getFallbackFontPath().getCString()
                                 << " is missing (scripts/install-deps.sh installs it)";
    }

    void TearDown() override
    {
        face.reset();
        q1framework::DeletedAtShutdown::deleteAll();
    }

    std::unique_ptr<q1framework::FontFace> face;
};

// The advance of code in the font file's own design units, scaled to pixels for a size in points
// at 96 dpi, read by FreeType without hinting or rounding: what a glyph's advance should be, to
// within the 1/64 pixel that the renderer's 26.6 fixed point can tell.
double getDesignAdvance(uint32_t code, double size);
