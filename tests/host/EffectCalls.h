#pragma once

#include "host/VstAbi.h"

#include <set>
#include <string>
#include <vector>

// What the tests do to a loaded effect through its AEffect record alone, as a host does.
namespace EffectCalls
{
// Kelvane's parameter indices, as a host sees them.
enum KelvaneParameter : q1framework::VstInt32
{
    attack,
    release,
    bypass,
    gain,
    attackTime,
    releaseTime,
    drive
};

// One block of processReplacing in place on two channels of equal length.
void processStereo(q1framework::AEffect* effect, std::vector<float>& left, std::vector<float>& right);
// The state chunk (effGetChunk), copied out of the effect's memory.
std::vector<char> getChunk(q1framework::AEffect* effect);
// effSetChunk with a copy of `bytes`; answers the effect's answer.
q1framework::VstIntPtr setChunk(q1framework::AEffect* effect, std::vector<char> bytes);
// The chunk's XML text (behind the 8-byte header, without its zero).
std::string chunkText(q1framework::AEffect* effect);
// The dynamic symbols a shared object defines, as `nm -D --defined-only` lists them.
std::set<std::string> exportedSymbols(const char* path);
}  // namespace EffectCalls
