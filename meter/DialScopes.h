// What the filled figures of dials are drawn with: a pen and a solid brush, made and selected for
// one figure or several, put back and deleted at the end of the scope.
#pragma once

#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "base/Refusals.h"

#include <cstdint>

class CFigureScope {
public:
    // The pen's width in pixels; 0 draws without outline.
    CFigureScope(HDC hdc, int32_t nPenWidth, COLORREF clrPen, COLORREF clrFill,
                 CPixelScale px = {}) noexcept
        : m_hPen(nPenWidth ? MakePixelPen(PS_SOLID, nPenWidth, px(nPenWidth), clrPen) : nullptr),
          m_hBrush(Made(::CreateSolidBrush(clrFill))), m_bReady(m_hBrush && (m_hPen || !nPenWidth)),
          m_pen(hdc, PenToSelect(nPenWidth)), m_brush(hdc, m_bReady ? m_hBrush : nullptr),
          m_corners(hdc, m_bReady && nPenWidth == 1 && px(1) > 1)
    {
    }
    ~CFigureScope()
    {
        m_brush.Restore();
        m_pen.Restore();
        if (m_hBrush) ::DeleteObject(m_hBrush);
        if (m_hPen) ::DeleteObject(m_hPen);
    }
    CFigureScope(const CFigureScope&) = delete;
    CFigureScope& operator=(const CFigureScope&) = delete;

    [[nodiscard]] bool IsReady() const { return m_bReady; } // false: nothing was selected

private:
    [[nodiscard]] HGDIOBJ PenToSelect(int32_t nPenWidth) const
    {
        if (!m_bReady) return nullptr;
        return nPenWidth ? static_cast<HGDIOBJ>(m_hPen) : ::GetStockObject(NULL_PEN);
    }

    HPEN m_hPen;
    HBRUSH m_hBrush;
    bool m_bReady;
    CSelectScope m_pen;
    CSelectScope m_brush;
    CCornerScope m_corners;
};
