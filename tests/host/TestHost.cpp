#include "TestHost.h"

#include <dlfcn.h>

#include <cstring>

using namespace q1framework;

namespace
{
TestHost* liveHost = nullptr;

VstIntPtr recordCall(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr value, void*, float)
{
    if (liveHost == nullptr)
        return 0;
    liveHost->calls.push_back({opcode, value});
    if (opcode == audioMasterVersion)
        return liveHost->versionAnswer;
    if (opcode == audioMasterGetTime && liveHost->giveTimeInfo)
        return reinterpret_cast<VstIntPtr>(&liveHost->timeInfo);
    return 0;
}
}

TestHost::TestHost() : versionAnswer(kVstVersion)
{
    liveHost = this;
    timeInfo.sampleRate = 44100.0;
    timeInfo.tempo = 120.0;
}

TestHost::~TestHost()
{
    close();
    if (library != nullptr)
        dlclose(library);
    liveHost = nullptr;
}

bool TestHost::load(const std::string& path, const char* entryName)
{
    library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = library != nullptr ? dlsym(library, entryName) : nullptr;
    effect = symbol != nullptr ? reinterpret_cast<VstPluginEntryProc>(symbol)(recordCall) : nullptr;
    failure = library == nullptr  ? dlerror()
              : symbol == nullptr ? "no entry point"
              : effect == nullptr ? "no effect"
                                  : "";
    return effect != nullptr;
}

VstIntPtr TestHost::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float opt)
{
    return effect->dispatcher(effect, opcode, index, value, pointer, opt);
}

std::string TestHost::text(VstInt32 opcode, VstInt32 index)
{
    char buffer[256];
    std::memset(buffer, 0, sizeof buffer);
    std::strcpy(buffer, "garbage");
    dispatch(opcode, index, 0, buffer);
    return std::string(buffer, strnlen(buffer, sizeof buffer));
}

VstIntPtr TestHost::close()
{
    if (effect == nullptr)
        return 0;
    const VstIntPtr answer = dispatch(effClose);
    effect = nullptr;
    return answer;
}

AEffect* TestHost::anotherEffect(const char* entryName)
{
    const auto entry = reinterpret_cast<VstPluginEntryProc>(dlsym(library, entryName));
    return entry != nullptr ? entry(recordCall) : nullptr;
}

audioMasterCallback TestHost::callback()
{
    return recordCall;
}

namespace EffectCalls
{
void processStereo(AEffect* effect, std::vector<float>& left, std::vector<float>& right)
{
    float* channels[2] = {left.data(), right.data()};
    effect->processReplacing(effect, channels, channels, static_cast<VstInt32>(left.size()));
}

std::string getChunk(AEffect* effect)
{
    void* data = nullptr;
    const VstIntPtr size = effect->dispatcher(effect, effGetChunk, 0, 0, &data, 0.0f);
    return data != nullptr && size > 0 ? std::string(static_cast<const char*>(data), static_cast<std::size_t>(size)) : "";
}

VstIntPtr setChunk(AEffect* effect, std::string bytes)
{
    return effect->dispatcher(effect, effSetChunk, 0, static_cast<VstIntPtr>(bytes.size()), bytes.data(), 0.0f);
}

std::vector<float> parameters(AEffect* effect)
{
    std::vector<float> values;
    for (VstInt32 index = 0; index < effect->numParams; ++index)
        values.push_back(effect->getParameter(effect, index));
    return values;
}
}  // namespace EffectCalls

