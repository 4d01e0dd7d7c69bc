#include "plugin/KLParameters.h"

#include <climits>
#include <cmath>

using q1framework::String;

namespace
{
struct Entry
{
    const char* name;
    float defaultValue;
    const char* stateAttribute;
};

constexpr Entry table[KLParameters::count] = {
    {"Attack", 0.5f, "attack"},
    {"Release", 0.5f, "release"},
    {"Bypass", 0.0f, "bypass"},
    {"Gain", 0.5f, "gain"},
    {"Attack Time", 0.5f, "attackTime"},
    {"Release Time", 0.5f, "releaseTime"},
    {"Drive", 0.0f, "drive"},
};

bool inRange(int index)
{
    return index >= 0 && index < KLParameters::count;
}

// (int) of a value, truncating towards zero. A value no int can hold (only a host that ignores
// the 0..1 range sends one) is held at the nearest end, and NaN reads 0, instead of the undefined
// conversion.
int truncated(float value)
{
    if (std::isnan(value))
        return 0;
    if (value >= static_cast<float>(INT_MAX))
        return INT_MAX;
    if (value <= static_cast<float>(INT_MIN))
        return INT_MIN;
    return static_cast<int>(value);
}

String percent(int value)
{
    return String(value) + " %";
}

const char* timeText(float value)
{
    static const char* const names[KLParameters::timeStateCount] = {"sharp", "mid", "soft"};
    return names[KLParameters::getTimeState(value)];
}
}  // namespace

const char* KLParameters::getName(int index)
{
    return inRange(index) ? table[index].name : "";
}

float KLParameters::getDefault(int index)
{
    return inRange(index) ? table[index].defaultValue : 0.0f;
}

const char* KLParameters::getStateAttribute(int index)
{
    return inRange(index) ? table[index].stateAttribute : nullptr;
}

String KLParameters::getText(float value, int index)
{
    switch (index)
    {
    case attack:
    case release:
        return percent(truncated(value * 200.0f - 100.0f));
    case bypass:
        return isOn(value) ? "On" : "Off";
    case gain:
        return String(value * 18.0f - 9.0f, 2) + " dB";
    case attackTime:
    case releaseTime:
        return timeText(value);
    case drive:
        return percent(truncated(value * 100.0f));
    default:
        return String();
    }
}

bool KLParameters::isOn(float value)
{
    return static_cast<double>(value) >= 0.5;
}

int KLParameters::getTimeState(float value)
{
    const double wide = value;
    if (wide < 0.333)
        return sharp;
    if (wide < 0.666)
        return mid;
    return soft;
}

float KLParameters::getTimeFactor(float value)
{
    static const float factors[timeStateCount] = {0.5f, 1.0f, 2.0f};
    return factors[getTimeState(value)];
}
