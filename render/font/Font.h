#pragma once

#include <cstdint>

namespace q1framework
{

class FontFace;
class Glyph;

// A font: a value handle of one pointer onto a shared, reference-counted Font::Internal that holds
// the face and the size. Copies share the internal object; setSize gives this handle a fresh one,
// so the other copies keep their size.
//
// Sizes are in points, and a point counts as one pixel of nominal line height: text is laid out
// at 96 dpi, and drawText centres a line vertically with getSize() pixels.
//
// The null handle (default constructor) has no face and size 0; like any font without a face it
// yields no glyphs, measures every text as 0 wide and fits every character.
//
// Thread contract: main thread only; the count is not atomic and nothing here is locked.
class Font
{
public:
    class Internal;

    // The null handle.
    Font() = default;
    // A font on face (not owned; it must outlive every glyph rendered from this font), size in
    // points. lcd: glyphs get coverage images for the LCD blend; without it they only have
    // advances. verticalHinting: outlines are hinted vertically only, with widths and advances
    // kept fractional. styleFlag, styleCode and styleMeasure tell fonts apart and have no other use.
    Font(FontFace* face, double size, bool lcd, bool verticalHinting, uint8_t styleFlag = 0, int32_t styleCode = 0,
         double styleMeasure = 0.0);
    Font(const Font& other);
    Font& operator=(const Font& other);
    virtual ~Font();

    // The one system font of the process (a FallbackFont, 10 points, LCD, vertically hinted),
    // made on first use and deleted at the framework's shutdown. When no system font could be
    // read it still exists, with no face. Read-only: callers copy it to change the size.
    static const Font& getFallback();

    // Equal sizes, LCD and hinting modes, style values and the same face.
    bool operator==(const Font& other) const;
    bool operator!=(const Font& other) const { return !(*this == other); }

    bool isNull() const { return internal == nullptr; }
    FontFace* getFace() const;
    double getSize() const;
    bool isVerticallyHinted() const;
    bool isLcd() const;
    uint8_t getStyleFlag() const;
    int32_t getStyleCode() const;
    double getStyleMeasure() const;

    // Nothing when size equals the current one. Otherwise this handle gets a fresh internal object
    // with the new size, whether or not the old one was shared; a null handle gets one with no face.
    void setSize(double size);

    // The glyph of a character code from the process's glyph cache, rendered on first use and kept
    // until the framework shuts down. Null when this font has no face, when its size is not above
    // 0 and at most 1000 points, or when FreeType fails.
    const Glyph* getGlyph(uint32_t code) const;

    // Sum of the advances, in pixels, of the first maxChars characters of utf8 (null counts as
    // empty); a character without a glyph counts 0. Pass 0x7fffffff for the whole text.
    float getTextWidth(const char* utf8, int32_t maxChars = 0x7fffffff) const;
    // The number of characters before the first one whose running sum of advances reaches width
    // (pixels), or the number of characters of the text if none does. Characters without a glyph
    // are counted but never stop the walk.
    int32_t getCharsThatFit(const char* utf8, double width) const;

private:
    Internal* internal = nullptr;
};

}  // namespace q1framework
