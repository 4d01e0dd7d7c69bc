#pragma once

#include "foundation/string/String.h"
#include "plugin/KLParameters.h"

#include <optional>

// The XML text of Kelvane's state, written and read through TinyXML. The document is printed with
// an indent of four spaces and "\n" line breaks and has no XML declaration:
//
//   <KELVANE uiWidth="0" uiHeight="0" uiWidthNew="750" uiHeightNew="175" currentProgram="0">
//       <Program name="init0" attack="0.500000" release="0.500000" bypass="0.000000" ... />
//   </KELVANE>
//
// The root's attributes are the older and the present editor size in pixels and the current
// program, always written as 0. The values are written with "%f" (six decimals) and read as
// doubles. Numbers are written and read in the "C" locale, whatever the host's locale is.
//
// Thread contract: any host thread (not the audio thread: it allocates). No shared state.
class KLStateDocument
{
public:
    static constexpr int defaultEditorWidth = 750;
    static constexpr int defaultEditorHeight = 175;

    // Everything the document holds.
    struct Contents
    {
        int uiWidth = 0;
        int uiHeight = 0;
        int uiWidthNew = defaultEditorWidth;
        int uiHeightNew = defaultEditorHeight;
        q1framework::String programName;
        float values[KLParameters::count] = {};
    };

    // What a document gave; each field that is empty was missing or unusable.
    struct ProgramReading
    {
        bool present = false;                          // an element was read as the program
        q1framework::String name;  // empty when "name" is missing
        std::optional<float> values[KLParameters::count];
    };

    struct Reading
    {
        bool isKelvane = false;  // the first element is "KELVANE"; nothing else is set otherwise
        std::optional<int> uiWidth;
        std::optional<int> uiHeight;
        std::optional<int> uiWidthNew;
        std::optional<int> uiHeightNew;
        std::optional<int> currentProgram;
        ProgramReading program;  // the root's first child element, whatever its name
    };

    // The document of the whole state.
    static q1framework::String print(const Contents& contents);
    // A "KELVANE" root without attributes holding only the program.
    static q1framework::String printProgram(const q1framework::String& name,
                                           const float values[KLParameters::count]);

    // Reads a document that print wrote. Text that is not well-formed XML (a document that breaks
    // off included), not whole UTF-8, beyond the bounds below, or whose first element is not
    // "KELVANE" gives a Reading with isKelvane false. Values are taken as they stand, also
    // outside 0..1, as long as they are finite as a float; an editor size only in 1..32767 (what
    // a host's editor rectangle can hold). Anything else counts as missing.
    static Reading parse(const q1framework::String& text);
    // Reads the first child element of the first element as a program, whatever their names.
    static ProgramReading parseProgram(const q1framework::String& text);

    // The bounds of a document, checked in one pass before the parser sees it, so that any text
    // is read or refused within a few milliseconds. Our documents are about 400 bytes, with four
    // "<" and thirteen attributes.
    // - The parser reads nested elements by recursion, one stack frame per level, and a level
    //   takes at least one "<": deep nesting would exhaust the stack of the host's thread.
    // - It compares each new attribute of an element with all before it, so its work grows with
    //   the square of their number; an attribute takes at least one "=".
    static constexpr int maximumTextBytes = 65536;  // the terminating zero included
    static constexpr int maximumMarkup = 64;        // "<" characters
    static constexpr int maximumAttributes = 256;   // "=" characters
    static bool isWithinBounds(const char* text);
};
