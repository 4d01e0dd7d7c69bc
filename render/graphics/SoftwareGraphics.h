#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Colour.h"
#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "render/font/Font.h"
#include "render/graphics/Alignment.h"

#include <cstdint>

namespace q1framework
{

class FloatImage;
class Image;

// Draws into 32-bit pixels in memory: fills, axis-aligned lines, one anti-aliased line, circles,
// rings, arcs, rounded rectangles, images and text. Every component paints through it; a Surface
// then takes the pixels to the screen. Made on the stack for one paint; it owns nothing.
//
// Pixels: 4 bytes, in memory blue, green, red, alpha, colour premultiplied by alpha. The pixel
// (x, y) covers the square from (x, y) to (x + 1, y + 1); y grows downwards. Colour arguments are
// straight (not premultiplied).
//
// Coordinates: every position passed in is relative to the origin, which translate moves. The
// clip is kept in buffer coordinates, as set; it may reach beyond the buffer, but drawing touches
// only the part of it inside the buffer (the drawable rectangle), so nothing outside the buffer
// is ever written.
//
// Blending, in integers with truncation at every step; a is the source alpha (0 to 255), d a
// destination byte:
//   straight colour c:       colour byte (d * (256 - a) >> 8) + (c * a >> 8),
//                            alpha byte  (d * (256 - a) >> 8) + a;
//                            with a = 255 the opaque word is written instead.
//   premultiplied pixel s:   every byte (d * (256 - s.alpha) >> 8) + s.
//   pixel s at opacity o:    k = o + 1, sa = k * s.alpha >> 8;
//                            every byte (d * (256 - sa) >> 8) + (k * s >> 8).
// Colours are premultiplied with Colour::premultiply (a division by 255); the blends shift by 8.
// Both roundings are part of the result. Results are wrapped to 8 bits.
//
// Drawing reports no errors: an empty or out-of-range request draws nothing.
//
// Thread contract: main thread, like everything that paints; an object belongs to its painter.
class SoftwareGraphics
{
public:
    // One entry of drawPoints: a position in 16-bit coordinates and the pixel word that goes there.
    struct PlottedPoint
    {
        int16_t x;
        int16_t y;
        uint32_t pixel;  // written as it is, no blending
    };

    // Over width by height pixels at pixels (not owned), stride bytes from one line to the next;
    // a negative stride runs the lines upwards in memory. Origin (0, 0), clip the whole buffer,
    // scale 1, the fallback font.
    SoftwareGraphics(uint8_t* pixels, int width, int height, int stride);
    // Over an image's picture: its pixels, size and stride. The image must outlive this object.
    explicit SoftwareGraphics(const Image& image);

    SoftwareGraphics(const SoftwareGraphics&) = delete;
    SoftwareGraphics& operator=(const SoftwareGraphics&) = delete;

    // ---- Origin, clip and buffer ----

    // Adds (dx, dy) to the origin.
    void translate(int dx, int dy);
    Point getOrigin() const { return Point(originX, originY); }
    // Replaces the clip; with relative, area is moved by the origin first. The clip is not
    // limited to the buffer: callers pass parts of it.
    void setClip(const Rectangle& area, bool relative);
    // The clip, minus the origin when relative.
    Rectangle getClip(bool relative) const;
    // Sets the clip to its intersection with area (moved by the origin when relative) and returns
    // the old clip in the same coordinates, for a later setClip. An area outside the clip leaves a
    // clip of size 0, and nothing is drawn until setClip.
    Rectangle intersectClip(const Rectangle& area, bool relative);
    // The address of pixel (0, 0) of the buffer, or of the origin's pixel when atOrigin; the
    // stride in bytes goes to *stride when that is not null.
    uint8_t* getPixels(int* stride, bool atOrigin) const;
    int getWidth() const { return width; }
    int getHeight() const { return height; }
    // The painter's scale (the window's pixels per component unit), 1 by default. The container
    // stores it here; drawing itself does not use it.
    double getScale() const { return scale; }
    void setScale(double newScale) { scale = newScale; }

    // ---- Text (the body is in SoftwareGraphicsText.cpp) ----

    const Font& getFont() const;
    void setFont(const Font& newFont);
    // Size of the current font in points, which is also its nominal line height in pixels.
    double getFontSize() const;
    // Through Font::setSize: other copies of the font keep their size.
    void setFontSize(double size);
    // One line of UTF-8 text placed in area by alignment (see Alignment; Stretch places like
    // TopLeft), drawn with the font's LCD coverage at one-third-pixel positions and clipped to
    // area. A null text draws nothing. Needs a font with a face.
    void drawText(const Rectangle& area, const char* utf8, const Colour& colour, Alignment alignment);
    // drawText twice: first a shadow in the inverted colour at alpha shadowAlpha, moved up by
    // shadowOffset pixels (truncated), then the text itself.
    void drawTextWithShadow(const Rectangle& area, const char* utf8, const Colour& colour, Alignment alignment,
                            int shadowAlpha, float shadowOffset);
    // The LCD blend of one glyph image (three coverage samples a pixel in bytes 0, 1, 2) with its
    // top-left at position, starting phase (0, 1 or 2) subpixels to the right. Only red, green
    // and blue are written; the alpha byte stays.
    void drawGlyph(const Image& glyph, const Point& position, const Colour& colour, int phase);

    // ---- Pixels and fills ----

    // One pixel at (x, y) in the straight colour form (the opaque word at alpha 255).
    void blendPixel(int x, int y, const Colour& colour);
    // blendPixel of white with alpha truncate(alpha * 255) & 255 (so 1.0 is opaque and a value
    // that computes 256 wraps to 0).
    void blendWhite(int x, int y, float alpha);
    // Each point's coordinates times scale (in double), truncated to 16 bits, minus the origin,
    // is a buffer position; inside the clip its pixel word is written there unblended.
    void drawPoints(const Array<PlottedPoint>& points, float scale);
    // fillRect of the whole clip.
    void fillAll(Colour colour, bool blend);
    // Fills area. Without blend, or with an opaque colour, the pixels are replaced by the
    // premultiplied colour (a transparent colour clears them), and colour itself is left
    // premultiplied in place. With blend, the straight colour form; alpha 0 changes nothing.
    void fillRect(const Rectangle& area, Colour& colour, bool blend);
    // Cells of cellSize pixels, counted from the buffer's (0, 0): second where
    // ((y / cellSize) ^ (x / cellSize)) & 1 is set, else first; blended in the premultiplied form.
    // A cellSize below 1 draws nothing.
    void fillCheckerboard(const Rectangle& area, Colour first, Colour second, int cellSize);
    // A vertical gradient from top (first row) towards bottom over the whole height of area,
    // whatever the clip, in 16.16 fixed point with the error carried from row to row. mode 1
    // blends rows in the straight colour form; any other mode tints the pixels already there.
    void fillGradient(const Rectangle& area, Colour top, Colour bottom, int mode);

    // ---- Lines ----

    // A one-pixel outline just inside area.
    void drawRect(const Rectangle& area, Colour colour);
    // Rows y1 (included) to y2 (not), in either order. Opaque: the opaque word. Otherwise colour
    // is premultiplied in place and blended in the premultiplied form.
    void drawVerticalLine(int x, int y1, int y2, Colour& colour);
    // Columns x1 (included) to x2 (not), in either order, in the straight colour form.
    void drawHorizontalLine(int y, int x1, int x2, Colour& colour);
    // Lines with fractional ends, in pixels: the end pixels get alpha in proportion to the part of
    // them the line covers.
    void drawVerticalLineF(int x, Colour colour, float start, float end);
    void drawHorizontalLineF(int y, Colour colour, float start, float end);
    // A vertical line from top at y1 to bottom at y2 (not included), colour interpolated per row.
    void drawVerticalGradientLine(int x, int y1, int y2, Colour top, Colour bottom);
    // A one-pixel highlight from y1 to y2 whose alpha rises from 0 at the ends to full in the
    // middle along the square root of a triangle.
    void drawTaperedVerticalLine(int x, Colour colour, float y1, float y2);
    // An anti-aliased white line between two points (Xiaolin Wu's method). A line with x1 equal
    // to x2 draws nothing, whatever its ends in y.
    void drawLine(double x1, double y1, double x2, double y2);
    // A thick line from (x, y1) to (x + 1, y2): pixels within halfWidth of the segment, with a
    // one-pixel soft edge.
    void drawSlantedLine(int x, Colour colour, float y1, float y2, float halfWidth);

    // ---- Circles and rounded shapes (pixel (px, py) is measured at its top-left corner) ----

    // A disc with a one-pixel soft edge inside radius. A radius below 1 draws nothing.
    void fillCircle(Colour colour, float centreX, float centreY, float radius);
    // A ring of the given thickness around radius, soft on both sides.
    void drawRing(Colour colour, float centreX, float centreY, float radius, float thickness);
    // The part of a ring between two angles in radians (any values; they are brought into
    // [0, 2 pi)), soft at its ends along the arc. A start above the end passes angle 0.
    void drawArc(Colour colour, float centreX, float centreY, float radius, float thickness, float start, float end);
    // A rectangle with all four corners rounded by radius pixels.
    void fillRoundedRect(const Rectangle& area, int radius, Colour colour);
    // The same with a radius of its own for each corner.
    void fillRoundedRectCorners(const Rectangle& area, int topLeft, int topRight, int bottomLeft, int bottomRight,
                                Colour colour);

    // ---- Images (pixels premultiplied; opacity 0 to 255) ----
    // Without blend pixels are copied; with blend they are composited over the buffer.

    // The whole image with its top-left at position.
    void drawImage(const Image& image, const Point& position, bool blend, int opacity);
    // The part source of the image (cut to the image) with its top-left at position, unscaled.
    // A source cut at its left or top is not shifted to compensate. opacity applies with blend.
    void drawImagePart(const Image& image, const Rectangle& source, const Point& position, bool blend, int opacity);
    // source placed in destination by alignment. With equal sizes this is drawImagePart at the
    // aligned place, opacity included; otherwise a nearest-neighbour scale of source onto the
    // whole destination in 16.16 fixed point, without opacity.
    void drawImageScaled(const Image& image, const Rectangle& source, const Rectangle& destination, bool blend,
                         int opacity, Alignment alignment);
    // drawImageScaled with the whole image as source.
    void drawImageAligned(const Image& image, const Rectangle& destination, bool blend, int opacity,
                          Alignment alignment);
    // Repeats source (cut to the image) from destination's top-left over destination; the last
    // row and column of tiles are clipped to it.
    void tileImage(const Image& image, const Rectangle& source, const Rectangle& destination, bool blend);
    // The image cut into thirds across: the left and right caps at destination's ends, the middle
    // third tiled between them, at most the image's height tall.
    void drawThreePartHorizontal(const Image& image, const Rectangle& destination, bool blend);
    // The image cut into thirds down, as a column of the image's own width centred in destination.
    void drawThreePartVertical(const Image& image, const Rectangle& destination, bool blend);
    // The image cut into a three by three grid: corners unscaled, edges and centre tiled.
    void drawNinePart(const Image& image, const Rectangle& destination, bool blend);

    // ---- Image effects (the bodies are in SoftwareGraphicsEffects.cpp) ----
    // Each changes the part of area inside the clip, and nothing else. It reads those pixels and
    // the band around them that its kernels reach, as far as the clip allows (beyond the clip
    // counts as transparent), computes their new picture in float (render/effects/), and draws
    // the part of it over area by drawImagePart without blend: the picture already holds the old
    // pixels at their depth (a shadow under them, a blur of them), and blending it over them
    // would count their partly covered pixels twice. So an effect on a dirty rectangle gives the
    // same picture there, up to rounding, as one on the whole buffer, as long as the clip leaves
    // it the band. An empty part, or a size, radius or span below 1, draws nothing.
    // Cost: each effect allocates the float pictures it computes, a few times the read
    // rectangle's size in bytes (16 bytes a pixel). The shadow and the glow spend a multiply-add
    // per channel and kernel pixel (size^2, or (2 * radius + 1)^2) on every pixel read that is
    // not transparent, so keep those to tens of pixels; the blur's cost does not grow with span.

    // A soft shadow in colour of the pixels' coverage (their alpha), moved by offset and put
    // under them: the coverage convolved with the power kernel of side size and power 3, so the
    // shadow's edge fades over about size / 2 pixels. An odd size centres the shadow on offset;
    // an even one lies half a pixel further right and down.
    void drawDropShadow(const Rectangle& area, const Colour& colour, const Point& offset, int size);
    // A halo in colour around the pixels' coverage, put under them: the coverage grown by radius
    // (the disc kernel) and then blurred twice with box blurs of span 2 * radius + 1, so that it
    // fades out within about 3 * radius pixels of the shape.
    void drawGlow(const Rectangle& area, const Colour& colour, int radius);
    // The pixels blurred by two box blurs of span each: a single pixel spreads into a tent
    // 2 * span - 1 pixels wide along each axis. Each pass counts the pixels beyond the clip as
    // transparent, so the picture fades towards the clip's edges.
    void blurRect(const Rectangle& area, int span);

private:
    uint8_t* pixelAddress(int x, int y) const;
    // area moved by the origin and cut to the drawable part of the clip.
    Rectangle toDrawable(const Rectangle& area) const;
    // One drawable buffer pixel in the straight colour form at the given alpha, or the opaque
    // word when alpha is 255.
    void blendStraightAt(int x, int y, const Colour& colour, int alpha);
    // The rows of a drawable buffer rectangle: set to one word, or a premultiplied word blended
    // over them (see PixelKernels::blendWord).
    void fillWord(const Rectangle& bufferArea, uint32_t word);
    void blendWord(const Rectangle& bufferArea, uint32_t word);
    // The tint of fillGradient's default mode on columns left to right (excluded) of row y.
    void tintRow(int y, int left, int right, const uint8_t channels[4]);
    // fillCircle with the clip narrowed to square (relative to the origin).
    void fillCircleIn(const Rectangle& square, const Colour& colour, float centreX, float centreY, float radius);
    void setClipInBuffer(const Rectangle& area);
    // The image effects' ends: the pixels of a drawable buffer rectangle in float with the given
    // margin, and the part (a buffer rectangle inside source) of a picture of source drawn in
    // place of the buffer's pixels.
    FloatImage readPixels(const Rectangle& bufferArea, int margin) const;
    void replacePixels(const Rectangle& part, const Rectangle& source, const FloatImage& picture);

    int originX = 0;
    int originY = 0;
    Rectangle clip;       // buffer coordinates, as set
    Rectangle drawable;   // clip cut to the buffer: the only pixels that drawing may touch
    int width = 0;        // buffer size, pixels
    int height = 0;
    int stride = 0;       // bytes from one line to the next; may be negative
    uint8_t* pixels = nullptr;
    double scale = 1.0;
    Font font;
};

}  // namespace q1framework
