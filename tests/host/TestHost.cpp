#include "TestHost.h"

#include <dlfcn.h>

#include <cstring>

using namespace q1framework;

namespace
{
TestHost* liveHost = nullptr;

VstIntPtr recordCall(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr value, void*, float opt)
{
    if (liveHost == nullptr)
        return 0;
    liveHost->calls.push_back({opcode, index, value, opt});
    switch (opcode)
    {
    case audioMasterVersion:
        return liveHost->versionAnswer;
    case audioMasterGetTime:
        return liveHost->giveTimeInfo ? reinterpret_cast<VstIntPtr>(&liveHost->timeInfo) : 0;
    case audioMasterAutomate:
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterSizeWindow:
    case audioMasterIOChanged:
        return liveHost->acceptAnswer;
    default:
        return 0;
    }
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
    if (library == nullptr)
    {
        failure = dlerror();
        return false;
    }
    void* const symbol = dlsym(library, entryName);
    if (symbol == nullptr)
    {
        failure = "no entry point";
        return false;
    }
    const auto entry = reinterpret_cast<VstPluginEntryProc>(symbol);
    effect = entry(recordCall);
    if (effect == nullptr)
    {
        failure = "no effect";
        return false;
    }
    return true;
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

audioMasterCallback TestHost::callback()
{
    return recordCall;
}
