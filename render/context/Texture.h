#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

class Image;
class RenderingContext;

// A device-side picture made by a RenderingContext: pixels go up with upload and are drawn as
// quads. OpenGLTexture and SoftwareTexture implement it.
//
// Texels: 32 bits, in memory blue, green, red, alpha, taken from an Image as they are
// (premultiplied) unless an upload asks to unpremultiply. A texture's size is exactly what was
// asked for (no rounding to powers of two).
//
// Coordinates: texels for sources, pixels of the window for destinations, y downwards.
//
// A texture must be deleted before its context (a listener of the context deletes its textures
// when told of the context's deletion).
//
// Thread contract: main thread, like its context.
class Texture
{
public:
    // context: the owner, not owned; size in texels; kind as given to createTexture.
    Texture(RenderingContext* context, int width, int height, int kind);
    virtual ~Texture();

    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    // Zeroes every texel.
    virtual void clear() = 0;
    // Copies the given rectangles of image into the same places of the texture, each cut to the
    // part that both share (from (0, 0) to the smaller width and height). Only the rectangles
    // reach the device. With unpremultiply each colour byte becomes
    // min(255, truncate(byte * (255.0f / alpha))), and 0 for alpha 0; alpha stays.
    virtual void upload(const Image& image, const Rectangle* rectangles, int count, bool unpremultiply) = 0;
    // Draws the source rectangle (x, y, w, h in texels) onto the quad with the corners (four x, y
    // pairs: top-left, top-right, bottom-right, bottom-left), at a constant alpha from 0 to 1.
    // A texture of width or height 0 draws nothing.
    virtual void drawQuad(const double source[4], const double corners[8], float alpha) = 0;
    // The device's name for the texture; 0 when it has none.
    virtual uint32_t getNativeHandle() const { return 0; }
    // Nothing to do for the textures here; kept for devices that batch.
    virtual void flush() {}

    // Whether it belongs to a context.
    bool isValid() const { return context != nullptr; }
    // The size at level 1, the only level there is; 0 for every other level.
    int getWidth(int level) const { return level == 1 ? width : 0; }
    int getHeight(int level) const { return level == 1 ? height : 0; }
    Point getSize() const { return Point(width, height); }
    int getKind() const { return kind; }
    RenderingContext* getContext() const { return context; }

    // Textures of every context that exist now, in the whole process (any thread): for tests and
    // benchmarks that check that what a window made from its context went with it.
    static int getLiveCount();

    // upload of the one rectangle (0, 0, width, height).
    void uploadWhole(const Image& image, bool unpremultiply);
    // Draws the whole texture at (x, y) scaled by scale about its own centre: the destination is
    // x + (width - width * scale) / 2, y + (height - height * scale) / 2, width * scale,
    // height * scale. Goes on to drawRotated with the rotation centre at (0, 0), the window's
    // origin, so an angle other than 0 turns the quad about that origin.
    void draw(double x, double y, double scale, float alpha, float angle);
    // Turns the four corners of destination (x, y, w, h) by angle radians about the centre:
    // with (dx, dy) a corner's offset from the centre it goes to
    // (dx * cos - dy * sin + centreX, dx * sin + dy * cos + centreY); positive angles turn
    // clockwise on the screen, since y grows downwards. Then drawQuad of source onto them.
    void drawRotated(float alpha, double angle, double centreX, double centreY, const double source[4],
                     const double destination[4]);

protected:
    // Copies the part (already cut to both sides) of image into texels, tightly packed rows of
    // this texture's width starting at texels, at the same position; with unpremultiply each
    // colour byte is divided by alpha as upload describes.
    void copyTexels(const Image& image, const Rectangle& part, uint8_t* texels, bool unpremultiply) const;

    RenderingContext* context;
    int32_t width;
    int32_t height;
    int32_t kind;
};

}  // namespace q1framework
