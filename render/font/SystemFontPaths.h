#pragma once

namespace q1framework
{

class String;

// The file of the fallback font: the platform's first-choice system font when that file exists,
// otherwise its second choice, which is not tested (a missing file then gives a font with no face).
String getFallbackFontPath();

}  // namespace q1framework
