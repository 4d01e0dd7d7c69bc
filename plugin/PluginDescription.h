#pragma once

#include "foundation/string/String.h"

#include <cstdint>

namespace q1framework
{

// The identity of an effect, filled in by the effect's createPluginDescription() and read by a
// host adapter while it builds an instance. A plain record on the heap; the adapter deletes it
// once it has copied what it needs.
//
// Thread contract: made, read and deleted on one thread.
struct PluginDescription
{
    // Bits of `flags`.
    static constexpr uint32_t isSynthFlag = 1u << 0;    // the adapter reports an instrument

    String formatName = "VST";       // the plug-in format, the same in every description
    String reservedText;
    String name;
    uint8_t version[4] = {};         // major, minor, patch, build
    String vendor;
    String url;                      // the maker's web address
    String email;                    // the maker's e-mail address
    uint32_t flags = 0;
    int32_t numInputs = 0;           // audio input channels
    int32_t numOutputs = 0;          // audio output channels
    String category;                 // as "Fx|Dynamics"; not given to VST 2.4 hosts
    uint8_t classId[16] = {};
    int32_t uniqueId = 0;            // four-character code, first character in the high byte
    int32_t windowFlags = 0;         // window style bits of the editor's holder window
    String bundleId;                 // reverse-domain identifier of the bundle
    String uri;                      // identity where plug-ins are named by URI (LV2); projects
                                     // store it, so it never changes

    // The version as text, the four numbers joined by ".", as "2.5.3.0".
    String getVersionText() const;
    // The version as one number for a host: the four bytes read big-endian, as 0x02050300.
    int32_t getVersionNumber() const;
};

// Made by the effect, once per instance and per identity query; the caller owns and deletes it.
PluginDescription* createPluginDescription();

}  // namespace q1framework
