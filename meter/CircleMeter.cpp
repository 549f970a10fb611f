#include "meter/CircleMeter.h"

#include "base/PixelPen.h"
#include "meter/DialGeometry.h"
#include "meter/DialScopes.h"

int CAnglePin::Draw(HDC hdc, POINT ptCentre, float fAngle) const
{
    const CFigureScope figure(hdc, m_nPenWidth, m_clr, m_clr, m_px);
    if (!figure.IsReady()) return 0;
    const CBkColorScope back(hdc, m_clrBack);
    const auto at = [&](int32_t nRadius, float fTurn) {
        return StrokedPoint(PolarPoint(ptCentre, nRadius, fAngle + fTurn, m_px), m_nPenWidth, m_px);
    };
    const POINT ptNotch = at(m_nInner / 4, 0);
    const POINT tail[] = {at(m_nInner, 135), ptNotch, at(m_nInner, 225)};
    const POINT blade[] = {at(m_nInner, -45), at(m_nTip, 0), at(m_nInner, 45), ptNotch};
    DrawStrokedPolygon(hdc, tail, 3, m_px);
    DrawStrokedPolygon(hdc, blade, 4, m_px);
    return 1;
}

int CCircleMeter::PaintNeedle(HDC hdc, float fAngle, bool bErase) const
{
    const int32_t nTip = BladeLength(Radius(), Px());
    return CAnglePin(1, nTip / 5, nTip, bErase ? FaceColor() : PinColor(), FaceColor(), Px())
        .Draw(hdc, Centre(), fAngle);
}
