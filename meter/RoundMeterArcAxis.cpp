// A band along the scale; see the header.
#include "meter/RoundMeterArcAxis.h"

#include "meter/DialGeometry.h"
#include "render/GdiScopes.h"

namespace {

// A thin band is at least a line.
HPEN MakeBandPen(int32_t nWidth, COLORREF clr)
{
    if (nWidth <= 1) return ::CreatePen(PS_SOLID, 1, clr);
    const LOGBRUSH brush = {BS_SOLID, clr, 0};
    return ::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | PS_JOIN_BEVEL,
                          static_cast<DWORD>(nWidth), &brush, 0, nullptr);
}

} // namespace

CRoundMeterArcAxis::CRoundMeterArcAxis(int32_t nBandWidth, COLORREF clr) noexcept
    : m_hPen(MakeBandPen(nBandWidth, clr))
{
}

CRoundMeterArcAxis::~CRoundMeterArcAxis()
{
    if (m_hPen) ::DeleteObject(m_hPen);
}

int CRoundMeterArcAxis::Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart,
                             float fSweep) const
{
    if (!m_hPen || nRadius == 0) return 0;
    const CSelectScope pen(hdc, m_hPen);
    const RECT rc = SquareAround(ptCentre, nRadius);
    const POINT ptEnd = PolarPoint(ptCentre, nRadius, fStart + fSweep);
    const POINT ptStart = PolarPoint(ptCentre, nRadius, fStart);
    ::Arc(hdc, rc.left, rc.top, rc.right, rc.bottom, ptEnd.x, ptEnd.y, ptStart.x, ptStart.y);
    return 1;
}
