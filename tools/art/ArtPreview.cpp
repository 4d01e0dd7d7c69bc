#include "ArtPreview.h"

#include "ArtCatalogue.h"
#include "CairoHandles.h"
#include "MeterScale.h"

#include <cmath>
#include <filesystem>
#include <map>
#include <string>

namespace
{
// Where the editor puts each control, in pixels of the background.
struct Placement
{
    const char* name;
    int x;
    int y;
};
const Placement placements[] = {
    {"knob-attack", 510, 128}, {"knob-drive", 645, 110},   {"knob-release", 755, 127}, {"knob-gain", 891, 110},
    {"button-bypass", 897, 228}, {"drive-led", 673, 228}, {"attack-time", 519, 260}, {"release-time", 767, 261},
};

// The needle positions shown: the input at 0 dB, the output at -6 dB.
const double needlePositions[] = {MeterScale::positionOfLevel(1.0), MeterScale::positionOfLevel(0.5)};

using Pictures = std::map<std::string, CairoSurface>;

std::string load(const std::string& artFolder, Pictures& pictures)
{
    for (const ArtPicture& picture : ArtCatalogue::pictures())
    {
        const std::string path = artFolder + "/" + picture.name + ".png";
        CairoSurface surface(cairo_image_surface_create_from_png(path.c_str()));
        if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
            return path + ": " + cairo_status_to_string(cairo_surface_status(surface.get()));
        pictures[picture.name] = std::move(surface);
    }
    return {};
}

// Draws frame `frame` of a strip with its top-left corner at (x, y).
void drawFrame(cairo_t* context, const ArtPicture& picture, cairo_surface_t* strip, int frame, double x, double y)
{
    cairo_save(context);
    cairo_rectangle(context, x, y, picture.width, picture.height);
    cairo_clip(context);
    cairo_set_source_surface(context, strip, x, y - static_cast<double>(picture.height) * frame);
    cairo_paint(context);
    cairo_restore(context);
}

// The editor's needle at scale 1: a bar 4 pixels wide, (20, 20, 20) at 0.9 opacity, from the pivot
// below the face to the tip, turned about the pivot; its shadow 7 pixels right and 1 up at 0.05;
// both clipped to the face.
void drawNeedle(cairo_t* context, const MeterFace& face, double position)
{
    const double angle = MeterScale::angleOfPosition(position);
    const double length = MeterScale::needleLength(angle, face.height);
    const MeterScale::Point pivot = MeterScale::needlePivot(face.width, face.height);
    const double pivotX = face.x + pivot.x;
    const double pivotY = face.y + pivot.y;
    cairo_save(context);
    cairo_rectangle(context, face.x, face.y, face.width, face.height);
    cairo_clip(context);
    const double offsets[][3] = {{7.0, -1.0, 0.05}, {0.0, 0.0, 0.9}};
    for (const auto& offset : offsets)
    {
        cairo_save(context);
        cairo_translate(context, pivotX + offset[0], pivotY + offset[1]);
        cairo_rotate(context, angle);
        cairo_rectangle(context, -2.0, -length, 4.0, length);
        cairo_set_source_rgba(context, 20 / 255.0, 20 / 255.0, 20 / 255.0, offset[2]);
        cairo_fill(context);
        cairo_restore(context);
    }
    cairo_restore(context);
}

std::string save(cairo_surface_t* surface, const std::string& path)
{
    const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
    return status == CAIRO_STATUS_SUCCESS ? std::string() : path + ": " + cairo_status_to_string(status);
}

// `source` scaled to width x height with cairo's good (area-averaging) filter.
CairoSurface scaled(cairo_surface_t* source, int width, int height)
{
    CairoSurface target(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    CairoContext context(cairo_create(target.get()));
    cairo_scale(context.get(), static_cast<double>(width) / cairo_image_surface_get_width(source),
                static_cast<double>(height) / cairo_image_surface_get_height(source));
    cairo_set_source_surface(context.get(), source, 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(context.get()), CAIRO_FILTER_GOOD);
    cairo_paint(context.get());
    return target;
}

CairoSurface composite(const Pictures& pictures)
{
    const ArtPicture& background = ArtCatalogue::pictures().front();
    CairoSurface target(cairo_image_surface_create(CAIRO_FORMAT_RGB24, background.width, background.height));
    CairoContext context(cairo_create(target.get()));
    cairo_set_source_surface(context.get(), pictures.at(background.name).get(), 0.0, 0.0);
    cairo_paint(context.get());
    for (const Placement& placement : placements)
        for (const ArtPicture& picture : ArtCatalogue::pictures())
            if (placement.name == std::string(picture.name))
                drawFrame(context.get(), picture, pictures.at(picture.name).get(), picture.frames / 2, placement.x,
                          placement.y);
    for (size_t index = 0; index < ArtCatalogue::meterFaces().size(); ++index)
        drawNeedle(context.get(), ArtCatalogue::meterFaces()[index], needlePositions[index]);
    return target;
}

// Five frames of each strip (first, quarter, middle, three quarters, last; every frame of a
// strip of fewer than five), a row each, doubled in size, on the panel's dark ground.
CairoSurface stripSheet(const Pictures& pictures)
{
    const int gap = 12;
    int width = 0;
    int height = gap;
    for (const ArtPicture& picture : ArtCatalogue::pictures())
        if (picture.frames > 1)
        {
            width = std::max(width, gap + 5 * (picture.width + gap));
            height += picture.height + gap;
        }
    const double zoom = 2.0;
    CairoSurface target(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width * zoom),
                                                   static_cast<int>(height * zoom)));
    CairoContext context(cairo_create(target.get()));
    cairo_set_source_rgb(context.get(), 0.11, 0.115, 0.125);
    cairo_paint(context.get());
    cairo_scale(context.get(), zoom, zoom);
    int y = gap;
    for (const ArtPicture& picture : ArtCatalogue::pictures())
    {
        if (picture.frames <= 1)
            continue;
        const int shown = std::min(picture.frames, 5);
        for (int column = 0; column < shown; ++column)
        {
            const int frame = (picture.frames - 1) * column / std::max(shown - 1, 1);
            drawFrame(context.get(), picture, pictures.at(picture.name).get(), frame,
                      gap + column * (picture.width + gap), y);
        }
        y += picture.height + gap;
    }
    return target;
}
}  // namespace

std::string ArtPreview::write(const std::string& artFolder, const std::string& outFolder)
{
    Pictures pictures;
    if (std::string problem = load(artFolder, pictures); !problem.empty())
        return problem;
    std::error_code error;
    std::filesystem::create_directories(outFolder, error);
    if (error)
        return outFolder + ": " + error.message();

    const CairoSurface full = composite(pictures);
    const int sizes[][2] = {{750, 175}, {300, 70}};
    if (std::string problem = save(full.get(), outFolder + "/preview-1500.png"); !problem.empty())
        return problem;
    for (const auto& size : sizes)
    {
        const CairoSurface small = scaled(full.get(), size[0], size[1]);
        if (std::string problem = save(small.get(), outFolder + "/preview-" + std::to_string(size[0]) + ".png");
            !problem.empty())
            return problem;
    }
    const CairoSurface sheet = stripSheet(pictures);
    return save(sheet.get(), outFolder + "/strips.png");
}
