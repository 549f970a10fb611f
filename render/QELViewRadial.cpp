// Arc, pie and chord; see the header.
#include "render/QELViewRadial.h"

#include "render/GdiScopes.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"

#include <cmath>

namespace {

constexpr int32_t BOX_WORDS = 4;
constexpr int32_t ALL_WORDS = 8; // the box and the two points, x and y by turns
constexpr double TURN = 6.283185307179586;
constexpr int FAN_STEPS = 16; // pieces of the far side of a cut, each well below a quarter turn
constexpr int FAN_POINTS = FAN_STEPS + 3;

int32_t RoundToInt(double f)
{
    return TruncToInt(std::floor(f + 0.5));
}

// Where the figure's ends lie, seen from the middle of the ellipse. The angles are those of the
// ellipse stretched to a circle, so that even steps go evenly around a flat one; counter-clockwise
// on the screen, the end after the start.
struct Rays {
    POINT ptFrom; // where the rays come from
    double fMiddleX;
    double fMiddleY;
    double fRadiusX;
    double fRadiusY;
    double fStart;
    double fSweep; // above 0; a full turn when both rays are one

    // A point in that direction, fFar times as far out as the ellipse.
    [[nodiscard]] POINT At(double fAngle, double fFar) const
    {
        return {RoundToInt(fMiddleX + fRadiusX * std::cos(fAngle) * fFar),
                RoundToInt(fMiddleY - fRadiusY * std::sin(fAngle) * fFar)};
    }
};

// The angle at which a ray from the middle, given by its extent across and up, meets the outline.
// Where a side has no middle pixel, GDI measures its outline half a pixel nearer to the middle.
// Found by halving the quarter turn that the ray lies in.
double AngleOfRay(const Rays& rays, double fAcross, double fUp, SIZE box)
{
    constexpr int HALVINGS = 40; // beyond the precision that any box can show
    const double fNearerX = box.cx % 2 ? 0.0 : 0.5;
    const double fNearerY = box.cy % 2 ? 0.0 : 0.5;
    double fLow = 0;
    double fHigh = TURN / 4;
    for (int n = 0; n < HALVINGS; ++n) {
        const double fMiddle = (fLow + fHigh) / 2;
        const double fX = rays.fRadiusX * std::cos(fMiddle) - fNearerX;
        const double fY = rays.fRadiusY * std::sin(fMiddle) - fNearerY;
        const bool bBelow = fY * std::fabs(fAcross) < fX * std::fabs(fUp);
        (bBelow ? fLow : fHigh) = fMiddle;
    }
    const double fAngle = fAcross < 0 ? TURN / 2 - fLow : fLow;
    return fUp < 0 ? -fAngle : fAngle;
}

Rays RaysOf(const DeviceFigure& figure)
{
    const RECT& rc = figure.rcBox;
    const SIZE box{WidthOf(rc), HeightOf(rc)};
    Rays rays{};
    // GDI's figures leave out the box's right column and bottom row; their rays, though, come from
    // the middle of the whole box, which shows when a point lies near it.
    rays.fMiddleX = (static_cast<double>(rc.left) + rc.right - 1) / 2;
    rays.fMiddleY = (static_cast<double>(rc.top) + rc.bottom - 1) / 2;
    rays.fRadiusX = std::fmax(0.5, (static_cast<double>(rc.right) - rc.left - 1) / 2);
    rays.fRadiusY = std::fmax(0.5, (static_cast<double>(rc.bottom) - rc.top - 1) / 2);
    rays.ptFrom = {WrapAdd(rc.left, box.cx / 2), WrapAdd(rc.top, box.cy / 2)};
    const auto angleOf = [&](const POINT& pt) {
        return AngleOfRay(rays, static_cast<double>(pt.x) - rays.ptFrom.x,
                          static_cast<double>(rays.ptFrom.y) - pt.y, box);
    };
    rays.fStart = angleOf(figure.pts[0]);
    rays.fSweep = angleOf(figure.pts[1]) - rays.fStart;
    if (rays.fSweep <= 0) rays.fSweep += TURN;
    return rays;
}

} // namespace

int CQELViewRadial::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    const auto stretch = [&](int32_t nWord) -> LONG {
        const bool bAcross = nWord % 2 == 0;
        const int32_t nRef = bAcross ? RefW() : RefH();
        const int32_t nExtent = bAcross ? WidthOf(rcQel) : HeightOf(rcQel);
        const int32_t nOrigin = bAcross ? rcQel.left : rcQel.top;
        if (nRef < 1 && CollapsesToEdge()) return nOrigin;
        if (nRef < 1 && nWord < BOX_WORDS) return 0;
        return Stretch(m_nGeometry[nWord], nExtent, nRef, nOrigin);
    };
    pOut->rcBox = {stretch(0), stretch(1), stretch(2), stretch(3)};
    pOut->pts[0] = {stretch(4), stretch(5)};
    pOut->pts[1] = {stretch(6), stretch(7)};
    pOut->nPoints = 2;
    if (IsPressed(nFlags)) {
        ShiftPressed(&pOut->rcBox, rcQel);
        for (int n = 0; n < 2; ++n) { // the points always move
            pOut->pts[n].x = WrapAdd(pOut->pts[n].x, PRESSED_SHIFT);
            pOut->pts[n].y = WrapAdd(pOut->pts[n].y, PRESSED_SHIFT);
        }
    }
    return 1;
}

int CQELViewRadial::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    const CQELRotate turn(ptCentre, WrapSub(nTurn, m_nRotation));
    int32_t* n = m_nGeometry;
    RECT rc{n[0], n[1], n[2], n[3]};
    POINT pt1{n[4], n[5]};
    POINT pt2{n[6], n[7]};
    if (!turn.RotateRect(&rc) || !turn.RotateTwo(&pt1, &pt2)) return 0;
    const LONG turned[ALL_WORDS] = {rc.left, rc.top, rc.right, rc.bottom,
                                    pt1.x,   pt1.y,  pt2.x,    pt2.y};
    for (int32_t i = 0; i < ALL_WORDS; ++i) n[i] = turned[i];
    KeepInside();
    m_nRotation = nTurn;
    return 1;
}

int CQELViewRadial::MoveX(int32_t nDx)
{
    Shift(nDx, 0);
    KeepInside();
    return 1;
}

int CQELViewRadial::MoveY(int32_t nDy)
{
    Shift(0, nDy);
    KeepInside();
    return 1;
}

void CQELViewRadial::Shift(int32_t nDx, int32_t nDy)
{
    for (int32_t i = 0; i < ALL_WORDS; ++i)
        m_nGeometry[i] = WrapAdd(m_nGeometry[i], i % 2 == 0 ? nDx : nDy);
}

// The figure slides as one, by what its box and points together need.
void CQELViewRadial::KeepInside()
{
    if (!StaysInside()) return;
    RECT rc{m_nGeometry[0], m_nGeometry[1], m_nGeometry[0], m_nGeometry[1]};
    for (int32_t i = 2; i < ALL_WORDS; i += 2) {
        const int32_t nX = m_nGeometry[i];
        const int32_t nY = m_nGeometry[i + 1];
        rc = {nX < rc.left ? nX : rc.left, nY < rc.top ? nY : rc.top, nX > rc.right ? nX : rc.right,
              nY > rc.bottom ? nY : rc.bottom};
    }
    Shift(SlideInside(rc.left, rc.right, RefW()), SlideInside(rc.top, rc.bottom, RefH()));
}

HRGN CQELViewRadial::MakeCutRegion(const RECT& rcQel, bool bChord) const
{
    DeviceFigure figure{};
    MapFigure(rcQel, 0, &figure);
    figure.rcBox = NormalizedRect(figure.rcBox);
    if (::IsRectEmpty(&figure.rcBox)) return nullptr;
    const RECT& rc = figure.rcBox;
    CRegion region(::CreateEllipticRgn(rc.left, rc.top, rc.right, rc.bottom));
    const Rays rays = RaysOf(figure);
    if (rays.fSweep >= TURN || !region.Get()) return region.Take();

    // The far side of the cut lies well outside of the ellipse, so that only the two rays, or the
    // chord, cut into it.
    constexpr double FAR_OUT = 2.0;
    POINT fan[FAN_POINTS];
    int nCount = 0;
    if (bChord)
        fan[nCount++] = rays.At(rays.fStart, 1.0);
    else
        fan[nCount++] = rays.ptFrom;
    for (int n = 0; n <= FAN_STEPS; ++n)
        fan[nCount++] = rays.At(rays.fStart + rays.fSweep * n / FAN_STEPS, FAR_OUT);
    if (bChord) fan[nCount++] = rays.At(rays.fStart + rays.fSweep, 1.0);
    const CRegion cut(::CreatePolygonRgn(fan, nCount, WINDING));
    if (!cut.Get() || ::CombineRgn(region.Get(), region.Get(), cut.Get(), RGN_AND) == ERROR)
        return nullptr;
    return region.Take();
}
