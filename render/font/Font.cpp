#include "render/font/Font.h"

#include "foundation/runtime/ReferenceCountedObject.h"
#include "foundation/string/Utf8Cursor.h"
#include "render/font/FontEngine.h"
#include "render/font/Glyph.h"
#include "render/font/GlyphsCache.h"

namespace q1framework
{

// The shared part of a Font. Its fields never change after construction: setSize makes a new one.
// Counted without atomics, like everything that belongs to the main thread.
class Font::Internal : public ReferenceCountedObject
{
public:
    Internal(FontFace* faceValue, double sizeValue, uint8_t styleFlagValue, bool verticalHintingValue,
             int32_t styleCodeValue, double styleMeasureValue, bool lcdValue)
        : ReferenceCountedObject(false),
          face(faceValue),
          size(sizeValue),
          styleFlag(styleFlagValue),
          verticalHinting(verticalHintingValue),
          styleCode(styleCodeValue),
          styleMeasure(styleMeasureValue),
          lcd(lcdValue)
    {
    }

    Internal* withSize(double newSize) const
    {
        return new Internal(face, newSize, styleFlag, verticalHinting, styleCode, styleMeasure, lcd);
    }

    FontFace* const face;  // not owned
    const double size;     // points, also the nominal line height in pixels
    const uint8_t styleFlag;
    const bool verticalHinting;
    const int32_t styleCode;
    const double styleMeasure;
    const bool lcd;
};

Font::Font(FontFace* face, double size, bool lcd, bool verticalHinting, uint8_t styleFlag, int32_t styleCode,
           double styleMeasure)
    : internal(new Internal(face, size, styleFlag, verticalHinting, styleCode, styleMeasure, lcd))
{
}

Font::Font(const Font& other) : internal(other.internal)
{
    if (internal)
        internal->incReferenceCount();
}

Font& Font::operator=(const Font& other)
{
    if (other.internal != internal)
    {
        if (other.internal)
            other.internal->incReferenceCount();
        if (internal)
            internal->decReferenceCount();
        internal = other.internal;
    }
    return *this;
}

Font::~Font()
{
    if (internal)
        internal->decReferenceCount();
}

bool Font::operator==(const Font& other) const
{
    if (internal == other.internal)
        return true;
    if (!internal || !other.internal)
        return false;
    const Internal& a = *internal;
    const Internal& b = *other.internal;
    return a.size == b.size && a.lcd == b.lcd && a.styleFlag == b.styleFlag && a.styleCode == b.styleCode
           && a.styleMeasure == b.styleMeasure && a.verticalHinting == b.verticalHinting && a.face == b.face;
}

FontFace* Font::getFace() const { return internal ? internal->face : nullptr; }
double Font::getSize() const { return internal ? internal->size : 0.0; }
bool Font::isVerticallyHinted() const { return internal && internal->verticalHinting; }
bool Font::isLcd() const { return internal && internal->lcd; }
uint8_t Font::getStyleFlag() const { return internal ? internal->styleFlag : 0; }
int32_t Font::getStyleCode() const { return internal ? internal->styleCode : 0; }
double Font::getStyleMeasure() const { return internal ? internal->styleMeasure : 0.0; }

void Font::setSize(double size)
{
    if (size == getSize())
        return;
    Internal* resized = internal ? internal->withSize(size) : new Internal(nullptr, size, 0, false, 0, 0.0, false);
    if (internal)
        internal->decReferenceCount();
    internal = resized;
}

const Glyph* Font::getGlyph(uint32_t code) const
{
    // A font without a face has no glyphs; asking the cache would only bring FreeType up for nothing.
    if (!getFace())
        return nullptr;
    return FontEngine::getInstance()->getGlyphsCache().getGlyph(*this, code);
}

float Font::getTextWidth(const char* utf8, int32_t maxChars) const
{
    float width = 0.0f;
    if (!utf8)
        return width;
    Utf8Cursor cursor(utf8);
    for (int32_t index = 0; index < maxChars; ++index)
    {
        const uint32_t code = cursor.next();
        if (code == 0)
            break;
        if (const Glyph* glyph = getGlyph(code))
            width += glyph->advance;
    }
    return width;
}

int32_t Font::getCharsThatFit(const char* utf8, double width) const
{
    if (!utf8)
        return 0;
    Utf8Cursor cursor(utf8);
    float sum = 0.0f;
    int32_t index = 0;
    for (uint32_t code = cursor.next(); code != 0; code = cursor.next(), ++index)
    {
        if (const Glyph* glyph = getGlyph(code))
        {
            sum += glyph->advance;
            if (sum >= width)
                break;
        }
    }
    return index;
}

}  // namespace q1framework
