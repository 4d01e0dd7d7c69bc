// VST2Wrapper: parameters by index, as values 0..1, display texts and names.

#include "foundation/runtime/ScopedLock.h"
#include "host/VST2Wrapper.h"

namespace q1framework
{

void VST2Wrapper::setParameter(VstInt32 index, float value)
{
    const ScopedLock lock(plugin->getMutex());
    plugin->setParameter(value, index);
}

float VST2Wrapper::getParameter(VstInt32 index)
{
    return static_cast<float>(plugin->getParameter(index));
}

void VST2Wrapper::getParameterDisplay(VstInt32 index, char* text)
{
    plugin->getParameterText(getParameter(index), index).copyTo(text);
}

void VST2Wrapper::getParameterName(VstInt32 index, char* text)
{
    plugin->getParameterName(index).copyTo(text);
}

}  // namespace q1framework
