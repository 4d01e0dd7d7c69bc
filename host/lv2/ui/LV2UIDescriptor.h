#pragma once

#include <lv2/ui/ui.h>

namespace q1framework
{

// The effect's LV2 user interface descriptor: its URI (LV2UIUri.h) and the functions through
// which a host makes, feeds and ends an LV2UIWrapper, with the idle interface and the
// interface's own resize as its extension data. The shared object's lv2ui_descriptor hands it out
// as the bundle's one user interface.
//
// Thread contract: any thread; the descriptor is made once, on the first call, and lives until
// the shared object is unloaded.
const LV2UI_Descriptor* getLV2UIDescriptor();

}  // namespace q1framework
