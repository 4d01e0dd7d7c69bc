// VST2Wrapper: the state chunk that the host stores with its project.

#include "foundation/memory/MemoryBlock.h"
#include "host/VST2Wrapper.h"

namespace q1framework
{

VstInt32 VST2Wrapper::getChunk(void** data, bool)
{
    chunkStream.clear();
    plugin->getState(chunkStream);
    *data = chunkStream.getData();
    return static_cast<VstInt32>(chunkStream.getSize());
}

VstInt32 VST2Wrapper::setChunk(void* data, VstInt32 size, bool)
{
    // A copy: the host may free or reuse its bytes as soon as the call returns.
    const MemoryBlock block(data, size, true);
    MemoryStream stream(block);
    plugin->setState(stream);
    return 0;
}

}  // namespace q1framework
