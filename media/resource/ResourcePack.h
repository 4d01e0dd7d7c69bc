#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

class Image;
class MemoryBlock;
class Resource;
class Sample;
class Stream;

// The assets of a plug-in in one file ("resources.bin" in the bundle's resource folder), and the
// editing model of that file: a flat, ordered list of named, typed entries (see Resource), with no
// directory, no offsets and no compression.
//
// File: the magic "Q1RESPK00" as a string, a 32-bit entry count, then the entries one after
// another. Everything is little-endian.
//
// The program only reads a pack and looks entries up by name; the editing operations serve the
// tool that makes it. Names are unique by convention (makeUniqueName), not by enforcement: only
// addFromFile refuses a name that exists. Lookups compare names case-sensitively, first match
// from the front. The pack owns its entries; images and blocks handed out share the entry's.
//
// Thread contract: main thread only.
class ResourcePack
{
public:
    // Told after every change (add, remove, rename, clear), in the order of registration.
    class Listener
    {
    public:
        virtual void resourcePackChanged(ResourcePack* pack) { (void) pack; }
        virtual ~Listener() = default;
    };

    // The platform's resource location: the full path of a file named name in the folder that
    // holds the loaded plug-in's resources. Media does not depend on the platform layer, so the
    // layer that sets the program up registers its operation here.
    using ResourcePathFunction = String (*)(const String& name);
    // Main thread, before the first loadResourcePack; null unregisters.
    static void setResourcePathFunction(ResourcePathFunction function);

    // The pack in the resource folder's file fileName. Null when no resource path operation is
    // registered, or when the file does not open or is empty. Otherwise the pack whatever read
    // reported: a damaged file gives the entries before the damage. The caller owns the pack.
    static ResourcePack* loadResourcePack(const String& fileName);

    // The sound of a WAV stream as a pack keeps it: 8, 16 and 24-bit integer samples and 32-bit
    // float samples as the file stores them, 32-bit integer samples converted to float (so a
    // 32-bit sound is always float), margin 0. Null when the stream holds no WAV audio.
    static Sample* readSound(Stream& stream);

    ResourcePack() = default;
    ~ResourcePack();

    ResourcePack(const ResourcePack&) = delete;
    ResourcePack& operator=(const ResourcePack&) = delete;

    // Reads a pack, replacing the entries. Another magic: true, nothing read, entries unchanged
    // (a file of another kind is an empty pack). A count of 0 or below: true, no entries. An entry
    // with another magic or an unknown type code: false, the entries before it kept. Payloads that
    // fail to read are not detected. Listeners are not told.
    bool read(Stream& stream);
    // Magic, count and every entry in order; false at the first entry that fails.
    bool write(Stream& stream) const;

    // The entry's value when an entry of that name has the matching type; otherwise an empty
    // String, the null Image, an empty MemoryBlock, an empty Sample.
    String getString(const String& name) const;
    Image getImage(const String& name) const;
    MemoryBlock getMemoryBlock(const String& name) const;
    Sample getSample(const String& name) const;

    // The first entry of that name, null if none.
    Resource* find(const String& name) const;
    // The index of the first entry of that name, -1 if none.
    int getIndex(const String& name) const;
    // The names of all entries of that type code, in order; -1 gives every name.
    Array<String> getNames(int type) const;
    bool exists(const String& name) const { return getIndex(name) >= 0; }
    // base if no entry has that name, else base followed by 1, 2, 3, ... whichever is free first.
    String makeUniqueName(const String& base) const;

    int getNumResources() const { return entries.getCount(); }
    // The entry at index, null out of range.
    Resource* getResource(int index) const;

    // Adds the file at path under name: as a picture if it decodes as one, else as a sound if it
    // is a WAV file (see readSound), else as binary data if it has at least one byte. False if the
    // name exists already or nothing was added.
    bool addFromFile(const String& name, const String& path);
    // Append an entry with a copy of the value, then tell the listeners. No check of the name.
    void addString(const String& name, const String& text);
    void addImage(const String& name, const Image& image);
    void addSample(const String& name, const Sample& sound);
    void addMemoryBlock(const String& name, const MemoryBlock& block);
    // Removes and destroys the first entry of that name; false if none.
    bool remove(const String& name);
    // Renames the entry at index without any check; nothing for an index out of range.
    void rename(int index, const String& name);
    // Destroys every entry.
    void clear();

    // Adding a listener twice is refused.
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

private:
    void append(Resource* resource);
    void destroyEntries();
    void notifyListeners();

    Array<Resource*> entries;    // owned
    Array<Listener*> listeners;  // not owned
};

}  // namespace q1framework
