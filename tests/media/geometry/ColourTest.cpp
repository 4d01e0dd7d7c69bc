#include "media/geometry/Colour.h"

#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"
#include "foundation/var/Var.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::Colour;
using q1framework::MemoryStream;
using q1framework::String;
using q1framework::Var;

namespace
{
void expectChannels(const Colour& colour, int alpha, int red, int green, int blue)
{
    EXPECT_EQ(colour.getAlpha(), alpha);
    EXPECT_EQ(colour.getRed(), red);
    EXPECT_EQ(colour.getGreen(), green);
    EXPECT_EQ(colour.getBlue(), blue);
}
}

TEST(Colour, ValueAndChannelConstructionAgree)
{
    expectChannels(Colour(0x80FF0000u), 128, 255, 0, 0);
    expectChannels(Colour(0x01020304u), 1, 2, 3, 4);
    expectChannels(Colour(), 0, 0, 0, 0);
    // Only the low byte of each channel counts.
    expectChannels(Colour(0x1FF, 0x102, -1, 0x180), 0x80, 0xFF, 0x02, 0xFF);
    EXPECT_EQ(Colour(10, 20, 30, 40).getARGB(), 0x280A141Eu);
    EXPECT_EQ(Colour(10, 20, 30, 40), Colour(0x280A141Eu));
    EXPECT_NE(Colour(10, 20, 30, 40), Colour(10, 20, 30, 41));
}

TEST(Colour, TextFormsReadExactlyFourBytes)
{
    expectChannels(Colour(String("#80FF0010")), 0x80, 0xFF, 0x00, 0x10);
    expectChannels(Colour(String(" # c0a0b0ff #")), 0xC0, 0xA0, 0xB0, 0xFF);
    expectChannels(Colour(String("#FFFFFF")), 0, 0, 0, 0);      // three bytes
    expectChannels(Colour(String("#1122334455")), 0, 0, 0, 0);  // five bytes
    expectChannels(Colour(String("#1122334")), 0, 0, 0, 0);     // an odd digit count
    expectChannels(Colour(String()), 0, 0, 0, 0);
    EXPECT_STREQ(Colour(0x80FF0010u).toString().getCString(), "#80FF0010");
    EXPECT_EQ(Colour(Colour(0x0A0B0C0Du).toString()), Colour(0x0A0B0C0Du));
}

TEST(Colour, WireFormIsAZeroByteThenAlphaRedGreenBlue)
{
    MemoryStream stream;
    Colour(0x11223344u).writeTo(stream);
    ASSERT_EQ(stream.getSize(), 5);
    const std::string bytes(static_cast<const char*>(stream.getData()), 5);
    EXPECT_EQ(bytes, std::string("\x00\x11\x22\x33\x44", 5));
    stream.setPosition(0);
    // The first byte is read and ignored whatever it holds.
    static_cast<uint8_t*>(stream.getData())[0] = 0x7F;
    Colour read;
    read.readFrom(stream);
    EXPECT_EQ(read, Colour(0x11223344u));
}

TEST(Colour, HueSaturationValue)
{
    double hue = -1.0, saturation = -1.0, value = -1.0;
    Colour(255, 0, 0, 255).getHSV(hue, saturation, value);
    EXPECT_DOUBLE_EQ(hue, 0.0);
    EXPECT_DOUBLE_EQ(saturation, 1.0);
    EXPECT_DOUBLE_EQ(value, 1.0);
    Colour(0, 102, 51, 255).getHSV(hue, saturation, value);  // green dominant, blue half of it
    EXPECT_DOUBLE_EQ(hue, (2.0 + (51.0 - 0.0) / 102.0) / 6.0);
    EXPECT_DOUBLE_EQ(saturation, 1.0);
    EXPECT_DOUBLE_EQ(value, 0.4);
    Colour(255, 0, 51, 255).getHSV(hue, saturation, value);  // red dominant, blue above green: hue wraps
    EXPECT_DOUBLE_EQ(hue, 1.0 - 51.0 / 255.0 / 6.0);
    Colour(60, 60, 60, 10).getHSV(hue, saturation, value);
    EXPECT_DOUBLE_EQ(hue, 0.0);
    EXPECT_DOUBLE_EQ(saturation, 0.0);
    EXPECT_DOUBLE_EQ(value, 60.0 / 255.0);

    EXPECT_EQ(Colour::fromHSV(0.0, 1.0, 1.0), Colour(255, 0, 0, 255));
    EXPECT_EQ(Colour::fromHSV(1.0, 1.0, 1.0), Colour(255, 0, 0, 255));  // hue 1 counts as 0
    EXPECT_EQ(Colour::fromHSV(0.5, 1.0, 1.0), Colour(0, 255, 255, 255));
    EXPECT_EQ(Colour::fromHSV(0.7, 0.0, 0.5), Colour(127, 127, 127, 255));  // 127.5 truncated
    // Hue 0.25: sector 1, fraction 0.5; red falls to v * (1 - s * 0.5) = 0.8 * 0.75 = 0.6.
    EXPECT_EQ(Colour::fromHSV(0.25, 0.5, 0.8), Colour(153, 204, 102, 255));
}

TEST(Colour, DerivedColoursTruncateAndLimit)
{
    const Colour base(100, 200, 50, 128);
    EXPECT_EQ(base.brighter(1.5f), Colour(150, 255, 75, 128));
    EXPECT_EQ(base.brighter(-1.0f), Colour(0, 0, 0, 128));
    EXPECT_EQ(base.withAlpha(7), Colour(100, 200, 50, 7));
    EXPECT_EQ(base.withMultipliedAlpha(0.5f), Colour(100, 200, 50, 64));
    EXPECT_EQ(base.withMultipliedAlpha(3.0f), Colour(100, 200, 50, 255));
    // Products far beyond any int are limited all the same.
    EXPECT_EQ(base.brighter(1e10f), Colour(255, 255, 255, 128));
    EXPECT_EQ(base.brighter(-1e10f), Colour(0, 0, 0, 128));
    EXPECT_EQ(base.withMultipliedAlpha(1e30f), Colour(100, 200, 50, 255));
    // other * t + this * (1 - t): 0.25 of the way from base to (0, 0, 250, 0).
    EXPECT_EQ(base.interpolatedWith(Colour(0, 0, 250, 0), 0.25f), Colour(75, 150, 100, 96));
}

TEST(Colour, PremultiplyDividesBy255)
{
    Colour colour(255, 200, 1, 128);
    colour.premultiply();
    EXPECT_EQ(colour, Colour(128, 100, 0, 128));  // 255 * 128 / 255, 200 * 128 / 255 = 100.39
    Colour transparent(255, 255, 255, 0);
    transparent.premultiply();
    EXPECT_EQ(transparent, Colour(0, 0, 0, 0));
    Colour opaque(9, 99, 254, 255);
    opaque.premultiply();
    EXPECT_EQ(opaque, Colour(9, 99, 254, 255));
}

TEST(Colour, TravelsInAVarAsItsValue)
{
    const Var value(Colour(0x80402010u));
    EXPECT_EQ(value.getKind(), Var::colourKind);
    EXPECT_EQ(value.getColourARGB(), 0x80402010u);
    EXPECT_EQ(value.getColour(), Colour(0x80402010u));
    EXPECT_EQ(Var(3).getColour(), Colour());
}
