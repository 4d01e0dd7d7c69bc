#include "foundation/runtime/HiResCounterHandler.h"

#include "foundation/runtime/SystemClock.h"

#include <atomic>

namespace q1framework
{

namespace
{
// Written on the main thread; other threads only read it once it is set.
std::atomic<HiResCounterHandler*> singleton{nullptr};
}

HiResCounterHandler* HiResCounterHandler::getInstance()
{
    HiResCounterHandler* instance = singleton.load(std::memory_order_acquire);
    if (instance == nullptr)
    {
        uint64_t timebaseNumerator = 1;
        uint64_t timebaseDenominator = 1;
        SystemClock::getTimebase(timebaseNumerator, timebaseDenominator);
        instance = new HiResCounterHandler(timebaseNumerator, timebaseDenominator);
        singleton.store(instance, std::memory_order_release);
    }
    return instance;
}

HiResCounterHandler::HiResCounterHandler(uint64_t timebaseNumerator, uint64_t timebaseDenominator)
{
    const uint64_t numer = timebaseNumerator > 0 ? timebaseNumerator : 1;
    const uint64_t denom = timebaseDenominator > 0 ? timebaseDenominator : 1;
    if (numer % 1000000 == 0)
    {
        numerator = numer / 1000000;
        denominator = denom;
    }
    else
    {
        numerator = numer;
        denominator = denom * 1000000;
    }
    ticksPerSecond = denom * 1000000000 / numer;
    millisecondsPerTick = static_cast<double>(numerator) / static_cast<double>(denominator);
}

HiResCounterHandler::~HiResCounterHandler()
{
    HiResCounterHandler* self = this;
    singleton.compare_exchange_strong(self, nullptr, std::memory_order_acq_rel);
}

double HiResCounterHandler::getMillisecondCounterHiRes()
{
    return getInstance()->ticksToMilliseconds(SystemClock::getTicks());
}

Date HiResCounterHandler::getDate()
{
    return SystemClock::getLocalDate();
}

}  // namespace q1framework
