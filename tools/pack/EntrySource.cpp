#include "EntrySource.h"

#include "PackFile.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/resource/ResourcePack.h"
#include "media/sample/Sample.h"

#include <filesystem>
#include <memory>

using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Resource;
using q1framework::ResourcePack;
using q1framework::Sample;
using q1framework::String;

std::string sourcePath(const RecipeEntry& entry, const std::string& folder)
{
    const std::filesystem::path path(entry.value);
    return path.is_absolute() || folder.empty() ? entry.value : (std::filesystem::path(folder) / path).string();
}

std::string addRecipeEntry(ResourcePack& pack, const RecipeEntry& entry, const std::string& folder)
{
    const String name(entry.name.c_str());
    if (entry.type == Resource::textType)
    {
        pack.addString(name, String(entry.value.c_str()));
        return {};
    }
    const std::string path = sourcePath(entry, folder);
    std::string bytes;
    std::string failure = readWholeFile(path, bytes);
    if (!failure.empty())
        return failure;
    switch (entry.type)
    {
        case Resource::imageType:
        {
            const Image image = Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
            if (image.isEmpty())
                return "cannot decode " + path + " as a PNG or JPEG picture";
            pack.addImage(name, image);
            return {};
        }
        case Resource::soundType:
        {
            MemoryStream stream(MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), false));
            const std::unique_ptr<Sample> sound(ResourcePack::readSound(stream));
            if (sound == nullptr)
                return path + " is not a WAV file with PCM or float audio";
            pack.addSample(name, *sound);
            return {};
        }
        default:
            pack.addMemoryBlock(name, MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true));
            return {};
    }
}
