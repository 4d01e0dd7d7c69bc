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

bool VST2Wrapper::editorSizeChanged(VstInt32 width, VstInt32 height)
{
    return sizeWindow(width, height);
}

}  // namespace q1framework
