// Pens and lines whose width is told in pixels of the engine's constants. At the plain scale they
// are the calls that GDI has for the same numbers; at another one they cover the pixels that these
// would, each so much larger.
#pragma once

#include "base/PixelScale.h"
#include "base/WrapMath.h"

#include <windows.h>

// Where the middle of a pen belongs that is so many pixels wide: that far from the coordinate,
// which is the first unit of its pixel. nTail: how far the last pixel of a box reaches from there.
struct PenOffset {
    int32_t nShift;
    int32_t nTail;
};
constexpr PenOffset PenOffsetOf(int32_t nPixels, CPixelScale px)
{
    if (px.IsPlain()) return {0, 0};
    const int32_t nExact = px(nPixels) / 2 - px(nPixels / 2);
    const int32_t nShift = nExact > 0 ? nExact : 0; // where halves have gone up
    return {nShift, px(1) - 1 - nShift};
}

// What GDI is asked to draw in a box with such a pen; nPixels: 0 without one.
RECT StrokedBox(const RECT& rc, int32_t nPixels, CPixelScale px);
// The same where GDI leaves out the last pixels: of the regions of curves, and of rectangles
// without a pen.
RECT ShortBox(const RECT& rc, CPixelScale px);

constexpr POINT StrokedPoint(POINT pt, int32_t nPixels, CPixelScale px)
{
    const int32_t nShift = PenOffsetOf(nPixels, px).nShift;
    return {WrapAdd(pt.x, nShift), WrapAdd(pt.y, nShift)};
}

// A pen of nPixels, which comes to nWidth units. Null when there is none to be had.
HPEN MakePixelPen(int nStyle, int32_t nPixels, int32_t nWidth, COLORREF clr);

// Lines from point to point with the selected pen of nPixels. The current position is kept. A pen
// of one pixel leaves out the last one, as GDI does.
void DrawPixelLines(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px);

// The same by one call for all of them.
void DrawPixelPolyline(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px);

// The quality of a font for texts that have nOwn at the plain scale: samples make letters smooth by
// themselves.
constexpr BYTE TextQuality(CPixelScale px, DWORD nOwn)
{
    if (px.Samples() > 1) return NONANTIALIASED_QUALITY;
    return static_cast<BYTE>(px.HasGreyTexts() ? ANTIALIASED_QUALITY : nOwn);
}

// A polygon, and a rectangle that ends before its right and bottom side, with the selected pen of
// nPixels.
void DrawPixelPolygon(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px);
void DrawPixelRectangle(HDC hdc, const RECT& rc, int32_t nPixels, CPixelScale px);

// What StrokedBox gives for the selected pen.
void DrawPixelEllipse(HDC hdc, const RECT& rc, CPixelScale px);

// Square corners are whole, and pointed ones have no spikes: for figures that are drawn with a pen
// of one pixel at another scale.
class CCornerScope {
public:
    CCornerScope(HDC hdc, bool bSquare) noexcept;
    ~CCornerScope() { Restore(); }
    CCornerScope(const CCornerScope&) = delete;
    CCornerScope& operator=(const CCornerScope&) = delete;

    void Restore() noexcept;

private:
    HDC m_hdc;
    FLOAT m_fBefore = 0; // 0: it was left alone
};

// A solid or styled pen, or the stock null pen, for a scope. A pen that cannot be made is not
// selected: the drawing then goes on with the pen that the device context holds.
class CPixelPenScope {
public:
    CPixelPenScope(HDC hdc, int32_t nPixels, COLORREF clr, CPixelScale px) noexcept
        : CPixelPenScope(hdc, false, PS_SOLID, nPixels, px(nPixels), clr)
    {
    }
    // nWidth: what it comes to.
    CPixelPenScope(HDC hdc, bool bNullPen, int nStyle, int32_t nPixels, int32_t nWidth,
                   COLORREF clr) noexcept;
    ~CPixelPenScope() { Restore(); }
    CPixelPenScope(const CPixelPenScope&) = delete;
    CPixelPenScope& operator=(const CPixelPenScope&) = delete;

    void Restore() noexcept; // before the end of the scope, where the order asks for it

private:
    HDC m_hdc;
    HGDIOBJ m_hMade;
    HGDIOBJ m_hPrev = nullptr; // null when nothing was selected: then nothing is put back
    CCornerScope m_corners;
};
