#include "host/lv2/KelvanePresets.h"

namespace
{
// Attack %, Release %, Bypass, Gain dB, Attack Time step, Release Time step, Drive %. The steps
// are 0 sharp, 1 mid, 2 soft. Boosts come with a lower gain, so that the level stays about where
// it was; the drive holds the bus's peaks down by itself.
constexpr KelvanePresets::Preset presets[] = {
    {"Punchier Kick", "punchier-kick", {60.0f, -10.0f, 0.0f, -2.0f, 1.0f, 1.0f, 0.0f}},
    {"Snappier Snare", "snappier-snare", {60.0f, 10.0f, 0.0f, -1.5f, 0.0f, 1.0f, 0.0f}},
    {"Drier Room", "drier-room", {10.0f, -70.0f, 0.0f, 0.0f, 1.0f, 1.0f, 0.0f}},
    {"Softer Hits", "softer-hits", {-50.0f, 0.0f, 0.0f, 1.5f, 2.0f, 1.0f, 0.0f}},
    {"Longer Toms", "longer-toms", {0.0f, 90.0f, 0.0f, -1.0f, 1.0f, 2.0f, 0.0f}},
    {"Crunchy Drum Bus", "crunchy-drum-bus", {30.0f, 20.0f, 0.0f, 0.0f, 1.0f, 1.0f, 70.0f}},
};
}  // namespace

int KelvanePresets::getCount()
{
    return static_cast<int>(sizeof presets / sizeof presets[0]);
}

const KelvanePresets::Preset& KelvanePresets::get(int index)
{
    return presets[index];
}
