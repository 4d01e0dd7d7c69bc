#include "host/VST2Editor.h"

#include "host/AudioEffectX.h"
#include "native/window/UiThread.h"
#include "plugin/AudioPlugin.h"
#include "plugin/PluginDescription.h"

namespace q1framework
{

VST2Editor::VST2Editor(AudioEffect* owner, AudioPlugin* editedPlugin, AudioPluginEditor::Listener* editorListener)
    : VST2EditorBase(owner), plugin(editedPlugin), listener(editorListener)
{
}

VST2Editor::~VST2Editor()
{
    close();
}

bool VST2Editor::open(void* parent)
{
    UiThread::enter();
    close();
    systemWindow = parent;
    PluginDescription* description = createPluginDescription();
    const int windowFlags = description->windowFlags;
    delete description;
    AudioPluginEditor* editor = plugin != nullptr ? plugin->createEditor() : nullptr;
    if (editor == nullptr)
        return false;
    setSize(editor->getWidth(), editor->getHeight());
    holder = new Holder(*this, parent, editor, windowFlags);
    if (!holder->isOpen())
    {
        close();
        return false;
    }
    holder->setBounds(Rectangle(0, 0, getWidth(), getHeight()));
    editor->addListener(listener);
    plugin->editorCreated(editor);
    return true;
}

void VST2Editor::close()
{
    UiThread::enter();
    systemWindow = nullptr;
    if (holder == nullptr)
        return;
    holder->getEditor()->removeListener(listener);
    delete holder;
    holder = nullptr;
}

void VST2Editor::idle()
{
    UiThread::idle();
    if (holder != nullptr)
        holder->getEditor()->refreshChangedControls();
}

bool VST2Editor::resizeHostWindow(const Point& size)
{
    setSize(size.x, size.y);
    auto* effectX = dynamic_cast<AudioEffectX*>(getEffect());
    return effectX != nullptr && effectX->sizeWindow(size.x, size.y);
}

bool VST2Editor::forwardKey(bool down, int key)
{
    if (holder == nullptr)
        return false;
    return down ? holder->keyPressed(key, 0) : holder->keyReleased(key, 0);
}

}  // namespace q1framework
