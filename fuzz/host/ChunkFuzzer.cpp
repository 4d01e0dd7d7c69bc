// Feeds arbitrary bytes to Kelvane's effSetChunk through the adapter, as a host hands over a
// stored project. Whatever was loaded, the state then written must load back to the same bytes:
// saving, loading and saving again is stable.
#include "host/VST2Wrapper.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace q1framework;

namespace
{
VstIntPtr answerHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float)
{
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

std::vector<char> chunkOf(AEffect* effect)
{
    void* data = nullptr;
    const VstIntPtr size = effect->dispatcher(effect, effGetChunk, 0, 0, &data, 0.0f);
    if (data == nullptr || size <= 0)
        std::abort();
    return std::vector<char>(static_cast<const char*>(data), static_cast<const char*>(data) + size);
}

// One instance for the whole run, as a host keeps a plug-in while a user loads presets.
AEffect* effect()
{
    static AEffect* const instance = createEffectInstance(answerHost)->getAeffect();
    return instance;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    AEffect* const kelvane = effect();
    // A copy of exactly `size` bytes, so that a read past them is caught; an empty chunk still
    // comes with a pointer, as from a host.
    std::vector<char> bytes(data, data + size);
    char empty = 0;
    void* const chunk = size > 0 ? static_cast<void*>(bytes.data()) : &empty;
    if (kelvane->dispatcher(kelvane, effSetChunk, 0, static_cast<VstIntPtr>(size), chunk, 0.0f) != 0)
        std::abort();
    std::vector<char> saved = chunkOf(kelvane);
    kelvane->dispatcher(kelvane, effSetChunk, 0, static_cast<VstIntPtr>(saved.size()), saved.data(), 0.0f);
    if (chunkOf(kelvane) != saved)
        std::abort();
    return 0;
}
