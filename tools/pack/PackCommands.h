#pragma once

#include <string>
#include <vector>

// The commands of kelvane-pack. Each takes the command's arguments (without the command's name),
// prints what it has to say on standard output, and returns an empty string on success, otherwise
// the one-line reason for failing. None of them writes a file unless it succeeds, and a pack is
// replaced only by a complete new one.
namespace PackCommands
{

// build RECIPE OUT: the pack that the recipe describes, written to OUT.
std::string build(const std::vector<std::string>& arguments);
// list PACK: one line an entry: name, type and size.
std::string list(const std::vector<std::string>& arguments);
// extract PACK NAME OUT: the entry as a file of its own; OUT must not exist.
std::string extract(const std::vector<std::string>& arguments);
// add PACK NAME TYPE VALUE: one entry as a recipe line gives it, sources relative to the current
// folder; the name must be new.
std::string add(const std::vector<std::string>& arguments);
// remove PACK NAME
std::string remove(const std::vector<std::string>& arguments);
// rename PACK NAME NEWNAME: NEWNAME must be free.
std::string rename(const std::vector<std::string>& arguments);
// verify PACK: reads every entry back; the reason names the first damaged one.
std::string verify(const std::vector<std::string>& arguments);

}  // namespace PackCommands
