#include "base/AreaStroke.h"

#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/SolidPen.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double REACH = 1 << 26;      // of coordinates whose sums and products are exact
constexpr int MOST_CAP_STEPS = 24;     // of half a circle
constexpr int MOST_QUARTER_STEPS = 64; // of a curve
constexpr int MOST_CURVE_POINTS = 4 * (MOST_QUARTER_STEPS + 1);
constexpr double WHOLE_TURN = 6.283185307179586;

bool IsInReach(const POINT& pt)
{
    return std::max(std::fabs(pt.x), std::fabs(pt.y)) < REACH;
}

// As few as come within an eighth of a unit of the curve: each corner is rounded to a unit, which
// many short sides would show.
int QuarterSteps(double fRadius)
{
    const double fSteps = std::ceil(WHOLE_TURN / 4 * std::sqrt(fRadius));
    return static_cast<int>(std::clamp(fSteps, 1.0, double{MOST_QUARTER_STEPS}));
}

// The same of a cap.
int CapSteps(int32_t nWidth)
{
    const double fSteps = std::ceil(WHOLE_TURN / 2 * std::sqrt(nWidth / 2.0));
    return static_cast<int>(std::clamp(fSteps, 4.0, double{MOST_CAP_STEPS}));
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
POINT* CAreaStroke::AddCap(POINT* pOut, Spot middle, Spot at, int nSteps)
{
    const double fCos = std::cos(WHOLE_TURN / 2 / nSteps);
    const double fSin = std::sin(WHOLE_TURN / 2 / nSteps);
    for (int n = 1; n < nSteps; ++n) {
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
    void Close(CAreaStroke* pStroke)
    {
        m_outer[m_nCount] = m_outer[0];
        m_inner[m_nCount] = m_inner[0];
        ++m_nCount;
        Hand(pStroke, false);
    }
    void End(CAreaStroke* pStroke) { Hand(pStroke, pStroke->m_bRound); }

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
    void Hand(CAreaStroke* pStroke, bool bCaps) const
    {
        const int nSteps = CapSteps(pStroke->m_nWidth);
        POINT* p = pStroke->Room(2 * (m_nCount + MOST_CAP_STEPS));
        p = std::copy(m_outer, m_outer + m_nCount, p);
        if (bCaps) p = AddCap(p, m_last, m_lastAway, nSteps);
        p = std::reverse_copy(m_inner, m_inner + m_nCount, p);
        if (bCaps) p = AddCap(p, m_first, {-m_firstAway.fX, -m_firstAway.fY}, nSteps);
        pStroke->Take(p);
    }

    double m_fHalf;
    int m_nCount = 0;
    Spot m_first{};
    Spot m_firstAway{};
    Spot m_last{};
    Spot m_lastAway{};
    POINT m_outer[MOST_CURVE_POINTS + 1];
    POINT m_inner[MOST_CURVE_POINTS + 1];
};

CAreaStroke::CAreaStroke(HDC hdc, CPixelScale px) noexcept : m_hdc(hdc)
{
    SolidPen pen{};
    if (px.Samples() < 2 || !FindSolidPen(hdc, &pen)) return;
    if (pen.nWidth < 2 || pen.nWidth >= REACH) return;
    m_hBrush = Made(::CreateSolidBrush(pen.clr));
    if (!m_hBrush) return;
    m_nWidth = pen.nWidth;
    m_bRound = pen.bRound;
}

CAreaStroke::~CAreaStroke()
{
    Flush();
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

// A pen of an odd width has a unit in its middle, whose middle it goes through.
double CAreaStroke::Middle(LONG n) const
{
    return n + (m_nWidth % 2 != 0 ? 0.5 : 0);
}

POINT* CAreaStroke::Room(int nMost)
{
    if (m_nFigures == MOST_FIGURES || m_nPoints + nMost > MOST_POINTS) Flush();
    return m_pts + m_nPoints;
}

void CAreaStroke::Take(const POINT* pEnd)
{
    m_nCounts[m_nFigures] = static_cast<int>(pEnd - m_pts) - m_nPoints;
    m_nPoints += m_nCounts[m_nFigures++];
}

// All figures go round the same way, so that what lies in several of them is painted as well.
void CAreaStroke::Flush()
{
    if (m_nFigures == 0) return;
    const CSelectScope pen(m_hdc, ::GetStockObject(NULL_PEN));
    const CSelectScope brush(m_hdc, m_hBrush);
    const int nMode = ::SetPolyFillMode(m_hdc, WINDING);
    ::PolyPolygon(m_hdc, m_pts, m_nCounts, m_nFigures);
    ::SetPolyFillMode(m_hdc, nMode);
    m_nPoints = 0;
    m_nFigures = 0;
}

bool CAreaStroke::Takes(const POINT* pPoints, int nCount) const
{
    return m_nWidth && std::all_of(pPoints, pPoints + nCount, IsInReach);
}

void CAreaStroke::AddLine(POINT ptFrom, POINT ptTo)
{
    AddStrip(MiddleOf(ptFrom), MiddleOf(ptTo), m_bRound);
}

void CAreaStroke::AddJoint(POINT pt)
{
    AddStrip(MiddleOf(pt), MiddleOf(pt), true);
}

void CAreaStroke::AddLines(const POINT* pPoints, int nCount, bool bClosed)
{
    for (int n = bClosed ? 0 : 1; n < nCount; ++n)
        AddLine(pPoints[(n + nCount - 1) % nCount], pPoints[n]);
}

void CAreaStroke::AddStrip(Spot from, Spot to, bool bRound)
{
    const int nSteps = CapSteps(m_nWidth);
    const double fLength = std::hypot(to.fX - from.fX, to.fY - from.fY);
    Spot along{1, 0}; // of a point
    if (fLength > 0) along = {(to.fX - from.fX) / fLength, (to.fY - from.fY) / fLength};
    const Spot half{-along.fY * m_nWidth / 2, along.fX * m_nWidth / 2};
    const Strip strip = BestStrip(from, along, m_nWidth);
    const POINT ptEdge = strip.ptEdge;
    const POINT ptEnd =
        CornerOf({ptEdge.x + to.fX - from.fX + 0.5, ptEdge.y + to.fY - from.fY + 0.5});
    POINT* p = Room(2 * (MOST_CAP_STEPS + 1));
    *p++ = {ptEdge.x + strip.ptWay.x, ptEdge.y + strip.ptWay.y};
    if (bRound) p = AddCap(p, from, half, nSteps);
    *p++ = ptEdge;
    *p++ = ptEnd;
    if (bRound) p = AddCap(p, to, {-half.fX, -half.fY}, nSteps);
    *p++ = {ptEnd.x + strip.ptWay.x, ptEnd.y + strip.ptWay.y};
    Take(p);
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

void CAreaStroke::DrawRing(const RECT& rc)
{
    CCurve curve(m_nWidth);
    curve.AddSweep(MiddleIn(rc), RadiusIn(rc), {0, WHOLE_TURN});
    curve.Close(this);
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

void CAreaStroke::AddSweep(const RECT& rc, const Sweep& sweep)
{
    CCurve curve(m_nWidth);
    curve.AddSweep(MiddleIn(rc), RadiusIn(rc), sweep);
    curve.End(this);
}

void CAreaStroke::DrawArc(const RECT& rc, POINT ptStart, POINT ptEnd)
{
    AddSweep(rc, SweepOf(m_hdc, rc, ptStart, ptEnd));
}

void CAreaStroke::DrawChord(const RECT& rc, POINT ptStart, POINT ptEnd)
{
    const Sweep sweep = SweepOf(m_hdc, rc, ptStart, ptEnd);
    const Spot from = At(rc, sweep.fFrom);
    const Spot to = At(rc, sweep.fFrom + sweep.fSpan);
    AddSweep(rc, sweep);
    AddStrip(from, to, true);
}

void CAreaStroke::DrawPie(const RECT& rc, POINT ptStart, POINT ptEnd)
{
    const Sweep sweep = SweepOf(m_hdc, rc, ptStart, ptEnd);
    AddSweep(rc, sweep);
    AddStrip(MiddleIn(rc), At(rc, sweep.fFrom), true);
    AddStrip(MiddleIn(rc), At(rc, sweep.fFrom + sweep.fSpan), true);
}

bool CAreaStroke::TakesRoundRect(const RECT& rc, SIZE corner) const
{
    if (!m_nWidth || !IsInReach({rc.left, rc.top}) || !IsInReach({rc.right, rc.bottom}))
        return false;
    if (corner.cx > rc.right - rc.left || corner.cy > rc.bottom - rc.top) return false;
    return HasRoom({(corner.cx - 1.0) / 2, (corner.cy - 1.0) / 2});
}

void CAreaStroke::DrawRoundRect(const RECT& rc, SIZE corner)
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
    curve.Close(this);
}
