#include "base/PixelPen.h"

#include "base/AreaStroke.h"
#include "base/BandStroke.h"
#include "base/BrokenPen.h"
#include "base/DrawLimits.h"
#include "base/GdiScopes.h"
#include "base/Rects.h"
#include "base/Refusals.h"

#include <algorithm>

namespace {

constexpr int MOST_POINTS = 512;
constexpr FLOAT CORNER_LIMIT = 1.5F;

// The lengths of lines and gaps that GDI gives a styled pen of one pixel, by style.
struct Dashes {
    DWORD nCount;
    DWORD nLengths[BrokenPen::MOST_LENGTHS];
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
    DWORD nLengths[BrokenPen::MOST_LENGTHS];
    for (DWORD n = 0; n < dashes.nCount; ++n) nLengths[n] = dashes.nLengths[n] * nUnit;
    return Made(::ExtCreatePen(FORM | PS_USERSTYLE, nUnit, &brush, dashes.nCount, nLengths));
}

namespace {

// A pen of one pixel that is several units wide: one of a unit is the system's own, as ever.
bool IsWholePixel(int32_t nPixels, CPixelScale px)
{
    return nPixels == 1 && px(1) > 1;
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

    // The middle of the edge that the first pixel begins at, and of the one before the last pixel.
    [[nodiscard]] POINT Begin() const { return Moved(m_pt1); }
    [[nodiscard]] POINT End() const { return Moved(m_pt2); }
    void Draw(HDC hdc) const
    {
        const POINT pts[] = {Begin(), End()};
        ::Polyline(hdc, pts, 2);
    }

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

// To the pixel: what the system makes of a wide pen may lack a unit at its ends.
void DrawUprightLines(HDC hdc, const POINT* pPoints, int nCount, bool bClosed, int32_t nPixel)
{
    for (int n = bClosed ? 0 : 1; n < nCount; ++n) {
        const CPixelLine line(pPoints[(n + nCount - 1) % nCount], pPoints[n], nPixel);
        if (line.IsUpright() && !line.IsNothing()) line.Draw(hdc);
    }
}

POINT MiddleOf(POINT pt, int32_t nPixel)
{
    return {WrapAdd(pt.x, nPixel / 2), WrapAdd(pt.y, nPixel / 2)};
}

// Its own last pixel is left out, and those of upright lines belong to the next ones.
void AddSquareLines(CAreaStroke* pStroke, const POINT* pPoints, int nCount, bool bClosed,
                    int32_t nPixel)
{
    const int nLines = bClosed ? nCount : nCount - 1;
    bool bUprightBefore = true; // then the point between has no joint yet
    for (int n = 0; n < nLines; ++n) {
        const POINT ptNext = pPoints[(n + 1) % nCount];
        const CPixelLine line(pPoints[n], ptNext, nPixel);
        if (line.IsNothing()) continue;
        const bool bFirst = !bClosed && n == 0;
        const bool bLast = !bClosed && n == nLines - 1;
        const bool bUpright = line.IsUpright();
        const POINT ptFrom = bUpright || bFirst ? line.Begin() : MiddleOf(pPoints[n], nPixel);
        const POINT ptTo = bUpright || bLast ? line.End() : MiddleOf(ptNext, nPixel);
        pStroke->AddLine(ptFrom, ptTo);
        if (!bUpright && !bFirst && bUprightBefore) pStroke->AddJoint(ptFrom);
        if (!bUpright && !bLast) pStroke->AddJoint(ptTo);
        bUprightBefore = bUpright;
    }
}

// The whole with its corners, and once more each upright line, whose ends are told to the pixel.
void DrawSquareLines(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    const int32_t nPixel = px(1);
    CAreaStroke stroke(hdc, px);
    if (stroke.Takes(pPoints, nCount))
        return AddSquareLines(&stroke, pPoints, nCount, false, nPixel);
    const CPixelLine last(pPoints[nCount - 2], pPoints[nCount - 1], nPixel);
    if (nCount == 2) return last.IsNothing() ? void() : last.Draw(hdc);
    POINT pts[MOST_POINTS + 1] = {};
    for (int n = 0; n < nCount; ++n) pts[n] = MiddleOf(pPoints[n], nPixel);
    pts[0] = CPixelLine(pPoints[0], pPoints[1], nPixel).Begin();
    if (!last.IsNothing()) pts[nCount - 1] = last.End();
    ::Polyline(hdc, pts, nCount);
    if (!IsBrokenNow(hdc)) DrawUprightLines(hdc, pPoints, nCount, false, nPixel);
}

void DrawScaledLines(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (IsWholePixel(nPixels, px)) {
        if (!IsBrokenNow(hdc)) return DrawSquareLines(hdc, pPoints, nCount, px);
        // Of lines that are drawn one by one each begins with a dash.
        for (int n = 1; n < nCount; ++n) {
            const CPixelLine line(pPoints[n - 1], pPoints[n], px(1));
            if (!line.IsNothing()) line.Draw(hdc);
        }
        return;
    }
    POINT pts[MOST_POINTS] = {};
    for (int n = 0; n < nCount; ++n) pts[n] = StrokedPoint(pPoints[n], nPixels, px);
    CAreaStroke stroke(hdc, px);
    if (stroke.Takes(pts, nCount))
        stroke.AddLines(pts, nCount, false);
    else
        ::Polyline(hdc, pts, nCount);
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

// What fill paints with the selected brush, and the outline by areas where they take it, else with
// the selected pen.
void DrawOutlined(HDC hdc, bool bAreas, const auto& fill, const auto& outline)
{
    {
        const CSelectScope pen(hdc, bAreas ? ::GetStockObject(NULL_PEN) : nullptr);
        fill();
    }
    if (bAreas) outline();
}

} // namespace

void DrawStrokedPolygon(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    CAreaStroke stroke(hdc, px);
    DrawOutlined(
        hdc, stroke.Takes(pPoints, nCount), [&] { ::Polygon(hdc, pPoints, nCount); },
        [&] {
            stroke.AddLines(pPoints, nCount, true);
            for (int n = 0; n < nCount && !stroke.IsRound(); ++n) stroke.AddJoint(pPoints[n]);
        });
}

namespace {

// What fill paints, and the sides of its outline that are a pixel wide.
void DrawSquareFigure(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px, const auto& fill)
{
    CAreaStroke stroke(hdc, px);
    const bool bAreas = stroke.Takes(pPoints, nCount);
    DrawOutlined(hdc, bAreas, fill, [&] { AddSquareLines(&stroke, pPoints, nCount, true, px(1)); });
    if (!bAreas && !IsBrokenNow(hdc)) DrawUprightLines(hdc, pPoints, nCount, true, px(1));
}

// A broken outline goes around from the first point on, over what is filled without it.
void DrawBrokenRing(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    POINT pts[MOST_POINTS + 1] = {};
    std::copy_n(pPoints, nCount, pts);
    pts[nCount] = pts[0];
    if (!DrawUprightDashes(hdc, pts, nCount + 1, px(1))) DrawSquareLines(hdc, pts, nCount + 1, px);
}

void DrawBrokenPolygon(HDC hdc, const POINT* pPoints, int nCount, CPixelScale px)
{
    {
        const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
        ::Polygon(hdc, pPoints, nCount);
    }
    DrawBrokenRing(hdc, pPoints, nCount, px);
}

// The system begins at the top right and goes by the left. Without a pen it leaves out the last
// unit.
void DrawBrokenRectangle(HDC hdc, const RECT& rc, CPixelScale px)
{
    const int32_t nPixel = px(1);
    const RECT rcLast{WrapAdd(rc.left, nPixel), WrapAdd(rc.top, nPixel), WrapSub(rc.right, nPixel),
                      WrapSub(rc.bottom, nPixel)};
    if (rcLast.left < rcLast.right && rcLast.top < rcLast.bottom) {
        const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
        ::Rectangle(hdc, rcLast.left, rcLast.top, WrapAdd(rcLast.right, 1),
                    WrapAdd(rcLast.bottom, 1));
    }
    const POINT pts[] = {{rcLast.right, rc.top},
                         {rc.left, rc.top},
                         {rc.left, rcLast.bottom},
                         {rcLast.right, rcLast.bottom}};
    DrawBrokenRing(hdc, pts, 4, px);
}

} // namespace

void DrawPixelPolygon(HDC hdc, const POINT* pPoints, int nCount, int32_t nPixels, CPixelScale px)
{
    if (px.IsPlain() || nCount > MOST_POINTS) {
        ::Polygon(hdc, pPoints, nCount);
        return;
    }
    if (IsWholePixel(nPixels, px) && IsBrokenNow(hdc))
        return DrawBrokenPolygon(hdc, pPoints, nCount, px);
    POINT pts[MOST_POINTS] = {};
    for (int n = 0; n < nCount; ++n) pts[n] = StrokedPoint(pPoints[n], nPixels, px);
    if (!IsWholePixel(nPixels, px)) return DrawStrokedPolygon(hdc, pts, nCount, px);
    DrawSquareFigure(hdc, pPoints, nCount, px, [&] { ::Polygon(hdc, pts, nCount); });
}

void DrawPixelRectangle(HDC hdc, const RECT& rc, int32_t nPixels, CPixelScale px)
{
    const bool bSided = IsWholePixel(nPixels, px) && WidthOf(rc) >= px(1) && HeightOf(rc) >= px(1);
    const RECT box = nPixels ? StrokedBox(rc, nPixels, px) : ShortBox(rc, px);
    if (bSided) {
        const CBandStroke band(hdc, px);
        if (band.TakesBox(box)) return band.DrawBox(box);
        if (IsBrokenNow(hdc)) return DrawBrokenRectangle(hdc, rc, px);
    }
    const auto fill = [&] { ::Rectangle(hdc, box.left, box.top, box.right, box.bottom); };
    if (!bSided) return fill();
    const LONG nLastX = WrapSub(rc.right, px(1));
    const LONG nLastY = WrapSub(rc.bottom, px(1));
    const POINT pts[] = {{rc.left, rc.top}, {nLastX, rc.top}, {nLastX, nLastY}, {rc.left, nLastY}};
    DrawSquareFigure(hdc, pts, 4, px, fill);
}

// Around a single unit some systems let a wide pen go wherever their memory leads it.
void DrawPixelEllipse(HDC hdc, const RECT& rc, CPixelScale px)
{
    if (!px.IsPlain() && WidthOf(rc) < 2 && HeightOf(rc) < 2) return;
    const CBandStroke band(hdc, px);
    if (band.Takes(rc)) return band.DrawEllipse(rc);
    CAreaStroke stroke(hdc, px);
    DrawOutlined(
        hdc, stroke.TakesCurve(rc), [&] { ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom); },
        [&] { stroke.DrawRing(rc); });
}

void DrawPixelRoundRect(HDC hdc, const RECT& rc, SIZE corner, CPixelScale px)
{
    const CBandStroke band(hdc, px);
    if (band.TakesRoundRect(rc, corner)) return band.DrawRoundRect(rc, corner);
    CAreaStroke stroke(hdc, px);
    DrawOutlined(
        hdc, stroke.TakesRoundRect(rc, corner),
        [&] { ::RoundRect(hdc, rc.left, rc.top, rc.right, rc.bottom, corner.cx, corner.cy); },
        [&] { stroke.DrawRoundRect(rc, corner); });
}

void DrawPixelArc(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd, CPixelScale px)
{
    const CBandStroke band(hdc, px);
    if (band.Takes(rc)) return band.DrawArc(rc, ptStart, ptEnd);
    CAreaStroke stroke(hdc, px);
    if (stroke.TakesCurve(rc))
        stroke.DrawArc(rc, ptStart, ptEnd);
    else
        ::Arc(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

void DrawPixelChord(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd, CPixelScale px)
{
    const CBandStroke band(hdc, px);
    if (band.Takes(rc)) return band.DrawChord(rc, ptStart, ptEnd);
    CAreaStroke stroke(hdc, px);
    DrawOutlined(
        hdc, stroke.TakesCurve(rc),
        [&] {
            ::Chord(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x,
                    ptEnd.y);
        },
        [&] { stroke.DrawChord(rc, ptStart, ptEnd); });
}

void DrawPixelPie(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd, CPixelScale px)
{
    const CBandStroke band(hdc, px);
    if (band.Takes(rc)) return band.DrawPie(rc, ptStart, ptEnd);
    CAreaStroke stroke(hdc, px);
    DrawOutlined(
        hdc, stroke.TakesCurve(rc),
        [&] {
            ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x,
                  ptEnd.y);
        },
        [&] { stroke.DrawPie(rc, ptStart, ptEnd); });
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

namespace {

// Null, and 0 pixels, for what is no pen of pixels.
HPEN MakePenLike(HGDIOBJ hPen, CPixelScale px, int32_t* pnPixels)
{
    LOGPEN pen{};
    if (px.IsPlain() || !hPen || ::GetObjectType(hPen) != OBJ_PEN) return nullptr;
    if (!::GetObjectA(hPen, sizeof pen, &pen) || pen.lopnStyle > PS_INSIDEFRAME) return nullptr;
    const auto nStyle = static_cast<int>(pen.lopnStyle);
    const int32_t nPixels = std::max(DrawnPenWidth(nStyle, pen.lopnWidth.x), int32_t{1});
    const HPEN hMade =
        nStyle == PS_NULL ? nullptr : MakePixelPen(nStyle, nPixels, px(nPixels), pen.lopnColor);
    if (hMade) *pnPixels = nPixels;
    return hMade;
}

} // namespace

CHeldPenScope::CHeldPenScope(HDC hdc, CPixelScale px) noexcept
    : m_hdc(hdc), m_hMade(MakePenLike(::GetCurrentObject(hdc, OBJ_PEN), px, &m_nPixels)),
      m_corners(hdc, m_nPixels == 1 && px(1) > 1)
{
    if (m_hMade) m_hPrev = ::SelectObject(hdc, m_hMade);
}

CHeldPenScope::~CHeldPenScope()
{
    m_corners.Restore();
    if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
    if (m_hMade) ::DeleteObject(m_hMade);
}
