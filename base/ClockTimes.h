// A moment as clocks show it: the hour is the local one, minute and second the universal ones.
#pragma once

#include <windows.h>

struct ClockTimes {
    SYSTEMTIME local;
    SYSTEMTIME universal;

    static ClockTimes Now()
    {
        ClockTimes times{};
        ::GetLocalTime(&times.local);
        ::GetSystemTime(&times.universal);
        return times;
    }
};
