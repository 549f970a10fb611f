// A recorded picture as the plain calls that made it: the floor of a redraw whose calls are too
// many to be written down by hand. Calls that a recording does not hold, as asking for a clip
// region, are not part of the floor.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

// What draw does on a device context that records, as the bytes of the recording.
std::string Recorded(const std::function<void(HDC)>& draw);

class CReplay {
public:
    explicit CReplay(const std::string& recording);
    // Whether every record was one that can be replayed.
    [[nodiscard]] bool IsWhole() const { return m_bWhole; }
    void Draw(HDC hdc) const;

private:
    struct Call {
        DWORD nType; // EMR_...
        std::array<int, 8> n;
        std::string text;
    };

    static int CALLBACK Take(HDC hdc, HANDLETABLE* pTable, const ENHMETARECORD* pRecord,
                             int nObjects, LPARAM lThis);
    bool TakeCall(const ENHMETARECORD& record, Call* pCall);

    std::vector<Call> m_calls;
    std::vector<LOGFONTW> m_fonts;
    std::size_t m_nObjects = 0;
    bool m_bWhole = true;
};
