// Decoding picture files: the choice of decoder by the file's first bytes, and reading a file.
#include "media/image/Image.h"

#include "foundation/memory/FileStream.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "media/image/NativeImageDecoder.h"

#include <cstring>
#include <limits>

namespace q1framework
{

namespace
{
constexpr unsigned smallestPicture = 11;
constexpr uint8_t pngSignature[8] = {137, 'P', 'N', 'G', 13, 10, 26, 10};
constexpr int placeholderFormat = 2;

Image nonEmpty(const Image& image)
{
    return image.getWidth() > 0 && image.getHeight() > 0 ? image : Image();
}
}

void NativeImageDecoder::premultiplyLine(uint8_t* pixels, int count)
{
    for (int x = 0; x < count; ++x, pixels += 4)
    {
        const unsigned alpha = pixels[3];
        if (alpha == 255)
            continue;
        for (int channel = 0; channel < 3; ++channel)
            pixels[channel] = static_cast<uint8_t>((2 * pixels[channel] * alpha + 255) / 510);
    }
}

Image Image::decode(const void* data, unsigned size)
{
    if (data == nullptr || size < smallestPicture)
        return Image();
    const auto* bytes = static_cast<const uint8_t*>(data);
    if (std::memcmp(bytes, pngSignature, sizeof pngSignature) == 0)
    {
        Image image = nonEmpty(NativeImageDecoder::decode(data, size, NativeImageDecoder::png));
        if (!image.isNull())
            return image;
    }
    if (bytes[0] == 255 && bytes[1] == 216)
    {
        Image image = nonEmpty(NativeImageDecoder::decode(data, size, NativeImageDecoder::jpeg));
        if (!image.isNull())
            return image;
    }
    return nonEmpty(NativeImageDecoder::decode(data, size, placeholderFormat));
}

Image Image::loadFromFile(const String& path)
{
    FileStream file(path, FileStream::forReading);
    const int64_t size = file.getSize();
    if (size < 1 || size > std::numeric_limits<unsigned>::max())
        return Image();
    MemoryBlock contents(size);
    if (contents.getSize() != size || file.read(contents.getData(), size) != size)
        return Image();
    return decode(contents.getData(), static_cast<unsigned>(size));
}

}  // namespace q1framework
