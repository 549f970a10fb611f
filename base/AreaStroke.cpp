#include "base/AreaStroke.h"

#include "base/GdiScopes.h"
#include "base/Refusals.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr double REACH = 1 << 26;      // of coordinates whose sums and products are exact
constexpr int CAP_STEPS = 16;          // of half a circle
constexpr int MOST_QUARTER_STEPS = 64; // of a ring
constexpr double WHOLE_TURN = 6.283185307179586;

struct SolidPen {
    int32_t nWidth;
    COLORREF clr;
    bool bRound;
};

bool FindSolidPen(HDC hdc, SolidPen* pOut)
{
    HGDIOBJ hPen = ::GetCurrentObject(hdc, OBJ_PEN);
    const DWORD nKind = hPen ? ::GetObjectType(hPen) : 0;
    alignas(EXTLOGPEN) unsigned char room[sizeof(EXTLOGPEN) + 16 * sizeof(DWORD)];
    if (nKind != OBJ_PEN && nKind != OBJ_EXTPEN) return false;
    if (!::GetObjectA(hPen, sizeof room, room)) return false;
    if (nKind == OBJ_PEN) {
        LOGPEN pen{};
        std::memcpy(&pen, room, sizeof pen);
        *pOut = {pen.lopnWidth.x, pen.lopnColor, true};
        return pen.lopnStyle == PS_SOLID;
    }
    EXTLOGPEN pen{};
    std::memcpy(&pen, room, sizeof pen);
    *pOut = {static_cast<int32_t>(pen.elpWidth), pen.elpColor, false};
    return (pen.elpPenStyle & PS_STYLE_MASK) == PS_SOLID;
}

struct Spot {
    double fX;
    double fY;
};

bool IsInReach(const POINT& pt)
{
    return std::max(std::fabs(pt.x), std::fabs(pt.y)) < REACH;
}

bool IsSlanted(POINT pt1, POINT pt2)
{
    return pt1.x != pt2.x && pt1.y != pt2.y;
}

// From the middle of the pen on one side to its middle on the other.
Spot RadiusIn(const RECT& rc)
{
    return {(rc.right - 1.0 - rc.left) / 2, (rc.bottom - 1.0 - rc.top) / 2};
}

// As few as come within an eighth of a sample of the curve: each corner is rounded to a sample,
// which many short sides would show.
int RingSteps(Spot radius)
{
    const double fQuarter = WHOLE_TURN / 4 * std::sqrt(std::max(radius.fX, radius.fY));
    return 4 * static_cast<int>(std::min(std::ceil(fQuarter), double{MOST_QUARTER_STEPS}));
}

// The system takes a sample whose corner is inside of a figure: what lies half a sample before is
// taken by the middle of the sample then.
POINT CornerOf(Spot spot)
{
    return {static_cast<LONG>(std::floor(spot.fX)), static_cast<LONG>(std::floor(spot.fY))};
}

// What is between both ends of half a circle around a point, the way that the axes turn from one of
// them.
POINT* AddCap(POINT* pOut, Spot middle, Spot at)
{
    const double fCos = std::cos(WHOLE_TURN / 2 / CAP_STEPS);
    const double fSin = std::sin(WHOLE_TURN / 2 / CAP_STEPS);
    for (int n = 1; n < CAP_STEPS; ++n) {
        at = {at.fX * fCos - at.fY * fSin, at.fX * fSin + at.fY * fCos};
        *pOut++ = CornerOf({middle.fX + at.fX, middle.fY + at.fY});
    }
    return pOut;
}

// Where the edges of a line run: from a corner along the line, and a whole way further on.
struct Strip {
    POINT ptEdge;
    POINT ptWay;
};

// How far the edges of a strip are from where they belong at most, in samples, and a little of how
// far its ends are from being square. The line has a direction of length 1.
double Fault(Strip strip, Spot from, Spot along, int32_t nWidth)
{
    const POINT way = strip.ptWay;
    const double fWide = along.fX * way.y - along.fY * way.x - nWidth;
    const double fSkew = along.fX * way.x + along.fY * way.y;
    // Half a sample before its place, as CornerOf has it.
    const Spot off{strip.ptEdge.x + way.x / 2.0 - from.fX + 0.5,
                   strip.ptEdge.y + way.y / 2.0 - from.fY + 0.5};
    const double fAside = along.fX * off.fY - along.fY * off.fX;
    return std::fabs(fWide) / 2 + std::fabs(fAside) + std::fabs(fSkew) / 8;
}

// Of the strips near by the best one: each edge rounded by itself would make a line of a pixel a
// quarter too wide at one angle and too narrow at the next.
// Upright edges lie on whole samples as they are.
Strip BestStrip(Spot from, Spot along, int32_t nWidth)
{
    const POINT ptNear = CornerOf({0.5 - along.fY * nWidth, 0.5 + along.fX * nWidth});
    Strip best{CornerOf({from.fX - ptNear.x / 2.0, from.fY - ptNear.y / 2.0}), ptNear};
    if (along.fX == 0 || along.fY == 0) return best;
    double fLeast = REACH;
    for (int n = 0; n < 25 * 9; ++n) {
        const POINT way{ptNear.x + n % 5 - 2, ptNear.y + n / 5 % 5 - 2};
        const POINT ptEdge = CornerOf({from.fX - way.x / 2.0, from.fY - way.y / 2.0});
        const Strip strip{{ptEdge.x + n / 25 % 3 - 1, ptEdge.y + n / 75 - 1}, way};
        const double fFault = Fault(strip, from, along, nWidth);
        if (fFault >= fLeast) continue;
        fLeast = fFault;
        best = strip;
    }
    return best;
}

} // namespace

CAreaStroke::CAreaStroke(HDC hdc, CPixelScale px) noexcept : m_hdc(hdc)
{
    SolidPen pen{};
    if (px.Samples() < 2 || !FindSolidPen(hdc, &pen) || pen.nWidth < 2 || pen.nWidth >= REACH)
        return;
    m_hBrush = Made(::CreateSolidBrush(pen.clr));
    if (!m_hBrush) return;
    m_nWidth = pen.nWidth;
    m_bRound = pen.bRound;
}

CAreaStroke::~CAreaStroke()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

// A pen of an odd width has a sample in its middle, whose middle it goes through.
double CAreaStroke::Middle(LONG n) const
{
    return n + (m_nWidth % 2 != 0 ? 0.5 : 0);
}

void CAreaStroke::Fill(const POINT* pPoints, int nCount) const
{
    const CSelectScope pen(m_hdc, ::GetStockObject(NULL_PEN));
    const CSelectScope brush(m_hdc, m_hBrush);
    ::Polygon(m_hdc, pPoints, nCount);
}

bool CAreaStroke::Takes(const POINT* pPoints, int nCount, bool bClosed) const
{
    if (!m_nWidth || !std::all_of(pPoints, pPoints + nCount, IsInReach)) return false;
    const int nLines = bClosed ? nCount : nCount - 1;
    int nSlanted = 0;
    for (int n = 0; n < nLines; ++n)
        nSlanted += IsSlanted(pPoints[n], pPoints[(n + 1) % nCount]) ? 1 : 0;
    return m_bRound ? nSlanted > 0 : nSlanted == nLines;
}

// Where two lines meet there is a round end even of a pen that has none.
void CAreaStroke::DrawLines(const POINT* pPoints, int nCount, bool bClosed) const
{
    const int nLines = bClosed ? nCount : nCount - 1;
    for (int n = 0; n < nLines; ++n) {
        DrawLine(pPoints[n], pPoints[(n + 1) % nCount], m_bRound);
        if (!m_bRound && (bClosed || n > 0)) DrawLine(pPoints[n], pPoints[n], true);
    }
}

void CAreaStroke::DrawLine(POINT ptFrom, POINT ptTo, bool bRound) const
{
    const Spot from{Middle(ptFrom.x), Middle(ptFrom.y)};
    const Spot to{Middle(ptTo.x), Middle(ptTo.y)};
    const double fLength = std::hypot(to.fX - from.fX, to.fY - from.fY);
    Spot along{1, 0}; // of a point
    if (fLength > 0) along = {(to.fX - from.fX) / fLength, (to.fY - from.fY) / fLength};
    const Spot half{-along.fY * m_nWidth / 2, along.fX * m_nWidth / 2};
    const Strip strip = BestStrip(from, along, m_nWidth);
    const POINT ptEdge = strip.ptEdge;
    const POINT ptWay = strip.ptWay;
    const POINT ptEnd{ptEdge.x + ptTo.x - ptFrom.x, ptEdge.y + ptTo.y - ptFrom.y};
    POINT pts[2 * (CAP_STEPS + 1)];
    POINT* p = pts;
    *p++ = {ptEdge.x + ptWay.x, ptEdge.y + ptWay.y};
    if (bRound) p = AddCap(p, from, half);
    *p++ = ptEdge;
    *p++ = ptEnd;
    if (bRound) p = AddCap(p, to, {-half.fX, -half.fY});
    *p++ = {ptEnd.x + ptWay.x, ptEnd.y + ptWay.y};
    Fill(pts, static_cast<int>(p - pts));
}

bool CAreaStroke::TakesRing(const RECT& rc) const
{
    if (!m_nWidth || !IsInReach({rc.left, rc.top}) || !IsInReach({rc.right, rc.bottom}))
        return false;
    const Spot radius = RadiusIn(rc);
    const double fLess = std::min(radius.fX, radius.fY);
    return fLess > 0 && fLess * fLess > m_nWidth / 2.0 * std::max(radius.fX, radius.fY);
}

// Both edges run along the ellipse in the middle, as far from it as half of the pen.
void CAreaStroke::DrawRing(const RECT& rc) const
{
    const Spot radius = RadiusIn(rc);
    const Spot middle{Middle(rc.left) + radius.fX, Middle(rc.top) + radius.fY};
    const int nSteps = RingSteps(radius);
    POINT pts[2 * (4 * MOST_QUARTER_STEPS + 1)];
    for (int n = 0; n <= nSteps; ++n) {
        const double fAngle = WHOLE_TURN * (n % nSteps) / nSteps;
        const Spot at{std::cos(fAngle), std::sin(fAngle)};
        const double fAway = m_nWidth / 2.0 / std::hypot(at.fX * radius.fY, at.fY * radius.fX);
        const Spot away{at.fX * radius.fY * fAway, at.fY * radius.fX * fAway};
        const Spot on{middle.fX + at.fX * radius.fX, middle.fY + at.fY * radius.fY};
        pts[n] = CornerOf({on.fX + away.fX, on.fY + away.fY});
        pts[2 * nSteps + 1 - n] = CornerOf({on.fX - away.fX, on.fY - away.fY});
    }
    Fill(pts, 2 * (nSteps + 1));
}
