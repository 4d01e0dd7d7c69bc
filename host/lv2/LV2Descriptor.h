#pragma once

#include <lv2/core/lv2.h>

namespace q1framework
{

// The plug-in's LV2 descriptor: its URI (PluginDescription::uri) and the functions through which
// a host makes, drives and ends an LV2Wrapper, with the state extension as its extension data.
// The plug-in's entry point (lv2_descriptor) hands it out as the bundle's one plug-in.
//
// Thread contract: any thread; the descriptor is made once, on the first call, and lives until
// the shared object is unloaded.
const LV2_Descriptor* getLV2Descriptor();

}  // namespace q1framework
