#include "render/image/ImageScaling.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "render/graphics/SoftwareGraphics.h"
#include "render/image/ResamplingFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <vector>

using q1framework::Colour;
using q1framework::getScaled;
using q1framework::getSubImage;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::resampleImage;
using q1framework::ResamplingFilter;
using q1framework::resized;
using q1framework::SoftwareGraphics;

namespace
{
using Pixel = std::array<int, 4>;

// A random premultiplied picture: colour bytes up to alpha, with opaque and transparent patches.
Image randomPicture(std::mt19937& random, int width, int height, int margin = Image::defaultMargin)
{
    Image image(width, height, true, margin);
    std::uniform_int_distribution<int> byte(0, 255), kind(0, 3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            uint8_t* pixel = image.getPixelPointer(x, y);
            const int type = ((x / 5) + (y / 4) * 7) % 4 == 0 ? kind(random) : 3;
            const int alpha = type == 0 ? 0 : type == 1 ? 255 : byte(random);
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = uint8_t(alpha == 0 ? 0 : byte(random) % (alpha + 1));
            pixel[3] = uint8_t(alpha);
        }
    return image;
}

// One filtered channel as the passes state it: each tap floor(value * 16 * coefficient / 65536),
// the sum kept in 16 bits, divided by 8 rounding down, limited to 0..255.
int filterChannel(const std::vector<int>& values, const std::vector<int>& coefficients)
{
    int sum = 0;
    for (size_t tap = 0; tap < values.size(); ++tap)
        sum += static_cast<int>(std::floor(values[tap] * 16.0 * coefficients[tap] / 65536.0));
    const auto wrapped = static_cast<int16_t>(static_cast<uint16_t>(sum));
    return std::clamp(static_cast<int>(std::floor(wrapped / 8.0)), 0, 255);
}

Pixel filterPixel(const std::vector<Pixel>& taps, const std::vector<int>& coefficients)
{
    Pixel result{};
    for (int channel = 0; channel < 4; ++channel)
    {
        std::vector<int> values;
        for (const Pixel& tap : taps)
            values.push_back(tap[static_cast<size_t>(channel)]);
        result[static_cast<size_t>(channel)] = filterChannel(values, coefficients);
    }
    for (int channel = 0; channel < 3; ++channel)
        result[static_cast<size_t>(channel)] = std::min(result[static_cast<size_t>(channel)], result[3]);
    return result;
}

Pixel sourcePixel(const Image& image, int x, int y)
{
    if (x < 0 || y < 0 || x >= image.getWidth() || y >= image.getHeight())
        return {0, 0, 0, 0};
    const uint8_t* pixel = image.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

// Positions and coefficients of a run of outputs: the position starts at first * scale and
// grows by scale, in float.
struct Run
{
    std::vector<int> starts;
    std::vector<std::vector<int>> coefficients;
};

Run makeRun(const ResamplingFilter& filter, int first, int count)
{
    Run run;
    float position = static_cast<float>(first) * filter.getScale();
    for (int index = 0; index < count; ++index, position += filter.getScale())
    {
        run.starts.push_back(static_cast<int>(position) - filter.getTaps() / 2);
        std::vector<int> coefficients;
        for (int tap = 0; tap < filter.getTaps(); ++tap)
            coefficients.push_back(filter.computeCoefficient(position - std::floor(position), tap));
        run.coefficients.push_back(coefficients);
    }
    return run;
}

// resampleImage written out pixel by pixel, rectangle by rectangle.
void resampleByDefinition(const Image& source, Image& destination, const std::vector<Rectangle>& rectangles,
                          int quality)
{
    const ResamplingFilter across(source.getWidth(), destination.getWidth(), quality);
    const ResamplingFilter down(source.getHeight(), destination.getHeight(), quality);
    for (const Rectangle& requested : rectangles)
    {
        const Rectangle area = requested.getIntersection(destination.getBounds());
        if (area.isEmpty())
            continue;
        const int columns = (area.w + 1) / 2 * 2;
        const Run horizontal = makeRun(across, area.x, columns);
        const Run vertical = makeRun(down, area.y, area.h);
        std::map<int, std::vector<Pixel>> intermediate;  // by source line
        const auto intermediateLine = [&](int line) -> const std::vector<Pixel>& {
            auto found = intermediate.find(line);
            if (found != intermediate.end())
                return found->second;
            std::vector<Pixel> pixels(static_cast<size_t>(columns), Pixel{0, 0, 0, 0});
            if (line >= 0 && line < source.getHeight())
                for (int column = 0; column < columns; ++column)
                {
                    std::vector<Pixel> taps;
                    for (int tap = 0; tap < across.getTaps(); ++tap)
                        taps.push_back(sourcePixel(source, horizontal.starts[size_t(column)] + tap, line));
                    pixels[size_t(column)] = filterPixel(taps, horizontal.coefficients[size_t(column)]);
                }
            return intermediate[line] = pixels;
        };
        const bool pair = area.x + columns <= destination.getWidth() + destination.getMargin();
        for (int row = 0; row < area.h; ++row)
            for (int column = 0; column < (pair ? columns : area.w); ++column)
            {
                std::vector<Pixel> taps;
                for (int tap = 0; tap < down.getTaps(); ++tap)
                    taps.push_back(intermediateLine(vertical.starts[size_t(row)] + tap)[size_t(column)]);
                const Pixel result = filterPixel(taps, vertical.coefficients[size_t(row)]);
                uint8_t* pixel = destination.getPixelPointer(area.x + column, area.y + row);
                for (int channel = 0; channel < 4; ++channel)
                    pixel[channel] = uint8_t(result[size_t(channel)]);
            }
    }
}

// Every byte of both pictures and of their margins' first columns.
bool samePixels(const Image& first, const Image& second, int extraColumns = 0)
{
    for (int y = 0; y < first.getHeight(); ++y)
        if (std::memcmp(first.getLine(unsigned(y)), second.getLine(unsigned(y)),
                        size_t(first.getWidth() + extraColumns) * 4) != 0)
            return false;
    return true;
}

Image filledCopy(int width, int height, const PixelValue& fill)
{
    return makeCanvas(width, height, fill);
}
}

TEST(ImageScalingTest, ResamplingMatchesItsPassesWrittenOutPixelByPixel)
{
    std::mt19937 random(2024);
    const struct
    {
        int sourceWidth, sourceHeight, width, height, quality;
    } cases[] = {
        {40, 30, 23, 17, -1}, {21, 15, 50, 37, -1}, {33, 20, 16, 10, 8},
        {17, 19, 31, 11, 13}, {64, 12, 9, 12, 100}, {12, 12, 12, 12, -1},
    };
    for (const auto& each : cases)
    {
        const Image source = randomPicture(random, each.sourceWidth, each.sourceHeight);
        const std::vector<Rectangle> rectangles{Rectangle(0, 0, each.width, each.height / 2),
                                                Rectangle(1, each.height / 2, each.width / 2 + 1, each.height - each.height / 2),
                                                Rectangle(each.width / 2 + 2, each.height / 2 + 1, 40, 40)};
        Image actual = filledCopy(each.width, each.height, PixelValue{1, 2, 3, 4});
        Image expected = actual.duplicate();
        const Image returned = resampleImage(source, actual, rectangles.data(), int(rectangles.size()), each.quality);
        EXPECT_EQ(returned, actual);
        resampleByDefinition(source, expected, rectangles, each.quality);
        EXPECT_TRUE(samePixels(actual, expected, 1))
            << each.sourceWidth << " x " << each.sourceHeight << " to " << each.width << " x " << each.height;
    }
}

TEST(ImageScalingTest, OpaqueWhiteAndFlatPicturesFollowTheCoefficientSums)
{
    // Scale 1 keeps only the centre tap, 32385: 255 -> (4080 * 32385) >> 16 = 2016, >> 3 = 252,
    // then 4032 * 32385 >> 16 = 1992, >> 3 = 249 after the second pass. 200 -> 197 -> 194.
    const Rectangle whole(0, 0, 6, 6);
    Image same = filledCopy(6, 6, PixelValue{0, 0, 0, 0});
    resampleImage(filledCopy(6, 6, PixelValue{200, 255, 255, 255}), same, &whole, 1, -1);
    EXPECT_EQ(readPixel(same, 3, 3), (PixelValue{194, 249, 249, 249}));

    // Halving: 12 taps {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9}; on 255 the terms
    // -54, 558, 1008, 558, -54 give 2016 -> 252; on 252, -53, 552, 996, 552, -53 give 1994 -> 249.
    const Image white = filledCopy(40, 40, PixelValue{255, 255, 255, 255});
    const Image halved = resized(white, Point(20, 20), -1);
    EXPECT_EQ(readPixel(halved, 10, 10), (PixelValue{249, 249, 249, 249}));

    // Near the edges the negative lobes fall on the transparent margin and the sums overshoot;
    // colour still never exceeds alpha anywhere, at any scale.
    for (const Point size : {Point(20, 20), Point(57, 31), Point(100, 90), Point(13, 77)})
    {
        const Image scaled = resized(white, size, -1);
        for (int y = 0; y < size.y; ++y)
            for (int x = 0; x < size.x; ++x)
            {
                const PixelValue pixel = readPixel(scaled, x, y);
                ASSERT_LE(std::max({pixel.blue, pixel.green, pixel.red}), pixel.alpha) << x << ", " << y;
            }
    }
}

TEST(ImageScalingTest, ColourNeverExceedsAlphaOnRandomPictures)
{
    std::mt19937 random(7);
    int clamped = 0;  // pixels where the limit mattered: colour and alpha filtered apart
    for (int trial = 0; trial < 6; ++trial)
    {
        const Image source = randomPicture(random, 30 + trial * 7, 25 + trial * 3);
        const Image scaled = resized(source, Point(17 + trial * 13, 41 - trial * 4), trial % 2 == 0 ? -1 : 11);
        for (int y = 0; y < scaled.getHeight(); ++y)
            for (int x = 0; x < scaled.getWidth(); ++x)
            {
                const PixelValue pixel = readPixel(scaled, x, y);
                ASSERT_LE(std::max({pixel.blue, pixel.green, pixel.red}), pixel.alpha) << trial << ": " << x << ", " << y;
                clamped += std::max({pixel.blue, pixel.green, pixel.red}) == pixel.alpha && pixel.alpha > 0;
            }
    }
    EXPECT_GT(clamped, 0);
}

TEST(ImageScalingTest, AnOddRectangleWritesOneMorePixelWhenTheLineHasRoomForIt)
{
    std::mt19937 random(11);
    const Image source = randomPicture(random, 20, 10);
    Image destination = filledCopy(8, 4, PixelValue{9, 9, 9, 9});
    const Rectangle odd(0, 0, 3, 2);
    resampleImage(source, destination, &odd, 1, -1);
    EXPECT_NE(readPixel(destination, 3, 0), (PixelValue{9, 9, 9, 9}));
    EXPECT_EQ(readPixel(destination, 4, 0), (PixelValue{9, 9, 9, 9}));
    EXPECT_EQ(readPixel(destination, 3, 2), (PixelValue{9, 9, 9, 9}));

    // A destination without a margin (a wrapper of someone's pixels, here with one spare word at
    // the end of each line) gets nothing beyond its picture.
    std::vector<uint32_t> memory(size_t(8 + 1) * 4, 0x09090909u);
    Image wrapper(memory.data(), 8, 4, 9 * 4, Image::wrapPixels);
    const Rectangle atEdge(5, 0, 3, 4);
    resampleImage(source, wrapper, &atEdge, 1, -1);
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(memory[size_t(y) * 9 + 8], 0x09090909u) << y;
    EXPECT_NE(memory[7], 0x09090909u);
}

TEST(ImageScalingTest, ASourceWithANarrowMarginIsReadAsIfItsMarginWereClear)
{
    std::mt19937 random(5);
    const Image wide = randomPicture(random, 24, 18);
    Image narrow(24, 18, true, 0);
    for (int y = 0; y < 18; ++y)
        std::memcpy(narrow.getLine(unsigned(y)), wide.getLine(unsigned(y)), 24 * 4);
    const Image first = resized(wide, Point(37, 11), -1);
    const Image second = resized(narrow, Point(37, 11), -1);
    EXPECT_TRUE(samePixels(first, second));
}

TEST(ImageScalingTest, EmptyInputsAndEmptyRectangleLists)
{
    std::mt19937 random(3);
    const Image source = randomPicture(random, 10, 10);
    Image destination = filledCopy(5, 5, PixelValue{9, 9, 9, 9});
    const Rectangle whole(0, 0, 5, 5);
    EXPECT_TRUE(resampleImage(Image(), destination, &whole, 1, -1).isNull());
    Image flat(Point(0, 5), true);
    EXPECT_TRUE(resampleImage(source, flat, &whole, 1, -1).isNull());
    EXPECT_EQ(resampleImage(source, destination, &whole, 0, -1), destination);
    EXPECT_EQ(resampleImage(source, destination, nullptr, 3, -1), destination);
    const Rectangle outside(7, 7, 4, 4);
    EXPECT_EQ(resampleImage(source, destination, &outside, 1, -1), destination);
    EXPECT_EQ(readPixel(destination, 2, 2), (PixelValue{9, 9, 9, 9}));
    EXPECT_TRUE(resized(source, Point(0, 4), 8).isNull());
    EXPECT_TRUE(resized(Image(), Point(4, 4), 8).isNull());
}

TEST(ImageScalingTest, ScaledAndSubImages)
{
    std::mt19937 random(17);
    const Image source = randomPicture(random, 16, 12);
    EXPECT_EQ(getScaled(source, 16, 12, false), source);  // shared
    const Image copy = getScaled(source, 16, 12, true);
    EXPECT_NE(copy, source);
    EXPECT_TRUE(samePixels(copy, source));
    EXPECT_TRUE(getScaled(Image(), 4, 4, false).isNull());

    // Another size: the resampler at quality 8 over the whole new picture.
    const Image scaled = getScaled(source, 9, 20, false);
    ASSERT_EQ(scaled.getSize(), Point(9, 20));
    EXPECT_EQ(scaled.getMargin(), 16);
    Image expected = filledCopy(9, 20, PixelValue{0, 0, 0, 0});
    resampleByDefinition(source, expected, {Rectangle(0, 0, 9, 20)}, 8);
    EXPECT_TRUE(samePixels(scaled, expected));

    // A part cut to the picture, copied into a new image with margin 16.
    const Image part = getSubImage(source, Rectangle(10, -3, 10, 6));
    ASSERT_EQ(part.getSize(), Point(6, 3));
    EXPECT_EQ(part.getMargin(), 16);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(readPixel(part, x, y), readPixel(source, x + 10, y));
    EXPECT_TRUE(marginIsClear(part));
    EXPECT_TRUE(getSubImage(source, Rectangle(16, 0, 4, 4)).isNull());
}

TEST(ImageScalingTest, ResamplingScene)
{
    // A test card: stripes of one to four pixels, a disc, fine lines and a translucent corner.
    Image card(64, 48, true);
    {
        SoftwareGraphics painter(card);
        Colour ground(240, 240, 230, 255);
        painter.fillAll(ground, false);
        for (int width = 1, x = 2; width <= 4; ++width)
            for (int stripe = 0; stripe < 3; ++stripe, x += 2 * width)
            {
                Colour ink(20, 20, 40, 255);
                painter.fillRect(Rectangle(x, 2, width, 20), ink, false);
            }
        painter.fillCircle(Colour(220, 60, 40, 255), 44, 14, 11);
        Colour night(30, 30, 60, 255);
        painter.fillRect(Rectangle(0, 25, 40, 23), night, false);
        for (int i = 0; i < 6; ++i)
            painter.drawLine(2, 26 + 3 * i, 61, 30 + 2.5 * i);
        Colour corner(40, 120, 255, 120);
        painter.fillRect(Rectangle(40, 30, 24, 18), corner, false);
    }
    Image sheet = makeCanvas(160, 120, PixelValue{50, 40, 40, 255});
    SoftwareGraphics graphics(sheet);
    graphics.drawImage(card, Point(2, 2), true, 255);
    graphics.drawImage(resized(card, Point(88, 66), -1), Point(70, 2), true, 255);
    graphics.drawImage(resized(card, Point(40, 30), -1), Point(2, 54), true, 255);
    graphics.drawImage(resized(card, Point(23, 17), -1), Point(46, 54), true, 255);
    graphics.drawImage(resized(card, Point(16, 12), 8), Point(46, 75), true, 255);
    graphics.drawImage(resized(card, Point(20, 15), 32), Point(46, 91), true, 255);
    const Image same = resized(card, Point(64, 48), -1);
    graphics.drawImage(same, Point(70, 70), true, 255);
    graphics.drawImage(resized(card, Point(40, 30), 4), Point(2, 88), true, 255);

    // The card's ground at scale 1 keeps only the centre tap: 240 -> 3840 * 32385 >> 16 = 1897,
    // >> 3 = 237, then 3792 * 32385 >> 16 = 1873, >> 3 = 234; 230 -> 227 -> 224; 255 -> 249.
    EXPECT_EQ(readPixel(same, 50, 26), (PixelValue{224, 234, 234, 249}));
    EXPECT_TRUE(GoldenImage::matchesGolden(sheet, "resampling"));
}
