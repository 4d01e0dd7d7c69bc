#pragma once

#include <cstddef>
#include <string>
#include <vector>

// What the command-line programs share in reading their arguments and in choosing the files they
// write.
namespace CommandLine
{
// Whether argument is the option name, given as "--name VALUE" or "--name=VALUE".
bool takesValue(const std::string& argument, const std::string& name);

// The value of the option name at arguments[position]: after its "=", or the next argument (then
// position moves on to it). False when the value is missing.
bool optionValue(const std::vector<std::string>& arguments, std::size_t& position, const std::string& name,
                 std::string& value);

// Whether a program may write path: never over one of its inputs (compared by file identity, so
// another spelling or a hard link of an input is caught too), never over a folder, and over
// another existing file only with force. An empty string when it may, otherwise a one-line
// reason.
std::string checkWritable(const std::string& path, const std::vector<std::string>& inputs, bool force);
}  // namespace CommandLine
