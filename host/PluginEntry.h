#pragma once

#include "host/VstAbi.h"

namespace q1framework
{

// What each of the plug-in's exported entry points (VSTPluginMain, main_macho, CreateEngine) does
// with the host's callback: asks the host for its interface version first; a host that answers 0
// (or has no callback) gets null and nothing is made. Otherwise it makes an effect instance
// (createEffectInstance) and answers its AEffect, which lives until the host's effClose.
//
// Thread contract: the host's thread that loads effects, usually its main thread.
AEffect* createEffectForHost(audioMasterCallback host);

}  // namespace q1framework
