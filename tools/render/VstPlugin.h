#pragma once

#include "host/VstAbi.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// One VST 2.4 plug-in loaded into this program, and the host side it talks to: the shared object
// is opened with dlopen, its entry point (VSTPluginMain, or main in older plug-ins) is called with
// this class's host callback, and the effect is driven through its AEffect record. The callback
// answers what an offline host answers: version 2400, a transport at the rendered position
// (fixed tempo, 4/4), the sample rate and block size, the offline process level, its identity and
// can-dos; automation, edit gestures and window sizes are acknowledged, as there is no timeline
// or window to apply them to.
//
// All calls, process included, come from the thread that loaded the plug-in.
class VstPlugin
{
public:
    static constexpr double tempo = 120.0;  // beats per minute of the transport
    static constexpr int maximumChannels = 64;  // more inputs or outputs is taken as a broken record

    // Loads the plug-in at `path` and opens the effect (effOpen). Returns null with a one-line
    // reason in `error` when the file is missing or is no loadable shared object, has no entry
    // point, returns no effect, or returns one this host cannot drive (no 32-bit replacing process).
    static std::unique_ptr<VstPlugin> load(const std::string& path, std::string& error);

    // Stops processing if needed, closes the effect (effClose) and unloads the shared object.
    ~VstPlugin();

    VstPlugin(const VstPlugin&) = delete;
    VstPlugin& operator=(const VstPlugin&) = delete;

    q1framework::VstInt32 uniqueId() const { return effect->uniqueID; }
    q1framework::VstInt32 version() const { return effect->version; }
    int inputCount() const { return effect->numInputs; }
    int outputCount() const { return effect->numOutputs; }
    int parameterCount() const;
    bool savesChunks() const { return (effect->flags & q1framework::effFlagsProgramChunks) != 0; }

    // The index of the parameter called `nameOrIndex` (names compared without regard to case), or
    // of the one whose index it spells in decimal; -1 when there is none.
    int parameterIndex(const std::string& nameOrIndex);
    std::string parameterName(int index);
    std::string parameterDisplay(int index);  // the value as the plug-in shows it, with its unit
    float parameter(int index);
    void setParameter(int index, float value);
    std::string programName();

    // The plug-in's state chunk (effGetChunk for the current program), empty when it gives none.
    std::vector<char> chunk();
    void setChunk(std::vector<char> bytes);

    // Tells the rate in Hz and the largest block in frames (effSetSampleRate, effSetBlockSize).
    void prepare(double sampleRate, int blockSize);
    // Around a run of process calls: effMainsChanged and effStartProcess / effStopProcess. The
    // transport starts at sample 0 with each start.
    void start();
    void stop();
    // One block of at most the prepared block size: inputCount() and outputCount() channels.
    void process(float** inputs, float** outputs, int frames);

    // The transport the plug-in gets for the next block.
    const q1framework::VstTimeInfo& timeInfo() const { return transport; }

private:
    VstPlugin() = default;

    static q1framework::VstIntPtr hostCallback(q1framework::AEffect* effect, q1framework::VstInt32 opcode,
                                               q1framework::VstInt32 index, q1framework::VstIntPtr value,
                                               void* pointer, float opt);
    q1framework::VstIntPtr answer(q1framework::VstInt32 opcode, void* pointer);
    q1framework::VstIntPtr dispatch(q1framework::VstInt32 opcode, q1framework::VstInt32 index = 0,
                                    q1framework::VstIntPtr value = 0, void* pointer = nullptr,
                                    float opt = 0.0f);
    std::string text(q1framework::VstInt32 opcode, q1framework::VstInt32 index);
    void updateTransport();

    void* library = nullptr;
    q1framework::AEffect* effect = nullptr;
    double rate = 44100.0;
    int maximumBlock = 1024;
    bool processing = false;
    bool transportMoved = false;
    std::int64_t position = 0;  // frames processed since start()
    q1framework::VstTimeInfo transport{};
};
