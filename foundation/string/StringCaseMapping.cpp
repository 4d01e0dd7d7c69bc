// String: case mapping.
//
// The tables cover ASCII and eight upper/lower pairs of code page 437 (Ç/ç, Ä/ä, Å/å, É/é, Æ/æ,
// Ö/ö, Ü/ü, Ñ/ñ at their code-page positions). The pairs are compared with the code point's value
// although the text is Unicode, so U+008E becomes U+0084 while the real Latin-1 letters such as
// U+00C4 pass through unchanged.
#include "foundation/string/String.h"

namespace q1framework
{

namespace
{
struct CasePair
{
    uint32_t upper;
    uint32_t lower;
};

constexpr CasePair codePagePairs[] = {
    {128, 135}, {142, 132}, {143, 134}, {144, 130}, {146, 145}, {153, 148}, {154, 129}, {165, 164},
};

uint32_t lowerCaseOf(uint32_t character)
{
    if (character >= 'A' && character <= 'Z')
        return character + ('a' - 'A');
    for (const CasePair& pair : codePagePairs)
        if (character == pair.upper)
            return pair.lower;
    return character;
}

uint32_t upperCaseOf(uint32_t character)
{
    if (character >= 'a' && character <= 'z')
        return character - ('a' - 'A');
    for (const CasePair& pair : codePagePairs)
        if (character == pair.lower)
            return pair.upper;
    return character;
}
}

// Maps the characters in [start, end) in this text's own UTF-32 scratch area, which is why a
// pointer from an earlier toUTF32 sees the mapped values afterwards, and rebuilds the text from it.
template <typename Mapping>
static String mapCase(const String& source, unsigned start, unsigned end, Mapping mapping)
{
    // toUTF32 hands out the scratch area read-only to callers; the mapping owns it for this call.
    auto* characters = const_cast<uint32_t*>(source.toUTF32());
    if (characters == nullptr)
        return String();
    for (unsigned i = 0; characters[i] != 0 && i < end; ++i)
        if (i >= start)
            characters[i] = mapping(characters[i]);
    return String(characters);
}

String String::toLowerCase(unsigned start, unsigned end) const
{
    return mapCase(*this, start, end, lowerCaseOf);
}

String String::toUpperCase(unsigned start, unsigned end) const
{
    return mapCase(*this, start, end, upperCaseOf);
}

}  // namespace q1framework
