#pragma once

#include "foundation/string/String.h"

// Kelvane's parameter table: for each index (the host's parameter index and the tag of the
// editor's control) its name, default, display text and the name of its attribute in the state,
// and its physical unit and range for formats whose controls carry units (LV2). Values are 0..1 as
// the host sees them; KLAudioPlugin turns them into processor settings. The LV2 bundle's
// description is generated from this table, so both formats show the same controls.
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

    // How a parameter reads in its physical unit.
    enum class Kind
    {
        linear,  // a number in getUnit(), linear in the value from getMinimum() to getMaximum()
        toggle,  // a switch: 0 off, 1 on
        steps    // a choice of getStepCount() named steps, numbered from 0
    };

    // The name the host shows; "" for an index out of range.
    static const char* getName(int index);
    // The name of the parameter's control port in formats that name ports (LV2): lower case with
    // underscores. Hosts save projects by it, so it never changes. "" for an index out of range.
    static const char* getSymbol(int index);
    // The value of a fresh instance; 0 for an index out of range.
    static float getDefault(int index);
    // The attribute of the state's "Program" element; null for an index out of range.
    static const char* getStateAttribute(int index);

    // The display text of `value` with its unit, as "-100 %", "0.00 dB", "On", "mid"; empty for
    // an index out of range. Percentages truncate towards zero.
    static q1framework::String getText(float value, int index);

    // ---- The physical unit. -----------------------------------------------------------------
    // The kind; linear for an index out of range.
    static Kind getKind(int index);
    // The unit of a linear parameter, "%" or "dB"; "" for the others and an index out of range.
    static const char* getUnit(int index);
    // The physical range: -100..100 % (Attack, Release), -9..9 dB (Gain), 0..100 % (Drive), 0..1
    // (Bypass), 0..2 (the steps of Attack Time and Release Time); 0..1 for an index out of range.
    static float getMinimum(int index);
    static float getMaximum(int index);
    // Steps of a choice: 3 for the time parameters ("sharp", "mid", "soft"), 0 for the others.
    // The name of a step is "" for a step or an index out of range.
    static int getStepCount(int index);
    static const char* getStepName(int index, int step);

    // The physical value of 0..1 `value`: the number its display text shows, computed as the text
    // computes it (value × span + minimum in float for a linear parameter, before the text's
    // truncation or rounding), 0 or 1 for a switch, the step's number for a choice. Values outside
    // 0..1 give values outside the range; NaN gives NaN. An index out of range gives `value`.
    static float toPhysical(float value, int index);
    // The 0..1 value of a physical one, the inverse of toPhysical: for a linear parameter the
    // float nearest the exact (physical − minimum) / span whose physical value is `physical`
    // itself, or, where no float has it, the nearest one beyond it (away from zero), so that the
    // display text reads the number set: 7 % gives the value that reads "7 %", not "6 %". A
    // switch is on above 0 (1.0) and off at or below it (0.0); a choice takes the nearest step
    // within its range (0.0, 0.5, 1.0). NaN gives NaN; a finite value outside the range gives a
    // value outside 0..1. An index out of range gives `physical`.
    static float fromPhysical(float physical, int index);

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
