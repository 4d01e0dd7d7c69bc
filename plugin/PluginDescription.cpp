#include "plugin/PluginDescription.h"

namespace q1framework
{

String PluginDescription::getVersionText() const
{
    String text(static_cast<int>(version[0]));
    for (int part = 1; part < 4; ++part)
        text = text + "." + String(static_cast<int>(version[part]));
    return text;
}

int32_t PluginDescription::getVersionNumber() const
{
    const uint32_t number = (static_cast<uint32_t>(version[0]) << 24) | (static_cast<uint32_t>(version[1]) << 16)
                            | (static_cast<uint32_t>(version[2]) << 8) | static_cast<uint32_t>(version[3]);
    return static_cast<int32_t>(number);
}

}  // namespace q1framework
