#include "meter/PieMeterScale.h"

#include "base/WrapMath.h"
#include "meter/DialComponents.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

namespace {

constexpr int32_t STYLE_ALL_SQUARES = 1;
constexpr int32_t STYLE_ALL_LINES = 2;
constexpr int32_t STYLE_MAJORS_ALONE = 3;
constexpr int32_t MAJOR_HALF_SIDE = 2; // squares of 5 and 3 pixels
constexpr int32_t MINOR_HALF_SIDE = 1;

int DrawSquare(HDC hdc, POINT pt, int32_t nHalf, COLORREF clr)
{
    const CFigureScope figure(hdc, 1, clr, clr);
    if (!figure.IsReady()) return 0;
    const RECT rc = SquareAround(pt, nHalf);
    ::Rectangle(hdc, rc.left, rc.top, WrapAdd(rc.right, 1), WrapAdd(rc.bottom, 1));
    return 1;
}

} // namespace

int CPieMeterScale::Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle,
                         int32_t nAxisStyle) const
{
    const bool bMajor = m_kind == Kind::Major;
    if (!bMajor && nAxisStyle == STYLE_MAJORS_ALONE) return 0;
    if (nAxisStyle == STYLE_ALL_SQUARES || (bMajor && nAxisStyle != STYLE_ALL_LINES)) {
        const int32_t nMiddle = (AxisRadius(nRadius) + TickOuterRadius(nRadius)) / 2;
        return DrawSquare(hdc, PolarPoint(ptCentre, nMiddle, fAngle),
                          bMajor ? MAJOR_HALF_SIDE : MINOR_HALF_SIDE, m_clr);
    }
    return CScaleLine(bMajor ? 2 : 1, m_clr)
        .Draw(hdc, PolarPoint(ptCentre, AxisRadius(nRadius), fAngle),
              PolarPoint(ptCentre, TickOuterRadius(nRadius), fAngle));
}
