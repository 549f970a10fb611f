#include "base/AreaStroke.h"

#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/Shown.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr double REACH = 1 << 26;      // of coordinates whose sums and products are exact
constexpr int CAP_STEPS = 16;          // of half a circle
constexpr int MOST_QUARTER_STEPS = 64; // of a curve
constexpr int MOST_POINTS = 4 * (MOST_QUARTER_STEPS + 1);
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

bool IsInReach(const POINT& pt)
{
    return std::max(std::fabs(pt.x), std::fabs(pt.y)) < REACH;
}

bool IsSlanted(POINT pt1, POINT pt2)
{
    return pt1.x != pt2.x && pt1.y != pt2.y;
}

// As few as come within an eighth of a unit of the curve: each corner is rounded to a unit, which
// many short sides would show.
int QuarterSteps(double fRadius)
{
    const double fSteps = std::ceil(WHOLE_TURN / 4 * std::sqrt(fRadius));
    return static_cast<int>(std::clamp(fSteps, 1.0, double{MOST_QUARTER_STEPS}));
}

} // namespace

// Where the edges of a line run: from a corner along the line, and a whole way further on.
struct CAreaStroke::Strip {
    POINT ptEdge;
    POINT ptWay;
};

// The system takes a unit whose corner is inside of a figure: what lies half a unit before is taken
// by the middle of the unit then.
POINT CAreaStroke::CornerOf(Spot spot)
{
    return {static_cast<LONG>(std::floor(spot.fX)), static_cast<LONG>(std::floor(spot.fY))};
}

// What is between both ends of half a circle around a point, the way that the axes turn from one of
// them.
POINT* CAreaStroke::AddCap(POINT* pOut, Spot middle, Spot at)
{
    const double fCos = std::cos(WHOLE_TURN / 2 / CAP_STEPS);
    const double fSin = std::sin(WHOLE_TURN / 2 / CAP_STEPS);
    for (int n = 1; n < CAP_STEPS; ++n) {
        at = {at.fX * fCos - at.fY * fSin, at.fX * fSin + at.fY * fCos};
        *pOut++ = CornerOf({middle.fX + at.fX, middle.fY + at.fY});
    }
    return pOut;
}

// How far the edges of a strip are from where they belong at most, in units, and a little of how
// far its ends are from being square. The line has a direction of length 1.
double CAreaStroke::Fault(const Strip& strip, Spot from, Spot along, int32_t nWidth)
{
    const POINT way = strip.ptWay;
    const double fWide = along.fX * way.y - along.fY * way.x - nWidth;
    const double fSkew = along.fX * way.x + along.fY * way.y;
    // Half a unit before its place, as CornerOf has it.
    const Spot off{strip.ptEdge.x + way.x / 2.0 - from.fX + 0.5,
                   strip.ptEdge.y + way.y / 2.0 - from.fY + 0.5};
    const double fAside = along.fX * off.fY - along.fY * off.fX;
    return std::fabs(fWide) / 2 + std::fabs(fAside) + std::fabs(fSkew) / 8;
}

// Of the strips near by the best one: each edge rounded by itself would make a line of a pixel a
// quarter too wide at one angle and too narrow at the next. Upright edges lie on whole units as
// they are.
CAreaStroke::Strip CAreaStroke::BestStrip(Spot from, Spot along, int32_t nWidth)
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

// Both edges of a curve, as far from it as half of the pen.
class CAreaStroke::CCurve {
public:
    explicit CCurve(int32_t nWidth) noexcept : m_fHalf(nWidth / 2.0) {}

    void AddSweep(Spot middle, Spot radius, const Sweep& sweep)
    {
        const double fQuarters = std::ceil(sweep.fSpan / (WHOLE_TURN / 4) - 1e-9);
        const int nSteps = QuarterSteps(std::max(radius.fX, radius.fY)) *
                           static_cast<int>(std::max(fQuarters, 1.0));
        for (int n = 0; n <= nSteps; ++n) {
            const double fAngle = sweep.fFrom + sweep.fSpan * n / nSteps;
            const Spot at{std::cos(fAngle), std::sin(fAngle)};
            const double fAway = m_fHalf / std::hypot(at.fX * radius.fY, at.fY * radius.fX);
            Add({middle.fX + at.fX * radius.fX, middle.fY + at.fY * radius.fY},
                {at.fX * radius.fY * fAway, at.fY * radius.fX * fAway});
        }
    }
    // Back to where it began, or with ends of its own.
    void FillClosed(const CAreaStroke& stroke)
    {
        m_outer[m_nCount] = m_outer[0];
        m_inner[m_nCount] = m_inner[0];
        ++m_nCount;
        Fill(stroke, false);
    }
    void FillOpen(const CAreaStroke& stroke) { Fill(stroke, stroke.m_bRound); }

private:
    void Add(Spot on, Spot away)
    {
        m_outer[m_nCount] = CornerOf({on.fX + away.fX, on.fY + away.fY});
        m_inner[m_nCount] = CornerOf({on.fX - away.fX, on.fY - away.fY});
        if (m_nCount++ == 0) {
            m_first = on;
            m_firstAway = away;
        }
        m_last = on;
        m_lastAway = away;
    }
    void Fill(const CAreaStroke& stroke, bool bCaps) const
    {
        POINT pts[2 * (MOST_POINTS + 1) + 2 * CAP_STEPS];
        POINT* p = std::copy(m_outer, m_outer + m_nCount, pts);
        if (bCaps) p = AddCap(p, m_last, m_lastAway);
        p = std::reverse_copy(m_inner, m_inner + m_nCount, p);
        if (bCaps) p = AddCap(p, m_first, {-m_firstAway.fX, -m_firstAway.fY});
        stroke.Fill(pts, static_cast<int>(p - pts));
    }

    double m_fHalf;
    int m_nCount = 0;
    Spot m_first{};
    Spot m_firstAway{};
    Spot m_last{};
    Spot m_lastAway{};
    POINT m_outer[MOST_POINTS + 1];
    POINT m_inner[MOST_POINTS + 1];
};

CAreaStroke::CAreaStroke(HDC hdc, CPixelScale px) noexcept : m_hdc(hdc)
{
    SolidPen pen{};
    if (px.IsPlain() || !IsSurface(hdc) || !FindSolidPen(hdc, &pen)) return;
    if (pen.nWidth < 2 || pen.nWidth >= REACH) return;
    m_hBrush = Made(::CreateSolidBrush(pen.clr));
    if (!m_hBrush) return;
    m_nWidth = pen.nWidth;
    m_bRound = pen.bRound;
}

CAreaStroke::~CAreaStroke()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

// A pen of an odd width has a unit in its middle, whose middle it goes through.
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
        DrawLine(MiddleOf(pPoints[n]), MiddleOf(pPoints[(n + 1) % nCount]), m_bRound);
        if (!m_bRound && (bClosed || n > 0)) DrawJoint(MiddleOf(pPoints[n]));
    }
}

void CAreaStroke::DrawLine(Spot from, Spot to, bool bRound) const
{
    const double fLength = std::hypot(to.fX - from.fX, to.fY - from.fY);
    Spot along{1, 0}; // of a point
    if (fLength > 0) along = {(to.fX - from.fX) / fLength, (to.fY - from.fY) / fLength};
    const Spot half{-along.fY * m_nWidth / 2, along.fX * m_nWidth / 2};
    const Strip strip = BestStrip(from, along, m_nWidth);
    const POINT ptEdge = strip.ptEdge;
    const POINT ptEnd =
        CornerOf({ptEdge.x + to.fX - from.fX + 0.5, ptEdge.y + to.fY - from.fY + 0.5});
    POINT pts[2 * (CAP_STEPS + 1)];
    POINT* p = pts;
    *p++ = {ptEdge.x + strip.ptWay.x, ptEdge.y + strip.ptWay.y};
    if (bRound) p = AddCap(p, from, half);
    *p++ = ptEdge;
    *p++ = ptEnd;
    if (bRound) p = AddCap(p, to, {-half.fX, -half.fY});
    *p++ = {ptEnd.x + strip.ptWay.x, ptEnd.y + strip.ptWay.y};
    Fill(pts, static_cast<int>(p - pts));
}

// From the middle of the pen on one side to its middle on the other.
CAreaStroke::Spot CAreaStroke::RadiusIn(const RECT& rc)
{
    return {(rc.right - 1.0 - rc.left) / 2, (rc.bottom - 1.0 - rc.top) / 2};
}

CAreaStroke::Spot CAreaStroke::MiddleIn(const RECT& rc) const
{
    const Spot radius = RadiusIn(rc);
    return {Middle(rc.left) + radius.fX, Middle(rc.top) + radius.fY};
}

CAreaStroke::Spot CAreaStroke::At(const RECT& rc, double fAngle) const
{
    const Spot middle = MiddleIn(rc);
    const Spot radius = RadiusIn(rc);
    return {middle.fX + radius.fX * std::cos(fAngle), middle.fY + radius.fY * std::sin(fAngle)};
}

bool CAreaStroke::HasRoom(Spot radius) const
{
    const double fLess = std::min(radius.fX, radius.fY);
    return fLess > 0 && fLess * fLess > m_nWidth / 2.0 * std::max(radius.fX, radius.fY);
}

bool CAreaStroke::TakesCurve(const RECT& rc) const
{
    return m_nWidth && IsInReach({rc.left, rc.top}) && IsInReach({rc.right, rc.bottom}) &&
           HasRoom(RadiusIn(rc));
}

void CAreaStroke::DrawRing(const RECT& rc) const
{
    CCurve curve(m_nWidth);
    curve.AddSweep(MiddleIn(rc), RadiusIn(rc), {0, WHOLE_TURN});
    curve.FillClosed(*this);
}

// Rays that are one make a whole turn.
CAreaStroke::Sweep CAreaStroke::SweepOf(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd)
{
    const Spot radius = RadiusIn(rc);
    const auto angleOf = [&](POINT pt) {
        return std::atan2((pt.y - rc.top - radius.fY) / radius.fY,
                          (pt.x - rc.left - radius.fX) / radius.fX);
    };
    const bool bClockwise = ::GetArcDirection(hdc) == AD_CLOCKWISE;
    const double fFrom = angleOf(bClockwise ? ptStart : ptEnd);
    const double fTo = angleOf(bClockwise ? ptEnd : ptStart);
    return {fFrom, fTo > fFrom ? fTo - fFrom : fTo - fFrom + WHOLE_TURN};
}

void CAreaStroke::DrawSweep(const RECT& rc, const Sweep& sweep) const
{
    CCurve curve(m_nWidth);
    curve.AddSweep(MiddleIn(rc), RadiusIn(rc), sweep);
    curve.FillOpen(*this);
}

void CAreaStroke::DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    DrawSweep(rc, SweepOf(m_hdc, rc, ptStart, ptEnd));
}

void CAreaStroke::DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    const Sweep sweep = SweepOf(m_hdc, rc, ptStart, ptEnd);
    const Spot from = At(rc, sweep.fFrom);
    const Spot to = At(rc, sweep.fFrom + sweep.fSpan);
    DrawSweep(rc, sweep);
    DrawLine(from, to, true);
}

void CAreaStroke::DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd) const
{
    const Sweep sweep = SweepOf(m_hdc, rc, ptStart, ptEnd);
    DrawSweep(rc, sweep);
    DrawLine(MiddleIn(rc), At(rc, sweep.fFrom), true);
    DrawLine(MiddleIn(rc), At(rc, sweep.fFrom + sweep.fSpan), true);
}

bool CAreaStroke::TakesRoundRect(const RECT& rc, SIZE corner) const
{
    if (!m_nWidth || !IsInReach({rc.left, rc.top}) || !IsInReach({rc.right, rc.bottom}))
        return false;
    if (corner.cx > rc.right - rc.left || corner.cy > rc.bottom - rc.top) return false;
    return HasRoom({(corner.cx - 1.0) / 2, (corner.cy - 1.0) / 2});
}

void CAreaStroke::DrawRoundRect(const RECT& rc, SIZE corner) const
{
    const Spot radius{(corner.cx - 1.0) / 2, (corner.cy - 1.0) / 2};
    const Spot middle = MiddleIn(rc);
    const Spot room{RadiusIn(rc).fX - radius.fX, RadiusIn(rc).fY - radius.fY};
    CCurve curve(m_nWidth);
    for (int n = 0; n < 4; ++n) {
        const double fX = n == 0 || n == 3 ? room.fX : -room.fX;
        const double fY = n < 2 ? room.fY : -room.fY;
        curve.AddSweep({middle.fX + fX, middle.fY + fY}, radius,
                       {WHOLE_TURN / 4 * n, WHOLE_TURN / 4});
    }
    curve.FillClosed(*this);
}
