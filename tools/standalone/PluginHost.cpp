#include "PluginHost.h"

#include <dlfcn.h>

#include <cstring>
#include <string>

using namespace q1framework;

namespace
{
// The one live host, for the callback; the program has one plug-in.
PluginHost* liveHost = nullptr;

constexpr char chunkMagic[] = "VC2!";
constexpr std::size_t chunkHeader = 8;

// Replaces the value of attribute name="..." in document; false when it has none.
bool replaceAttribute(std::string& document, const std::string& name, int value)
{
    const std::string opening = " " + name + "=\"";
    const std::size_t start = document.find(opening);
    if (start == std::string::npos)
        return false;
    const std::size_t valueStart = start + opening.size();
    const std::size_t valueEnd = document.find('"', valueStart);
    if (valueEnd == std::string::npos)
        return false;
    document.replace(valueStart, valueEnd - valueStart, std::to_string(value));
    return true;
}
}  // namespace

std::unique_ptr<PluginHost> PluginHost::load(const std::string& path, std::string& error)
{
    std::unique_ptr<PluginHost> host(new PluginHost());
    host->library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (host->library == nullptr)
    {
        error = "cannot load " + path + ": " + dlerror();
        return nullptr;
    }
    const auto entry = reinterpret_cast<VstPluginEntryProc>(dlsym(host->library, "VSTPluginMain"));
    if (entry == nullptr)
    {
        error = path + " is no VST 2.4 plug-in: it has no entry point VSTPluginMain";
        return nullptr;
    }
    liveHost = host.get();
    host->effect = entry(&PluginHost::callback);
    if (host->effect == nullptr || host->effect->magic != kEffectMagic)
    {
        host->effect = nullptr;
        error = path + " gave no effect";
        return nullptr;
    }
    if (host->effect->numInputs != 2 || host->effect->numOutputs != 2
        || (host->effect->flags & effFlagsCanReplacing) == 0)
    {
        error = path + " is not a stereo effect with replacing processing";
        return nullptr;
    }
    host->dispatch(effOpen);
    return host;
}

PluginHost::~PluginHost()
{
    if (effect != nullptr)
    {
        closeEditor();
        if (processing)
        {
            dispatch(effStopProcess);
            dispatch(effMainsChanged, 0, 0);
        }
        dispatch(effClose);
    }
    if (library != nullptr)
        dlclose(library);
    if (liveHost == this)
        liveHost = nullptr;
}

VstIntPtr PluginHost::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float opt)
{
    return effect->dispatcher(effect, opcode, index, value, pointer, opt);
}

VstIntPtr PluginHost::callback(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float)
{
    PluginHost* host = liveHost;
    switch (opcode)
    {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetSampleRate:
        return host != nullptr ? static_cast<VstIntPtr>(host->rate) : 0;
    case audioMasterSizeWindow:
        // The editor's own thread (the main thread, inside idle) asks; the window follows.
        return host != nullptr && host->sizeWindowHandler && host->sizeWindowHandler(index, static_cast<int>(value))
                   ? 1
                   : 0;
    case audioMasterCanDo:
        return pointer != nullptr && std::strcmp(static_cast<const char*>(pointer), "sizeWindow") == 0 ? 1 : 0;
    case audioMasterGetProductString:
        if (pointer != nullptr)
            std::strcpy(static_cast<char*>(pointer), "kelvane-standalone");
        return 1;
    default:
        // Automation and edit gestures are taken note of, and there is no transport.
        return 0;
    }
}

void PluginHost::prepare(double sampleRate, int blockSize)
{
    rate = sampleRate;
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
    dispatch(effSetBlockSize, 0, blockSize);
    dispatch(effMainsChanged, 0, 1);
    dispatch(effStartProcess);
    processing = true;
}

bool PluginHost::replaceEditorSize(std::vector<char>& chunk, int width, int height)
{
    if (chunk.size() < chunkHeader + 1 || std::memcmp(chunk.data(), chunkMagic, 4) != 0)
        return false;
    uint32_t length = 0;
    for (int byte = 3; byte >= 0; --byte)
        length = length << 8 | static_cast<uint8_t>(chunk[4 + static_cast<std::size_t>(byte)]);
    if (length == 0 || length > chunk.size() - chunkHeader)
        return false;
    // The text without its terminating zero.
    std::string document(chunk.data() + chunkHeader, strnlen(chunk.data() + chunkHeader, length));
    if (document.compare(0, 8, "<KELVANE") != 0 || !replaceAttribute(document, "uiWidthNew", width)
        || !replaceAttribute(document, "uiHeightNew", height))
        return false;
    const uint32_t newLength = static_cast<uint32_t>(document.size() + 1);
    chunk.assign(chunkMagic, chunkMagic + 4);
    for (int byte = 0; byte < 4; ++byte)
        chunk.push_back(static_cast<char>(newLength >> (8 * byte) & 0xff));
    chunk.insert(chunk.end(), document.begin(), document.end());
    chunk.push_back('\0');
    return true;
}

bool PluginHost::setEditorSize(int width, int height)
{
    void* data = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, 0, 0, &data);
    if (size <= 0 || data == nullptr)
        return false;
    std::vector<char> chunk(static_cast<const char*>(data), static_cast<const char*>(data) + size);
    if (!replaceEditorSize(chunk, width, height))
        return false;
    dispatch(effSetChunk, 0, static_cast<VstIntPtr>(chunk.size()), chunk.data());
    return true;
}

bool PluginHost::hasEditor() const
{
    return (effect->flags & effFlagsHasEditor) != 0;
}

bool PluginHost::openEditor(unsigned long window)
{
    editorOpen = dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(static_cast<uintptr_t>(window))) == 1;
    return editorOpen;
}

void PluginHost::getEditorSize(int& width, int& height)
{
    ERect* rect = nullptr;
    dispatch(effEditGetRect, 0, 0, &rect);
    width = rect != nullptr ? rect->right - rect->left : 0;
    height = rect != nullptr ? rect->bottom - rect->top : 0;
}

void PluginHost::idleEditor()
{
    if (editorOpen)
        dispatch(effEditIdle);
}

void PluginHost::closeEditor()
{
    if (!editorOpen)
        return;
    dispatch(effEditClose);
    editorOpen = false;
}

void PluginHost::setSizeWindowHandler(std::function<bool(int, int)> handler)
{
    sizeWindowHandler = std::move(handler);
}

void PluginHost::process(float** inputs, float** outputs, int frames)
{
    effect->processReplacing(effect, inputs, outputs, frames);
}
