#include "meter/RoundMeterArcAxis.h"

#include "meter/DialComponents.h"

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
    return DrawDialArc(hdc, m_hPen, nRadius, ptCentre, fStart, fSweep);
}
