// A black-and-white bitmap that GDI fills a figure on; what comes out black is its region.
#pragma once

#include <windows.h>

class CMonoCanvas {
public:
    explicit CMonoCanvas(const RECT& rc) noexcept; // lies over rc, which is not empty; all white
    ~CMonoCanvas();
    CMonoCanvas(const CMonoCanvas&) = delete;
    CMonoCanvas& operator=(const CMonoCanvas&) = delete;

    // Null when it could not be made. Its origin is the corner of the rectangle.
    [[nodiscard]] HDC Dc() const { return m_hPrev ? m_hdc : nullptr; }
    [[nodiscard]] const RECT& Place() const { return m_rc; }

    // The black pixels, and the box of them, where the rectangle lies. Null and false without
    // memory; the box of none is empty.
    [[nodiscard]] HRGN BlackRegion() const;
    bool FindBlackBox(RECT* prcOut) const;

private:
    [[nodiscard]] LONG Stride() const { return (m_rc.right - m_rc.left + 15) / 16 * 2; } // in words
    [[nodiscard]] SIZE Size() const { return {m_rc.right - m_rc.left, m_rc.bottom - m_rc.top}; }
    bool GetBits(void* pBits) const;

    RECT m_rc;
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev = nullptr;
};
