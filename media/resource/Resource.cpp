#include "media/resource/Resource.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/Stream.h"
#include "media/image/Image.h"
#include "media/sample/Sample.h"

namespace q1framework
{

namespace
{
const char* const entryMagic = "Q1RES00";

// Bytes of text in the string wire form: length field, bytes, NUL.
int64_t stringBytes(const String& text)
{
    return 4 + static_cast<int64_t>(text.getBytesCount()) + 1;
}

// A string that must arrive whole: its length field must match the text behind it.
bool readWholeString(Stream& stream, String& text)
{
    const int64_t start = stream.getPosition();
    text = stream.readString();
    return stream.getPosition() - start == stringBytes(text);
}

bool writeWholeString(Stream& stream, const String& text)
{
    const int64_t start = stream.getPosition();
    stream.writeString(text);
    return stream.getPosition() - start == stringBytes(text);
}
}

Resource::Resource(const String& resourceName) : name(resourceName) {}

Resource::Resource(const String& resourceName, const String& text)
    : name(resourceName), payload(new String(text)), type(textType)
{
}

Resource::Resource(const String& resourceName, const Image& image)
    : name(resourceName), payload(new Image(image)), type(imageType)
{
}

Resource::Resource(const String& resourceName, const MemoryBlock& block)
    : name(resourceName), payload(new MemoryBlock(block)), type(binaryType)
{
}

Resource::Resource(const String& resourceName, const Sample& sound)
    : name(resourceName), payload(new Sample(sound)), type(soundType)
{
}

Resource::~Resource()
{
    destroyPayload();
}

void Resource::destroyPayload()
{
    switch (type)
    {
        case textType: delete static_cast<String*>(payload); break;
        case imageType: delete static_cast<Image*>(payload); break;
        case binaryType: delete static_cast<MemoryBlock*>(payload); break;
        case soundType: delete static_cast<Sample*>(payload); break;
        default: break;  // an unknown code never has a payload
    }
    payload = nullptr;
}

const String* Resource::getText() const
{
    return type == textType ? static_cast<const String*>(payload) : nullptr;
}

const Image* Resource::getImage() const
{
    return type == imageType ? static_cast<const Image*>(payload) : nullptr;
}

const MemoryBlock* Resource::getMemoryBlock() const
{
    return type == binaryType ? static_cast<const MemoryBlock*>(payload) : nullptr;
}

const Sample* Resource::getSample() const
{
    return type == soundType ? static_cast<const Sample*>(payload) : nullptr;
}

Resource::ReadResult Resource::readEntryChecked(Stream& stream)
{
    if (stream.readString() != entryMagic)
        return ReadResult::rejected;
    destroyPayload();
    bool intact = readWholeString(stream, name);
    type = stream.readInt32();
    switch (type)
    {
        case textType:
        {
            auto* text = new String;
            payload = text;
            intact = readWholeString(stream, *text) && intact;
            break;
        }
        case imageType:
        {
            auto* image = new Image;
            payload = image;
            intact = image->readFrom(stream) && intact;
            break;
        }
        case binaryType:
        {
            auto* block = new MemoryBlock(0);
            payload = block;
            intact = block->readFrom(stream) && intact;
            break;
        }
        case soundType:
        {
            Sample* sound = Sample::read(stream);
            intact = sound != nullptr && intact;
            payload = sound != nullptr ? sound : new Sample;
            break;
        }
        default: return ReadResult::rejected;
    }
    return intact ? ReadResult::intact : ReadResult::damagedPayload;
}

bool Resource::writeEntry(Stream& stream) const
{
    if (payload == nullptr || !writeWholeString(stream, entryMagic) || !writeWholeString(stream, name))
        return false;
    const int64_t typeStart = stream.getPosition();
    stream.writeInt32(type);
    if (stream.getPosition() - typeStart != 4)
        return false;
    switch (type)
    {
        case textType: return writeWholeString(stream, *static_cast<const String*>(payload));
        case imageType: return static_cast<const Image*>(payload)->writeTo(stream);
        case binaryType: return static_cast<const MemoryBlock*>(payload)->writeTo(stream);
        case soundType: return static_cast<const Sample*>(payload)->write(stream);
        default: return false;
    }
}

}  // namespace q1framework
