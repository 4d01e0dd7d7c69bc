#include "plugin/KLStateDocument.h"

#include "foundation/string/Utf8Cursor.h"
#include "plugin/ScopedClassicLocale.h"

#include <tinyxml.h>

#include <cmath>

using q1framework::String;

namespace
{
constexpr char rootName[] = "KELVANE";
constexpr char programName[] = "Program";
constexpr char nameAttribute[] = "name";
constexpr char uiWidthAttribute[] = "uiWidth";
constexpr char uiHeightAttribute[] = "uiHeight";
constexpr char uiWidthNewAttribute[] = "uiWidthNew";
constexpr char uiHeightNewAttribute[] = "uiHeightNew";
constexpr char currentProgramAttribute[] = "currentProgram";
// A host's editor rectangle holds 16-bit signed coordinates.
constexpr int largestEditorSize = 32767;

TiXmlElement* newProgramElement(const String& name, const float values[KLParameters::count])
{
    TiXmlElement* program = new TiXmlElement(programName);
    program->SetAttribute(nameAttribute, name.getCString());
    for (int index = 0; index < KLParameters::count; ++index)
        program->SetAttribute(KLParameters::getStateAttribute(index), String(values[index], -1).getCString());
    return program;
}

String printed(TiXmlDocument& document)
{
    TiXmlPrinter printer;
    printer.SetIndent("    ");
    printer.SetLineBreak("\n");
    document.Accept(&printer);
    return String(printer.CStr());
}

std::optional<int> integerAttribute(const TiXmlElement& element, const char* name)
{
    int value = 0;
    if (element.QueryIntAttribute(name, &value) != TIXML_SUCCESS)
        return std::nullopt;
    return value;
}

std::optional<int> editorSizeAttribute(const TiXmlElement& element, const char* name)
{
    const std::optional<int> size = integerAttribute(element, name);
    if (size && (*size < 1 || *size > largestEditorSize))
        return std::nullopt;
    return size;
}

KLStateDocument::ProgramReading readProgram(const TiXmlElement* element)
{
    KLStateDocument::ProgramReading reading;
    if (element == nullptr)
        return reading;
    reading.present = true;
    reading.name = element->Attribute(nameAttribute);
    for (int index = 0; index < KLParameters::count; ++index)
    {
        double value = 0.0;
        // Values are taken as they stand, also outside 0..1. "nan" and "inf", which the number
        // reader accepts, count as malformed and leave the value, and so does a number beyond the
        // range of a float ("1e39"), which would become infinity.
        if (element->QueryDoubleAttribute(KLParameters::getStateAttribute(index), &value) != TIXML_SUCCESS)
            continue;
        const float narrowed = static_cast<float>(value);
        if (std::isfinite(narrowed))
            reading.values[index] = narrowed;
    }
    return reading;
}

// Whether every multi-byte character of text is complete up to its terminator. TinyXML steps over
// a character by the length its lead byte announces, so a sequence cut short by the end of the
// text would make it read past the terminator.
bool isWholeUtf8(const char* text)
{
    q1framework::Utf8Cursor cursor(text);
    while (cursor.next() != 0)
    {
    }
    return *cursor.getCurrent() == '\0';
}

// Parses `text` into `document`; false for text with too much markup to be one of ours, for text
// that is not whole UTF-8, and for text that is no well-formed XML. TinyXML keeps the elements it
// read before an error, so a document that breaks off ("<KELVANE") would otherwise count as one.
bool parsed(TiXmlDocument& document, const String& text)
{
    if (!KLStateDocument::isWithinBounds(text.getCString()) || !isWholeUtf8(text.getCString()))
        return false;
    document.Parse(text.getCString(), nullptr, TIXML_ENCODING_UTF8);
    return !document.Error();
}
}  // namespace

String KLStateDocument::print(const Contents& contents)
{
    const q1framework::ScopedClassicLocale classicLocale;
    TiXmlDocument document;
    TiXmlElement* root = new TiXmlElement(rootName);
    root->SetAttribute(uiWidthAttribute, contents.uiWidth);
    root->SetAttribute(uiHeightAttribute, contents.uiHeight);
    root->SetAttribute(uiWidthNewAttribute, contents.uiWidthNew);
    root->SetAttribute(uiHeightNewAttribute, contents.uiHeightNew);
    // There is one program, so the current one is always the first.
    root->SetAttribute(currentProgramAttribute, 0);
    root->LinkEndChild(newProgramElement(contents.programName, contents.values));
    document.LinkEndChild(root);
    return printed(document);
}

String KLStateDocument::printProgram(const String& name, const float values[KLParameters::count])
{
    const q1framework::ScopedClassicLocale classicLocale;
    TiXmlDocument document;
    TiXmlElement* root = new TiXmlElement(rootName);
    root->LinkEndChild(newProgramElement(name, values));
    document.LinkEndChild(root);
    return printed(document);
}

KLStateDocument::Reading KLStateDocument::parse(const String& text)
{
    const q1framework::ScopedClassicLocale classicLocale;
    Reading reading;
    TiXmlDocument document;
    if (!parsed(document, text))
        return reading;
    const TiXmlElement* root = document.FirstChildElement();
    if (root == nullptr || root->ValueStr() != rootName)
        return reading;
    reading.isKelvane = true;
    reading.uiWidth = integerAttribute(*root, uiWidthAttribute);
    reading.uiHeight = integerAttribute(*root, uiHeightAttribute);
    reading.uiWidthNew = editorSizeAttribute(*root, uiWidthNewAttribute);
    reading.uiHeightNew = editorSizeAttribute(*root, uiHeightNewAttribute);
    reading.currentProgram = integerAttribute(*root, currentProgramAttribute);
    reading.program = readProgram(root->FirstChildElement());
    return reading;
}

KLStateDocument::ProgramReading KLStateDocument::parseProgram(const String& text)
{
    const q1framework::ScopedClassicLocale classicLocale;
    TiXmlDocument document;
    if (!parsed(document, text))
        return ProgramReading();
    const TiXmlElement* root = document.FirstChildElement();
    return readProgram(root != nullptr ? root->FirstChildElement() : nullptr);
}

bool KLStateDocument::isWithinBounds(const char* text)
{
    int markup = 0;
    int attributes = 0;
    for (int length = 0; text[length] != '\0'; ++length)
    {
        if (length + 1 >= maximumTextBytes)
            return false;
        if (text[length] == '<' && ++markup > maximumMarkup)
            return false;
        if (text[length] == '=' && ++attributes > maximumAttributes)
            return false;
    }
    return true;
}
