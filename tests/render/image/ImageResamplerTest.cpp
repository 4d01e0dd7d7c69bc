// ImageResampler: one object used again and again, at changing sizes, scales exactly as
// resampleImage does afresh each time.
#include "render/image/ImageResampler.h"

#include "render/image/ImageScaling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

using q1framework::Image;
using q1framework::ImageResampler;
using q1framework::Rectangle;
using q1framework::resampleImage;

namespace
{
Image noisePicture(std::mt19937& random, int width, int height)
{
    Image image(width, height, true);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            uint8_t* pixel = image.getPixelPointer(x, y);
            pixel[3] = static_cast<uint8_t>(byte(random));
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = static_cast<uint8_t>(byte(random) % (pixel[3] + 1));
        }
    return image;
}

bool samePictures(const Image& first, const Image& second)
{
    for (int y = 0; y < first.getHeight(); ++y)
        if (std::memcmp(first.getLine(static_cast<unsigned>(y)), second.getLine(static_cast<unsigned>(y)),
                        static_cast<size_t>(first.getWidth()) * 4) != 0)
            return false;
    return true;
}
}

TEST(ImageResamplerTest, RepeatedUseAtChangingSizesScalesAsResampleImageDoes)
{
    std::mt19937 random(5);
    ImageResampler resampler;
    const int sizes[][4] = {{60, 40, 45, 31}, {60, 40, 45, 31}, {30, 50, 71, 64}, {80, 20, 33, 9}, {60, 40, 45, 31}};
    for (const auto& size : sizes)
    {
        const Image source = noisePicture(random, size[0], size[1]);
        const Rectangle parts[] = {Rectangle(3, 2, 11, 7), Rectangle(0, size[3] - 5, size[2], 5)};
        Image reused(size[2], size[3], true);
        Image fresh(size[2], size[3], true);
        EXPECT_EQ(resampler.resample(source, reused, parts, 2, -1), reused);
        resampleImage(source, fresh, parts, 2, -1);
        EXPECT_TRUE(samePictures(reused, fresh)) << size[0] << " x " << size[1] << " to " << size[2] << " x " << size[3];
    }
}

TEST(ImageResamplerTest, ChangedSourcePixelsReachOnlyTheirReachedArea)
{
    std::mt19937 random(11);
    const int sizes[][4] = {{60, 40, 45, 31}, {30, 20, 71, 64}, {100, 70, 33, 19}, {40, 40, 40, 40}};
    for (const auto& size : sizes)
        for (int trial = 0; trial < 5; ++trial)
        {
            const Image before = noisePicture(random, size[0], size[1]);
            Image after = before.duplicate();
            std::uniform_int_distribution<int> x(0, size[0] - 1), y(0, size[1] - 1);
            const int left = x(random), top = y(random);
            const Rectangle changed(left, top, std::min(5, size[0] - left), std::min(4, size[1] - top));
            const Image patch = noisePicture(random, changed.w, changed.h);
            for (int row = 0; row < changed.h; ++row)
                std::memcpy(after.getPixelPointer(changed.x, changed.y + row), patch.getLine(static_cast<unsigned>(row)),
                            static_cast<size_t>(changed.w) * 4);
            Image first(size[2], size[3], true), second(size[2], size[3], true);
            const Rectangle whole = first.getBounds();
            resampleImage(before, first, &whole, 1, -1);
            resampleImage(after, second, &whole, 1, -1);
            const Rectangle reached = ImageResampler::getReachedArea(changed, before.getSize(), first.getSize(), -1);
            for (int row = 0; row < size[3]; ++row)
                for (int column = 0; column < size[2]; ++column)
                {
                    const bool differs =
                        std::memcmp(first.getPixelPointer(column, row), second.getPixelPointer(column, row), 4) != 0;
                    ASSERT_TRUE(!differs || reached.contains(q1framework::Point(column, row)))
                        << column << ", " << row << " outside the reach of the change at " << changed.x << ", "
                        << changed.y;
                }
        }
}

TEST(ImageResamplerTest, ARectangleResampledAloneGetsThePixelsOfTheWholePicture)
{
    // A window repaints only what changed; at a scale whose steps a float cannot hold exactly, the
    // pixels of a part must still be those of the whole, or the picture would depend on the order
    // of its repaints.
    std::mt19937 random(17);
    const int sizes[][4] = {{1500, 350, 1100, 257}, {60, 40, 45, 31}, {30, 20, 71, 64}, {100, 70, 33, 19}};
    for (const auto& size : sizes)
    {
        const Image source = noisePicture(random, size[0], size[1]);
        Image whole(size[2], size[3], true), parts(size[2], size[3], true);
        const Rectangle everything = whole.getBounds();
        resampleImage(source, whole, &everything, 1, -1);
        std::uniform_int_distribution<int> x(0, size[2] - 1), y(0, size[3] - 1);
        for (int trial = 0; trial < 8; ++trial)
        {
            const int left = x(random), top = y(random);
            const Rectangle part(left, top, std::min(13, size[2] - left), std::min(9, size[3] - top));
            resampleImage(source, parts, &part, 1, -1);
            for (int row = part.y; row < part.getBottom(); ++row)
                ASSERT_EQ(std::memcmp(whole.getPixelPointer(part.x, row), parts.getPixelPointer(part.x, row),
                                      static_cast<size_t>(part.w) * 4),
                          0)
                    << "row " << row << " of " << part.x << ", " << part.y << " at " << size[2] << " x " << size[3];
        }
    }
}
