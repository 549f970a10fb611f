#include "render/OutlineProbe.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double MOST_SWEEP = 16; // radians
constexpr int MOST_PIECES = 4096;
constexpr double GRAINS = 1024;    // of a pixel
constexpr double FLATNESS = 0.125; // pixels, between an arc and its pieces

// As many straight pieces as keep an arc flat enough.
int PiecesOf(double fRadius, double fSweep)
{
    if (fRadius < 1) fRadius = 1;
    const double fStep = 2 * std::acos(1 - std::min(FLATNESS / fRadius, 1.0));
    return 1 + static_cast<int>(std::min(fSweep / fStep, static_cast<double>(MOST_PIECES)));
}

// What the rounding of sines moves apart is one point again.
double Settled(double f)
{
    return std::round(f * GRAINS) / GRAINS;
}

} // namespace

ProbedEllipse::Point ProbedEllipse::At(double fAngle) const
{
    return {Settled(fX + fRadiusX * std::cos(fAngle)), Settled(fY - fRadiusY * std::sin(fAngle))};
}

ProbedEllipse EllipseIn(const RECT& rc)
{
    const double fLeft = std::min(rc.left, rc.right);
    const double fTop = std::min(rc.top, rc.bottom);
    const double fRight = std::max(rc.left, rc.right) - 1.0;
    const double fBottom = std::max(rc.top, rc.bottom) - 1.0;
    return {(fLeft + fRight) / 2, (fTop + fBottom) / 2, (fRight - fLeft) / 2, (fBottom - fTop) / 2};
}

void COutlineProbe::Line(double fX1, double fY1, double fX2, double fY2)
{
    const double fDx = fX2 - fX1;
    const double fDy = fY2 - fY1;
    const double fLength = fDx * fDx + fDy * fDy;
    double fAlong = fLength > 0 ? ((m_fX - fX1) * fDx + (m_fY - fY1) * fDy) / fLength : 0;
    fAlong = std::clamp(fAlong, 0.0, 1.0);
    const double fAwayX = fX1 + fAlong * fDx - m_fX;
    const double fAwayY = fY1 + fAlong * fDy - m_fY;
    const double fSquare = fAwayX * fAwayX + fAwayY * fAwayY;
    if (!m_bAny || fSquare < m_fSquare) m_fSquare = fSquare;
    m_bAny = true;
    if ((fY1 > m_fY) != (fY2 > m_fY) && m_fX < fX1 + (m_fY - fY1) * fDx / fDy)
        m_bInside = !m_bInside;
}

void COutlineProbe::Line(POINT pt1, POINT pt2)
{
    Line(pt1.x, pt1.y, pt2.x, pt2.y);
}

void COutlineProbe::Arc(const ProbedEllipse& ellipse, double fFrom, double fTo)
{
    if (!(fTo - fFrom < MOST_SWEEP)) return; // no angles
    const int nPieces = PiecesOf(std::max(ellipse.fRadiusX, ellipse.fRadiusY), fTo - fFrom);
    ProbedEllipse::Point pt = ellipse.At(fFrom);
    for (int n = 1; n <= nPieces; ++n) {
        const ProbedEllipse::Point ptNext = ellipse.At(fFrom + (fTo - fFrom) * n / nPieces);
        Line(pt.fX, pt.fY, ptNext.fX, ptNext.fY);
        pt = ptNext;
    }
}
