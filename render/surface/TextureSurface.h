#pragma once

#include "render/surface/Surface.h"

namespace q1framework
{

class RenderingContext;
class Texture;

// A surface whose pixels are an Image in memory (margin 16) and reach the screen through a
// Texture of the window's rendering context: update uploads the dirty rectangles, present draws
// the whole texture as one quad at the window's origin. Only dirty rectangles cross to the
// device.
//
// Thread contract: main thread only; the context must outlive the surface.
class TextureSurface : public Surface
{
public:
    // width by height pixels, zeroed; the texture from context.createTexture(width, height, 1, 1).
    // When the context refuses the texture, the surface keeps its pixels and shows nothing.
    TextureSurface(RenderingContext& context, int width, int height);
    // Deletes the texture, then the pixels.
    ~TextureSurface() override;

    // The image's stride and pixel (0, 0).
    uint8_t* getPixels(int* stride) override;
    // Uploads the dirty rectangles, not unpremultiplied; the native arguments are not read.
    void update(const RectangleList& dirty, void* nativeView, void* nativeDrawingArgument) override;
    // Moves the pixels of region to destination in the image, then uploads the moved rectangle.
    void moveRegion(Rectangle& region, Point& destination) override;
    // Draws the texture with draw(0, 0, 1.0, 1.0, 0).
    void present() override;
    // Nothing here; OpenGLSurface copies on the device.
    void copyRegion(void* ignored, const Rectangle& source, const Point& destination) override;
    int getMargin() const override { return Image::defaultMargin; }

    // The texture, or null when the context refused it.
    Texture* getTexture() const { return texture; }

protected:
    RenderingContext& context;
    Texture* texture;  // owned
    Image image;
};

}  // namespace q1framework
