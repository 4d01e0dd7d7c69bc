#include "host/lv2/turtle/TurtleText.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

std::string TurtleText::literal(const std::string& text)
{
    std::string quoted = "\"";
    for (const char character : text)
    {
        switch (character)
        {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\r':
            quoted += "\\r";
            break;
        default:
            quoted += character;
        }
    }
    return quoted + "\"";
}

std::string TurtleText::number(float value)
{
    if (!std::isfinite(value))
        return "0.0";
    // Plain decimals first, as people write the numbers of a range; an exponent only for the
    // values that need more decimals than that.
    char text[64] = {};
    for (int decimals = 1; decimals <= 9; ++decimals)
    {
        std::snprintf(text, sizeof text, "%.*f", decimals, static_cast<double>(value));
        if (std::strtof(text, nullptr) == value)
            return text;
    }
    std::snprintf(text, sizeof text, "%.9e", static_cast<double>(value));
    return text;
}

std::string TurtleText::uri(const std::string& text)
{
    return "<" + text + ">";
}
