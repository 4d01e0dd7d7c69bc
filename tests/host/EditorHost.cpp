#include "EditorHost.h"

#include "editor/KLAudioPluginEditor.h"
#include "editor/MainComponent.h"
#include "host/Holder.h"
#include "host/KelvaneServices.h"
#include "host/PluginEntry.h"
#include "host/VST2Editor.h"
#include "host/VST2Wrapper.h"
#include "media/image/Image.h"
#include "media/resource/ResourcePack.h"
#include "plugin/KLAudioPlugin.h"

#include <chrono>
#include <thread>

using namespace q1framework;

namespace
{
EditorHost* liveHost = nullptr;

String packPath(const String& name)
{
    return String(KELVANE_BUNDLE_FOLDER "/") + name;
}
}  // namespace

EditorHost::EditorHost()
{
    KelvaneServices::registerAll();
    // The pack as the build makes it, whatever folder the test program runs from.
    ResourcePack::setResourcePathFunction(&packPath);
    liveHost = this;
    effect = createEffectForHost(&EditorHost::callback);
}

EditorHost::~EditorHost()
{
    if (effect != nullptr)
    {
        close();
        dispatch(effClose);
    }
    liveHost = nullptr;
}

VstIntPtr EditorHost::callback(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr value, void*, float opt)
{
    if (liveHost == nullptr)
        return 0;
    if (opcode == audioMasterVersion)
        return kVstVersion;
    if (opcode == audioMasterGetTime)
        return 0;
    {
        const std::lock_guard<std::mutex> hold(liveHost->callLock);
        liveHost->calls.push_back({opcode, index, value, opt});
    }
    if (opcode == audioMasterSizeWindow && liveHost->acceptsSizeWindow)
    {
        // The host follows: its window takes the editor's size.
        XResizeWindow(liveHost->display.get(), liveHost->parent, static_cast<unsigned>(index),
                      static_cast<unsigned>(value));
        XSync(liveHost->display.get(), False);
        return 1;
    }
    return 0;
}

VstIntPtr EditorHost::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float opt)
{
    return effect->dispatcher(effect, opcode, index, value, pointer, opt);
}

bool EditorHost::open(Pattern newPattern, const Rectangle& hostBounds)
{
    pattern = newPattern;
    const ::Window topLevel = display.makeHostWindow(hostBounds);
    VstIntPtr value = 0;
    parent = topLevel;
    if (pattern == Pattern::ardourLike)
    {
        parent = XCreateSimpleWindow(display.get(), topLevel, 0, 0, static_cast<unsigned>(hostBounds.w),
                                     static_cast<unsigned>(hostBounds.h), 0, 0, 0);
        XMapWindow(display.get(), parent);
        XSync(display.get(), False);
        value = reinterpret_cast<VstIntPtr>(display.get());
    }
    return dispatch(effEditOpen, 0, value, reinterpret_cast<void*>(static_cast<uintptr_t>(parent))) == 1;
}

void EditorHost::close()
{
    dispatch(effEditClose);
}

void EditorHost::idle(int count)
{
    const auto period = std::chrono::milliseconds(pattern == Pattern::ardourLike ? 40 : 20);
    const auto run = [this, count, period] {
        for (int call = 0; call < count; ++call)
        {
            std::this_thread::sleep_for(period);
            dispatch(effEditIdle);
        }
    };
    if (pattern == Pattern::ardourLike)
        std::thread(run).join();
    else
        run();
}

void EditorHost::process(std::vector<float>& left, std::vector<float>& right)
{
    float* channels[2] = {left.data(), right.data()};
    effect->processReplacing(effect, channels, channels, static_cast<VstInt32>(left.size()));
}

Point EditorHost::getRect()
{
    ERect* rect = nullptr;
    dispatch(effEditGetRect, 0, 0, &rect);
    return rect != nullptr ? Point(rect->right - rect->left, rect->bottom - rect->top) : Point();
}

std::vector<EditorHost::Call> EditorHost::takeCalls()
{
    const std::lock_guard<std::mutex> hold(callLock);
    std::vector<Call> taken;
    taken.swap(calls);
    return taken;
}

VST2Wrapper& EditorHost::getWrapper() const
{
    return *static_cast<VST2Wrapper*>(static_cast<AudioEffect*>(effect->object));
}

KLAudioPlugin& EditorHost::getPlugin() const
{
    return *static_cast<KLAudioPlugin*>(getWrapper().getPlugin());
}

VST2Editor& EditorHost::getEditor() const
{
    return *static_cast<VST2Editor*>(getWrapper().getEditor());
}

Holder* EditorHost::getHolder() const
{
    return getEditor().getHolder();
}

MainComponent& EditorHost::getMainComponent() const
{
    return static_cast<KLAudioPluginEditor*>(getHolder()->getEditor())->getMainComponent();
}

::Window EditorHost::getEditorWindow() const
{
    const Holder* holder = getHolder();
    return holder != nullptr ? static_cast<::Window>(reinterpret_cast<uintptr_t>(holder->getNativeView())) : 0;
}

Rectangle EditorHost::getGeometry(::Window window)
{
    display.settle();
    return display.getGeometry(window);
}

Image EditorHost::screenshot()
{
    display.settle();
    return display.capture(getEditorWindow());
}
