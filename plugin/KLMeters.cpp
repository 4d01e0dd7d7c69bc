#include "plugin/KLMeters.h"

namespace
{
struct Entry
{
    const char* name;
    const char* symbol;
    float maximum;
};

// A level is limited to 1.5 (PeakMeter); the soft clip's output never exceeds 1.
constexpr Entry table[KLMeters::count] = {
    {"Input Level", "input_level", 1.5f},
    {"Output Level", "output_level", 1.5f},
    {"Drive Level", "drive_level", 1.0f},
};

bool inRange(int index)
{
    return index >= 0 && index < KLMeters::count;
}
}  // namespace

const char* KLMeters::getName(int index)
{
    return inRange(index) ? table[index].name : "";
}

const char* KLMeters::getSymbol(int index)
{
    return inRange(index) ? table[index].symbol : "";
}

float KLMeters::getMaximum(int index)
{
    return inRange(index) ? table[index].maximum : 0.0f;
}
