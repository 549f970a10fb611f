#include "meter/DialComponents.h"

#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "base/WideText.h"
#include "meter/DialGeometry.h"

#include <cstring>

namespace {

HPEN MakePen(int32_t nPixels, int32_t nWidth, COLORREF clr)
{
    return nWidth ? MakePixelPen(PS_SOLID, nPixels, nWidth, clr) : nullptr;
}

void Delete(HGDIOBJ hObject)
{
    if (hObject) ::DeleteObject(hObject);
}

} // namespace

CScaleLine::CScaleLine(int32_t nPixels, int32_t nWidth, COLORREF clr, CPixelScale px) noexcept
    : m_nPixels(nPixels), m_px(px), m_hPen(MakePen(nPixels, nWidth, clr))
{
}

CScaleLine CScaleLine::OfWidth(int32_t nWidth, COLORREF clr, CPixelScale px) noexcept
{
    if (nWidth < px(1)) nWidth = px(1);
    const int32_t nPixels = px.Unscaled(nWidth);
    return {nPixels > 1 ? nPixels : 1, nWidth, clr, px};
}

CScaleLine::~CScaleLine()
{
    Delete(m_hPen);
}

int CScaleLine::Draw(HDC hdc, POINT pt1, POINT pt2) const
{
    if (!m_hPen) return 0;
    const CSelectScope pen(hdc, m_hPen);
    const POINT pts[] = {pt1, pt2};
    DrawPixelLines(hdc, pts, 2, m_nPixels, m_px);
    return 1;
}

CArcAxis::CArcAxis(int32_t nPixels, COLORREF clr, CPixelScale px) noexcept
    : m_nPixels(nPixels), m_px(px), m_hPen(MakePen(nPixels, px(nPixels), clr))
{
}

CArcAxis::~CArcAxis()
{
    Delete(m_hPen);
}

int CArcAxis::Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep) const
{
    return DrawDialArc(hdc, m_hPen, nRadius, ptCentre, fStart, fSweep, m_nPixels, m_px);
}

namespace {

// GDI draws the far sides of a box one pixel before them.
RECT StrokedSquare(POINT ptStroked, int32_t nRadius, CPixelScale px)
{
    const RECT rc = SquareAround(ptStroked, nRadius);
    const int32_t nBefore = px(1) - 1;
    return {rc.left, rc.top, WrapSub(rc.right, nBefore), WrapSub(rc.bottom, nBefore)};
}

} // namespace

// GDI runs counter-clockwise from the first point to the second, so the end of the sweep comes
// first.
int DrawDialArc(HDC hdc, HPEN hPen, int32_t nRadius, POINT ptCentre, float fStart, float fSweep,
                int32_t nPixels, CPixelScale px)
{
    if (!hPen || !IsDrawableRadius(nRadius, px)) return 0;
    ptCentre = StrokedPoint(ptCentre, nPixels, px);
    const POINT ptFirst = PolarPoint(ptCentre, nRadius, fStart + fSweep, px);
    const POINT ptLast = PolarPoint(ptCentre, nRadius, fStart, px);
    if (fSweep < FULL_SWEEP && ptFirst.x == ptLast.x && ptFirst.y == ptLast.y) return 0;
    const CSelectScope pen(hdc, hPen);
    const RECT rc = StrokedSquare(ptCentre, nRadius, px);
    DrawPixelArc(hdc, rc, ptFirst, ptLast, px);
    return 1;
}

CScaleCentre::CScaleCentre(int32_t nRadius, int32_t nWidth, COLORREF clrPen, COLORREF clrFill,
                           CPixelScale px) noexcept
    : m_nRadius(px(nRadius)), m_nPixels(nWidth), m_px(px),
      m_hPen(MakePen(nWidth, px(nWidth), clrPen)),
      m_hBrush(nRadius ? Made(::CreateSolidBrush(clrFill)) : nullptr)
{
}

CScaleCentre::~CScaleCentre()
{
    Delete(m_hPen);
    Delete(m_hBrush);
}

int CScaleCentre::Draw(HDC hdc, POINT ptCentre) const
{
    if (m_nRadius <= 0 || !m_hBrush) return 0;
    const CSelectScope pen(hdc, m_hPen);
    const CSelectScope brush(hdc, m_hBrush);
    DrawPixelEllipse(hdc, StrokedBox(SquareAround(ptCentre, m_nRadius), m_nPixels, m_px), m_px);
    return 1;
}

CScaleMark::CScaleMark(FontCell cell, COLORREF clr, CPixelScale px) noexcept
    : m_hFont(MakeMeterFont(cell, FW_DONTCARE, px)), m_clr(clr), m_bWide(cell.bWide)
{
}

CScaleMark::~CScaleMark()
{
    Delete(m_hFont);
}

int CScaleMark::Draw(HDC hdc, int32_t nX, int32_t nY, const char* pszText) const
{
    return DrawMeterText(hdc, {nX, nY}, pszText, m_hFont, m_clr, m_bWide);
}

int32_t CScaleMark::WidthOf(HDC hdc, const char* pszText) const
{
    SIZE size{};
    return MeasureMeterText(hdc, pszText, m_hFont, m_bWide, &size) ? size.cx : 0;
}

// Numbers have the same bytes in this page as in all others.
bool MeasureMeterText(HDC hdc, const char* pszText, HFONT hFont, bool bWide, SIZE* pSize)
{
    const CSelectScope font(hdc, hFont);
    if (!bWide)
        return ::GetTextExtentPoint32A(hdc, pszText, static_cast<int>(std::strlen(pszText)),
                                       pSize) != FALSE;
    const CWideText text(PAGE_UTF8, pszText);
    return ::GetTextExtentPoint32W(hdc, text.Text(), text.Length(), pSize) != FALSE;
}

int DrawMeterText(HDC hdc, POINT ptTopLeft, const char* pszText, HFONT hFont, COLORREF clr,
                  bool bWide)
{
    if (!pszText || !hFont) return 0;
    const CTextColorScope color(hdc, clr);
    const CBkModeScope mode(hdc, TRANSPARENT);
    const CSelectScope font(hdc, hFont);
    const CTextPlaceScope place(hdc);
    if (!bWide) {
        ::TextOutA(hdc, ptTopLeft.x, ptTopLeft.y, pszText, static_cast<int>(std::strlen(pszText)));
        return 1;
    }
    const CWideText text(PAGE_UTF8, pszText);
    ::TextOutW(hdc, ptTopLeft.x, ptTopLeft.y, text.Text(), text.Length());
    return 1;
}
