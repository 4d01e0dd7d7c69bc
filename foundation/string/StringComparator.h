#pragma once

#include "foundation/string/Comparator.h"
#include "foundation/string/String.h"

namespace q1framework
{

// The framework's one case-insensitive text ordering: strcasecmp of the two texts, which folds
// single bytes (the ASCII letters, in UTF-8 text) and orders everything else by byte value.
class StringComparator : public Comparator<String>
{
public:
    int compare(const String& first, const String& second) override;
};

}  // namespace q1framework
