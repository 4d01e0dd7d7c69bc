#include "editor/AudioPluginEditor.h"

namespace q1framework
{

AudioPluginEditor::AudioPluginEditor(EditedPlugin& editedPlugin) : plugin(editedPlugin)
{
    plugin.addEditor(this);
}

AudioPluginEditor::~AudioPluginEditor()
{
    plugin.removeEditor(this);
}

void AudioPluginEditor::addListener(Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere(listener);
}

void AudioPluginEditor::removeListener(Listener* listener)
{
    listeners.removeFirstMatching(listener);
}

void AudioPluginEditor::resize(int width, int height, bool notify)
{
    setSize(width, height);
    if (!notify)
        return;
    const Point size(width, height);
    for (int32_t index = 0; index < listeners.getCount(); ++index)
        listeners[index]->sizeChanged(size);
}

void AudioPluginEditor::offerSize(const Point&) {}

void AudioPluginEditor::notifyGestureBegan(int index)
{
    for (int32_t listener = 0; listener < listeners.getCount(); ++listener)
        listeners[listener]->gestureBegan(this, index);
}

void AudioPluginEditor::notifyValueChanged(float value, int index)
{
    for (int32_t listener = 0; listener < listeners.getCount(); ++listener)
        listeners[listener]->valueChanged(value, this, index);
}

void AudioPluginEditor::notifyGestureEnded(int index)
{
    for (int32_t listener = 0; listener < listeners.getCount(); ++listener)
        listeners[listener]->gestureEnded(this, index);
}

void AudioPluginEditor::refreshControl(int) {}

void AudioPluginEditor::refreshChangedControls()
{
    const uint64_t marks = takeChanged();
    if (marks == 0)
        return;
    // Marks of indices beyond the bits' reach come as all bits set.
    const bool all = marks == ~uint64_t{0};
    const int count = plugin.getNumParameters();
    for (int index = 0; index < count; ++index)
        if (all || (index < maximumParameters && (marks >> index & 1) != 0))
            refreshControl(index);
}

void AudioPluginEditor::tick()
{
    refreshChangedControls();
}

}  // namespace q1framework
