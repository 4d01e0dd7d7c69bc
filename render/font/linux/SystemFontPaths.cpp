#include "render/font/SystemFontPaths.h"

#include "foundation/string/String.h"

#include <unistd.h>

namespace q1framework
{

namespace
{
// DejaVu Sans (Debian's fonts-dejavu-core, which the install script provides), then Liberation
// Sans (fonts-liberation), the two sans-serif faces most Linux desktops carry.
constexpr const char* firstChoice = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* secondChoice = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf";
}  // namespace

String getFallbackFontPath()
{
    return String(access(firstChoice, F_OK) == 0 ? firstChoice : secondChoice);
}

}  // namespace q1framework
