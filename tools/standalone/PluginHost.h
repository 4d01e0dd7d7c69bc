#pragma once

#include "host/VstAbi.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// The host side of kelvane-standalone: one VST 2.4 plug-in loaded with dlopen and driven through
// its entry point and its AEffect record, as a host drives it. The editor opens in a window the
// program gives it and asks that window for sizes through the host callback.
//
// Threads, as in a host: the main thread loads, prepares, opens, idles and closes the editor; one
// audio thread calls process while the editor is open.
class PluginHost
{
public:
    // Loads the plug-in at path (VSTPluginMain) and opens the effect. Null with a one-line reason
    // in error when the file is no loadable shared object, has no entry point or gives no effect,
    // or gives one without two audio inputs and outputs.
    static std::unique_ptr<PluginHost> load(const std::string& path, std::string& error);
    // Closes the editor if it is open, stops processing and closes the effect, then unloads it.
    ~PluginHost();

    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    // Main thread. The rate in Hz and the largest block in frames, then processing starts.
    void prepare(double sampleRate, int blockSize);
    // Main thread. Keeps width by height as the editor's size in the plug-in's state: the state
    // chunk's document carries it in the attributes uiWidthNew and uiHeightNew. False when the
    // plug-in's chunk has no such attributes.
    bool setEditorSize(int width, int height);
    // The chunk with the editor's size replaced; false when it holds no Kelvane document. The
    // chunk: "VC2!", a 32-bit little-endian length, then that many bytes of XML text ending in 0.
    static bool replaceEditorSize(std::vector<char>& chunk, int width, int height);

    // Main thread. Whether the plug-in announces an editor; opening it in the X window; the
    // editor's rectangle (width, height); the host's idle call; closing it.
    bool hasEditor() const;
    bool openEditor(unsigned long window);
    void getEditorSize(int& width, int& height);
    void idleEditor();
    void closeEditor();
    // Main thread. Who resizes the window when the editor asks for a size; answers whether it did.
    void setSizeWindowHandler(std::function<bool(int width, int height)> handler);

    // Audio thread. One block of frames, two channels in and two out.
    void process(float** inputs, float** outputs, int frames);

private:
    PluginHost() = default;
    static q1framework::VstIntPtr callback(q1framework::AEffect* effect, q1framework::VstInt32 opcode,
                                           q1framework::VstInt32 index, q1framework::VstIntPtr value, void* pointer,
                                           float opt);
    q1framework::VstIntPtr dispatch(q1framework::VstInt32 opcode, q1framework::VstInt32 index = 0,
                                    q1framework::VstIntPtr value = 0, void* pointer = nullptr, float opt = 0.0f);

    void* library = nullptr;
    q1framework::AEffect* effect = nullptr;
    double rate = 44100.0;
    bool processing = false;
    bool editorOpen = false;
    std::function<bool(int, int)> sizeWindowHandler;
};
