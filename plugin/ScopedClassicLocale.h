#pragma once

namespace q1framework
{

// Makes the calling thread format and read numbers in the "C" locale for its lifetime, whatever
// locale the host process has chosen, and restores the thread's previous locale when it ends.
// Text that is stored (a state chunk) must read back the same in every host: a host that adopts
// the user's locale would otherwise write "0,500000" and fail to read "0.500000".
//
// Thread contract: any thread (not the audio thread); it changes only the calling thread's locale.
class ScopedClassicLocale
{
public:
    ScopedClassicLocale();
    ~ScopedClassicLocale();

    ScopedClassicLocale(const ScopedClassicLocale&) = delete;
    ScopedClassicLocale& operator=(const ScopedClassicLocale&) = delete;

private:
    void* previous;  // the thread's locale before, as the platform stores it
};

}  // namespace q1framework
