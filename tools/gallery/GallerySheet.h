#pragma once

#include "media/image/Image.h"

// The renderer's gallery: one picture that shows every drawing primitive of SoftwareGraphics,
// the three blend forms, the alignments, text in several sizes, image blits and a picture
// resampled at several scales, each in a captioned panel, so that a person can see at a glance
// what the renderer does.
namespace GallerySheet
{
constexpr int width = 640;
constexpr int height = 682;

// The sheet, width by height pixels, on an opaque ground (a fill that replaces pixels with a
// translucent colour shows as such). Text needs the fallback system font; the caller checks that
// it has a face.
q1framework::Image render();
}
