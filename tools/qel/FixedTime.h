// A fixed time of day for the clocks of drawings. The engine asks the system for the time; the
// answers to this one process are exchanged, so that the DLL needs no way in for it.
#pragma once

#include <windows.h>

#include <string>

namespace qel {

// Of "HH:MM:SS"; CTrouble for anything else.
SYSTEMTIME ReadTime(const std::wstring& text);

// While it lives, the engine is told that time, as local and as universal time alike.
class CFixedTime {
public:
    explicit CFixedTime(const SYSTEMTIME* pTime); // null: the system's time
    ~CFixedTime();
    CFixedTime(const CFixedTime&) = delete;
    CFixedTime& operator=(const CFixedTime&) = delete;
};

} // namespace qel
