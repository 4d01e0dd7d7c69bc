// Reads arbitrary bytes as a resource pack, looks every entry up by name, and writes the pack
// again. Unless the pack holds a null picture (whose container is read shorter than it is
// written), the written pack must read back whole with the same names and types.
#include "FuzzCheck.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/resource/ResourcePack.h"
#include "media/sample/Sample.h"

#include <cstdint>

using namespace q1framework;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    MemoryStream input(MemoryBlock(data, static_cast<int64_t>(size), false));
    ResourcePack pack;
    pack.read(input);

    bool hasNullPicture = false;
    for (int index = 0; index < pack.getNumResources(); ++index)
    {
        const Resource* entry = pack.getResource(index);
        const String& name = entry->getName();
        check(pack.find(name) != nullptr);
        pack.getString(name);
        pack.getMemoryBlock(name);
        pack.getSample(name);
        pack.getImage(name);
        // The entry's own picture: a name may stand twice, and the lookup finds only the first.
        const Image* image = entry->getImage();
        hasNullPicture = hasNullPicture || (image != nullptr && image->isNull());
    }

    MemoryStream output;
    check(pack.write(output));
    if (hasNullPicture)
        return 0;
    output.setPosition(0);
    ResourcePack again;
    check(again.read(output));
    check(again.getNumResources() == pack.getNumResources());
    for (int index = 0; index < pack.getNumResources(); ++index)
    {
        check(again.getResource(index)->getName() == pack.getResource(index)->getName());
        check(again.getResource(index)->getType() == pack.getResource(index)->getType());
    }
    return 0;
}
