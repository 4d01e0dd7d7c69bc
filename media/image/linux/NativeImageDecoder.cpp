#include "media/image/NativeImageDecoder.h"

#include "media/image/linux/LibraryDecoders.h"

namespace q1framework
{

Image NativeImageDecoder::decode(const void* data, unsigned size, int format)
{
    const auto* bytes = static_cast<const uint8_t*>(data);
    switch (format)
    {
        case png: return decodePngWithLibpng(bytes, size);
        case jpeg: return decodeJpegWithLibjpeg(bytes, size);
        default: return Image();
    }
}

}  // namespace q1framework
