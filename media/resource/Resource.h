#pragma once

#include "foundation/string/String.h"

#include <cstdint>

namespace q1framework
{

class Image;
class MemoryBlock;
class Sample;
class Stream;

// One named, typed entry of a ResourcePack, owning its payload: text (a String), a picture (an
// Image handle), binary data (a MemoryBlock handle) or a sound (a Sample).
//
// Entry form in a pack: the magic "Q1RES00" and the name as strings, the type code (32-bit),
// then the payload: a string; an image container; a 64-bit length and the bytes; a sample record.
//
// Thread contract: main thread only.
class Resource
{
public:
    enum Type
    {
        textType = 0,
        imageType = 1,
        binaryType = 2,
        soundType = 3
    };

    // How an entry read went.
    enum class ReadResult
    {
        intact,          // every field and the whole payload read
        damagedPayload,  // the entry's frame is sound but its payload or name did not read whole
        rejected         // another magic or an unknown type code: nothing behind it is reachable
    };

    // An entry without payload, of type text.
    explicit Resource(const String& name);
    // Entries holding a heap copy of the value (images and blocks shared by handle).
    Resource(const String& name, const String& text);
    Resource(const String& name, const Image& image);
    Resource(const String& name, const MemoryBlock& block);
    Resource(const String& name, const Sample& sound);
    ~Resource();

    Resource(const Resource&) = delete;
    Resource& operator=(const Resource&) = delete;

    const String& getName() const { return name; }
    void setName(const String& newName) { name = newName; }
    int32_t getType() const { return type; }
    // The payload when it has that type, otherwise null.
    const String* getText() const;
    const Image* getImage() const;
    const MemoryBlock* getMemoryBlock() const;
    const Sample* getSample() const;

    // Reads one entry over this one: false for another magic or an unknown type code (the code is
    // kept). A payload that fails to read is not reported.
    bool readEntry(Stream& stream) { return readEntryChecked(stream) != ReadResult::rejected; }
    // The same, telling a damaged payload apart, for tools that check a pack.
    ReadResult readEntryChecked(Stream& stream);
    // False when the entry has no payload or the stream did not take every byte.
    bool writeEntry(Stream& stream) const;

private:
    void destroyPayload();

    String name;
    void* payload = nullptr;  // owned; the type code names its class
    int32_t type = textType;
};

}  // namespace q1framework
