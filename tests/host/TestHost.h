#pragma once

#include "host/VstAbi.h"

#include <string>
#include <vector>

// The host side for the tests: loads a plug-in's shared object with dlopen, calls its entry
// point with a host callback that records every call, and wraps the dispatcher. One TestHost at a
// time: the C callback reaches the live one through a static pointer.
class TestHost
{
public:
    struct Call
    {
        q1framework::VstInt32 opcode;
        q1framework::VstInt32 index;
        q1framework::VstIntPtr value;
        float opt;
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

    // The callback, for effects made in the test program itself.
    static q1framework::audioMasterCallback callback();

    q1framework::AEffect* effect = nullptr;
    void* library = nullptr;
    std::string failure;
    std::vector<Call> calls;               // every host call, in order
    q1framework::VstIntPtr versionAnswer;  // answer to audioMasterVersion, kVstVersion at first
    q1framework::VstIntPtr acceptAnswer = 1;  // answer to automate, edit, size and I/O calls
    bool giveTimeInfo = true;              // whether audioMasterGetTime answers timeInfo
    q1framework::VstTimeInfo timeInfo{};
};
