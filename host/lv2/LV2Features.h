#pragma once

#include <lv2/core/lv2.h>

namespace q1framework
{

// A host's feature list (LV2's null-terminated array of LV2_Feature pointers), as the plug-in and
// its user interface read it.
//
// Thread contract: any thread; functions of their arguments.
class LV2Features
{
public:
    // The feature with this URI, or null when the list (which may itself be null) has none.
    static const LV2_Feature* find(const LV2_Feature* const* features, const char* uri);
    // The data of that feature; null when it is missing or has none.
    static void* findData(const LV2_Feature* const* features, const char* uri);
};

}  // namespace q1framework
