#include "PictureRenderer.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace
{
// A 41 x 41 knob: a blue body, a red bar at the top as its rotor, and a translucent white cover
// over the top-left corner. The centre is (20.5, 20.5).
const char* const knobSource = R"(<svg xmlns="http://www.w3.org/2000/svg" width="41" height="41">
  <g id="body"><rect width="41" height="41" fill="#204060"/></g>
  <g id="rotor"><rect x="18.5" y="2" width="4" height="8" fill="#ff0000"/></g>
  <g id="cover"><rect width="5" height="5" fill="#ffffff" fill-opacity="0.5"/></g>
</svg>)";

const char* const fadeSource = R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8">
  <g id="off"><rect width="8" height="8" fill="#000000"/></g>
  <g id="on"><rect width="8" height="8" fill="#ffffff"/></g>
</svg>)";

// Three states, each a white square at x = 10 N over a transparent base with a grey line.
const char* const statesSource = R"(<svg xmlns="http://www.w3.org/2000/svg" width="30" height="10">
  <g id="base"><rect y="9" width="30" height="1" fill="#808080"/></g>
  <g id="state-0"><rect x="0" width="10" height="9" fill="#ffffff"/></g>
  <g id="state-1"><rect x="10" width="10" height="9" fill="#ffffff"/></g>
  <g id="state-2"><rect x="20" width="10" height="9" fill="#ffffff"/></g>
</svg>)";

// The premultiplied ARGB pixel at (x, y) of frame `frame`.
uint32_t pixel(const CairoSurface& surface, int frameHeight, int frame, int x, int y)
{
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    return reinterpret_cast<const uint32_t*>(data + (frame * frameHeight + y) * stride)[x];
}

int red(uint32_t argb) { return (argb >> 16) & 0xFF; }

class PictureRendererTest : public ::testing::Test
{
protected:
    // Renders `text` as a picture of `frames` frames of the given kind and size.
    CairoSurface render(const char* text, FrameKind kind, int width, int height, int frames, std::string& problem)
    {
        SvgSource source;
        EXPECT_EQ(source.loadText(text), "");
        CairoSurface surface;
        problem = PictureRenderer::render({"test", width, height, frames, kind}, source, surface);
        return surface;
    }
};
}  // namespace

TEST_F(PictureRendererTest, RotaryFramesStackTopToBottom)
{
    std::string problem;
    const CairoSurface strip = render(knobSource, FrameKind::rotary, 41, 41, 3, problem);
    ASSERT_EQ(problem, "");
    EXPECT_EQ(cairo_image_surface_get_width(strip.get()), 41);
    EXPECT_EQ(cairo_image_surface_get_height(strip.get()), 3 * 41);
}

TEST_F(PictureRendererTest, RotaryTurnsTheRotorFromMinus135ToPlus135Degrees)
{
    std::string problem;
    const CairoSurface strip = render(knobSource, FrameKind::rotary, 41, 41, 3, problem);
    ASSERT_EQ(problem, "");
    // The bar's middle, 14.5 pixels above the centre, turned by -135, 0 and +135 degrees.
    EXPECT_EQ(pixel(strip, 41, 0, 10, 30), 0xFFFF0000u);
    EXPECT_EQ(pixel(strip, 41, 1, 20, 6), 0xFFFF0000u);
    EXPECT_EQ(pixel(strip, 41, 2, 30, 30), 0xFFFF0000u);
    EXPECT_EQ(pixel(strip, 41, 1, 10, 30), 0xFF204060u);
    EXPECT_EQ(pixel(strip, 41, 0, 20, 6), 0xFF204060u);
}

TEST_F(PictureRendererTest, RotaryKeepsBodyAndCoverWhereTheyAre)
{
    std::string problem;
    const CairoSurface strip = render(knobSource, FrameKind::rotary, 41, 41, 3, problem);
    ASSERT_EQ(problem, "");
    for (int frame = 0; frame < 3; ++frame)
    {
        EXPECT_EQ(pixel(strip, 41, frame, 20, 20), 0xFF204060u) << frame;
        EXPECT_EQ(pixel(strip, 41, frame, 2, 2), pixel(strip, 41, 0, 2, 2)) << frame;
    }
    EXPECT_GT(red(pixel(strip, 41, 0, 2, 2)), 0x20) << "the cover lies over the body";
}

TEST_F(PictureRendererTest, FadeRaisesTheOnLayerFromNothingToWhole)
{
    std::string problem;
    const CairoSurface strip = render(fadeSource, FrameKind::fade, 8, 8, 3, problem);
    ASSERT_EQ(problem, "");
    EXPECT_EQ(pixel(strip, 8, 0, 4, 4), 0xFF000000u);
    EXPECT_NEAR(red(pixel(strip, 8, 1, 4, 4)), 128, 1);
    EXPECT_EQ(pixel(strip, 8, 2, 4, 4), 0xFFFFFFFFu);
}

TEST_F(PictureRendererTest, StatesLightOnlyTheirOwnState)
{
    std::string problem;
    const CairoSurface strip = render(statesSource, FrameKind::states, 30, 10, 3, problem);
    ASSERT_EQ(problem, "");
    for (int frame = 0; frame < 3; ++frame)
        for (int state = 0; state < 3; ++state)
        {
            EXPECT_EQ(pixel(strip, 10, frame, state * 10 + 5, 4), frame == state ? 0xFFFFFFFFu : 0u)
                << "frame " << frame << ", state " << state;
            EXPECT_EQ(pixel(strip, 10, frame, state * 10 + 5, 9), 0xFF808080u) << "the base, frame " << frame;
        }
}

TEST_F(PictureRendererTest, ASourceOfAnotherSizeIsRefused)
{
    std::string problem;
    const CairoSurface strip = render(knobSource, FrameKind::rotary, 40, 41, 3, problem);
    EXPECT_EQ(strip, nullptr);
    EXPECT_EQ(problem, "test: the source is 41 x 41 pixels, not 40 x 41");
}

TEST_F(PictureRendererTest, AMissingLayerIsRefused)
{
    std::string problem;
    const CairoSurface strip = render(fadeSource, FrameKind::rotary, 8, 8, 3, problem);
    EXPECT_EQ(strip, nullptr);
    EXPECT_EQ(problem, "test: the document has no layer \"body\"");
}

TEST_F(PictureRendererTest, ABackgroundWhoseMeterFaceIsMisplacedIsRefused)
{
    const char* const background = R"(<svg xmlns="http://www.w3.org/2000/svg" width="1500" height="350">
      <g id="panel"><rect width="1500" height="350" fill="#202020"/>
        <rect id="face-in" x="177" y="56" width="272" height="131" fill="none"/>
        <rect id="face-out" x="1054" y="56" width="272" height="131" fill="none"/></g>
      <g id="glass"/>
    </svg>)";
    std::string problem;
    const CairoSurface picture = render(background, FrameKind::background, 1500, 350, 1, problem);
    EXPECT_EQ(picture, nullptr);
    EXPECT_EQ(problem, "test: the meter face \"face-out\" is not at 1055, 56, 272 x 131");
}
