#include "PictureRenderer.h"

#include "MeterScale.h"

#include <cmath>
#include <cstdio>

namespace
{
// A size as SVG gives it: whole numbers without decimals.
std::string pixels(double size)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", size);
    return text;
}

// Meter faces must stand where the editor puts the meters, to a hundredth of a pixel.
constexpr double faceTolerance = 0.01;

std::string drawBackground(cairo_t* context, const SvgSource& source)
{
    if (std::string problem = source.draw(context, "panel"); !problem.empty())
        return problem;
    for (const MeterFace& face : ArtCatalogue::meterFaces())
    {
        double x = 0.0, y = 0.0, width = 0.0, height = 0.0;
        if (!source.bounds(face.layer, x, y, width, height))
            return std::string("the background has no meter face \"") + face.layer + "\"";
        if (std::fabs(x - face.x) > faceTolerance || std::fabs(y - face.y) > faceTolerance ||
            std::fabs(width - face.width) > faceTolerance || std::fabs(height - face.height) > faceTolerance)
            return std::string("the meter face \"") + face.layer + "\" is not at " + std::to_string(face.x) + ", " +
                   std::to_string(face.y) + ", " + std::to_string(face.width) + " x " + std::to_string(face.height);
        SvgSource scale;
        if (std::string problem = scale.loadText(MeterScale::svg(face.width, face.height, face.label));
            !problem.empty())
            return problem;
        cairo_save(context);
        cairo_translate(context, face.x, face.y);
        const std::string problem = scale.draw(context);
        cairo_restore(context);
        if (!problem.empty())
            return problem;
    }
    return source.draw(context, "glass");
}

std::string drawFrame(cairo_t* context, const ArtPicture& picture, const SvgSource& source, int frame)
{
    const double progress = picture.frames > 1 ? static_cast<double>(frame) / (picture.frames - 1) : 0.0;
    switch (picture.kind)
    {
    case FrameKind::background:
        return drawBackground(context, source);
    case FrameKind::rotary:
    {
        if (std::string problem = source.draw(context, "body"); !problem.empty())
            return problem;
        cairo_save(context);
        cairo_translate(context, picture.width / 2.0, picture.height / 2.0);
        cairo_rotate(context, (-135.0 + 270.0 * progress) * M_PI / 180.0);
        cairo_translate(context, -picture.width / 2.0, -picture.height / 2.0);
        const std::string problem = source.draw(context, "rotor");
        cairo_restore(context);
        if (!problem.empty() || !source.hasLayer("cover"))
            return problem;
        return source.draw(context, "cover");
    }
    case FrameKind::fade:
    {
        if (std::string problem = source.draw(context, "off"); !problem.empty())
            return problem;
        cairo_push_group(context);
        const std::string problem = source.draw(context, "on");
        cairo_pop_group_to_source(context);
        cairo_paint_with_alpha(context, progress);
        return problem;
    }
    case FrameKind::states:
        if (std::string problem = source.draw(context, "base"); !problem.empty())
            return problem;
        return source.draw(context, "state-" + std::to_string(frame));
    }
    return "unknown kind of picture";
}
}  // namespace

std::string PictureRenderer::render(const ArtPicture& picture, const SvgSource& source, CairoSurface& surface)
{
    if (source.width() != picture.width || source.height() != picture.height)
        return std::string(picture.name) + ": the source is " + pixels(source.width()) + " x " +
               pixels(source.height()) + " pixels, not " + std::to_string(picture.width) + " x " +
               std::to_string(picture.height);
    const cairo_format_t format = picture.kind == FrameKind::background ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
    CairoSurface target(cairo_image_surface_create(format, picture.width, picture.height * picture.frames));
    CairoContext context(cairo_create(target.get()));
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS)
        return std::string(picture.name) + ": " + cairo_status_to_string(cairo_status(context.get()));
    for (int frame = 0; frame < picture.frames; ++frame)
    {
        // Each frame draws into its own cell only: nothing of one frame bleeds into the next.
        cairo_save(context.get());
        cairo_translate(context.get(), 0.0, static_cast<double>(picture.height) * frame);
        cairo_rectangle(context.get(), 0.0, 0.0, picture.width, picture.height);
        cairo_clip(context.get());
        const std::string problem = drawFrame(context.get(), picture, source, frame);
        cairo_restore(context.get());
        if (!problem.empty())
            return std::string(picture.name) + ": " + problem;
    }
    cairo_surface_flush(target.get());
    surface = std::move(target);
    return {};
}
