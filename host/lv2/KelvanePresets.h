#pragma once

#include "plugin/KLParameters.h"

// Kelvane's factory presets, shipped in its LV2 bundle: each one a name that says what it does
// to drums, and a physical value for every parameter (per cent, dB, a step's number, 0 or 1 for
// Bypass; KLParameters), as the host sets the control ports.
//
// Thread contract: any thread; everything here is constant.
class KelvanePresets
{
public:
    struct Preset
    {
        const char* name;                      // as hosts list it
        const char* slug;                      // its part of the preset's URI; never changes
        float physical[KLParameters::count];   // by parameter index
    };

    static int getCount();
    // Unchecked index in 0..getCount() - 1.
    static const Preset& get(int index);
};
