#include "render/QELViewCircle.h"

#include "base/DrawLimits.h"
#include "base/Refusals.h"
#include "render/Mapping.h"
#include "render/OutlineProbe.h"
#include "render/QELRotate.h"

namespace {

constexpr double WHOLE_TURN = 2 * 3.14159265358979323846;

// Half of the smaller side, as an unsigned number.
uint32_t RadiusIn(const RECT& rc)
{
    const int32_t nWidth = WidthOf(rc);
    const int32_t nHeight = HeightOf(rc);
    return static_cast<uint32_t>(nWidth < nHeight ? nWidth : nHeight) >> 1;
}

POINT MiddleOf(const RECT& rc)
{
    return {WrapAdd(rc.left, rc.right) / 2, WrapAdd(rc.top, rc.bottom) / 2};
}

} // namespace

RECT CQELViewCircle::Box() const
{
    return GeometryBounds(Words());
}

RECT CQELViewCircle::GeometryBounds(const int32_t* pnWords) const
{
    return {WrapSub(pnWords[0], pnWords[2]), WrapSub(pnWords[1], pnWords[2]),
            WrapAdd(pnWords[0], pnWords[2]), WrapAdd(pnWords[1], pnWords[2])};
}

// The pressed shift moves the box, before the square is taken from it.
int CQELViewCircle::MapSquare(const QelRect& rcQel, uint32_t nFlags, RECT* prcOut) const
{
    RECT rc{};
    const int nResult = MapAnchored(rcQel, Box(), nFlags, &rc);
    const auto nRadius = static_cast<int32_t>(RadiusIn(rc));
    const POINT ptMiddle = MiddleOf(rc);
    *prcOut = {WrapSub(ptMiddle.x, nRadius), WrapSub(ptMiddle.y, nRadius),
               WrapAdd(ptMiddle.x, nRadius), WrapAdd(ptMiddle.y, nRadius)};
    return nResult;
}

int CQELViewCircle::MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    MapSquare(rcQel, nFlags, &pOut->rcBox);
    return 1;
}

void CQELViewCircle::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    DrawPixelEllipse(hdc, DrawnBox(figure), figure.px);
}

void CQELViewCircle::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    pProbe->Arc(EllipseIn(DrawnBox(figure)), 0, WHOLE_TURN);
}

int CQELViewCircle::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    RECT rc = Box();
    CQELRotate(ptCentre, WrapSub(nTurn, Rotation())).RotateRect(&rc);
    const POINT ptMiddle = MiddleOf(rc);
    Words()[0] = ptMiddle.x;
    Words()[1] = ptMiddle.y;
    Words()[2] = static_cast<int32_t>(RadiusIn(rc));
    SetRotation(nTurn);
    return 1;
}

int CQELViewCircle::MoveX(int32_t nDx)
{
    Words()[0] = WrapAdd(Words()[0], nDx);
    return 1;
}

int CQELViewCircle::MoveY(int32_t nDy)
{
    Words()[1] = WrapAdd(Words()[1], nDy);
    return 1;
}

HRGN CQELViewCircle::MakeRegion(const QelRect& rcQel) const
{
    RECT rc{};
    if (!MapSquare(rcQel, 0, &rc) || !IsDrawableCurve(rc, rcQel.px)) return nullptr;
    rc = ShortBox(rc, rcQel.px);
    return Made(::CreateEllipticRgn(rc.left, rc.top, rc.right, rc.bottom), !::IsRectEmpty(&rc));
}
