#pragma once

#include "media/image/Image.h"

#include <cstdint>

namespace q1framework
{

// The Linux decoders behind NativeImageDecoder: libpng and libjpeg-turbo. Each gives the picture
// premultiplied, in the framework's pixel order with margin 16, or the null handle.
Image decodePngWithLibpng(const uint8_t* data, unsigned size);
Image decodeJpegWithLibjpeg(const uint8_t* data, unsigned size);

}  // namespace q1framework
