// kelvane-pack: builds, inspects and edits the resource pack ("resources.bin") that carries the
// editor's art. See `kelvane-pack --help` and resources/README.md for the recipe format.
#include "PackCommands.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace
{
constexpr int failureStatus = 1;
constexpr int usageStatus = 2;

const char* const usage =
    "usage: kelvane-pack COMMAND ARGUMENTS\n"
    "  build RECIPE OUT          build a pack from a recipe (see resources/README.md)\n"
    "  list PACK                 name, type and size of every entry\n"
    "  extract PACK NAME OUT     an entry as a file: pictures as PNG, sounds as WAV, the rest as is\n"
    "  add PACK NAME TYPE VALUE  add an entry (TYPE text, image, sound or binary; VALUE a file,\n"
    "                            or the text itself)\n"
    "  remove PACK NAME          remove an entry\n"
    "  rename PACK NAME NEWNAME  rename an entry\n"
    "  verify PACK               read every entry back; name the first damaged one\n";

using Command = std::string (*)(const std::vector<std::string>&);

struct CommandEntry
{
    const char* name;
    Command run;
};

const CommandEntry commands[] = {
    {"build", PackCommands::build},   {"list", PackCommands::list},     {"extract", PackCommands::extract},
    {"add", PackCommands::add},       {"remove", PackCommands::remove}, {"rename", PackCommands::rename},
    {"verify", PackCommands::verify},
};
}

int main(int argumentCount, char** argumentValues)
{
    if (argumentCount < 2)
    {
        std::fputs(usage, stderr);
        return usageStatus;
    }
    const std::string commandName = argumentValues[1];
    if (commandName == "--help" || commandName == "-h")
    {
        std::fputs(usage, stdout);
        return 0;
    }
    for (const CommandEntry& command : commands)
    {
        if (commandName != command.name)
            continue;
        const std::vector<std::string> arguments(argumentValues + 2, argumentValues + argumentCount);
        const std::string failure = command.run(arguments);
        if (failure.empty())
            return 0;
        std::fprintf(stderr, "kelvane-pack: %s\n", failure.c_str());
        return failure.rfind("usage: ", 0) == 0 ? usageStatus : failureStatus;
    }
    std::fprintf(stderr, "kelvane-pack: unknown command '%s' (build, list, extract, add, remove, rename or verify)\n",
                 commandName.c_str());
    return usageStatus;
}
