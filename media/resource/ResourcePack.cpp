#include "media/resource/ResourcePack.h"

#include "foundation/memory/FileStream.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/Stream.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/sample/Sample.h"
#include "media/sample/WAVReader.h"

namespace q1framework
{

namespace
{
const char* const packMagic = "Q1RESPK00";

ResourcePack::ResourcePathFunction resourcePathFunction = nullptr;
}

void ResourcePack::setResourcePathFunction(ResourcePathFunction function)
{
    resourcePathFunction = function;
}

ResourcePack* ResourcePack::loadResourcePack(const String& fileName)
{
    if (resourcePathFunction == nullptr)
        return nullptr;
    FileStream file(resourcePathFunction(fileName), FileStream::forReading);
    if (!file.isOpen() || file.getSize() == 0)
        return nullptr;
    auto* pack = new ResourcePack;
    pack->read(file);
    return pack;
}

Sample* ResourcePack::readSound(Stream& stream)
{
    const int64_t start = stream.getPosition();
    bool nativeFormat;
    {
        WAVReader probe(&stream, false, false);
        // 32-bit integers would be indistinguishable from floats once stored.
        nativeFormat = probe.getFormat() != 4;
    }
    stream.setPosition(start);
    return Sample::loadWAV(&stream, nativeFormat, 0);
}

ResourcePack::~ResourcePack()
{
    destroyEntries();
}

void ResourcePack::destroyEntries()
{
    for (Resource* resource : entries)
        delete resource;
    entries.clear();
}

bool ResourcePack::read(Stream& stream)
{
    if (stream.readString() != packMagic)
        return true;
    // Entries of an earlier read go: nothing else owns them.
    destroyEntries();
    const int32_t count = stream.readInt32();
    for (int32_t index = 0; index < count; ++index)
    {
        auto* resource = new Resource("dummy");
        if (!resource->readEntry(stream))
        {
            delete resource;
            return false;
        }
        entries.add(resource);
    }
    return true;
}

bool ResourcePack::write(Stream& stream) const
{
    stream.writeString(packMagic);
    stream.writeInt32(entries.getCount());
    for (const Resource* resource : entries)
        if (!resource->writeEntry(stream))
            return false;
    return true;
}

String ResourcePack::getString(const String& name) const
{
    const Resource* resource = find(name);
    const String* text = resource != nullptr ? resource->getText() : nullptr;
    return text != nullptr ? *text : String();
}

Image ResourcePack::getImage(const String& name) const
{
    const Resource* resource = find(name);
    const Image* image = resource != nullptr ? resource->getImage() : nullptr;
    return image != nullptr ? *image : Image();
}

MemoryBlock ResourcePack::getMemoryBlock(const String& name) const
{
    const Resource* resource = find(name);
    const MemoryBlock* block = resource != nullptr ? resource->getMemoryBlock() : nullptr;
    return block != nullptr ? *block : MemoryBlock(0);
}

Sample ResourcePack::getSample(const String& name) const
{
    const Resource* resource = find(name);
    const Sample* sound = resource != nullptr ? resource->getSample() : nullptr;
    return sound != nullptr ? *sound : Sample();
}

Resource* ResourcePack::find(const String& name) const
{
    return getResource(getIndex(name));
}

int ResourcePack::getIndex(const String& name) const
{
    for (int index = 0; index < entries.getCount(); ++index)
        if (entries[index]->getName() == name)
            return index;
    return -1;
}

Array<String> ResourcePack::getNames(int type) const
{
    Array<String> names;
    for (const Resource* resource : entries)
        if (type == -1 || resource->getType() == type)
            names.add(resource->getName());
    return names;
}

String ResourcePack::makeUniqueName(const String& base) const
{
    String name = base;
    for (int suffix = 1; exists(name); ++suffix)
        name = base + String(suffix);
    return name;
}

Resource* ResourcePack::getResource(int index) const
{
    return index >= 0 && index < entries.getCount() ? entries[index] : nullptr;
}

bool ResourcePack::addFromFile(const String& name, const String& path)
{
    if (exists(name))
        return false;
    const Image image = Image::loadFromFile(path);
    if (!image.isEmpty())
    {
        addImage(name, image);
        return true;
    }
    {
        FileStream file(path, FileStream::forReading);
        if (Sample* sound = readSound(file))
        {
            addSample(name, *sound);
            delete sound;
            return true;
        }
    }
    const MemoryBlock contents = MemoryBlock::loadFromFile(path);
    if (contents.getSize() < 1)
        return false;
    addMemoryBlock(name, contents);
    return true;
}

void ResourcePack::append(Resource* resource)
{
    entries.add(resource);
    notifyListeners();
}

void ResourcePack::addString(const String& name, const String& text)
{
    append(new Resource(name, text));
}

void ResourcePack::addImage(const String& name, const Image& image)
{
    append(new Resource(name, image));
}

void ResourcePack::addSample(const String& name, const Sample& sound)
{
    append(new Resource(name, sound));
}

void ResourcePack::addMemoryBlock(const String& name, const MemoryBlock& block)
{
    append(new Resource(name, block));
}

bool ResourcePack::remove(const String& name)
{
    const int index = getIndex(name);
    if (index < 0)
        return false;
    delete entries[index];
    entries.removeAt(index);
    notifyListeners();
    return true;
}

void ResourcePack::rename(int index, const String& name)
{
    if (Resource* resource = getResource(index))
    {
        resource->setName(name);
        notifyListeners();
    }
}

void ResourcePack::clear()
{
    destroyEntries();
    notifyListeners();
}

void ResourcePack::addListener(Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere(listener);
}

void ResourcePack::removeListener(Listener* listener)
{
    listeners.removeFirstMatching(listener);
}

void ResourcePack::notifyListeners()
{
    // By index, re-checking the count: a listener may remove itself while being told.
    for (int index = 0; index < listeners.getCount(); ++index)
        listeners[index]->resourcePackChanged(this);
}

}  // namespace q1framework
