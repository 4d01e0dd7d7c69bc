// FloatImage: its refusals and the conversions to and from Image.
#include "render/effects/FloatImage.h"

#include "FloatPixels.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using q1framework::FloatImage;
using q1framework::Image;

TEST(FloatImageTest, BadSizesGiveTheEmptyImage)
{
    EXPECT_TRUE(FloatImage(0, 5, 0).isEmpty());
    EXPECT_TRUE(FloatImage(5, 5, -1).isEmpty());
    EXPECT_TRUE(FloatImage(65536, 65536, 0).isEmpty());  // 16 bytes a pixel pass 4 GB
    EXPECT_TRUE(FloatImage(std::numeric_limits<int>::max(), 1, 0).isEmpty());
    EXPECT_TRUE(FloatImage::fromImage(Image(), 4).isEmpty());
    EXPECT_TRUE(FloatImage().toImage().isNull());
}

TEST(FloatImageTest, EveryPremultipliedPixelSurvivesTheRoundTrip)
{
    // Each alpha with colour bytes 0, alpha / 2 and alpha: byte / 255 * 255 rounds back.
    Image image(16, 16, true);
    for (int alpha = 0; alpha < 256; ++alpha)
    {
        uint8_t* pixel = image.getPixelPointer(alpha % 16, alpha / 16);
        pixel[1] = static_cast<uint8_t>(alpha / 2);
        pixel[2] = pixel[3] = static_cast<uint8_t>(alpha);
    }
    const Image back = FloatImage::fromImage(image, 3).toImage();
    ASSERT_EQ(back.getSize(), image.getSize());
    for (unsigned y = 0; y < 16; ++y)
        EXPECT_EQ(std::memcmp(back.getLine(y), image.getLine(y), 16 * 4), 0) << "line " << y;
}

TEST(FloatImageTest, ToImageRoundsToTheNearestByteAndKeepsColourWithinAlpha)
{
    // 0.21 * 255 = 53.55 -> 54, 0.205 * 255 = 52.275 -> 52, 0.6 * 255 = 153. Out of range: 1.5
    // -> 255, -0.2 and NaN -> 0. Alpha 0.2 -> 51 limits colour 0.9 (230) to 51; 0.1 * 255 comes
    // to 25.5 in float, and a half rounds up to 26.
    FloatImage floats(3, 1, 0);
    setFloatPixel(floats, 0, 0, {0.21f, 0.205f, 0.0f, 0.6f});
    setFloatPixel(floats, 1, 0, {1.5f, -0.2f, std::numeric_limits<float>::quiet_NaN(), 1.5f});
    setFloatPixel(floats, 2, 0, {0.9f, 0.1f, 0.0f, 0.2f});
    const Image image = floats.toImage();
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{54, 52, 0, 153}));
    EXPECT_EQ(readPixel(image, 1, 0), (PixelValue{255, 0, 0, 255}));
    EXPECT_EQ(readPixel(image, 2, 0), (PixelValue{51, 26, 0, 51}));
}
