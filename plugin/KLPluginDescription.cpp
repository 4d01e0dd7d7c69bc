// Kelvane's identity, as the host adapter reads it.

#include "foundation/string/FourCharacterCode.h"
#include "plugin/PluginDescription.h"

namespace q1framework
{

PluginDescription* createPluginDescription()
{
    PluginDescription* description = new PluginDescription;
    description->name = "Kelvane";
    const uint8_t version[4] = {2, 5, 3, 0};
    for (int part = 0; part < 4; ++part)
        description->version[part] = version[part];
    description->vendor = "Morvenna Audio Technologies";
    description->url = "https://www.morvenna-audio.com/kelvane";
    description->email = "support@morvenna-audio.com";
    description->numInputs = 2;
    description->numOutputs = 2;
    description->category = "Fx|Dynamics";
    const uint8_t classId[16] = {0x01, 0xCF, 0xF7, 0xAE, 0x8D, 0x66, 0x11, 0xE3,
                                 0x8C, 0x79, 0x60, 0xEE, 0x60, 0x88, 0x70, 0x9B};
    for (int byte = 0; byte < 16; ++byte)
        description->classId[byte] = classId[byte];
    description->uniqueId = fourCharacterCode('K', 'e', 'L', 'v');
    // A child window (0x100) that may be resized (0x8).
    description->windowFlags = 264;
    description->bundleId = "com.morvenna-audio.kelvane";
    // The product's page: under the maker's own domain, without version or format.
    description->uri = "https://www.morvenna-audio.com/kelvane";
    return description;
}

}  // namespace q1framework
