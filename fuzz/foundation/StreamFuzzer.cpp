// Reads arbitrary bytes through every typed Stream helper and MemoryBlock::readFrom, over a
// MemoryStream and over a FileStream on a temporary file holding the same bytes.
//
// The input is its own reading program: each step reads an operation byte, then performs that
// read. Both streams must report exactly the same values. Every value read is then written back
// with the matching write helper, and reading that echo must give the same values again.
#include "foundation/memory/FileStream.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

using q1framework::FileStream;
using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Stream;
using q1framework::String;

namespace
{
void check(bool condition)
{
    if (!condition)
        std::abort();
}

enum Operation
{
    readByte,
    readBool,
    readInt16,
    readInt32,
    readInt64,
    readFloat,
    readDouble,
    readString,
    readBlock,
    skipWithin,
    seekWithin,
    remaining,
    operationCount
};

struct Reading
{
    int operation;
    uint64_t value;      // the value's bits, a success flag or a position
    std::string bytes;   // text or block contents

    bool operator==(const Reading& other) const
    {
        return operation == other.operation && value == other.value && bytes == other.bytes;
    }

    // Whether the echo reproduces this reading: values read from the bytes, not positions, and
    // blocks only when their length was honest.
    bool isEchoed() const { return operation <= readBlock && (operation != readBlock || value == 1); }
};

template <typename Floating>
uint64_t bitsOf(Floating value)
{
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    return bits;
}

Reading readOne(Stream& stream, int operation, int64_t size)
{
    Reading reading{operation, 0, {}};
    switch (operation)
    {
        case readByte: reading.value = stream.readByte(); break;
        case readBool: reading.value = stream.readBool(); break;
        case readInt16: reading.value = static_cast<uint16_t>(stream.readInt16()); break;
        case readInt32: reading.value = static_cast<uint32_t>(stream.readInt32()); break;
        case readInt64: reading.value = static_cast<uint64_t>(stream.readInt64()); break;
        case readFloat: reading.value = bitsOf(stream.readFloat()); break;
        case readDouble: reading.value = bitsOf(stream.readDouble()); break;
        case readString:
        {
            const String text = stream.readString();
            check(static_cast<int64_t>(text.getBytesCount()) <= size);
            reading.bytes = text.getCString();
            break;
        }
        case readBlock:
        {
            MemoryBlock block(3);
            reading.value = block.readFrom(stream);
            check(block.getSize() <= size);
            reading.bytes.assign(static_cast<const char*>(block.getData()), static_cast<size_t>(block.getSize()));
            break;
        }
        case skipWithin:
        {
            // Only moves that stay inside the stream: there the two stream kinds agree.
            const int64_t delta = static_cast<int8_t>(stream.readByte());
            const int64_t target = stream.getPosition() + delta;
            if (target >= 0 && target <= stream.getSize())
                stream.skip(delta);
            reading.value = static_cast<uint64_t>(stream.getPosition());
            break;
        }
        case seekWithin:
            stream.setPosition(static_cast<uint16_t>(stream.readInt16()) % (size + 1));
            reading.value = static_cast<uint64_t>(stream.getPosition());
            break;
        default:
            reading.value = static_cast<uint64_t>(stream.getRemainingBytes());
            check(stream.isEndOfStream() == (reading.value == 0));
            break;
    }
    return reading;
}

// Runs the reading program in the stream's bytes. Backward moves can revisit bytes, so the number
// of steps is bounded.
std::vector<Reading> readProgram(Stream& stream)
{
    const int64_t size = stream.getSize();
    std::vector<Reading> readings;
    for (int64_t step = 0; step < 2 * size + 8 && !stream.isEndOfStream(); ++step)
        readings.push_back(readOne(stream, stream.readByte() % operationCount, size));
    return readings;
}

void writeEcho(Stream& echo, const Reading& reading)
{
    echo.writeByte(reading.operation);
    switch (reading.operation)
    {
        case readByte: echo.writeByte(static_cast<int>(reading.value)); break;
        case readBool: echo.writeBool(reading.value != 0); break;
        case readInt16: echo.writeInt16(static_cast<int16_t>(reading.value)); break;
        case readInt32: echo.writeInt32(static_cast<int32_t>(reading.value)); break;
        case readInt64: echo.writeInt64(static_cast<int64_t>(reading.value)); break;
        case readFloat:
        {
            float value;
            const auto bits = static_cast<uint32_t>(reading.value);
            std::memcpy(&value, &bits, sizeof value);
            echo.writeFloat(value);
            break;
        }
        case readDouble:
        {
            double value;
            std::memcpy(&value, &reading.value, sizeof value);
            echo.writeDouble(value);
            break;
        }
        case readString: echo.writeString(String(reading.bytes.c_str())); break;
        default:
            MemoryBlock(reading.bytes.data(), static_cast<int64_t>(reading.bytes.size()), false).writeTo(echo);
            break;
    }
}

// One temporary file for the whole run, rewritten for every input.
const std::string& temporaryPath()
{
    static const std::string path = [] {
        const char* folder = std::getenv("TMPDIR");
        std::string pattern = std::string(folder != nullptr ? folder : "/tmp") + "/q1-stream-fuzzer-XXXXXX";
        const int descriptor = mkstemp(pattern.data());
        check(descriptor >= 0);
        close(descriptor);
        std::atexit([] { std::remove(temporaryPath().c_str()); });
        return pattern;
    }();
    return path;
}

std::string contentsOf(const MemoryBlock& block)
{
    return std::string(static_cast<const char*>(block.getData()), static_cast<size_t>(block.getSize()));
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto inputSize = static_cast<int64_t>(size);

    // Over memory that the stream does not own: read-only.
    MemoryStream memory(MemoryBlock(data, inputSize, false));
    check(!memory.isWritable());
    const std::vector<Reading> readings = readProgram(memory);
    check(contentsOf(MemoryBlock::loadFromStream(memory)) == input);

    // The same bytes through a file, written by a FileStream.
    const String path(temporaryPath().c_str());
    {
        FileStream output(path, FileStream::forWriting);
        check(output.write(data, inputSize) == inputSize || size == 0);
    }
    {
        FileStream file(path, FileStream::forReading);
        check(file.getSize() == inputSize);
        check(readProgram(file) == readings);
    }
    check(contentsOf(MemoryBlock::loadFromFile(path)) == input);
    check(std::strcmp(String::loadFromFile(path).getCString(), input.c_str()) == 0);

    // What was read, written back in the wire forms, reads back the same.
    MemoryStream echo;
    std::vector<Reading> echoed;
    for (const Reading& reading : readings)
    {
        if (reading.isEchoed())
        {
            writeEcho(echo, reading);
            echoed.push_back(reading);
        }
    }
    echo.setPosition(0);
    check(readProgram(echo) == echoed);
    return 0;
}
