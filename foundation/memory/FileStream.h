#pragma once

#include "foundation/memory/Stream.h"

#include <cstdio>

namespace q1framework
{

class String;

// A stream over a file through C stdio.
//
// Open flags, a bit set: forReading alone opens an existing file read-only ("rb");
// forWriting creates or truncates the file for writing ("wb"); both together also create or
// truncate ("wb+") and then allow reading back what was written. Without either bit nothing opens.
//
// A stream whose file did not open reports size 0 and reads and writes 0 bytes; its position is 0
// and setPosition does nothing. The file is flushed and closed with the stream.
//
// Thread contract: one thread at a time.
class FileStream : public Stream
{
public:
    static constexpr int forReading = 1;
    static constexpr int forWriting = 2;

    FileStream(const String& path, int flags);
    ~FileStream() override;

    bool isOpen() const { return file != nullptr; }

    int64_t read(void* data, int64_t count) override;
    // 0 when the file is not open or the stream is read-only.
    int64_t write(const void* data, int64_t count) override;
    int64_t getPosition() override;
    // The file's size, measured by seeking to its end and back.
    int64_t getSize() override;
    // From the start of the file.
    void setPosition(int64_t position) override;

private:
    enum class LastOperation
    {
        none,
        reading,
        writing
    };

    // C stdio requires a seek between a write and a following read on the same file, and the
    // other way round; this makes that seek when the direction changes.
    void prepareFor(LastOperation operation);

    FILE* file = nullptr;
    LastOperation lastOperation = LastOperation::none;
};

}  // namespace q1framework
