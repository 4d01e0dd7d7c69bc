#include "plugin/ScopedClassicLocale.h"

#include <locale.h>

namespace q1framework
{

namespace
{
// Made once per process, on first use, and kept for its life: uselocale may still refer to it on
// any thread. Null when the system cannot make it; the guard then changes nothing.
locale_t classicLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
    return locale;
}
}  // namespace

ScopedClassicLocale::ScopedClassicLocale() : previous(nullptr)
{
    if (const locale_t locale = classicLocale())
        previous = uselocale(locale);
}

ScopedClassicLocale::~ScopedClassicLocale()
{
    if (previous != nullptr)
        uselocale(static_cast<locale_t>(previous));
}

}  // namespace q1framework
