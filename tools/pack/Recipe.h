#pragma once

#include <string>
#include <vector>

// The plain-text recipe of a resource pack: one entry a line, "NAME TYPE VALUE", fields apart by
// blanks. TYPE is text, image, sound or binary. For text the VALUE is the text itself, with the
// escapes \n, \t, \s (a blank) and \\; for the others it is the source file, relative to the
// recipe's folder unless absolute. Blank lines and lines whose first non-blank character is '#'
// are ignored. See resources/README.md.
struct RecipeEntry
{
    std::string name;
    int type = 0;        // the pack's type code (Resource::Type)
    std::string value;   // the text, or the source path as written
    int line = 0;        // 1-based line in the recipe
};

// Type names and codes.
bool typeFromName(const std::string& name, int& type);
const char* typeName(int type);

// Whether name can stand in a recipe: not empty, no blanks, not starting with '#'.
bool isValidName(const std::string& name);

// Parses one recipe line into entry; true with entry.name empty for a blank or comment line.
// Otherwise false with a reason in error.
bool parseRecipeLine(const std::string& line, RecipeEntry& entry, std::string& error);

// Parses a whole recipe. Returns an empty string on success, otherwise "LINE: reason" for the
// first bad line (a duplicate name included).
std::string parseRecipe(const std::string& text, std::vector<RecipeEntry>& entries);
