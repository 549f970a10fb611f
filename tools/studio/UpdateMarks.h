// Shows what updates repaint: each place flashes and fades, beside the time of the last update and
// the number of frames so far.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace studio {

class CUpdateMarks {
public:
    void Clear();
    void Note(HRGN hPainted, double fMilliseconds);
    // Lets time pass; adds to a region what looks different now.
    void Fade(DWORD nTime, HRGN hChanged);
    void Draw(HDC hdc, const std::wstring& text, HFONT hFont, SIZE margin);

    [[nodiscard]] double Milliseconds() const { return m_fMilliseconds; }
    [[nodiscard]] unsigned Frames() const { return m_nFrames; }
    [[nodiscard]] RECT TextRect() const { return m_rcText; }

private:
    struct Mark {
        RECT rc;
        DWORD nAge;
    };
    std::vector<Mark> m_marks;
    double m_fMilliseconds = 0;
    unsigned m_nFrames = 0;
    RECT m_rcText{0, 0, 0, 0};
};

} // namespace studio
