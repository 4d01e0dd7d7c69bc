#include "common/PendingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

namespace
{
std::string systemError()
{
    return std::strerror(errno);
}

// The mode a new file gets from open(2) with 0666: mkstemp gives 0600, which would hide a
// rendering from the user's other programs.
mode_t newFileMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}
}

PendingFile::~PendingFile()
{
    discard();
}

std::string PendingFile::create(const std::string& destination)
{
    discard();
    const std::filesystem::path path(destination);
    const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
    std::string pattern = (folder / ("." + path.filename().string() + ".XXXXXX")).string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int descriptor = mkstemp(name.data());
    if (descriptor < 0)
        return "cannot write in " + folder.string() + ": " + systemError();
    fchmod(descriptor, newFileMode());
    destinationPath = destination;
    temporaryPath = name.data();
    fileDescriptor = descriptor;
    return {};
}

std::string PendingFile::publish(bool replaceExisting)
{
    if (fileDescriptor < 0)
        return "nothing to write to " + destinationPath;
    std::string failure;
    if (fsync(fileDescriptor) != 0)
        failure = "cannot write " + destinationPath + ": " + systemError();
    close(fileDescriptor);
    fileDescriptor = -1;
    if (failure.empty())
    {
        // link() refuses an existing name atomically, so a file created meanwhile is never lost.
        const int moved = replaceExisting ? rename(temporaryPath.c_str(), destinationPath.c_str())
                                          : link(temporaryPath.c_str(), destinationPath.c_str());
        if (moved != 0)
            failure = errno == EEXIST ? destinationPath + " already exists"
                                      : "cannot write " + destinationPath + ": " + systemError();
        else if (replaceExisting)
            temporaryPath.clear();
    }
    discard();
    return failure;
}

void PendingFile::discard()
{
    if (fileDescriptor >= 0)
        close(fileDescriptor);
    fileDescriptor = -1;
    if (!temporaryPath.empty())
        unlink(temporaryPath.c_str());
    temporaryPath.clear();
}
