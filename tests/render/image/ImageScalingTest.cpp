// The resampler's filter and the image operations built on it: coefficients against their
// formula, resampleImage against a plain per-pixel statement of its passes, and a golden scene.
#include "render/image/ImageResampler.h"
#include "render/image/ImageScaling.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "render/image/ResamplingFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
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

namespace
{
// A random premultiplied picture: colour bytes up to alpha, with opaque and transparent patches.
Image randomPicture(std::mt19937& random, int width, int height)
{
    Image image(width, height, true);
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

// One filtered pixel as the passes state it, with the coefficients of filter at position: per
// channel, each tap floor(byte * 16 * coefficient / 65536), the sum kept in 16 bits, divided by 8
// rounding down, limited to 0..255; then colour limited to alpha.
PixelValue filterPixel(const std::vector<PixelValue>& taps, const ResamplingFilter& filter, float position)
{
    PixelValue sums{}, result{};
    for (size_t tap = 0; tap < taps.size(); ++tap)
    {
        const int coefficient = filter.computeCoefficient(position - std::floor(position), int(tap));
        for (size_t channel = 0; channel < 4; ++channel)
            sums[channel] += static_cast<int>(std::floor(taps[tap][channel] * 16.0 * coefficient / 65536.0));
    }
    for (size_t channel = 0; channel < 4; ++channel)
    {
        const auto wrapped = static_cast<int16_t>(static_cast<uint16_t>(sums[channel]));
        result[channel] = std::clamp(static_cast<int>(std::floor(wrapped / 8.0)), 0, 255);
    }
    for (size_t channel = 0; channel < 3; ++channel)
        result[channel] = std::min(result[channel], result[3]);
    return result;
}

// The source position of output first + index of a pass that starts at first: the output
// position times the scale, in float, wherever the pass starts.
float positionOf(const ResamplingFilter& filter, int first, int index)
{
    return static_cast<float>(first + index) * filter.getScale();
}

// resampleImage written out pixel by pixel, rectangle by rectangle: across, then down the lines
// that pass gives, source pixels outside the picture clear. A pass's taps start taps / 2 before
// its position's whole part.
void resampleByDefinition(const Image& source, Image& destination, const std::vector<Rectangle>& rectangles, int quality)
{
    const ResamplingFilter across(source.getWidth(), destination.getWidth(), quality);
    const ResamplingFilter down(source.getHeight(), destination.getHeight(), quality);
    for (const Rectangle& requested : rectangles)
    {
        const Rectangle area = requested.getIntersection(destination.getBounds());
        // Pixels come in pairs: an odd width writes one more when the line (margin included) has room.
        const int paired = area.w + area.w % 2;
        const int written = area.x + paired <= destination.getWidth() + destination.getMargin() ? paired : area.w;
        for (int row = 0; row < area.h; ++row)
            for (int column = 0; column < written; ++column)
            {
                const float x = positionOf(across, area.x, column), y = positionOf(down, area.y, row);
                std::vector<PixelValue> lines;
                for (int line = int(y) - down.getTaps() / 2; int(lines.size()) < down.getTaps(); ++line)
                {
                    std::vector<PixelValue> pixels;
                    for (int pixel = int(x) - across.getTaps() / 2; int(pixels.size()) < across.getTaps(); ++pixel)
                    {
                        const bool inside = pixel >= 0 && line >= 0 && pixel < source.getWidth() && line < source.getHeight();
                        pixels.push_back(inside ? readPixel(source, pixel, line) : clearPixel);
                    }
                    lines.push_back(filterPixel(pixels, across, x));
                }
                const PixelValue result = filterPixel(lines, down, y);
                std::copy(result.begin(), result.end(), destination.getPixelPointer(area.x + column, area.y + row));
            }
    }
}

// Every byte of both pictures and of the first extraColumns pixels of their right margins.
bool samePixels(const Image& first, const Image& second, int extraColumns = 0)
{
    for (int y = 0; y < first.getHeight(); ++y)
        if (std::memcmp(first.getLine(unsigned(y)), second.getLine(unsigned(y)), size_t(first.getWidth() + extraColumns) * 4) != 0)
            return false;
    return true;
}
}  // namespace

TEST(ResamplingFilterTest, TapCountsFollowQualityOrScale)
{
    // Quality below 0: ((truncate(scale * 4) + 4) & ~1), limited to 8..32; otherwise the quality,
    // limited alike, whatever the scale.
    const struct
    {
        float scale;
        int quality, taps;
    } cases[] = {{1.0f, -1, 8},   {2.0f, -1, 12},   {1500.0f / 1100.0f, -1, 8}, {1.5f, -1, 10}, {0.25f, -1, 8},
                 {7.0f, -5, 32},  {1000.0f, -1, 32}, {0.5f, 100, 32},           {3.0f, 2, 8},   {3.0f, 13, 13}};
    for (const auto& each : cases)
        EXPECT_EQ(ResamplingFilter::computeTaps(each.scale, each.quality), each.taps) << each.scale << ", " << each.quality;
    EXPECT_EQ(ResamplingFilter(400, 200, -1).getTaps(), 12);
    EXPECT_FLOAT_EQ(ResamplingFilter(400, 200, -1).getCutoff(), 0.5f);
    EXPECT_FLOAT_EQ(ResamplingFilter(200, 400, -1).getCutoff(), 1.0f);
}

TEST(ResamplingFilterTest, CoefficientsAreTheTruncatedWindowedSinc)
{
    // Scale 1 at fraction 0: only the centre tap (window 1, sinc 1) is 255 * 127; the others sit
    // on zeros of the sinc. Scale 2, 12 taps, cutoff 0.5, worked out in double.
    const ResamplingFilter same(64, 64, -1), half(128, 64, -1);
    for (int tap = 0; tap < 8; ++tap)
        EXPECT_EQ(same.computeCoefficient(0.0f, tap), tap == 4 ? 32385 : 0) << tap;
    const int halving[12] = {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9};
    for (int tap = 0; tap < 12; ++tap)
        EXPECT_EQ(half.computeCoefficient(0.0f, tap), halving[tap]) << tap;

    // Any fraction: within one unit of the formula written another way (the squared raised
    // cosine is sin^4 of half its phase), and tap 0 is cut by the window once the fraction is
    // above 0.
    const double pi = 3.141592653589793;
    for (const ResamplingFilter& filter : {same, half, ResamplingFilter(300, 77, -1), ResamplingFilter(30, 77, 13)})
        for (float frac : {0.1f, 0.25f, 0.5f, 0.8125f, 0.99f})
        {
            EXPECT_EQ(filter.computeCoefficient(frac, 0), 0);
            const int taps = filter.getTaps();
            const double cutoff = filter.getCutoff();
            for (int tap = 0; tap < taps; ++tap)
            {
                const double along = tap - frac, distance = along - taps / 2;
                const double window = along < 0.0 ? 0.0 : std::pow(std::sin(pi * along / taps), 4.0);
                const double sinc = distance == 0.0 ? 1.0 : std::sin(pi * cutoff * distance) / (pi * cutoff * distance);
                EXPECT_LE(std::abs(filter.computeCoefficient(frac, tap) - window * sinc * cutoff * 255.0 * 127.0), 1.0)
                    << taps << " taps, fraction " << frac << ", tap " << tap;
            }
        }
}

TEST(ImageScalingTest, ResamplingMatchesItsPassesWrittenOutPixelByPixel)
{
    std::mt19937 random(2024);
    // The first rectangle lies low, so that no other has filtered the source lines above it: at 32
    // taps, in the last case, it needs 16 of them.
    const int cases[][5] = {{40, 30, 23, 17, -1}, {21, 15, 50, 37, -1}, {33, 20, 16, 10, 8},  {17, 19, 31, 11, 13},
                            {64, 12, 9, 12, 100},  {12, 12, 12, 12, -1}, {24, 60, 20, 40, 32}};
    // A resampler kept from case to case, as a window keeps one, reuses its working memory
    // through the changes of size and must give the same pixels.
    q1framework::ImageResampler kept;
    for (const auto& [sourceWidth, sourceHeight, width, height, quality] : cases)
    {
        const Image source = randomPicture(random, sourceWidth, sourceHeight);
        const std::vector<Rectangle> rectangles{Rectangle(width / 2 + 2, height / 2 + 1, 40, 40),
                                                Rectangle(0, 0, width, height / 2),
                                                Rectangle(1, height / 2, width / 2 + 1, height - height / 2)};
        Image actual = makeCanvas(width, height, {1, 2, 3, 4});
        Image expected = actual.duplicate(), keptActual = actual.duplicate();
        EXPECT_EQ(resampleImage(source, actual, rectangles.data(), int(rectangles.size()), quality), actual);
        kept.resample(source, keptActual, rectangles.data(), int(rectangles.size()), quality);
        resampleByDefinition(source, expected, rectangles, quality);
        EXPECT_TRUE(samePixels(actual, expected, 1)) << sourceWidth << " x " << sourceHeight << " to " << width << " x " << height;
        EXPECT_TRUE(samePixels(keptActual, expected, 1)) << "kept resampler, " << sourceWidth << " x " << sourceHeight;
    }
    // getScaled to another size is the resampler at quality 8 over the whole new picture.
    const Image source = randomPicture(random, 16, 12);
    Image expected = makeCanvas(9, 20, clearPixel);
    resampleByDefinition(source, expected, {Rectangle(0, 0, 9, 20)}, 8);
    EXPECT_TRUE(samePixels(getScaled(source, 9, 20, false), expected));
}

TEST(ImageScalingTest, FlatPicturesFollowTheCoefficientSumsAndColourNeverExceedsAlpha)
{
    // Halving: 12 taps {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9}; on 255 the terms
    // -54, 558, 1008, 558, -54 give 2016 -> 252; on 252, -53, 552, 996, 552, -53 give 1994 -> 249.
    const Image white = makeCanvas(40, 40, opaqueWhite);
    EXPECT_EQ(readPixel(resized(white, Point(20, 20), -1), 10, 10), (PixelValue{249, 249, 249, 249}));

    // Near the edges of white the negative lobes fall on the transparent margin and the sums
    // overshoot; on random pictures colour and alpha are filtered apart. Either way colour stays
    // within alpha at every pixel, at every scale and tap count.
    std::mt19937 random(7);
    int limited = 0;  // random pixels at the limit
    for (int trial = 0; trial < 10; ++trial)
    {
        const Image source = trial < 4 ? white : randomPicture(random, 30 + trial * 7, 25 + trial * 3);
        const Image scaled = resized(source, Point(13 + trial * 11, 77 - trial * 6), trial % 3 == 0 ? -1 : trial % 3 == 1 ? 11 : 100);
        for (int y = 0; y < scaled.getHeight(); ++y)
            for (int x = 0; x < scaled.getWidth(); ++x)
            {
                const PixelValue pixel = readPixel(scaled, x, y);
                const int colour = std::max({pixel[0], pixel[1], pixel[2]});
                ASSERT_LE(colour, pixel[3]) << trial << ": " << x << ", " << y;
                limited += trial >= 4 && colour == pixel[3] && colour > 0;
            }
    }
    EXPECT_GT(limited, 0);
}

TEST(ImageScalingTest, EdgesOfTheSourceAndTheDestination)
{
    std::mt19937 random(11);
    const Image source = randomPicture(random, 20, 10);
    // A destination without a margin (a wrapper of someone's pixels, one spare word at the end of
    // each line) gets nothing beyond its picture, not even the pair of an odd rectangle's last pixel.
    std::vector<uint32_t> memory(size_t(9) * 4, 0x09090909u);
    Image wrapper(memory.data(), 8, 4, 9 * 4, Image::wrapPixels);
    const Rectangle atEdge(5, 0, 3, 4);
    resampleImage(source, wrapper, &atEdge, 1, -1);
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(memory[size_t(y) * 9 + 8], 0x09090909u) << y;
    EXPECT_NE(memory[7], 0x09090909u);

    // A source with a narrower margin than the taps reach is read as if its margin were clear.
    Image narrow(20, 10, true, 0);
    for (int y = 0; y < 10; ++y)
        std::memcpy(narrow.getLine(unsigned(y)), source.getLine(unsigned(y)), 20 * 4);
    EXPECT_TRUE(samePixels(resized(source, Point(37, 11), -1), resized(narrow, Point(37, 11), -1)));

    // Empty inputs give null images; no rectangles, or one outside, leave the destination.
    const Rectangle whole(0, 0, 5, 5), outside(8, 8, 4, 4);
    Image destination = makeCanvas(5, 5, {9, 9, 9, 9});
    EXPECT_TRUE(resampleImage(Image(), destination, &whole, 1, -1).isNull());
    EXPECT_TRUE(resized(source, Point(0, 4), 8).isNull());
    EXPECT_EQ(resampleImage(source, destination, &whole, 0, -1), destination);
    EXPECT_EQ(resampleImage(source, destination, &outside, 1, -1), destination);
    EXPECT_EQ(readPixel(destination, 2, 2), (PixelValue{9, 9, 9, 9}));

    // A part cut to the picture is copied into a new image with margin 16.
    const Image part = getSubImage(source, Rectangle(10, -3, 14, 6));
    ASSERT_EQ(part.getSize(), Point(10, 3));
    EXPECT_EQ(part.getMargin(), 16);
    EXPECT_TRUE(marginIsClear(part));
    for (int y = 0; y < 3; ++y)
        EXPECT_EQ(std::memcmp(part.getLine(unsigned(y)), source.getPixelPointer(10, y), 10 * 4), 0) << y;
    EXPECT_TRUE(getSubImage(source, Rectangle(20, 0, 4, 4)).isNull());
}

TEST(ImageScalingTest, ResamplingScene)
{
    // A test card: stripes of one to four pixels, a disc, fine lines and a translucent corner,
    // resampled up and down with several tap counts.
    Scene card(64, 48, clearPixel);
    Colour ground(240, 240, 230, 255), ink(20, 20, 40, 255), night(30, 30, 60, 255), corner(40, 120, 255, 120);
    card.graphics.fillAll(ground, false);
    for (int width = 1, x = 2; width <= 4; ++width)
        for (int stripe = 0; stripe < 3; ++stripe, x += 2 * width)
            card.graphics.fillRect(Rectangle(x, 2, width, 20), ink, false);
    card.graphics.fillCircle(Colour(220, 60, 40, 255), 44, 14, 11);
    card.graphics.fillRect(Rectangle(0, 25, 40, 23), night, false);
    for (int i = 0; i < 6; ++i)
        card.graphics.drawLine(2, 26 + 3 * i, 61, 30 + 2.5 * i);
    card.graphics.fillRect(Rectangle(40, 30, 24, 18), corner, false);

    Scene sheet(160, 120, {50, 40, 40, 255});
    const Image same = resized(card.image, Point(64, 48), -1);
    sheet.graphics.drawImage(card.image, Point(2, 2), true, 255);
    sheet.graphics.drawImage(same, Point(70, 70), true, 255);
    const struct
    {
        Point size, position;
        int quality;
    } copies[] = {{{88, 66}, {70, 2}, -1},  {{40, 30}, {2, 54}, -1}, {{23, 17}, {46, 54}, -1},
                  {{16, 12}, {46, 75}, 8}, {{20, 15}, {46, 91}, 32}, {{40, 30}, {2, 88}, 4}};
    for (const auto& copy : copies)
        sheet.graphics.drawImage(resized(card.image, copy.size, copy.quality), copy.position, true, 255);

    // The card's ground at scale 1 keeps only the centre tap: 240 -> 3840 * 32385 >> 16 = 1897,
    // >> 3 = 237, then 3792 * 32385 >> 16 = 1873, >> 3 = 234; 230 -> 227 -> 224; 255 -> 249.
    // Blended over the sheet's (50, 40, 40, 255) at (70, 70): 50 * 7 >> 8 = 1 + 224, 1 + 234, 1 + 234, 6 + 249.
    EXPECT_EQ(readPixel(same, 50, 26), (PixelValue{224, 234, 234, 249}));
    EXPECT_EQ(readPixel(sheet.image, 120, 96), (PixelValue{225, 235, 235, 255}));
    EXPECT_TRUE(GoldenImage::matchesGolden(sheet.image, "resampling"));
}
