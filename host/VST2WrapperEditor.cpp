// VST2Wrapper: what the editor changes, told to the host.

#include "host/VST2Wrapper.h"

namespace q1framework
{

void VST2Wrapper::editGestureBegan(VstInt32 index)
{
    beginEdit(index);
}

void VST2Wrapper::editValueChanged(VstInt32 index, float value)
{
    setParameterAutomated(index, value);
}

void VST2Wrapper::editGestureEnded(VstInt32 index)
{
    endEdit(index);
}

void VST2Wrapper::EditorListener::gestureBegan(AudioPluginEditor*, int index)
{
    wrapper.editGestureBegan(index);
}

void VST2Wrapper::EditorListener::valueChanged(float value, AudioPluginEditor*, int index)
{
    wrapper.editValueChanged(index, value);
}

void VST2Wrapper::EditorListener::gestureEnded(AudioPluginEditor*, int index)
{
    wrapper.editGestureEnded(index);
}

}  // namespace q1framework
