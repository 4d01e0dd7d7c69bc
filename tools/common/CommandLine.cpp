#include "common/CommandLine.h"

#include <sys/stat.h>

namespace CommandLine
{

bool takesValue(const std::string& argument, const std::string& name)
{
    return argument == name || argument.compare(0, name.size() + 1, name + "=") == 0;
}

bool optionValue(const std::vector<std::string>& arguments, std::size_t& position, const std::string& name,
                 std::string& value)
{
    const std::string& argument = arguments[position];
    if (argument.size() > name.size() && argument.compare(0, name.size() + 1, name + "=") == 0)
    {
        value = argument.substr(name.size() + 1);
        return true;
    }
    if (position + 1 >= arguments.size())
        return false;
    value = arguments[++position];
    return true;
}

std::string checkWritable(const std::string& path, const std::vector<std::string>& inputs, bool force)
{
    struct stat target{};
    if (stat(path.c_str(), &target) != 0)
        return {};
    if (S_ISDIR(target.st_mode))
        return path + " is a folder; give a file name";
    for (const std::string& input : inputs)
    {
        struct stat source{};
        if (!input.empty() && stat(input.c_str(), &source) == 0 && source.st_dev == target.st_dev
            && source.st_ino == target.st_ino)
            return path + " is the input file; write the result to another file";
    }
    if (!force)
        return path + " already exists; add --force to replace it";
    return {};
}

}  // namespace CommandLine
