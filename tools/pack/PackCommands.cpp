#include "PackCommands.h"

#include "EntrySource.h"
#include "Extraction.h"
#include "PackFile.h"
#include "Recipe.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/resource/ResourcePack.h"
#include "media/sample/Sample.h"

#include <sys/stat.h>

#include <cstdio>
#include <filesystem>

using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::Resource;
using q1framework::ResourcePack;
using q1framework::Sample;
using q1framework::String;

namespace
{
std::string wrongArguments(const char* form)
{
    return std::string("usage: kelvane-pack ") + form;
}

std::string badName(const std::string& name)
{
    return "bad entry name '" + name + "' (not empty, no blanks, not starting with #)";
}

// Whether two paths name the same existing file.
bool sameFile(const std::string& first, const std::string& second)
{
    struct stat a{};
    struct stat b{};
    return stat(first.c_str(), &a) == 0 && stat(second.c_str(), &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::string entryCount(int count)
{
    return std::to_string(count) + (count == 1 ? " entry" : " entries");
}

// The size column of list.
std::string describe(const Resource& entry)
{
    if (const Image* image = entry.getImage())
        return std::to_string(image->getWidth()) + " x " + std::to_string(image->getHeight()) + " pixels";
    if (const Sample* sound = entry.getSample())
        return std::to_string(sound->getNumFrames()) + " frames, " + std::to_string(sound->getNumChannels())
               + (sound->getNumChannels() == 1 ? " channel, " : " channels, ")
               + std::to_string(static_cast<long long>(sound->getSampleRate())) + " Hz, "
               + std::to_string(sound->getBitsPerSample()) + " bits";
    if (const String* text = entry.getText())
        return std::to_string(text->getBytesCount()) + " bytes";
    if (const MemoryBlock* block = entry.getMemoryBlock())
        return std::to_string(block->getSize()) + " bytes";
    return "no data";
}
}

namespace PackCommands
{

std::string build(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 2)
        return wrongArguments("build RECIPE OUT");
    const std::string& recipePath = arguments[0];
    const std::string& output = arguments[1];
    std::string text;
    std::string failure = readWholeFile(recipePath, text);
    if (!failure.empty())
        return failure;
    std::vector<RecipeEntry> entries;
    failure = parseRecipe(text, entries);
    if (!failure.empty())
        return recipePath + ":" + failure;

    const std::string folder = std::filesystem::path(recipePath).parent_path().string();
    if (sameFile(output, recipePath))
        return output + " is the recipe; write the pack to another file";
    ResourcePack pack;
    for (const RecipeEntry& entry : entries)
    {
        if (entry.type != Resource::textType && sameFile(output, sourcePath(entry, folder)))
            return output + " is the source of " + entry.name + "; write the pack to another file";
        failure = addRecipeEntry(pack, entry, folder);
        if (!failure.empty())
            return recipePath + ":" + std::to_string(entry.line) + ": " + failure;
    }
    failure = savePack(pack, output);
    if (failure.empty())
        std::printf("%s: %s\n", output.c_str(), entryCount(pack.getNumResources()).c_str());
    return failure;
}

std::string list(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 1)
        return wrongArguments("list PACK");
    ResourcePack pack;
    const std::string failure = loadPack(arguments[0], pack);
    if (!failure.empty())
        return failure;
    size_t nameWidth = 4;
    for (int index = 0; index < pack.getNumResources(); ++index)
        nameWidth = std::max(nameWidth, pack.getResource(index)->getName().getBytesCount());
    for (int index = 0; index < pack.getNumResources(); ++index)
    {
        const Resource& entry = *pack.getResource(index);
        std::printf("%-*s  %-6s  %s\n", static_cast<int>(nameWidth), entry.getName().getCString(), typeName(entry.getType()),
                    describe(entry).c_str());
    }
    return {};
}

std::string extract(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 3)
        return wrongArguments("extract PACK NAME OUT");
    ResourcePack pack;
    std::string failure = loadPack(arguments[0], pack);
    if (!failure.empty())
        return failure;
    const Resource* entry = pack.find(arguments[1].c_str());
    if (entry == nullptr)
        return "no entry " + arguments[1] + " in " + arguments[0];
    std::string bytes;
    failure = exportEntry(*entry, bytes);
    if (!failure.empty())
        return "cannot extract " + arguments[1] + ": " + failure;
    return writeWholeFile(arguments[2], bytes, false);
}

std::string add(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 4)
        return wrongArguments("add PACK NAME TYPE VALUE");
    const std::string& packPath = arguments[0];
    if (!isValidName(arguments[1]))
        return badName(arguments[1]);
    RecipeEntry entry;
    std::string failure;
    if (!parseRecipeLine(arguments[1] + " " + arguments[2] + " " + arguments[3], entry, failure))
        return failure;
    ResourcePack pack;
    failure = loadPack(packPath, pack);
    if (!failure.empty())
        return failure;
    if (pack.exists(entry.name.c_str()))
        return packPath + " already has an entry " + entry.name;
    failure = addRecipeEntry(pack, entry, "");
    if (!failure.empty())
        return failure;
    return savePack(pack, packPath);
}

std::string remove(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 2)
        return wrongArguments("remove PACK NAME");
    ResourcePack pack;
    const std::string failure = loadPack(arguments[0], pack);
    if (!failure.empty())
        return failure;
    if (!pack.remove(arguments[1].c_str()))
        return "no entry " + arguments[1] + " in " + arguments[0];
    return savePack(pack, arguments[0]);
}

std::string rename(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 3)
        return wrongArguments("rename PACK NAME NEWNAME");
    ResourcePack pack;
    const std::string failure = loadPack(arguments[0], pack);
    if (!failure.empty())
        return failure;
    const int index = pack.getIndex(arguments[1].c_str());
    if (index < 0)
        return "no entry " + arguments[1] + " in " + arguments[0];
    if (!isValidName(arguments[2]))
        return badName(arguments[2]);
    if (pack.exists(arguments[2].c_str()))
        return arguments[0] + " already has an entry " + arguments[2];
    pack.rename(index, arguments[2].c_str());
    return savePack(pack, arguments[0]);
}

std::string verify(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 1)
        return wrongArguments("verify PACK");
    std::string bytes;
    std::string failure = readWholeFile(arguments[0], bytes);
    if (!failure.empty())
        return failure;
    int count = 0;
    failure = checkPack(bytes, count);
    if (!failure.empty())
        return arguments[0] + ": " + failure;
    std::printf("%s: %s, all intact\n", arguments[0].c_str(), entryCount(count).c_str());
    return {};
}

}  // namespace PackCommands
