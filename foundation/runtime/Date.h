#pragma once

namespace q1framework
{

// A moment of the wall clock in local time, broken into calendar fields. A clock that cannot be
// read gives all fields 0.
struct Date
{
    int year = 0;        // of the common era, for example 2024
    int month = 0;       // 1 (January) to 12
    int dayOfWeek = 0;   // 0 (Sunday) to 6 (Saturday)
    int dayOfMonth = 0;  // 1 to 31
    int hour = 0;        // 0 to 23
    int minute = 0;      // 0 to 59
    int second = 0;      // 0 to 60 (60 in a leap second)
};

}  // namespace q1framework
