#include "host/lv2/LV2PortLayout.h"

#include <algorithm>

namespace q1framework
{

LV2PortLayout::LV2PortLayout(int audioInputCount, int audioOutputCount, int parameterCount, int meterCount)
    : audioInputs(std::max(audioInputCount, 0)),
      audioOutputs(std::max(audioOutputCount, 0)),
      parameters(std::max(parameterCount, 0)),
      meters(std::max(meterCount, 0)),
      controlStart(audioInputs + audioOutputs),
      meterStart(controlStart + parameters)
{
}

LV2PortLayout::Kind LV2PortLayout::getKind(uint32_t port) const
{
    if (port < static_cast<uint32_t>(audioInputs))
        return Kind::audioInput;
    if (port < static_cast<uint32_t>(controlStart))
        return Kind::audioOutput;
    if (port < static_cast<uint32_t>(meterStart))
        return Kind::control;
    if (port < getCount())
        return Kind::meter;
    return Kind::none;
}

int LV2PortLayout::getNumber(uint32_t port) const
{
    switch (getKind(port))
    {
    case Kind::audioInput:
        return static_cast<int>(port);
    case Kind::audioOutput:
        return static_cast<int>(port) - audioInputs;
    case Kind::control:
        return static_cast<int>(port) - controlStart;
    case Kind::meter:
        return static_cast<int>(port) - meterStart;
    case Kind::none:
    default:
        return -1;
    }
}

}  // namespace q1framework
