#include "plugin/KLParameters.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <initializer_list>

using q1framework::String;

namespace
{
using Kind = KLParameters::Kind;

struct Entry
{
    const char* name;
    float defaultValue;
    const char* stateAttribute;
    const char* symbol;
    Kind kind;
    const char* unit;
    float minimum;  // physical value at 0
    float span;     // physical value at 1, less the minimum
};

constexpr Entry table[KLParameters::count] = {
    {"Attack", 0.5f, "attack", "attack", Kind::linear, "%", -100.0f, 200.0f},
    {"Release", 0.5f, "release", "release", Kind::linear, "%", -100.0f, 200.0f},
    {"Bypass", 0.0f, "bypass", "bypass", Kind::toggle, "", 0.0f, 1.0f},
    {"Gain", 0.5f, "gain", "gain", Kind::linear, "dB", -9.0f, 18.0f},
    {"Attack Time", 0.5f, "attackTime", "attack_time", Kind::steps, "", 0.0f, 2.0f},
    {"Release Time", 0.5f, "releaseTime", "release_time", Kind::steps, "", 0.0f, 2.0f},
    {"Drive", 0.0f, "drive", "drive", Kind::linear, "%", 0.0f, 100.0f},
};

// The names of the time parameters' settings, in the order of KLParameters::TimeState.
constexpr const char* timeStepNames[KLParameters::timeStateCount] = {"sharp", "mid", "soft"};

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

float linearPhysical(float value, const Entry& entry)
{
    return value * entry.span + entry.minimum;
}

// The float value nearest the exact quotient whose physical value is `physical`, else the nearest
// whose physical value lies just beyond it, away from zero, where truncating and rounding texts
// still read it. The quotient in double is within an ulp or two of both; a few neighbours on each
// side are tried, nearest first.
float linearValue(float physical, const Entry& entry)
{
    const float quotient = static_cast<float>((static_cast<double>(physical) - entry.minimum) / entry.span);
    if (!std::isfinite(quotient))
        return quotient;
    constexpr int neighbours = 4;
    float below = quotient;
    float above = quotient;
    float beyond = quotient;
    double beyondDistance = INFINITY;
    for (int step = 0; step <= neighbours; ++step)
    {
        for (const float candidate : {below, above})
        {
            const float candidatePhysical = linearPhysical(candidate, entry);
            if (candidatePhysical == physical)
                return candidate;
            const bool isBeyond = physical >= 0.0f ? candidatePhysical > physical : candidatePhysical < physical;
            const double distance = std::fabs(static_cast<double>(candidatePhysical) - physical);
            if (isBeyond && distance < beyondDistance)
            {
                beyond = candidate;
                beyondDistance = distance;
            }
        }
        below = std::nextafter(below, -INFINITY);
        above = std::nextafter(above, INFINITY);
    }
    return beyond;
}
}  // namespace

const char* KLParameters::getName(int index)
{
    return inRange(index) ? table[index].name : "";
}

const char* KLParameters::getSymbol(int index)
{
    return inRange(index) ? table[index].symbol : "";
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
    case drive:
        return percent(truncated(toPhysical(value, index)));
    case bypass:
        return isOn(value) ? "On" : "Off";
    case gain:
        return String(toPhysical(value, index), 2) + " dB";
    case attackTime:
    case releaseTime:
        return timeStepNames[getTimeState(value)];
    default:
        return String();
    }
}

KLParameters::Kind KLParameters::getKind(int index)
{
    return inRange(index) ? table[index].kind : Kind::linear;
}

const char* KLParameters::getUnit(int index)
{
    return inRange(index) ? table[index].unit : "";
}

float KLParameters::getMinimum(int index)
{
    return inRange(index) ? table[index].minimum : 0.0f;
}

float KLParameters::getMaximum(int index)
{
    return inRange(index) ? table[index].minimum + table[index].span : 1.0f;
}

int KLParameters::getStepCount(int index)
{
    return getKind(index) == Kind::steps ? timeStateCount : 0;
}

const char* KLParameters::getStepName(int index, int step)
{
    return step >= 0 && step < getStepCount(index) ? timeStepNames[step] : "";
}

float KLParameters::toPhysical(float value, int index)
{
    if (!inRange(index) || std::isnan(value))
        return value;
    switch (table[index].kind)
    {
    case Kind::toggle:
        return isOn(value) ? 1.0f : 0.0f;
    case Kind::steps:
        return static_cast<float>(getTimeState(value));
    case Kind::linear:
    default:
        return linearPhysical(value, table[index]);
    }
}

float KLParameters::fromPhysical(float physical, int index)
{
    if (!inRange(index) || std::isnan(physical))
        return physical;
    switch (table[index].kind)
    {
    case Kind::toggle:
        return physical > 0.0f ? 1.0f : 0.0f;
    case Kind::steps:
    {
        const float last = static_cast<float>(timeStateCount - 1);
        const float step = std::floor(std::min(std::max(physical, 0.0f), last) + 0.5f);
        return step / last;
    }
    case Kind::linear:
    default:
        return linearValue(physical, table[index]);
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
