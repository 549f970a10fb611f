#include "base/PixelPen.h"

#include "base/AreaStroke.h"
#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int MOST_POINTS = 16;
constexpr FLOAT CORNER_LIMIT = 1.5F;

// The lengths of lines and gaps that GDI gives a styled pen of one pixel, by style.
struct Dashes {
    DWORD nCount;
    DWORD nLengths[6];
};
constexpr Dashes g_dashes[] = {
    {2, {18, 6}}, {2, {3, 3}}, {4, {9, 6, 3, 6}}, {6, {9, 3, 3, 3, 3, 3}}};

bool IsBroken(int nStyle)
{
    return nStyle >= PS_DASH && nStyle <= PS_DASHDOTDOT;
}

// Pixels are square: so are the ends and corners of what is a pixel wide.
bool IsSquare(int nStyle, int32_t nPixels, int32_t nWidth)
{
    return nPixels == 1 && nWidth > 1 &&
           (nStyle == PS_SOLID || nStyle == PS_INSIDEFRAME || IsBroken(nStyle));
}

} // namespace

namespace {

// The far end of a side that is to end so much before, yet not before its first unit.
LONG EndBefore(LONG nLow, LONG nHigh, int32_t nBefore)
{
    return std::max(WrapSub(nHigh, nBefore), WrapAdd(nLow, 1));
}

bool IsNothing(const RECT& rc)
{
    return rc.left == rc.right || rc.top == rc.bottom;
}

} // namespace

RECT StrokedBox(const RECT& rc, int32_t nPixels, CPixelScale px)
{
    if (px.IsPlain() || nPixels == 0 || IsNothing(rc)) return rc;
    const PenOffset offset = PenOffsetOf(nPixels, px);
    const RECT box = NormalizedRect(rc);
    const LONG nLeft = WrapAdd(box.left, offset.nShift);
    const LONG nTop = WrapAdd(box.top, offset.nShift);
    return {nLeft, nTop, EndBefore(nLeft, box.right, offset.nTail),
            EndBefore(nTop, box.bottom, offset.nTail)};
}

RECT ShortBox(const RECT& rc, CPixelScale px)
{
    if (px.IsPlain() || IsNothing(rc)) return rc;
    const int32_t nMore = px(1) - 1;
    const RECT box = NormalizedRect(rc);
    return {box.left, box.top, EndBefore(box.left, box.right, nMore),
            EndBefore(box.top, box.bottom, nMore)};
}

HPEN MakePixelPen(int nStyle, int32_t nPixels, int32_t nWidth, COLORREF clr)
{
    if (!IsSquare(nStyle, nPixels, nWidth))
        return Made(::CreatePen(nStyle, nWidth, clr),
                    nStyle >= PS_SOLID && nStyle <= PS_INSIDEFRAME);
    const LOGBRUSH brush{BS_SOLID, clr, 0};
    const auto nUnit = static_cast<DWORD>(nWidth);
    constexpr DWORD FORM = PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER;
    if (!IsBroken(nStyle)) return Made(::ExtCreatePen(FORM | PS_SOLID, nUnit, &brush, 0, nullptr));
    const Dashes& dashes = g_dashes[nStyle - PS_DASH];
    DWORD nLengths[6];
    for (DWORD n = 0; n < dashes.nCount; ++n) nLengths[n] = dashes.nLengths[n] * nUnit;
    return Made(::ExtCreatePen(FORM | PS_USERSTYLE, nUnit, &brush, dashes.nCount, nLengths));
}

namespace {

bool IsBrokenNow(HDC hdc) // the pen that is selected
{
    EXTLOGPEN pen{};
    HGDIOBJ hPen = ::GetCurrentObject(hdc, OBJ_PEN);
    if (!hPen || ::GetObjectType(hPen) != OBJ_EXTPEN) return false;
    const int nSize = ::GetObjectA(hPen, 0, nullptr);
    alignas(EXTLOGPEN) unsigned char room[sizeof(EXTLOGPEN) + sizeof(g_dashes[0].nLengths)];
    if (nSize > static_cast<int>(sizeof room) || !::GetObjectA(hPen, nSize, room)) return false;
    std::memcpy(&pen, room, sizeof pen);
    return (pen.elpPenStyle & PS_STYLE_MASK) == PS_USERSTYLE;
}

// A pen of one pixel that is several units wide: one of a unit is the system's own, as ever.
bool IsWholePixel(int32_t nPixels, CPixelScale px)
{
    return nPixels == 1 && px(1) > 1;
}

void DrawPolyline(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    const CAreaStroke stroke(hdc, px);
    if (stroke.Takes(pPoints, nCount, false))
        stroke.DrawLines(pPoints, nCount, false);
    else
        ::Polyline(hdc, pPoints, nCount);
}

void DrawPolygon(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    const CAreaStroke stroke(hdc, px);
    const bool bAreas = stroke.Takes(pPoints, nCount, true);
    {
        const CSelectScope pen(hdc, bAreas ? ::GetStockObject(NULL_PEN) : nullptr);
        ::Polygon(hdc, pPoints, nCount);
    }
    if (bAreas) stroke.DrawLines(pPoints, nCount, true);
}

// A line of square pixels from the first one to the last one, which is left out.
class CPixelLine {
public:
    CPixelLine(POINT pt1, POINT pt2, int32_t nPixel) noexcept
        : m_pt1(pt1), m_pt2(pt2), m_nPixel(nPixel)
    {
    }

    [[nodiscard]] bool IsUpright() const { return m_pt1.x == m_pt2.x || m_pt1.y == m_pt2.y; }
    [[nodiscard]] bool IsNothing() const { return m_pt1.x == m_pt2.x && m_pt1.y == m_pt2.y; }

    // From edge to edge of the pixels.
    void Draw(HDC hdc, CPixelScale px) const
    {
        if (IsNothing()) return;
        const POINT pts[] = {Moved(m_pt1), Moved(m_pt2)};
        DrawPolyline(hdc, pts, 2, px);
    }
    // The middle of the pixel edge before the last one.
    [[nodiscard]] POINT End() const { return Moved(m_pt2); }

private:
    // Across the line to the middle of its pixels, and along it back by what lies before an edge.
    [[nodiscard]] POINT Moved(POINT pt) const
    {
        const int32_t nMiddle = m_nPixel / 2;
        if (m_pt1.y == m_pt2.y)
            return {WrapAdd(pt.x, m_pt2.x < m_pt1.x ? m_nPixel : 0), WrapAdd(pt.y, nMiddle)};
        if (m_pt1.x == m_pt2.x)
            return {WrapAdd(pt.x, nMiddle), WrapAdd(pt.y, m_pt2.y < m_pt1.y ? m_nPixel : 0)};
        const int64_t nX = int64_t{m_pt2.x} - m_pt1.x;
        const int64_t nY = int64_t{m_pt2.y} - m_pt1.y;
        const int64_t nFarther = std::max(nX < 0 ? -nX : nX, nY < 0 ? -nY : nY);
        return {WrapAdd(pt.x, static_cast<LONG>(nMiddle - nX * nMiddle / nFarther)),
                WrapAdd(pt.y, static_cast<LONG>(nMiddle - nY * nMiddle / nFarther))};
    }

    POINT m_pt1;
    POINT m_pt2;
    int32_t m_nPixel;
};

// The whole with its corners, and once more each upright line, whose ends are told to the pixel.
void DrawSquareLines(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    const int32_t nPixel = px(1);
    const CPixelLine last(pPoints[nCount - 2], pPoints[nCount - 1], nPixel);
    if (nCount == 2) return last.Draw(hdc, px);
    POINT pts[MOST_POINTS] = {};
    for (int n = 0; n < nCount; ++n)
        pts[n] = {WrapAdd(pPoints[n].x, nPixel / 2), WrapAdd(pPoints[n].y, nPixel / 2)};
    if (!last.IsNothing()) pts[nCount - 1] = last.End();
    DrawPolyline(hdc, pts, nCount, px);
    if (IsBrokenNow(hdc)) return;
    for (int n = 1; n < nCount; ++n) {
        const CPixelLine line(pPoints[n - 1], pPoints[n], nPixel);
        if (line.IsUpright()) line.Draw(hdc, px);
    }
}

void DrawScaledLines(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (IsWholePixel(nPixels, px)) return DrawSquareLines(hdc, pPoints, nCount, px);
    POINT pts[MOST_POINTS] = {};
    for (int n = 0; n < nCount; ++n) pts[n] = StrokedPoint(pPoints[n], nPixels, px);
    DrawPolyline(hdc, pts, nCount, px);
}

} // namespace

void DrawPixelLines(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (!px.IsPlain() && nCount <= MOST_POINTS)
        return DrawScaledLines(hdc, pPoints, nCount, nPixels, px);
    const CPositionScope position(hdc, pPoints[0]);
    for (int n = 1; n < nCount; ++n) ::LineTo(hdc, pPoints[n].x, pPoints[n].y);
}

void DrawPixelPolyline(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (!px.IsPlain() && nCount <= MOST_POINTS)
        return DrawScaledLines(hdc, pPoints, nCount, nPixels, px);
    ::Polyline(hdc, pPoints, nCount);
}

namespace {

// The upright sides to the pixel: what the system makes of a wide pen may lack a unit at its ends.
void DrawUprightSides(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    if (IsBrokenNow(hdc)) return;
    for (int n = 0; n < nCount; ++n) {
        const CPixelLine side(pPoints[n], pPoints[(n + 1) % nCount], px(1));
        if (side.IsUpright()) side.Draw(hdc, px);
    }
}

} // namespace

void DrawPixelPolygon(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (px.IsPlain() || nCount > MOST_POINTS) {
        ::Polygon(hdc, pPoints, nCount);
        return;
    }
    POINT pts[MOST_POINTS] = {};
    for (int n = 0; n < nCount; ++n) pts[n] = StrokedPoint(pPoints[n], nPixels, px);
    DrawPolygon(hdc, pts, nCount, px);
    if (IsWholePixel(nPixels, px)) DrawUprightSides(hdc, pPoints, nCount, px);
}

void DrawPixelRectangle(HDC hdc, const RECT& rc, int32_t nPixels, CPixelScale px)
{
    const RECT box = nPixels ? StrokedBox(rc, nPixels, px) : ShortBox(rc, px);
    ::Rectangle(hdc, box.left, box.top, box.right, box.bottom);
    if (!IsWholePixel(nPixels, px)) return;
    if (WidthOf(rc) < px(1) || HeightOf(rc) < px(1)) return;
    const LONG nLastX = WrapSub(rc.right, px(1));
    const LONG nLastY = WrapSub(rc.bottom, px(1));
    const POINT pts[] = {{rc.left, rc.top}, {nLastX, rc.top}, {nLastX, nLastY}, {rc.left, nLastY}};
    DrawUprightSides(hdc, pts, 4, px);
}

void DrawPixelEllipse(HDC hdc, const RECT& rc, CPixelScale px)
{
    const CAreaStroke stroke(hdc, px);
    if (!stroke.TakesRing(rc)) {
        ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
        return;
    }
    {
        const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
        ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
    }
    stroke.DrawRing(rc);
}

CCornerScope::CCornerScope(HDC hdc, bool bSquare) noexcept : m_hdc(hdc)
{
    if (bSquare) ::SetMiterLimit(hdc, CORNER_LIMIT, &m_fBefore);
}

void CCornerScope::Restore() noexcept
{
    if (m_fBefore > 0) ::SetMiterLimit(m_hdc, m_fBefore, nullptr);
    m_fBefore = 0;
}

CPixelPenScope::CPixelPenScope(HDC hdc, bool bNullPen, int nStyle, int32_t nPixels, int32_t nWidth,
                               COLORREF clr) noexcept
    : m_hdc(hdc), m_hMade(bNullPen ? nullptr : MakePixelPen(nStyle, nPixels, nWidth, clr)),
      m_corners(hdc, m_hMade && IsSquare(nStyle, nPixels, nWidth))
{
    const HGDIOBJ hPen = bNullPen ? ::GetStockObject(NULL_PEN) : m_hMade;
    if (hPen) m_hPrev = ::SelectObject(hdc, hPen);
}

void CPixelPenScope::Restore() noexcept
{
    m_corners.Restore();
    if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
    if (m_hMade) ::DeleteObject(m_hMade); // only now: a selected pen is not to be deleted
    m_hPrev = nullptr;
    m_hMade = nullptr;
}
