// Outlines of solid pens as the band between two figures of the system's own: along a curve its
// wide pens take thirty times as long as a figure that is filled. For surfaces of units, as screens
// and bitmaps are, where such figures end where the pen would; in smooth pictures outlines are
// evener as areas.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

// With the pen and the brush that are selected. The boxes are what the system would be given for
// that pen.
class CBandStroke {
public:
    CBandStroke(HDC hdc, CPixelScale px) noexcept;
    ~CBandStroke();
    CBandStroke(const CBandStroke&) = delete;
    CBandStroke& operator=(const CBandStroke&) = delete;

    // Whether figures in such a box are drawn here, with their fill.
    [[nodiscard]] bool Takes(const RECT& rc) const;
    void DrawEllipse(const RECT& rc) const;
    void DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    void DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    void DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd) const;
    // A rectangle whose fill hides what is below.
    [[nodiscard]] bool TakesBox(const RECT& rc) const;
    void DrawBox(const RECT& rc) const;
    // The ellipse of all four corners has that size.
    [[nodiscard]] bool TakesRoundRect(const RECT& rc, SIZE corner) const;
    void DrawRoundRect(const RECT& rc, SIZE corner) const;

private:
    enum class Kind { Box, RoundRect, Ellipse, Chord, Pie };
    struct Figure {
        Kind nKind;
        RECT rc;
        SIZE corner;
        POINT ptStart;
        POINT ptEnd;
    };

    [[nodiscard]] RECT Outer(const RECT& rc) const;
    [[nodiscard]] RECT Inner(const RECT& rc) const;
    void Draw(const Figure& figure) const;
    void Fill(const Figure& figure, const RECT& rc, int32_t nMore) const;
    [[nodiscard]] static HRGN MakeRegion(const Figure& figure, const RECT& rc, int32_t nMore);
    void FillBand(const Figure& figure) const;

    HDC m_hdc;
    int32_t m_nWidth = 0; // of the pen; 0: none that is drawn here
    int32_t m_nShort = 0; // what curves without a pen leave out
    bool m_bRound = true;
    HBRUSH m_hBrush = nullptr; // of its colour
};
