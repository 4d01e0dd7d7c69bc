#pragma once

#include "foundation/string/String.h"

// Kelvane's parameter table: for each index (the host's parameter index and the tag of the
// editor's control) its name, default, display text and the name of its attribute in the state.
// Values are 0..1 as the host sees them; KLAudioPlugin turns them into processor settings.
//
// Thread contract: any thread; everything here is constant or computed from its arguments.
class KLParameters
{
public:
    enum Index
    {
        attack,       // "Attack": attack amount, -100 % .. +100 %
        release,      // "Release": release amount, -100 % .. +100 %
        bypass,       // "Bypass": on at 0.5 and above
        gain,         // "Gain": output gain, -9 dB .. +9 dB
        attackTime,   // "Attack Time": sharp, mid or soft
        releaseTime,  // "Release Time": sharp, mid or soft
        drive,        // "Drive": 0 % .. 100 %
        count
    };

    // The name the host shows; "" for an index out of range.
    static const char* getName(int index);
    // The value of a fresh instance; 0 for an index out of range.
    static float getDefault(int index);
    // The attribute of the state's "Program" element; null for an index out of range.
    static const char* getStateAttribute(int index);

    // The display text of `value` with its unit, as "-100 %", "0.00 dB", "On", "mid"; empty for
    // an index out of range. Percentages truncate towards zero.
    static q1framework::String getText(float value, int index);

    // The three settings of Attack Time and Release Time, in the order of their values.
    enum TimeState
    {
        sharp,
        mid,
        soft,
        timeStateCount
    };

    // Bypass is on from 0.5 (compared as double).
    static bool isOn(float value);
    // The setting of an Attack Time or Release Time value: below 0.333 sharp, below 0.666 mid,
    // otherwise soft; compared as double. NaN counts as soft.
    static int getTimeState(float value);
    // The detector time factor of an Attack Time or Release Time value by its setting: sharp 0.5
    // (half the time), mid 1.0, soft 2.0.
    static float getTimeFactor(float value);
};
