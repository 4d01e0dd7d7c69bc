#include "VstPlugin.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cmath>
#include <cstring>
#include <strings.h>

using namespace q1framework;

namespace
{
constexpr char vendorName[] = "Morvenna Audio Technologies";
constexpr char productName[] = "kelvane-render";
constexpr VstIntPtr productVersion = 1000;  // 1.0.0.0
constexpr int beatsPerBar = 4;
constexpr double nanosecondsPerSecond = 1e9;

// Plug-ins often write longer texts than the interface's limits; this much room is safe.
constexpr std::size_t textBufferSize = 512;

// The host's capabilities that this program has.
constexpr const char* hostCanDo[] = {"sendVstTimeInfo", "sizeWindow", "startStopProcess"};

// The plug-in being created: its effect record is not known to the host callback before the
// entry point returns, yet the entry point and the effect's constructor may already call back.
thread_local VstPlugin* pluginBeingLoaded = nullptr;

void copyText(void* destination, const char* text, std::size_t capacity)
{
    std::strncpy(static_cast<char*>(destination), text, capacity - 1);
    static_cast<char*>(destination)[capacity - 1] = '\0';
}
}

std::unique_ptr<VstPlugin> VstPlugin::load(const std::string& path, std::string& error)
{
    struct stat status{};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
    {
        error = "no plug-in at " + path + "; pass the .so file of a VST 2.4 plug-in with --plugin";
        return nullptr;
    }
    std::unique_ptr<VstPlugin> plugin(new VstPlugin);
    plugin->library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (plugin->library == nullptr)
    {
        error = "cannot load plug-in " + path + ": " + dlerror();
        return nullptr;
    }
    void* entry = dlsym(plugin->library, "VSTPluginMain");
    if (entry == nullptr)
        entry = dlsym(plugin->library, "main");
    if (entry == nullptr)
    {
        error = path + " is not a VST 2.4 plug-in: it has no entry point VSTPluginMain or main";
        return nullptr;
    }
    pluginBeingLoaded = plugin.get();
    AEffect* const effect = reinterpret_cast<VstPluginEntryProc>(entry)(hostCallback);
    pluginBeingLoaded = nullptr;
    if (effect == nullptr)
    {
        error = "plug-in " + path + " returned no effect; it may not run in this host";
        return nullptr;
    }
    if (effect->magic != kEffectMagic)
    {
        error = "plug-in " + path + " returned something that is not a VST 2.4 effect";
        return nullptr;
    }
    plugin->effect = effect;
    effect->resvd1 = reinterpret_cast<VstIntPtr>(plugin.get());
    if ((effect->flags & effFlagsCanReplacing) == 0 || effect->processReplacing == nullptr
        || effect->numInputs < 0 || effect->numInputs > maximumChannels || effect->numOutputs < 1
        || effect->numOutputs > maximumChannels)
    {
        error = "plug-in " + path + " cannot be used here: it needs 32-bit replacing processing with 1 to "
                + std::to_string(maximumChannels) + " outputs";
        return nullptr;
    }
    plugin->dispatch(effOpen);
    return plugin;
}

VstPlugin::~VstPlugin()
{
    if (effect != nullptr)
    {
        stop();
        dispatch(effClose);
    }
    if (library != nullptr)
        dlclose(library);
}

int VstPlugin::parameterCount() const
{
    return effect->numParams > 0 ? effect->numParams : 0;
}

int VstPlugin::parameterIndex(const std::string& nameOrIndex)
{
    for (int index = 0; index < parameterCount(); ++index)
        if (strcasecmp(parameterName(index).c_str(), nameOrIndex.c_str()) == 0)
            return index;
    if (nameOrIndex.empty() || nameOrIndex.size() > 9
        || nameOrIndex.find_first_not_of("0123456789") != std::string::npos)
        return -1;
    const int index = std::stoi(nameOrIndex);
    return index < parameterCount() ? index : -1;
}

std::string VstPlugin::parameterName(int index)
{
    return text(effGetParamName, index);
}

std::string VstPlugin::parameterDisplay(int index)
{
    const std::string display = text(effGetParamDisplay, index);
    const std::string label = text(effGetParamLabel, index);
    return label.empty() ? display : display + " " + label;
}

float VstPlugin::parameter(int index)
{
    return effect->getParameter(effect, index);
}

void VstPlugin::setParameter(int index, float value)
{
    effect->setParameter(effect, index, value);
}

std::string VstPlugin::programName()
{
    return text(effGetProgramName, 0);
}

std::vector<char> VstPlugin::chunk()
{
    void* data = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, 1, 0, &data);
    if (data == nullptr || size <= 0)
        return {};
    const char* bytes = static_cast<const char*>(data);
    return std::vector<char>(bytes, bytes + size);
}

void VstPlugin::setChunk(std::vector<char> bytes)
{
    // The plug-in may keep reading the bytes only during the call; `bytes` is this call's copy.
    dispatch(effSetChunk, 1, static_cast<VstIntPtr>(bytes.size()), bytes.data());
}

void VstPlugin::prepare(double sampleRate, int blockSize)
{
    rate = sampleRate;
    maximumBlock = blockSize;
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
    dispatch(effSetBlockSize, 0, blockSize);
}

void VstPlugin::start()
{
    if (processing)
        return;
    position = 0;
    transportMoved = true;
    dispatch(effMainsChanged, 0, 1);
    dispatch(effStartProcess);
    processing = true;
}

void VstPlugin::stop()
{
    if (!processing)
        return;
    dispatch(effStopProcess);
    dispatch(effMainsChanged, 0, 0);
    processing = false;
}

void VstPlugin::process(float** inputs, float** outputs, int frames)
{
    updateTransport();
    effect->processReplacing(effect, inputs, outputs, frames);
    position += frames;
    transportMoved = false;
}

void VstPlugin::updateTransport()
{
    const double seconds = static_cast<double>(position) / rate;
    transport.samplePos = static_cast<double>(position);
    transport.sampleRate = rate;
    transport.nanoSeconds = seconds * nanosecondsPerSecond;
    transport.ppqPos = seconds * tempo / 60.0;
    transport.tempo = tempo;
    transport.barStartPos = std::floor(transport.ppqPos / beatsPerBar) * beatsPerBar;
    transport.timeSigNumerator = beatsPerBar;
    transport.timeSigDenominator = 4;
    transport.flags = kVstTransportPlaying | kVstNanosValid | kVstPpqPosValid | kVstTempoValid
                      | kVstBarsValid | kVstTimeSigValid | (transportMoved ? kVstTransportChanged : 0);
}

VstIntPtr VstPlugin::hostCallback(AEffect* effect, VstInt32 opcode, VstInt32, VstIntPtr, void* pointer, float)
{
    if (opcode == audioMasterVersion)
        return kVstVersion;
    VstPlugin* plugin = pluginBeingLoaded;
    if (effect != nullptr && effect->resvd1 != 0)
        plugin = reinterpret_cast<VstPlugin*>(effect->resvd1);
    return plugin != nullptr ? plugin->answer(opcode, pointer) : 0;
}

VstIntPtr VstPlugin::answer(VstInt32 opcode, void* pointer)
{
    switch (opcode)
    {
    case audioMasterGetTime:
        if (transport.sampleRate == 0.0)
            updateTransport();
        return reinterpret_cast<VstIntPtr>(&transport);
    case audioMasterAutomate:
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterSizeWindow:
    case audioMasterUpdateDisplay:
        return 1;
    case audioMasterGetSampleRate:
        return static_cast<VstIntPtr>(rate);
    case audioMasterGetBlockSize:
        return maximumBlock;
    case audioMasterGetCurrentProcessLevel:
        return processing ? kVstProcessLevelOffline : kVstProcessLevelUser;
    case audioMasterGetAutomationState:
        return kVstAutomationOff;
    case audioMasterGetLanguage:
        return kVstLangEnglish;
    case audioMasterGetVendorVersion:
        return productVersion;
    case audioMasterGetVendorString:
        if (pointer != nullptr)
            copyText(pointer, vendorName, kVstMaxVendorStrLen);
        return pointer != nullptr ? 1 : 0;
    case audioMasterGetProductString:
        if (pointer != nullptr)
            copyText(pointer, productName, kVstMaxProductStrLen);
        return pointer != nullptr ? 1 : 0;
    case audioMasterCanDo:
        if (pointer != nullptr)
            for (const char* capability : hostCanDo)
                if (std::strcmp(static_cast<const char*>(pointer), capability) == 0)
                    return 1;
        return 0;
    default:
        return 0;
    }
}

VstIntPtr VstPlugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float opt)
{
    return effect->dispatcher(effect, opcode, index, value, pointer, opt);
}

std::string VstPlugin::text(VstInt32 opcode, VstInt32 index)
{
    char buffer[textBufferSize] = {};
    dispatch(opcode, index, 0, buffer);
    buffer[textBufferSize - 1] = '\0';
    return buffer;
}
