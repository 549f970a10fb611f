#include "meter/ArcFill.h"

#include "base/GdiScopes.h"
#include "meter/DialGeometry.h"

namespace {

constexpr float MIN_SWEEP = 0.99F;

} // namespace

int CArcFill::Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep)
{
    if (fSweep > -MIN_SWEEP && fSweep < MIN_SWEEP) return 1;
    const POINT pt1 = PolarPoint(ptCentre, nRadius, fStart + fSweep);
    const POINT pt0 = PolarPoint(ptCentre, nRadius, fStart);
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
