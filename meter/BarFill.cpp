#include "meter/BarFill.h"

#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "base/Refusals.h"

CBarFill::CBarFill(const RECT& rcSegment, int32_t nStyle, COLORREF clrBack, COLORREF clrFore,
                   CPixelScale px) noexcept
    : m_draft(nStyle, px), m_rcSegment(rcSegment),
      m_hSegment(::IsRectEmpty(&rcSegment) ? nullptr : Made(::CreateRectRgnIndirect(&rcSegment))),
      m_clrBack(clrBack), m_clrFore(clrFore), m_px(px)
{
}

CBarFill::~CBarFill()
{
    if (m_hSegment) ::DeleteObject(m_hSegment);
}

HBRUSH CBarFill::Brush(HDC hdc)
{
    return m_draft.Brush(hdc, m_rcSegment, m_rcSegment, m_clrFore, m_clrBack);
}

int CBarFill::Draw(HDC hdc, HRGN hMeterRegion)
{
    HBRUSH hBrush = m_hSegment ? Brush(hdc) : nullptr;
    if (!hBrush) return 0;
    const CRegion visible(Made(::CreateRectRgn(0, 0, 0, 0)));
    if (visible.Get() && ::CombineRgn(visible.Get(), m_hSegment, hMeterRegion, RGN_AND) != ERROR) {
        const CBkColorScope back(hdc, m_clrBack);
        const CTextColorScope text(hdc, m_clrFore);
        ::FillRgn(hdc, visible.Get(), hBrush);
    }
    return 1;
}

int C3DBarFill::DrawCap(HDC hdc, const RECT& rcBox)
{
    HBRUSH hBrush = Brush(hdc);
    if (!hBrush) return 0;
    const CSelectScope brush(hdc, hBrush);
    const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
    const CBkColorScope back(hdc, BackColor());
    const CTextColorScope text(hdc, ForeColor());
    if (IsDrawableCurve(rcBox, Px()))
        ::Ellipse(hdc, rcBox.left, rcBox.top, rcBox.right, rcBox.bottom);
    return 1;
}
