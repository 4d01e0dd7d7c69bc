// Decodes arbitrary bytes as a picture (PNG, JPEG). A decoded picture must be within the size
// limits, have its zeroed margin of 16, and be premultiplied: no colour above its alpha.
#include "FuzzCheck.h"
#include "media/image/Image.h"

#include <cstdint>

using namespace q1framework;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const Image image = Image::decode(data, static_cast<unsigned>(size));
    if (image.isNull())
        return 0;
    check(image.getWidth() >= 1 && image.getHeight() >= 1 && image.getWidth() <= 32768 && image.getHeight() <= 32768);
    check(image.getMargin() == 16);
    for (int y = 0; y < image.getHeight(); ++y)
    {
        const uint8_t* line = image.getLine(static_cast<unsigned>(y));
        check(line[-1] == 0 && line[image.getWidth() * 4] == 0);
        for (int x = 0; x < image.getWidth(); ++x)
            check(line[x * 4] <= line[x * 4 + 3] && line[x * 4 + 1] <= line[x * 4 + 3] && line[x * 4 + 2] <= line[x * 4 + 3]);
    }
    return 0;
}
