#include "media/geometry/Colour.h"

#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"
#include "foundation/var/Var.h"

#include <gtest/gtest.h>

#include <string>

using namespace q1framework;

TEST(Colour, ValueChannelsTextAndWireForm)
{
    const Colour colour(0x80FF0010u);
    EXPECT_EQ(colour.getAlpha(), 0x80);
    EXPECT_EQ(colour.getRed(), 0xFF);
    EXPECT_EQ(Colour(10, 20, 30, 40).getARGB(), 0x280A141Eu);
    EXPECT_NE(Colour(10, 20, 30, 40), Colour(10, 20, 30, 41));
    EXPECT_EQ(Colour(0x1FF, 0x102, -1, 0x180), Colour(0x80FF02FFu));  // low bytes only
    EXPECT_EQ(Var(colour).getColour(), colour);

    // Exactly four hexadecimal bytes, else transparent black.
    const std::pair<const char*, uint32_t> texts[] = {{"#80FF0010", 0x80FF0010u}, {" # c0a0b0ff #", 0xC0A0B0FFu},
                                                      {"#FFFFFF", 0}, {"#1122334455", 0}, {"#1122334", 0}, {"", 0}};
    for (const auto& [text, argb] : texts)
        EXPECT_EQ(Colour(String(text)).getARGB(), argb) << text;
    EXPECT_STREQ(colour.toString().getCString(), "#80FF0010");

    MemoryStream stream;
    Colour(0x11223344u).writeTo(stream);
    ASSERT_EQ(stream.getSize(), 5);
    EXPECT_EQ(std::string(static_cast<const char*>(stream.getData()), 5), std::string("\x00\x11\x22\x33\x44", 5));
    static_cast<uint8_t*>(stream.getData())[0] = 0x7F;  // ignored on reading
    stream.setPosition(0);
    Colour read;
    read.readFrom(stream);
    EXPECT_EQ(read, Colour(0x11223344u));
}

TEST(Colour, HueSaturationValue)
{
    const auto expectHSV = [](const Colour& colour, double hue, double saturation, double value) {
        double actual[3] = {-1.0, -1.0, -1.0};
        colour.getHSV(actual[0], actual[1], actual[2]);
        EXPECT_DOUBLE_EQ(actual[0], hue);
        EXPECT_DOUBLE_EQ(actual[1], saturation);
        EXPECT_DOUBLE_EQ(actual[2], value);
    };
    expectHSV(Colour(255, 0, 0, 255), 0.0, 1.0, 1.0);
    expectHSV(Colour(0, 102, 51, 255), (2.0 + 51.0 / 102.0) / 6.0, 1.0, 0.4);  // green dominant
    expectHSV(Colour(255, 0, 51, 255), 1.0 - 51.0 / 255.0 / 6.0, 1.0, 1.0);    // blue above green: hue wraps
    expectHSV(Colour(60, 60, 60, 10), 0.0, 0.0, 60.0 / 255.0);
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
    EXPECT_EQ(base.brighter(1e10f), Colour(255, 255, 255, 128));  // far beyond any int
    EXPECT_EQ(base.withMultipliedAlpha(0.5f), Colour(100, 200, 50, 64));
    EXPECT_EQ(base.withMultipliedAlpha(1e30f), Colour(100, 200, 50, 255));
    // other * t + this * (1 - t): 0.25 of the way from base to (0, 0, 250, 0).
    EXPECT_EQ(base.interpolatedWith(Colour(0, 0, 250, 0), 0.25f), Colour(75, 150, 100, 96));

    // channel * alpha / 255 in integers: 200 * 128 / 255 = 100.39.
    const std::pair<Colour, Colour> premultiplied[] = {{Colour(255, 200, 1, 128), Colour(128, 100, 0, 128)},
                                                       {Colour(255, 255, 255, 0), Colour(0, 0, 0, 0)},
                                                       {Colour(9, 99, 254, 255), Colour(9, 99, 254, 255)}};
    for (auto [colour, expected] : premultiplied)
    {
        colour.premultiply();
        EXPECT_EQ(colour, expected);
    }
}
