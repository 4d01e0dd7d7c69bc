#include "host/lv2/LV2Features.h"

#include <cstring>

namespace q1framework
{

const LV2_Feature* LV2Features::find(const LV2_Feature* const* features, const char* uri)
{
    for (const LV2_Feature* const* feature = features; feature != nullptr && *feature != nullptr; ++feature)
        if ((*feature)->URI != nullptr && std::strcmp((*feature)->URI, uri) == 0)
            return *feature;
    return nullptr;
}

void* LV2Features::findData(const LV2_Feature* const* features, const char* uri)
{
    const LV2_Feature* feature = find(features, uri);
    return feature != nullptr ? feature->data : nullptr;
}

}  // namespace q1framework
