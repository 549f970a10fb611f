#include "render/QELRotate.h"

#include "base/WrapMath.h"
#include "render/Mapping.h"

#include <cmath>

namespace {

constexpr double PI = 3.141592653589793;
constexpr double TWO_PI = 6.283185307179586;

} // namespace

int32_t QuarterTurn(int32_t nAngle)
{
    return nAngle % 360 / 90 * 90;
}

CQELRotate::CQELRotate(POINT ptCentre, int32_t nAngle)
    : m_nAngle(nAngle % 360), m_nCentreX(ptCentre.x), m_nCentreY(ptCentre.y)
{
    if (m_nAngle < 0) m_nAngle += 360;
}

int CQELRotate::RotatePoint(POINT* ppt) const
{
    if (m_nAngle % 90 != 0) {
        *ppt = RotateFreely(*ppt);
        return 1;
    }
    for (int n = 0; n < m_nAngle / 90; ++n) {
        const POINT pt = *ppt;
        ppt->x = WrapSub(WrapAdd(pt.y, m_nCentreY), m_nCentreX);
        ppt->y = WrapAdd(WrapSub(m_nCentreY, pt.x), m_nCentreX);
    }
    return 1;
}

POINT CQELRotate::RotateFreely(POINT pt) const
{
    const double fX = static_cast<double>(pt.x) - m_nCentreX;
    const double fY = static_cast<double>(pt.y) - m_nCentreY;
    const double fRadius = std::trunc(std::sqrt(fY * fY + fX * fX));
    if (fRadius == 0.0) return pt;
    // Far out the root is rounded, so the ratios may pass 1 by a hair; no angle has such a sine,
    // and the nearest one that exists is taken.
    const double fSin = std::fmin(1.0, std::fmax(-1.0, -fY / fRadius));
    const double fCos = std::fmin(1.0, std::fmax(-1.0, fX / fRadius));
    const double fA1 = std::asin(fSin);
    const double fA2 = std::acos(fCos);
    double fOwn = 0.0;
    if (std::fabs(fA1) < 0.1 || fA1 > 0.0)
        fOwn = std::fmax(fA1, fA2); // just below the centre counts as just above it
    else
        fOwn = TWO_PI - (fA2 <= std::fabs(fA1) ? std::fabs(fA1) : fA2);
    const double fTurned = m_nAngle * PI / 180.0 + fOwn;
    return {TruncToInt(std::cos(fTurned) * fRadius + m_nCentreX),
            TruncToInt(m_nCentreY - std::sin(fTurned) * fRadius)};
}

int CQELRotate::RotateTwo(POINT* ppt1, POINT* ppt2) const
{
    RotatePoint(ppt1);
    RotatePoint(ppt2);
    return 1;
}

int CQELRotate::RotateRect(RECT* prc) const
{
    POINT ptFirst{prc->left, prc->top};
    POINT ptSecond{prc->right, prc->bottom};
    RotateTwo(&ptFirst, &ptSecond);
    *prc = NormalizedRect({ptFirst.x, ptFirst.y, ptSecond.x, ptSecond.y});
    return 1;
}
