#include "meter/PieMeter.h"

#include "base/GdiScopes.h"
#include "base/WrapMath.h"
#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

namespace {

constexpr float MIN_SWEEP = 0.99F;

} // namespace

int CArcFill::Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep)
{
    if (fSweep > -MIN_SWEEP && fSweep < MIN_SWEEP) return 1;
    const POINT pt1 = PolarPoint(ptCentre, nRadius, fStart + fSweep, m_px);
    const POINT pt0 = PolarPoint(ptCentre, nRadius, fStart, m_px);
    if (fSweep < FULL_SWEEP && IsDegenerateSector(ptCentre, pt1, pt0)) return 0;

    const RECT rc = SquareAround(ptCentre, nRadius);
    const HBRUSH hBrush = m_draft.Brush(hdc, rc, rc, m_clrFore, m_clrBack);
    if (!hBrush) return 0;
    const CSelectScope brush(hdc, hBrush);
    const CSelectScope pen(hdc, ::GetStockObject(NULL_PEN));
    const CBkColorScope back(hdc, m_clrBack);
    const CTextColorScope text(hdc, m_clrFore);
    ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, pt1.x, pt1.y, pt0.x, pt0.y);
    return 1;
}

namespace {

constexpr int32_t STYLE_ALL_SQUARES = 1;
constexpr int32_t STYLE_ALL_LINES = 2;
constexpr int32_t STYLE_MAJORS_ALONE = 3;
constexpr int32_t MAJOR_HALF_SIDE = 2; // squares of 5 and 3 pixels
constexpr int32_t MINOR_HALF_SIDE = 1;

int DrawSquare(HDC hdc, POINT pt, int32_t nHalf, COLORREF clr, CPixelScale px)
{
    const CFigureScope figure(hdc, 1, clr, clr, px);
    if (!figure.IsReady()) return 0;
    const RECT rc = SquareAround(pt, px(nHalf));
    DrawPixelRectangle(hdc, {rc.left, rc.top, WrapAdd(rc.right, px(1)), WrapAdd(rc.bottom, px(1))},
                       1, px);
    return 1;
}

} // namespace

int CPieMeterScale::Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle,
                         int32_t nAxisStyle) const
{
    const bool bMajor = m_kind == Kind::Major;
    if (!bMajor && nAxisStyle == STYLE_MAJORS_ALONE) return 0;
    if (nAxisStyle == STYLE_ALL_SQUARES || (bMajor && nAxisStyle != STYLE_ALL_LINES)) {
        const int32_t nMiddle = (AxisRadius(nRadius, m_px) + TickOuterRadius(nRadius, m_px)) / 2;
        return DrawSquare(hdc, PolarPoint(ptCentre, nMiddle, fAngle, m_px),
                          bMajor ? MAJOR_HALF_SIDE : MINOR_HALF_SIDE, m_clr, m_px);
    }
    return CScaleLine(bMajor ? 2 : 1, m_clr, m_px)
        .Draw(hdc, PolarPoint(ptCentre, AxisRadius(nRadius, m_px), fAngle, m_px),
              PolarPoint(ptCentre, TickOuterRadius(nRadius, m_px), fAngle, m_px));
}

namespace {

constexpr float ERASE_FROM = 0.1F; // degrees that the sector must have shrunk by

} // namespace

// A smaller value takes the old sector away, from the start, before the new one is painted.
int CPieMeter::FillTo(HDC hdc, double fValue, uint32_t nFlags) const
{
    const int32_t nRadius = PieRadius(Radius(), Px());
    if (!HasScale() || nRadius == 0) return 0;
    const float fNew = AngleOf(fValue);
    const float fOld = AngleOf(GetShownValue());
    int nDrew = 0;
    if (!(nFlags & QEL_DRAW_FULL) && fOld - fNew >= ERASE_FROM)
        nDrew = CArcFill(DRAFT_SOLID_TEXT, m_clrErase, m_clrErase, Px())
                    .Draw(hdc, nRadius, Centre(), StartAngle(), fOld - StartAngle());
    if (fValue == 0) return nDrew;
    return CArcFill(m_nSectorStyle, m_clrErase, m_clrSector, Px())
        .Draw(hdc, nRadius, Centre(), StartAngle(), fNew - StartAngle());
}

int CPieMeter::DrawFill(HDC hdc, float fValue, uint32_t nFlags)
{
    return FillTo(hdc, fValue, nFlags);
}

int CPieMeter::DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags)
{
    return FillTo(hdc, nValue, nFlags);
}

int CPieMeter::DrawAlarmZones(HDC)
{
    return 0;
}

namespace {

constexpr int32_t FONT_HINT_PARTS = 6; // of the radius
constexpr float CLOSED_SWEEP = 360.0F;

} // namespace

int CPieUpgradeMeter::DrawScale(HDC hdc)
{
    if (!HasScale()) return 0;
    const CPieMeterScale major(CPieMeterScale::Kind::Major, ScaleColor(), Px());
    const CPieMeterScale minor(CPieMeterScale::Kind::Minor, ScaleColor(), Px());
    for (uint32_t i = 0; i <= DrawnTicks(); ++i)
        (IsMajor(i) ? major : minor).Draw(hdc, Centre(), Radius(), TickAngle(i), AxisStyle());
    return 1;
}

int CPieUpgradeMeter::DrawLabels(HDC hdc)
{
    FontCell cell{};
    GetFontSize(Radius() / FONT_HINT_PARTS, &cell);
    return DrawLabelsIn(hdc, cell);
}

// One pixel, so that the fill stays to be seen. Without a fill the span has the erase colour as its
// ground.
int CPieUpgradeMeter::DrawFrame(HDC hdc)
{
    const int32_t nRadius = PieRadius(Radius(), Px());
    if (!HasSpan() || nRadius == 0 || (!GetShowAxis() && !GetShowFill())) return 0;
    if (!GetShowFill())
        CArcFill(DRAFT_SOLID_TEXT, EraseColor(), EraseColor(), Px())
            .Draw(hdc, nRadius, Centre(), StartAngle(), Sweep());
    CArcAxis(1, ScaleColor(), Px()).Draw(hdc, nRadius, Centre(), StartAngle(), Sweep());
    if (Sweep() >= CLOSED_SWEEP) return 1; // a whole circle has no sides
    const CScaleLine side(1, ScaleColor(), Px());
    side.Draw(hdc, Centre(), At(nRadius, StartAngle()));
    side.Draw(hdc, Centre(), At(nRadius, EndAngle()));
    return 1;
}
