#include "SvgSource.h"

#include <librsvg/rsvg.h>

namespace
{
// Takes a GError's message, and frees it.
std::string message(GError* error)
{
    std::string text = error != nullptr ? error->message : "unknown error";
    if (error != nullptr)
        g_error_free(error);
    return text;
}
}  // namespace

SvgSource::~SvgSource() { release(); }

void SvgSource::release()
{
    if (handle != nullptr)
        g_object_unref(handle);
    handle = nullptr;
    documentWidth = documentHeight = 0.0;
}

std::string SvgSource::loadFile(const std::string& path)
{
    release();
    GError* error = nullptr;
    RsvgHandle* loaded = rsvg_handle_new_from_file(path.c_str(), &error);
    if (loaded == nullptr)
        return path + ": " + message(error);
    return takeHandle(loaded, path);
}

std::string SvgSource::loadText(const std::string& text)
{
    release();
    GError* error = nullptr;
    RsvgHandle* loaded =
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(text.data()), text.size(), &error);
    if (loaded == nullptr)
        return "generated SVG: " + message(error);
    return takeHandle(loaded, "generated SVG");
}

std::string SvgSource::takeHandle(RsvgHandle* loaded, const std::string& what)
{
    // Sizes in physical units would depend on this; pixel sizes do not.
    rsvg_handle_set_dpi(loaded, 96.0);
    double width = 0.0;
    double height = 0.0;
    if (!rsvg_handle_get_intrinsic_size_in_pixels(loaded, &width, &height) || width <= 0.0 || height <= 0.0)
    {
        g_object_unref(loaded);
        return what + ": the document gives no width and height in pixels";
    }
    handle = loaded;
    documentWidth = width;
    documentHeight = height;
    return {};
}

bool SvgSource::hasLayer(const std::string& id) const
{
    return handle != nullptr && !id.empty() && rsvg_handle_has_sub(handle, ("#" + id).c_str());
}

bool SvgSource::bounds(const std::string& id, double& x, double& y, double& width, double& height) const
{
    if (!hasLayer(id))
        return false;
    const RsvgRectangle viewport = {0.0, 0.0, documentWidth, documentHeight};
    RsvgRectangle logical = {};
    GError* error = nullptr;
    if (!rsvg_handle_get_geometry_for_layer(handle, ("#" + id).c_str(), &viewport, nullptr, &logical, &error))
    {
        message(error);
        return false;
    }
    x = logical.x;
    y = logical.y;
    width = logical.width;
    height = logical.height;
    return true;
}

std::string SvgSource::draw(cairo_t* context, const std::string& id) const
{
    if (handle == nullptr)
        return "no document loaded";
    if (!id.empty() && !hasLayer(id))
        return "the document has no layer \"" + id + "\"";
    const RsvgRectangle viewport = {0.0, 0.0, documentWidth, documentHeight};
    GError* error = nullptr;
    const std::string target = id.empty() ? std::string() : "#" + id;
    if (!rsvg_handle_render_layer(handle, context, id.empty() ? nullptr : target.c_str(), &viewport, &error))
        return "drawing " + (id.empty() ? std::string("the document") : "\"" + id + "\"") + ": " + message(error);
    return {};
}
