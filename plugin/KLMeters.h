#pragma once

// Kelvane's meters as hosts show them beside the controls (LV2 output ports): the input and
// output levels of the editor's needle meters and the drive stage's peak that lights its LED.
// The levels are linear peak magnitudes (1.0 is full scale) that fall by 0.25 a second; the drive
// level is the soft clip's peak output during the last block, 0..1.
//
// Thread contract: any thread; everything here is constant.
class KLMeters
{
public:
    enum Index
    {
        inputLevel,   // "Input Level": 0..1.5
        outputLevel,  // "Output Level": 0..1.5
        driveLevel,   // "Drive Level": 0..1
        count
    };

    // The name the host shows; "" for an index out of range.
    static const char* getName(int index);
    // The name of the meter's output port in formats that name ports (LV2), lower case with
    // underscores; never changes. "" for an index out of range.
    static const char* getSymbol(int index);
    // The largest value the meter reports; 0 for an index out of range. The smallest is 0.
    static float getMaximum(int index);
};
