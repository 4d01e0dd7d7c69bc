#include "Recipe.h"

#include "media/resource/Resource.h"

#include <map>

using q1framework::Resource;

namespace
{
const char* const blanks = " \t\r";

// The next field of line from position on: blanks skipped, then up to the next blank.
std::string nextField(const std::string& line, size_t& position)
{
    const size_t start = line.find_first_not_of(blanks, position);
    if (start == std::string::npos)
    {
        position = line.size();
        return {};
    }
    const size_t end = line.find_first_of(blanks, start);
    position = end == std::string::npos ? line.size() : end;
    return line.substr(start, position - start);
}

bool unescape(const std::string& raw, std::string& text, std::string& error)
{
    text.clear();
    for (size_t index = 0; index < raw.size(); ++index)
    {
        if (raw[index] != '\\')
        {
            text += raw[index];
            continue;
        }
        const char escaped = index + 1 < raw.size() ? raw[++index] : '\0';
        switch (escaped)
        {
            case 'n': text += '\n'; break;
            case 't': text += '\t'; break;
            case 's': text += ' '; break;
            case '\\': text += '\\'; break;
            default:
                error = escaped == '\0' ? "a text may not end with a single \\"
                                        : std::string("unknown escape \\") + escaped + " (use \\n, \\t, \\s or \\\\)";
                return false;
        }
    }
    return true;
}
}

bool typeFromName(const std::string& name, int& type)
{
    static const std::map<std::string, int> types = {{"text", Resource::textType},
                                                     {"image", Resource::imageType},
                                                     {"binary", Resource::binaryType},
                                                     {"sound", Resource::soundType}};
    const auto found = types.find(name);
    if (found == types.end())
        return false;
    type = found->second;
    return true;
}

const char* typeName(int type)
{
    switch (type)
    {
        case Resource::textType: return "text";
        case Resource::imageType: return "image";
        case Resource::binaryType: return "binary";
        case Resource::soundType: return "sound";
        default: return "unknown";
    }
}

bool isValidName(const std::string& name)
{
    return !name.empty() && name[0] != '#' && name.find_first_of(blanks) == std::string::npos;
}

bool parseRecipeLine(const std::string& line, RecipeEntry& entry, std::string& error)
{
    entry = RecipeEntry();
    size_t position = 0;
    const std::string name = nextField(line, position);
    if (name.empty() || name[0] == '#')
        return true;
    const std::string type = nextField(line, position);
    if (type.empty())
        return (error = "entry " + name + " has no type (text, image, sound or binary)"), false;
    if (!typeFromName(type, entry.type))
        return (error = "unknown type '" + type + "' (text, image, sound or binary)"), false;
    // The value is the rest of the line without the blanks around it.
    const size_t start = line.find_first_not_of(blanks, position);
    const size_t end = line.find_last_not_of(blanks);
    const std::string value = start == std::string::npos ? std::string() : line.substr(start, end + 1 - start);
    if (entry.type == Resource::textType)
    {
        if (!unescape(value, entry.value, error))
            return false;
    }
    else if (value.empty())
        return (error = "entry " + name + " names no source file"), false;
    else
        entry.value = value;
    entry.name = name;
    return true;
}

std::string parseRecipe(const std::string& text, std::vector<RecipeEntry>& entries)
{
    entries.clear();
    std::map<std::string, int> firstLines;
    size_t start = 0;
    for (int lineNumber = 1; start <= text.size(); ++lineNumber)
    {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        RecipeEntry entry;
        std::string error;
        if (!parseRecipeLine(text.substr(start, end - start), entry, error))
            return std::to_string(lineNumber) + ": " + error;
        if (!entry.name.empty())
        {
            const auto [previous, isNew] = firstLines.emplace(entry.name, lineNumber);
            if (!isNew)
                return std::to_string(lineNumber) + ": duplicate name " + entry.name + " (first on line "
                       + std::to_string(previous->second) + ")";
            entry.line = lineNumber;
            entries.push_back(entry);
        }
        start = end + 1;
    }
    return {};
}
