#include "PackFile.h"

#include "common/PendingFile.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "media/resource/Resource.h"
#include "media/resource/ResourcePack.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Resource;
using q1framework::ResourcePack;

namespace
{
const char* const packMagic = "Q1RESPK00";

// A read-only stream over bytes, which must outlive it.
MemoryBlock wrap(const std::string& bytes)
{
    return MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), false);
}
}

std::string readWholeFile(const std::string& path, std::string& bytes)
{
    bytes.clear();
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return "cannot read " + path + ": " + std::strerror(errno);
    char buffer[1 << 16];
    size_t count;
    while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, count);
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    return failed ? "cannot read " + path + ": read error" : std::string();
}

std::string writeWholeFile(const std::string& path, const std::string& bytes, bool replaceExisting)
{
    if (!replaceExisting && access(path.c_str(), F_OK) == 0)
        return path + " already exists";
    PendingFile pending;
    std::string failure = pending.create(path);
    if (!failure.empty())
        return failure;
    size_t written = 0;
    while (written < bytes.size())
    {
        const ssize_t count = write(pending.descriptor(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return "cannot write " + path + ": " + std::strerror(errno);  // the temporary file goes
        written += static_cast<size_t>(count);
    }
    return pending.publish(replaceExisting);
}

std::string checkPack(const std::string& bytes, int& entryCount)
{
    entryCount = 0;
    MemoryStream stream(wrap(bytes));
    if (stream.readString() != packMagic)
        return "not a resource pack (no Q1RESPK00 magic)";
    const int32_t count = stream.readInt32();
    if (count < 0)
        return "damaged: negative entry count " + std::to_string(count);
    for (int32_t index = 0; index < count; ++index)
    {
        Resource entry("");
        const Resource::ReadResult result = entry.readEntryChecked(stream);
        if (result != Resource::ReadResult::intact)
        {
            const std::string which = "entry " + std::to_string(index + 1);
            // A rejected entry whose type code is still a known one never got past its magic.
            const bool knownType = entry.getType() >= Resource::textType && entry.getType() <= Resource::soundType;
            if (result == Resource::ReadResult::rejected && knownType)
                return "damaged at " + which + ": no entry magic";
            return "damaged at " + which + " \"" + entry.getName().getCString() + "\""
                   + (result == Resource::ReadResult::rejected ? ": unknown type code " + std::to_string(entry.getType())
                                                               : ": its data does not read back whole");
        }
    }
    if (stream.getRemainingBytes() > 0)
        return "damaged: " + std::to_string(stream.getRemainingBytes()) + " stray bytes after the last of "
               + std::to_string(count) + " entries";
    entryCount = count;
    return {};
}

std::string loadPack(const std::string& path, ResourcePack& pack)
{
    std::string bytes;
    std::string failure = readWholeFile(path, bytes);
    if (!failure.empty())
        return failure;
    int entryCount = 0;
    failure = checkPack(bytes, entryCount);
    if (!failure.empty())
        return path + ": " + failure;
    MemoryStream stream(wrap(bytes));
    pack.read(stream);
    return {};
}

std::string savePack(const ResourcePack& pack, const std::string& path)
{
    MemoryStream stream;
    if (!pack.write(stream))
        return "cannot assemble the pack for " + path + " (out of memory?)";
    const std::string bytes(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
    return writeWholeFile(path, bytes, true);
}
