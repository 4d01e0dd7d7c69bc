#include "foundation/string/StringComparator.h"

#include <strings.h>

namespace q1framework
{

int StringComparator::compare(const String& first, const String& second)
{
    return strcasecmp(first.getCString(), second.getCString());
}

}  // namespace q1framework
