#pragma once

#include <cairo.h>

#include <string>

typedef struct _RsvgHandle RsvgHandle;

// One SVG document, loaded whole, that draws itself or one of its layers (an element named by its
// id, typically a top-level <g>) into a cairo context. Drawing goes through the context's current
// transformation, so a caller turns or moves a layer by transforming the context first.
//
// Documents give their size in pixels (width and height without units); a document is always
// drawn at that size, one SVG unit a pixel, with its top-left corner at the context's origin.
class SvgSource
{
public:
    SvgSource() = default;
    ~SvgSource();

    SvgSource(const SvgSource&) = delete;
    SvgSource& operator=(const SvgSource&) = delete;

    // Loads a document from a file or from memory, replacing what was loaded. Returns an empty
    // string on success, otherwise a one-line reason (the source is then empty).
    std::string loadFile(const std::string& path);
    std::string loadText(const std::string& text);

    bool isLoaded() const { return handle != nullptr; }
    // The document's size in pixels; 0 x 0 when nothing is loaded.
    double width() const { return documentWidth; }
    double height() const { return documentHeight; }

    // True when the document has an element with this id (without "#").
    bool hasLayer(const std::string& id) const;

    // The logical bounds (geometry without strokes) of the element with this id, in pixels of
    // the document. False when there is no such element.
    bool bounds(const std::string& id, double& x, double& y, double& width, double& height) const;

    // Draws the element with this id and its children where they stand in the whole document;
    // an empty id draws the whole document. Returns an empty string on success, otherwise a
    // one-line reason.
    std::string draw(cairo_t* context, const std::string& id = {}) const;

private:
    std::string takeHandle(RsvgHandle* loaded, const std::string& what);
    void release();

    RsvgHandle* handle = nullptr;
    double documentWidth = 0.0;
    double documentHeight = 0.0;
};
