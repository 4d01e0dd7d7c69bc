#pragma once

#include <string>

namespace q1framework
{

// The URI of the LV2 user interface of the plug-in `pluginUri`: the plug-in's with "#ui", the
// same in the interface's descriptor and in the bundle's description.
//
// Thread contract: any thread.
inline std::string getLV2UIUri(const std::string& pluginUri)
{
    return pluginUri + "#ui";
}

}  // namespace q1framework
