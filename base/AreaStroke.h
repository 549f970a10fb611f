// Solid lines and rings of a smooth picture, as the areas that they cover: the system's own wide
// pens are up to a sample wider than they say and lie up to a sample aside, which samples show.
// Everywhere else, and for broken pens, lines stay the system's.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

// With the pen that is selected. The points are what the system would be given for that pen.
class CAreaStroke {
public:
    CAreaStroke(HDC hdc, CPixelScale px) noexcept;
    ~CAreaStroke();
    CAreaStroke(const CAreaStroke&) = delete;
    CAreaStroke& operator=(const CAreaStroke&) = delete;

    // Whether lines from point to point are drawn here. Upright ones are right with every pen, and
    // a pen that is not round makes corners of them that are better the system's.
    [[nodiscard]] bool Takes(const POINT* pPoints, int nCount, bool bClosed) const;
    void DrawLines(const POINT* pPoints, int nCount, bool bClosed) const;
    // The outline of the ellipse that the system would draw in a box, where it bends no more than
    // that the edges of the pen stay apart.
    [[nodiscard]] bool TakesRing(const RECT& rc) const;
    void DrawRing(const RECT& rc) const;

private:
    void DrawLine(POINT ptFrom, POINT ptTo, bool bRound) const;
    void Fill(const POINT* pPoints, int nCount) const;
    [[nodiscard]] double Middle(LONG n) const;

    HDC m_hdc;
    int32_t m_nWidth = 0; // of the pen in samples; 0: none that is drawn as an area
    bool m_bRound = true;
    HBRUSH m_hBrush = nullptr;
};
