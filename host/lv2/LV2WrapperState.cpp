// LV2Wrapper: the plug-in's state document in the host's state, through the state extension.

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "host/lv2/LV2Features.h"
#include "host/lv2/LV2Wrapper.h"
#include "plugin/AudioPlugin.h"

#include <lv2/atom/atom.h>

namespace q1framework
{

bool LV2Wrapper::mapStateUrids(const LV2_Feature* const* features)
{
    if (stateKey != 0 && chunkType != 0)
        return true;
    const auto* map = static_cast<const LV2_URID_Map*>(LV2Features::findData(features, LV2_URID__map));
    if (map == nullptr || map->map == nullptr)
        return false;
    stateKey = map->map(map->handle, stateKeyUri.c_str());
    chunkType = map->map(map->handle, LV2_ATOM__Chunk);
    return stateKey != 0 && chunkType != 0;
}

LV2_State_Status LV2Wrapper::save(LV2_State_Store_Function store, LV2_State_Handle handle,
                                  const LV2_Feature* const* features)
{
    if (store == nullptr)
        return LV2_STATE_ERR_UNKNOWN;
    if (!mapStateUrids(features))
        return LV2_STATE_ERR_NO_FEATURE;
    MemoryStream stream;
    plugin->getState(stream);
    // The document's bytes are the same on every machine (little-endian integers, UTF-8 text).
    return store(handle, stateKey, stream.getData(), static_cast<size_t>(stream.getSize()), chunkType,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

LV2_State_Status LV2Wrapper::restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                                     const LV2_Feature* const* features)
{
    if (retrieve == nullptr)
        return LV2_STATE_ERR_UNKNOWN;
    if (!mapStateUrids(features))
        return LV2_STATE_ERR_NO_FEATURE;
    size_t size = 0;
    uint32_t type = 0;
    uint32_t flags = 0;
    const void* value = retrieve(handle, stateKey, &size, &type, &flags);
    if (value == nullptr)
        return LV2_STATE_SUCCESS;
    if (type != chunkType)
        return LV2_STATE_ERR_BAD_TYPE;
    // The host's bytes stay valid until this call returns, and setState reads them within it.
    const MemoryBlock block(value, static_cast<int64_t>(size), false);
    MemoryStream stream(block);
    plugin->setState(stream);
    return LV2_STATE_SUCCESS;
}

}  // namespace q1framework
