#pragma once

#include "media/image/Image.h"
#include "render/context/Texture.h"

namespace q1framework
{

class SoftwareContext;

// The texture of a SoftwareContext: texels in memory, drawn into the context's target as the GL
// context draws its textures, so that both show the same picture:
//   - the quad is the parallelogram of its top-left, top-right and bottom-left corners (every
//     caller draws rectangles, turned or not); a pixel is drawn when its centre lies inside, by
//     the half-open rule: on the edges through the top-left corner, not on the far edges;
//   - the texel position at a pixel's centre is interpolated linearly from the corners, and the
//     texture is sampled bilinearly between the four nearest texel centres, wrapping around at
//     the texture's edges (GL_LINEAR with GL_REPEAT);
//   - the sample's alpha is multiplied by the quad's alpha, and the colour blended with that as
//     factor (see SoftwareContext).
// Texels are taken as uploaded: premultiplied unless the upload divided them by alpha; as with
// GL, a texture meant to blend correctly is uploaded with unpremultiply.
//
// Thread contract: main thread, like its context.
class SoftwareTexture : public Texture
{
public:
    // width by height texels, all zero.
    SoftwareTexture(SoftwareContext& context, int width, int height, int kind);

    void clear() override;
    void upload(const Image& image, const Rectangle* rectangles, int count, bool unpremultiply) override;
    void drawQuad(const double source[4], const double corners[8], float alpha) override;

    // The texel (x, y), blue, green, red, alpha; unchecked.
    const uint8_t* getTexel(int x, int y) const { return texels.getPixelPointer(x, y); }

private:
    // The four channels of the bilinear sample at texel position (u, v), texel centres at
    // half-integers, 0..255.
    void sample(double u, double v, float channels[4]) const;

    SoftwareContext& owner;
    Image texels;  // no margin: rows of width texels, tightly packed
};

}  // namespace q1framework
