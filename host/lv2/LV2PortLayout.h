#pragma once

#include <cstdint>

namespace q1framework
{

// How a plug-in's connections are numbered as LV2 ports, the same in the bundle's description and
// in the adapter: the audio inputs, the audio outputs, one input control port per parameter in
// parameter order, then one output control port per meter.
//
// Thread contract: any thread; a plain value.
class LV2PortLayout
{
public:
    enum class Kind
    {
        audioInput,
        audioOutput,
        control,  // a parameter, in its physical unit
        meter,    // a level the plug-in reports
        none      // beyond the last port
    };

    // Counts below 0 count as 0.
    LV2PortLayout(int audioInputs, int audioOutputs, int parameters, int meters);

    uint32_t getCount() const { return static_cast<uint32_t>(meterStart + meters); }
    int getNumAudioInputs() const { return audioInputs; }
    int getNumAudioOutputs() const { return audioOutputs; }
    int getNumParameters() const { return parameters; }
    int getNumMeters() const { return meters; }

    // What `port` is, and its number among the ports of its kind: the channel, the parameter
    // index or the meter index; -1 for a port beyond the last.
    Kind getKind(uint32_t port) const;
    int getNumber(uint32_t port) const;

    // The port of a channel, parameter or meter; unchecked.
    uint32_t getAudioInputPort(int channel) const { return static_cast<uint32_t>(channel); }
    uint32_t getAudioOutputPort(int channel) const { return static_cast<uint32_t>(audioInputs + channel); }
    uint32_t getControlPort(int parameter) const { return static_cast<uint32_t>(controlStart + parameter); }
    uint32_t getMeterPort(int meter) const { return static_cast<uint32_t>(meterStart + meter); }

private:
    int audioInputs;
    int audioOutputs;
    int parameters;
    int meters;
    int controlStart;
    int meterStart;
};

}  // namespace q1framework
