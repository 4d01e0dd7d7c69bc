// FloatImage: the conversions to and from Image, the margin, and the two compositing steps,
// against values worked out by hand.
#include "render/effects/FloatImage.h"

#include "FloatPixels.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using q1framework::Colour;
using q1framework::FloatImage;
using q1framework::Image;
using q1framework::Rectangle;

TEST(FloatImageTest, BadSizesGiveTheEmptyImage)
{
    EXPECT_TRUE(FloatImage().isEmpty());
    EXPECT_TRUE(FloatImage(0, 5, 0).isEmpty());
    EXPECT_TRUE(FloatImage(5, -1, 0).isEmpty());
    EXPECT_TRUE(FloatImage(5, 5, -1).isEmpty());
    // 65536 * 65536 pixels of 16 bytes pass 4 GB.
    EXPECT_TRUE(FloatImage(65536, 65536, 0).isEmpty());
    EXPECT_TRUE(FloatImage(std::numeric_limits<int>::max(), 1, 0).isEmpty());
    EXPECT_TRUE(FloatImage::fromImage(Image(), 4).isEmpty());
    EXPECT_TRUE(FloatImage().toImage().isNull());
}

TEST(FloatImageTest, ANewImageIsZeroMarginIncluded)
{
    const FloatImage image(3, 2, 2);
    EXPECT_EQ(image.getStride(), (3 + 2 * 2) * 4);
    for (int y = -2; y < 4; ++y)
        for (int x = -2; x < 5; ++x)
            EXPECT_TRUE(pixelNear(image, x, y, {0, 0, 0, 0}, 0.0f));
}

TEST(FloatImageTest, FromImageDividesEachByteBy255)
{
    Image image(2, 1, true);
    const uint8_t pixels[8] = {51, 102, 204, 255, 0, 1, 2, 3};
    std::memcpy(image.getLine(0), pixels, sizeof(pixels));
    const FloatImage floats = FloatImage::fromImage(image, 3);
    ASSERT_EQ(floats.getBounds(), Rectangle(0, 0, 2, 1));
    EXPECT_EQ(floats.getMargin(), 3);
    EXPECT_TRUE(pixelNear(floats, 0, 0, {0.2f, 0.4f, 0.8f, 1.0f}));
    EXPECT_TRUE(pixelNear(floats, 1, 0, {0.0f, 1 / 255.0f, 2 / 255.0f, 3 / 255.0f}));
    EXPECT_TRUE(pixelNear(floats, 2, 0, {0, 0, 0, 0}, 0.0f));  // the margin
}

TEST(FloatImageTest, EveryPremultipliedPixelSurvivesTheRoundTrip)
{
    // Each alpha with colour bytes 0, alpha / 2 and alpha: 256 pixels in 16 lines.
    Image image(16, 16, true);
    for (int alpha = 0; alpha < 256; ++alpha)
    {
        uint8_t* pixel = image.getPixelPointer(alpha % 16, alpha / 16);
        pixel[0] = 0;
        pixel[1] = static_cast<uint8_t>(alpha / 2);
        pixel[2] = pixel[3] = static_cast<uint8_t>(alpha);
    }
    const Image back = FloatImage::fromImage(image, 0).toImage();
    ASSERT_EQ(back.getSize(), image.getSize());
    EXPECT_EQ(back.getMargin(), Image::defaultMargin);
    for (int y = 0; y < 16; ++y)
        EXPECT_EQ(std::memcmp(back.getLine(static_cast<unsigned>(y)), image.getLine(static_cast<unsigned>(y)), 16 * 4), 0)
            << "line " << y;
}

TEST(FloatImageTest, ToImageRoundsToTheNearestByteAndKeepsColourWithinAlpha)
{
    FloatImage floats(3, 1, 0);
    // 0.21 * 255 = 53.55 -> 54; 0.205 * 255 = 52.275 -> 52; 0.6 * 255 = 153.
    setFloatPixel(floats, 0, 0, {0.21f, 0.205f, 0.0f, 0.6f});
    // Out of range: 1.5 -> 255, -0.2 -> 0, NaN -> 0; alpha 0.2 -> 51 then limits colour 0.9 -> 230.
    setFloatPixel(floats, 1, 0, {1.5f, -0.2f, std::numeric_limits<float>::quiet_NaN(), 1.5f});
    setFloatPixel(floats, 2, 0, {0.9f, 0.1f, 0.0f, 0.2f});
    const Image image = floats.toImage();
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{54, 52, 0, 153}));
    EXPECT_EQ(readPixel(image, 1, 0), (PixelValue{255, 0, 0, 255}));
    // 0.1 * 255 comes to 25.5 in float, and a half rounds up: 26.
    EXPECT_EQ(readPixel(image, 2, 0), (PixelValue{51, 26, 0, 51}));
}

TEST(FloatImageTest, PremultipliedKeepsTheFraction)
{
    // Alpha 51 is 0.2; red 255 -> 0.2, green 102 (0.4) -> 0.08, blue 0. Colour::premultiply
    // would give green 102 * 51 / 255 = 20, dropping the fraction of 0.08 * 255 = 20.4.
    const FloatPixel pixel = FloatImage::premultiplied(Colour(255, 102, 0, 51));
    EXPECT_FLOAT_EQ(pixel[0], 0.0f);
    EXPECT_FLOAT_EQ(pixel[1], 0.08f);
    EXPECT_FLOAT_EQ(pixel[2], 0.2f);
    EXPECT_FLOAT_EQ(pixel[3], 0.2f);
}

TEST(FloatImageTest, SetMarginKeepsThePictureAndClearsTheNewMargin)
{
    FloatImage image = makeFilled(2, 2, {0.1f, 0.2f, 0.3f, 0.4f}, 0);
    setFloatPixel(image, 1, 1, {0.5f, 0.5f, 0.5f, 0.5f});
    ASSERT_TRUE(image.setMargin(3));
    EXPECT_EQ(image.getMargin(), 3);
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.1f, 0.2f, 0.3f, 0.4f}, 0.0f));
    EXPECT_TRUE(pixelNear(image, 1, 1, {0.5f, 0.5f, 0.5f, 0.5f}, 0.0f));
    for (int offset = 1; offset <= 3; ++offset)
    {
        EXPECT_TRUE(pixelNear(image, -offset, 0, {0, 0, 0, 0}, 0.0f));
        EXPECT_TRUE(pixelNear(image, 1 + offset, 1, {0, 0, 0, 0}, 0.0f));
        EXPECT_TRUE(pixelNear(image, 1, 1 + offset, {0, 0, 0, 0}, 0.0f));
    }
    FloatImage empty;
    EXPECT_TRUE(empty.setMargin(4));
    EXPECT_TRUE(empty.isEmpty());
}

TEST(FloatImageTest, PlaceOverPutsTheBackgroundUnderEveryPixel)
{
    // Pixel (0.1, 0.2, 0.3, 0.4) over opaque red (0, 0, 1, 1): uncovered 0.6, so red 0.3 + 0.6.
    // A transparent pixel takes the background; an opaque one keeps itself.
    FloatImage image = makeFilled(3, 1, {0.1f, 0.2f, 0.3f, 0.4f});
    setFloatPixel(image, 1, 0, {0, 0, 0, 0});
    setFloatPixel(image, 2, 0, {0.5f, 0.5f, 0.5f, 1.0f});
    image.placeOver(Colour(255, 0, 0, 255));
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.1f, 0.2f, 0.9f, 1.0f}));
    EXPECT_TRUE(pixelNear(image, 1, 0, {0.0f, 0.0f, 1.0f, 1.0f}));
    EXPECT_TRUE(pixelNear(image, 2, 0, {0.5f, 0.5f, 0.5f, 1.0f}));
}

TEST(FloatImageTest, PlaceUnderPutsTheTopPictureOverEveryPixel)
{
    // Top (0.25, 0, 0, 0.5) over (0, 0.4, 0.8, 0.8): 0.25 + 0, 0.2, 0.4, 0.5 + 0.4.
    FloatImage image = makeFilled(1, 1, {0.0f, 0.4f, 0.8f, 0.8f});
    image.placeUnder(makeFilled(1, 1, {0.25f, 0.0f, 0.0f, 0.5f}));
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.25f, 0.2f, 0.4f, 0.9f}));
    // A top of another size changes nothing.
    image.placeUnder(makeFilled(2, 1, {1, 1, 1, 1}));
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.25f, 0.2f, 0.4f, 0.9f}));
}

TEST(FloatImageTest, LimitToPremultipliedScalesAnAlphaAbove1AndKeepsTheHue)
{
    // (0.3, 1.2, 0.6, 1.5) divided by 1.5 is (0.2, 0.8, 0.4, 1): the same colour at full alpha.
    FloatImage image = makeFilled(1, 1, {0.3f, 1.2f, 0.6f, 1.5f});
    image.limitToPremultiplied();
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.2f, 0.8f, 0.4f, 1.0f}));
}

TEST(FloatImageTest, LimitToPremultipliedCutsColourToAlpha)
{
    // Colour above alpha comes down to it, below 0 up to 0; (2, 0.5, -1, 1.5) is divided by 1.5
    // first, giving 1.33, 0.33, -0.67 at alpha 1.
    FloatImage image(2, 1, 0);
    setFloatPixel(image, 0, 0, {0.7f, 0.2f, -0.3f, 0.25f});
    setFloatPixel(image, 1, 0, {2.0f, 0.5f, -1.0f, 1.5f});
    image.limitToPremultiplied();
    EXPECT_TRUE(pixelNear(image, 0, 0, {0.25f, 0.2f, 0.0f, 0.25f}, 0.0f));
    EXPECT_TRUE(pixelNear(image, 1, 0, {1.0f, 1.0f / 3.0f, 0.0f, 1.0f}));
}
