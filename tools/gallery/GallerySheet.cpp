#include "GallerySheet.h"

#include "render/graphics/SoftwareGraphics.h"
#include "render/image/ImageScaling.h"

#include <cmath>
#include <cstdio>

using q1framework::Alignment;
using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
const Colour captionColour(230, 230, 235, 255);
const Colour noteColour(170, 175, 190, 255);

// A captioned panel: the frame and caption are drawn, then the origin moves to the panel's inner
// area and the clip is narrowed to it until the panel goes out of scope.
class Panel
{
public:
    Panel(SoftwareGraphics& graphics, const Rectangle& area, const char* caption) : graphics(graphics), area(area)
    {
        graphics.fillRoundedRect(area, 6, Colour(44, 48, 60, 255));
        graphics.setFontSize(11.0);
        graphics.drawText(Rectangle(area.x + 8, area.y + 4, area.w - 16, 14), caption, captionColour, Alignment::TopLeft);
        oldClip = graphics.intersectClip(inner(), true);
        graphics.translate(area.x + 8, area.y + 22);
        graphics.setFontSize(9.0);
    }

    ~Panel()
    {
        graphics.translate(-(area.x + 8), -(area.y + 22));
        graphics.setClip(oldClip, true);
    }

    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    Rectangle inner() const { return Rectangle(area.x + 8, area.y + 22, area.w - 16, area.h - 28); }

private:
    SoftwareGraphics& graphics;
    Rectangle area;
    Rectangle oldClip;
};

void note(SoftwareGraphics& graphics, int x, int y, int width, const char* text)
{
    graphics.drawText(Rectangle(x, y, width, 12), text, noteColour, Alignment::TopCentre);
}

Colour fill(int red, int green, int blue, int alpha)
{
    return Colour(red, green, blue, alpha);
}

void drawFills(SoftwareGraphics& graphics)
{
    graphics.fillCheckerboard(Rectangle(0, 0, 190, 90), Colour(90, 90, 100, 255), Colour(150, 150, 160, 255), 6);
    Colour opaque = fill(240, 140, 40, 255);
    graphics.fillRect(Rectangle(4, 4, 40, 34), opaque, true);
    Colour blended = fill(40, 170, 255, 140);
    graphics.fillRect(Rectangle(24, 20, 40, 34), blended, true);
    Colour replaced = fill(40, 170, 255, 140);
    graphics.fillRect(Rectangle(72, 4, 40, 34), replaced, false);
    graphics.fillGradient(Rectangle(120, 4, 30, 80), Colour(255, 220, 60, 255), Colour(150, 30, 200, 255), 1);
    graphics.fillGradient(Rectangle(154, 4, 30, 80), Colour(255, 255, 255, 0), Colour(20, 200, 90, 255), 1);
    graphics.fillGradient(Rectangle(4, 60, 110, 24), Colour(0, 0, 0, 220), Colour(0, 0, 0, 0), 0);
    note(graphics, 0, 90, 64, "blend");
    note(graphics, 64, 90, 56, "replace");
    note(graphics, 116, 90, 74, "gradients");
}

void drawLines(SoftwareGraphics& graphics)
{
    graphics.drawRect(Rectangle(0, 0, 50, 34), Colour(255, 200, 80, 255));
    for (int i = 0; i < 5; ++i)
    {
        Colour vertical(120, 200, 255, 255 - 45 * i);
        graphics.drawVerticalLine(58 + 4 * i, 0, 34, vertical);
        Colour horizontal(255, 150, 150, 255 - 45 * i);
        graphics.drawHorizontalLine(40 + 4 * i, 0, 50, horizontal);
        graphics.drawVerticalLineF(82 + 4 * i, Colour(255, 255, 255, 255), 0.3f * i, 34.0f - 0.35f * i);
    }
    for (int i = 0; i < 4; ++i)
    {
        graphics.drawVerticalGradientLine(106 + 3 * i, 0, 60 - 8 * i, Colour(255, 80, 80, 255), Colour(80, 80, 255, 60));
        graphics.drawTaperedVerticalLine(122 + 3 * i, Colour(255, 255, 210, 255), 2.5f + 3 * i, 62.0f - 5 * i);
    }
    for (int i = 0; i < 12; ++i)
    {
        const double angle = i * 3.14159265358979 / 6.0 + 0.1;
        graphics.drawLine(163.0, 36.0, 163.0 + 26.0 * std::cos(angle), 36.0 + 26.0 * std::sin(angle));
    }
    for (int i = 0; i < 4; ++i)
        graphics.drawSlantedLine(8 + 12 * i, Colour(140, 255, 170, 255), 62.0f, 88.0f - 3.0f * i, 0.8f + 0.7f * i);
    note(graphics, 0, 90, 100, "straight");
    note(graphics, 100, 90, 36, "soft");
    note(graphics, 136, 90, 56, "Wu");
}

void drawCircles(SoftwareGraphics& graphics)
{
    graphics.fillCircle(Colour(255, 200, 40, 255), 22, 22, 20);
    graphics.fillCircle(Colour(40, 200, 255, 150), 38, 34, 14);
    graphics.drawRing(Colour(255, 100, 100, 255), 92, 30, 24, 1);
    graphics.drawRing(Colour(140, 255, 140, 200), 92, 30, 14, 4);
    graphics.drawArc(Colour(255, 255, 255, 255), 152, 30, 22, 3, 5.0f, 1.2f);
    graphics.drawArc(Colour(255, 160, 0, 255), 152, 30, 12, 2, 1.6f, 4.4f);
    graphics.fillRoundedRect(Rectangle(4, 62, 80, 26), 9, Colour(100, 150, 255, 255));
    graphics.fillRoundedRectCorners(Rectangle(96, 62, 90, 26), 0, 12, 4, 8, Colour(255, 255, 255, 170));
}

// A soft disc with a highlight, drawn by the renderer itself on a transparent image.
Image makeSprite()
{
    Image sprite(24, 24, true);
    SoftwareGraphics painter(sprite);
    painter.fillCircle(Colour(255, 170, 50, 255), 11.5f, 11.5f, 11.5f);
    painter.fillCircle(Colour(255, 255, 255, 190), 8.0f, 8.0f, 4.0f);
    return sprite;
}

Image makeFrame()
{
    Image frame(12, 12, true);
    SoftwareGraphics painter(frame);
    painter.fillRoundedRect(Rectangle(0, 0, 12, 12), 4, Colour(80, 160, 255, 230));
    painter.drawRect(Rectangle(1, 1, 10, 10), Colour(255, 255, 255, 255));
    return frame;
}

void drawBlendForms(SoftwareGraphics& graphics, const Image& sprite)
{
    // Two-tone ground, so that each form shows over light and dark.
    Colour light = fill(210, 210, 200, 255);
    graphics.fillRect(Rectangle(0, 0, 300, 40), light, false);
    Colour dark = fill(20, 24, 40, 255);
    graphics.fillRect(Rectangle(0, 40, 300, 40), dark, false);
    for (int i = 0; i < 8; ++i)
    {
        Colour straight(230, 60, 60, 32 * (i + 1) - 1);
        graphics.fillRect(Rectangle(2 + 12 * i, 10, 10, 60), straight, true);
        Colour premultiplied(40, 140, 255, 32 * (i + 1) - 1);
        for (int x = 0; x < 10; ++x)
        {
            Colour line(premultiplied);
            graphics.drawVerticalLine(102 + 12 * i + x, 10, 70, line);
        }
        graphics.drawImage(sprite, Point(200 + 12 * (i % 4), i < 4 ? 8 : 46), true, 255 - 32 * i);
    }
    note(graphics, 0, 84, 98, "straight colour");
    note(graphics, 100, 84, 98, "premultiplied");
    note(graphics, 200, 84, 100, "opacity");
}

void drawImages(SoftwareGraphics& graphics, const Image& sprite, const Image& frame)
{
    Image tile(6, 6, true);
    {
        SoftwareGraphics painter(tile);
        Colour stripe(255, 255, 255, 110);
        painter.fillRect(Rectangle(0, 0, 3, 6), stripe, true);
        painter.fillRect(Rectangle(0, 0, 6, 2), stripe, true);
    }
    graphics.tileImage(tile, tile.getBounds(), Rectangle(0, 0, 60, 64), true);
    graphics.drawThreePartHorizontal(frame, Rectangle(68, 0, 110, 12), true);
    graphics.drawThreePartVertical(frame, Rectangle(64, 18, 20, 62), true);
    graphics.drawNinePart(frame, Rectangle(90, 18, 88, 40), true);
    graphics.drawImageScaled(sprite, sprite.getBounds(), Rectangle(186, 0, 64, 64), true, 255, Alignment::Stretch);
    graphics.drawImageScaled(sprite, sprite.getBounds(), Rectangle(254, 0, 12, 12), true, 255, Alignment::Stretch);
    graphics.drawImageAligned(sprite, Rectangle(90, 62, 88, 18), true, 255, Alignment::Stretch);
    note(graphics, 0, 84, 60, "tiles");
    note(graphics, 64, 84, 120, "three and nine parts");
    note(graphics, 186, 84, 80, "nearest");
}

// Text placed in a box by each alignment. Bottom placement puts the line's top at font size -
// box height, measured from y 0, which existing layouts rely on; the boxes are drawn at the
// origin so that this is the only difference.
void drawAlignments(SoftwareGraphics& graphics)
{
    const struct
    {
        Alignment alignment;
        const char* name;
    } alignments[] = {
        {Alignment::TopLeft, "TopLeft"},         {Alignment::TopCentre, "TopCentre"},
        {Alignment::TopRight, "TopRight"},       {Alignment::CentreLeft, "CentreLeft"},
        {Alignment::Centre, "Centre"},           {Alignment::CentreRight, "CentreRight"},
        {Alignment::BottomLeft, "BottomLeft"},   {Alignment::BottomCentre, "BottomCentre"},
        {Alignment::BottomRight, "BottomRight"}, {Alignment::Stretch, "Stretch"},
    };
    for (int index = 0; index < 10; ++index)
    {
        const Rectangle box(2 + (index % 5) * 120, (index / 5) * 46, 112, 40);
        graphics.translate(box.x, box.y);
        const Rectangle local(0, 0, box.w, box.h);
        Colour ground(60, 66, 90, 255);
        graphics.fillRect(local, ground, false);
        graphics.drawRect(local, Colour(110, 120, 160, 255));
        graphics.drawText(local, alignments[index].name, Colour(255, 255, 255, 255), alignments[index].alignment);
        graphics.translate(-box.x, -box.y);
    }
}

void drawTextSizes(SoftwareGraphics& graphics)
{
    const double sizes[] = {8.0, 10.0, 12.0, 14.0, 18.0};
    int x = 0;
    for (double size : sizes)
    {
        graphics.setFontSize(size);
        char label[32];
        std::snprintf(label, sizeof label, "Kelvane %g", size);
        graphics.drawText(Rectangle(x, 0, 200, 28), label, Colour(255, 255, 255, 255), Alignment::CentreLeft);
        x += static_cast<int>(graphics.getFont().getTextWidth(label, 0x7fffffff)) + 14;
    }
    graphics.setFontSize(12.0);
    graphics.drawText(Rectangle(0, 34, 400, 20), "Attack -100 to +100 %, Gain -9 dB to +9 dB",
                      Colour(255, 200, 120, 255), Alignment::CentreLeft);
    graphics.drawTextWithShadow(Rectangle(400, 34, 200, 20), "with a shadow", Colour(120, 220, 255, 255),
                                Alignment::CentreRight, 200, 1.0f);
    graphics.setFontSize(9.0);
}

// A test card: stripes from one to four pixels, a disc, Wu lines on a dark band, a translucent
// corner.
Image makeCard()
{
    Image card(96, 72, true);
    SoftwareGraphics painter(card);
    Colour ground(240, 240, 230, 255);
    painter.fillAll(ground, false);
    for (int width = 1, x = 3; width <= 4; ++width)
        for (int stripe = 0; stripe < 3; ++stripe, x += 2 * width)
        {
            Colour ink(20, 20, 40, 255);
            painter.fillRect(Rectangle(x, 3, width, 30), ink, false);
        }
    painter.fillCircle(Colour(220, 60, 40, 255), 70, 20, 16);
    Colour night(30, 30, 60, 255);
    painter.fillRect(Rectangle(0, 38, 60, 34), night, false);
    for (int i = 0; i < 8; ++i)
        painter.drawLine(2, 40 + 4 * i, 93, 44 + 3.5 * i);
    Colour corner(40, 120, 255, 130);
    painter.fillRect(Rectangle(60, 45, 36, 27), corner, false);
    painter.setFontSize(10.0);
    painter.drawText(Rectangle(62, 48, 34, 20), "Kv", Colour(255, 255, 255, 255), Alignment::Centre);
    return card;
}

void drawResampling(SoftwareGraphics& graphics)
{
    const Image card = makeCard();
    const double scales[] = {0.5, 0.75, 1.0, 1.3, 1.6};
    int x = 0;
    for (double scale : scales)
    {
        const Point size(static_cast<int>(96 * scale), static_cast<int>(72 * scale));
        const Image scaled = scale == 1.0 ? card : q1framework::resized(card, size, -1);
        graphics.drawImage(scaled, Point(x, 116 - size.y), true, 255);
        char label[32];
        std::snprintf(label, sizeof label, scale == 1.0 ? "original" : "x %.2g", scale);
        note(graphics, x, 118, size.x, label);
        x += size.x + 8;
    }
}
}

namespace GallerySheet
{
Image render()
{
    Image sheet(width, height, false);
    sheet.fill(28, 30, 38, 255);
    SoftwareGraphics graphics(sheet);
    graphics.setFontSize(16.0);
    graphics.drawText(Rectangle(10, 6, 620, 22), "Kelvane software renderer", Colour(255, 255, 255, 255),
                      Alignment::TopLeft);

    const Image sprite = makeSprite();
    const Image frame = makeFrame();
    {
        Panel panel(graphics, Rectangle(8, 32, 206, 128), "Fills and gradients");
        drawFills(graphics);
    }
    {
        Panel panel(graphics, Rectangle(217, 32, 206, 128), "Lines");
        drawLines(graphics);
    }
    {
        Panel panel(graphics, Rectangle(426, 32, 206, 128), "Circles, rings, arcs");
        drawCircles(graphics);
    }
    {
        Panel panel(graphics, Rectangle(8, 164, 316, 126), "Blend forms");
        drawBlendForms(graphics, sprite);
    }
    {
        Panel panel(graphics, Rectangle(328, 164, 304, 126), "Images");
        drawImages(graphics, sprite, frame);
    }
    {
        Panel panel(graphics, Rectangle(8, 294, 624, 120), "Alignments (Bottom ones measure from y 0, so they fall above these boxes)");
        drawAlignments(graphics);
    }
    {
        Panel panel(graphics, Rectangle(8, 418, 624, 90), "Text (LCD coverage at third-pixel positions)");
        drawTextSizes(graphics);
    }
    {
        Panel panel(graphics, Rectangle(8, 512, 624, 162), "Resampling (windowed sinc, 16-bit taps)");
        drawResampling(graphics);
    }
    return sheet;
}
}
