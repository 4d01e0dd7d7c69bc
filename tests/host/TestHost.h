#pragma once

#include "host/VstAbi.h"

#include <string>
#include <vector>

// The host side for the tests: loads a plug-in's shared object with dlopen, calls its entry
// point with a host callback that records every call (and answers 0 to all but the version and
// the time info), and wraps the dispatcher. One TestHost at a
// time: the C callback reaches the live one through a static pointer.
class TestHost
{
public:
    struct Call
    {
        q1framework::VstInt32 opcode;
        q1framework::VstIntPtr value;
    };

    TestHost();
    // Closes the effect (effClose) if it is still open, then unloads the shared object.
    ~TestHost();

    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    // dlopen, then the entry point `entryName`; false with `failure` set when any step fails.
    bool load(const std::string& path, const char* entryName = "VSTPluginMain");

    q1framework::VstIntPtr dispatch(q1framework::VstInt32 opcode, q1framework::VstInt32 index = 0,
                                    q1framework::VstIntPtr value = 0, void* pointer = nullptr,
                                    float opt = 0.0f);
    // A text opcode (names, display, strings) read through a generous buffer pre-filled with
    // garbage, so an answer that writes nothing shows as "garbage".
    std::string text(q1framework::VstInt32 opcode, q1framework::VstInt32 index = 0);
    // effClose; the effect is gone afterwards.
    q1framework::VstIntPtr close();
    // Another effect from the loaded library, made through the entry point `entryName` with this
    // host's callback; null when the entry gives none. The caller closes it (effClose).
    q1framework::AEffect* anotherEffect(const char* entryName = "VSTPluginMain");

    // The callback, for effects made in the test program itself.
    static q1framework::audioMasterCallback callback();

    q1framework::AEffect* effect = nullptr;
    void* library = nullptr;
    std::string failure;
    std::vector<Call> calls;               // every host call, in order
    q1framework::VstIntPtr versionAnswer;  // answer to audioMasterVersion, kVstVersion at first
    bool giveTimeInfo = true;              // whether audioMasterGetTime answers timeInfo
    q1framework::VstTimeInfo timeInfo{};
};

// What the tests do to a loaded effect through its AEffect record alone, as a host does.
namespace EffectCalls
{
// Kelvane's parameter indices, as a host sees them.
enum KelvaneParameter : q1framework::VstInt32
{
    attack,
    release,
    bypass,
    gain,
    attackTime,
    releaseTime,
    drive
};

// One block of processReplacing in place on two channels of equal length.
void processStereo(q1framework::AEffect* effect, std::vector<float>& left, std::vector<float>& right);
// The state chunk (effGetChunk), copied out of the effect's memory.
std::string getChunk(q1framework::AEffect* effect);
// effSetChunk with a copy of `bytes`; answers the effect's answer.
q1framework::VstIntPtr setChunk(q1framework::AEffect* effect, std::string bytes);
// Every parameter's value, by index.
std::vector<float> parameters(q1framework::AEffect* effect);
}  // namespace EffectCalls
