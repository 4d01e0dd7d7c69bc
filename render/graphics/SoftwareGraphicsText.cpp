// The text operations of SoftwareGraphics: one line of UTF-8 text, glyph by glyph at one-third
// pixel positions, blended per colour channel with the glyphs' LCD coverage.
#include "render/graphics/SoftwareGraphics.h"

#include "foundation/string/Utf8Cursor.h"
#include "media/image/Image.h"
#include "render/font/Glyph.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
// Where the line goes on each axis: 0 at the start, 1 centred, 2 at the end. Read from the one
// table of alignments, where a box of size 0 in a 2 by 2 area lands at 0, 1 or 2. Stretch, which
// gives the area itself, places like TopLeft; values outside the list centre.
constexpr int atStart = 0;
constexpr int centred = 1;

Point getTextPlaces(Alignment alignment)
{
    return getAlignedBox(Rectangle(0, 0, 2, 2), Point(), alignment).getPosition();
}
}  // namespace

const Font& SoftwareGraphics::getFont() const { return font; }

void SoftwareGraphics::setFont(const Font& newFont) { font = newFont; }

double SoftwareGraphics::getFontSize() const { return font.getSize(); }

void SoftwareGraphics::setFontSize(double size) { font.setSize(size); }

void SoftwareGraphics::drawText(const Rectangle& area, const char* utf8, const Colour& colour, Alignment alignment)
{
    if (!utf8)
        return;
    const Rectangle savedClip = intersectClip(area, true);
    if (!clip.isEmpty())
    {
        const Point places = getTextPlaces(alignment);

        // The pen, in pixels relative to the origin; y is the top of the line.
        float x = static_cast<float>(area.x);
        float y = static_cast<float>(area.y);
        if (places.x != atStart)
        {
            const float textWidth = font.getTextWidth(utf8, 0x7fffffff);
            if (places.x == centred)
                x = static_cast<float>(x + (textWidth - static_cast<float>(area.w)) * -0.5);
            else
                x = static_cast<float>(area.x + area.w) - textWidth;
        }
        // The line is font size pixels tall. Bottom placement puts its top at font size - area
        // height: the area's own y cancels out, so the line does not sit on the area's bottom but
        // that far above y 0, where the area's clip mostly cuts it away. Existing layouts are drawn
        // with this placement, so it stays.
        const double fontSize = font.getSize();
        if (places.y == centred)
            y = static_cast<float>(y + (fontSize - area.h) * -0.5);
        else if (places.y != atStart)
            y = static_cast<float>(y - (area.y + area.h - fontSize));

        Utf8Cursor cursor(utf8);
        for (uint32_t code = cursor.next(); code != 0; code = cursor.next())
        {
            // A character the font cannot render is skipped, as its measured width is 0.
            const Glyph* glyph = font.getGlyph(code);
            if (!glyph)
                continue;
            const float left = std::floor(x);
            const Point position(static_cast<int>(left) + glyph->offsetX, static_cast<int>(y + glyph->offsetY));
            drawGlyph(glyph->image, position, colour, static_cast<int>((x - left) * 3));
            x += glyph->advance;
        }
    }
    setClip(savedClip, true);
}

void SoftwareGraphics::drawTextWithShadow(const Rectangle& area, const char* utf8, const Colour& colour,
                                          Alignment alignment, int shadowAlpha, float shadowOffset)
{
    Rectangle shadowArea = area;
    shadowArea.y += static_cast<int>(-shadowOffset);
    const Colour shadow(255 - colour.getRed(), 255 - colour.getGreen(), 255 - colour.getBlue(), shadowAlpha);
    drawText(shadowArea, utf8, shadow, alignment);
    drawText(area, utf8, colour, alignment);
}

void SoftwareGraphics::drawGlyph(const Image& glyph, const Point& position, const Colour& colour, int phase)
{
    if (glyph.isEmpty() || phase < 0 || phase > 2)
        return;
    const int x = position.x + originX;
    const int y = position.y + originY;
    const int glyphWidth = glyph.getWidth();
    // A glyph that starts between pixels reaches into one more pixel on the right.
    const Rectangle visible = Rectangle(x, y, glyphWidth + (phase > 0 ? 1 : 0), glyph.getHeight()).getIntersection(drawable);
    if (visible.isEmpty())
        return;

    // Subpixels are thirds of a pixel, counted from the buffer's left edge. When the clip (cut to
    // the buffer) cuts the glyph's left side, the walk starts on the first whole pixel inside it,
    // at the glyph subpixel that falls there; the glyph's last phase subpixels are then left out.
    const bool leftVisible = visible.x == x;
    const int destinationPhase = leftVisible ? phase : 0;
    const int sourcePhase = leftVisible ? 0 : (3 - phase) % 3;
    const int sourceColumn = visible.x - x - (sourcePhase != 0 ? 1 : 0);
    const int subpixels = std::min(x * 3 + destinationPhase + glyphWidth * 3, drawable.getRight() * 3)
                          - std::max(x * 3 + destinationPhase, drawable.x * 3);

    const int alpha = colour.getAlpha();
    // Destination subpixels go red, green, blue: bytes 2, 1, 0 of a pixel. The alpha byte stays.
    const int channels[3] = {colour.getRed(), colour.getGreen(), colour.getBlue()};
    for (int row = visible.y; row < visible.getBottom(); ++row)
    {
        const uint8_t* source = glyph.getPixelPointer(sourceColumn, row - y);
        uint8_t* destination = pixelAddress(visible.x, row);
        int sourceSubpixel = sourcePhase;
        int destinationSubpixel = destinationPhase;
        for (int step = 0; step < subpixels; ++step)
        {
            // Coverage below one 255th of full draws nothing.
            const int coverage = alpha * source[sourceSubpixel];
            if (coverage >= 255)
            {
                const int weight = coverage / 255;
                uint8_t& target = destination[2 - destinationSubpixel];
                target = static_cast<uint8_t>(((weight ^ 255) * target + channels[destinationSubpixel] * weight) >> 8);
            }
            if (++sourceSubpixel == 3)
            {
                sourceSubpixel = 0;
                source += 4;
            }
            if (++destinationSubpixel == 3)
            {
                destinationSubpixel = 0;
                destination += 4;
            }
        }
    }
}

}  // namespace q1framework
