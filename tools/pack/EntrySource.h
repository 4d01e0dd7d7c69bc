#pragma once

#include "Recipe.h"

#include <string>

namespace q1framework
{
class ResourcePack;
}

// The file a recipe entry names: its value, taken relative to folder unless it is absolute.
std::string sourcePath(const RecipeEntry& entry, const std::string& folder);

// Adds the entry to pack: text as it stands, a picture decoded from PNG or JPEG, a sound from a
// WAV file (as ResourcePack::readSound keeps it), binary data as the file's bytes. Returns an
// empty string on success, otherwise a one-line reason naming the source.
std::string addRecipeEntry(q1framework::ResourcePack& pack, const RecipeEntry& entry, const std::string& folder);
