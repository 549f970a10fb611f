// A fixed time of day for the clocks of drawings. The engine asks the system for the time; the
// answers to this one process are exchanged, so that the DLL needs no way in for it.
#pragma once

#include <windows.h>

#include <string>

namespace qel {

// Of "HH:MM:SS"; CTrouble for anything else.
SYSTEMTIME ReadTime(const std::wstring& text);

// The time of a clock that is set by hand, with the number of seconds added.
SYSTEMTIME LaterTime(const SYSTEMTIME& time, int nSeconds);

// How long it takes from one time of day to another, over midnight when that is the earlier one.
int SecondsBetween(const SYSTEMTIME& first, const SYSTEMTIME& last);

// From the first Set on and while it lives, the engine is told the times that were set last.
class CFixedTime {
public:
    CFixedTime() = default;
    ~CFixedTime();
    CFixedTime(const CFixedTime&) = delete;
    CFixedTime& operator=(const CFixedTime&) = delete;

    void Set(const SYSTEMTIME& local, const SYSTEMTIME& universal) const;
};

} // namespace qel
