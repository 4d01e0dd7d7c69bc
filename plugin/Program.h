#pragma once

#include "foundation/string/String.h"
#include "plugin/KLParameters.h"

#include <atomic>

// Kelvane's one program: a name and the seven parameter values in parameter order, 0..1.
//
// Thread contract: the values are written with the plug-in's mutex held and may be read on any
// thread without it (a host reads parameters from its GUI while audio runs), so each is a relaxed
// atomic float: a plain load or store on the machine, no lock. The name is read and written only
// with the mutex held; a copy that leaves the lock is made with String::copyFrom.
class Program
{
public:
    Program()
    {
        for (int index = 0; index < KLParameters::count; ++index)
            setValue(index, KLParameters::getDefault(index));
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Unchecked index in 0..KLParameters::count - 1.
    float getValue(int index) const { return values[index].load(std::memory_order_relaxed); }
    void setValue(int index, float value) { values[index].store(value, std::memory_order_relaxed); }

    q1framework::String name;

private:
    std::atomic<float> values[KLParameters::count];
};
