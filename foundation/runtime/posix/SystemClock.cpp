#include "foundation/runtime/SystemClock.h"

#include <ctime>

namespace q1framework
{

void SystemClock::getTimebase(uint64_t& numerator, uint64_t& denominator)
{
    // getTicks counts nanoseconds.
    numerator = 1;
    denominator = 1;
}

uint64_t SystemClock::getTicks()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint64_t>(now.tv_sec) * 1000000000u + static_cast<uint64_t>(now.tv_nsec);
}

Date SystemClock::getLocalDate()
{
    Date date;
    timespec now{};
    tm local{};
    if (clock_gettime(CLOCK_REALTIME, &now) != 0 || localtime_r(&now.tv_sec, &local) == nullptr)
        return date;
    date.year = local.tm_year + 1900;
    date.month = local.tm_mon + 1;
    date.dayOfWeek = local.tm_wday;
    date.dayOfMonth = local.tm_mday;
    date.hour = local.tm_hour;
    date.minute = local.tm_min;
    date.second = local.tm_sec;
    return date;
}

}  // namespace q1framework
