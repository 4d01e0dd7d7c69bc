#pragma once

#include <string>

namespace q1framework
{
class ResourcePack;
}

// Reading and writing whole files for kelvane-pack. Every function returns an empty string on
// success, otherwise a one-line reason.

// The whole file at path.
std::string readWholeFile(const std::string& path, std::string& bytes);

// Writes bytes to path through a temporary file in the same folder that is moved into place only
// when complete, so a failure never leaves a half-written file or harms an existing one. Without
// replaceExisting an existing file is refused.
std::string writeWholeFile(const std::string& path, const std::string& bytes, bool replaceExisting);

// Checks that bytes are a pack whose every entry reads back whole, with nothing behind the last;
// entryCount receives the count of entries. The reason names the first damaged entry by its
// index (from 1) and name.
std::string checkPack(const std::string& bytes, int& entryCount);

// Reads and checks the pack at path into pack.
std::string loadPack(const std::string& path, q1framework::ResourcePack& pack);

// Writes pack to path, replacing the file there (see writeWholeFile).
std::string savePack(const q1framework::ResourcePack& pack, const std::string& path);
