#include "foundation/memory/FileStream.h"

#include "foundation/string/String.h"

#include <sys/types.h>

namespace q1framework
{

FileStream::FileStream(const String& path, int flags)
{
    const char* mode = nullptr;
    switch (flags & (forReading | forWriting))
    {
        case forReading: mode = "rb"; break;
        case forWriting: mode = "wb"; break;
        case forReading | forWriting: mode = "wb+"; break;
        default: return;
    }
    file = std::fopen(path.getCString(), mode);
    // The mode decides: a stream for writing says so even when the file did not open, and then
    // writes nothing.
    writable = (flags & forWriting) != 0;
}

FileStream::~FileStream()
{
    if (file != nullptr)
    {
        std::fflush(file);
        std::fclose(file);
    }
}

void FileStream::prepareFor(LastOperation operation)
{
    if (lastOperation != LastOperation::none && lastOperation != operation)
        fseeko(file, 0, SEEK_CUR);
    lastOperation = operation;
}

int64_t FileStream::read(void* data, int64_t count)
{
    if (file == nullptr || count <= 0)
        return 0;
    prepareFor(LastOperation::reading);
    return static_cast<int64_t>(std::fread(data, 1, static_cast<size_t>(count), file));
}

int64_t FileStream::write(const void* data, int64_t count)
{
    if (file == nullptr || !writable || count <= 0)
        return 0;
    prepareFor(LastOperation::writing);
    return static_cast<int64_t>(std::fwrite(data, 1, static_cast<size_t>(count), file));
}

int64_t FileStream::getPosition()
{
    return file != nullptr ? static_cast<int64_t>(ftello(file)) : 0;
}

int64_t FileStream::getSize()
{
    if (file == nullptr)
        return 0;
    const int64_t position = getPosition();
    fseeko(file, 0, SEEK_END);
    const int64_t size = static_cast<int64_t>(ftello(file));
    fseeko(file, static_cast<off_t>(position), SEEK_SET);
    lastOperation = LastOperation::none;
    return size;
}

void FileStream::setPosition(int64_t position)
{
    if (file == nullptr)
        return;
    fseeko(file, static_cast<off_t>(position), SEEK_SET);
    lastOperation = LastOperation::none;
}

}  // namespace q1framework
