// Point lists; see the header.
#include "render/QELViewPoints.h"

#include "render/Mapping.h"
#include "render/QELRotate.h"

namespace {

constexpr int MIN_POINTS = 2;

LONG StretchOne(int32_t nPos, int32_t nExtent, int32_t nRef, int32_t nLow, int32_t nHigh,
                bool bPressed)
{
    const int32_t nAt = nRef ? Stretch(nPos, nExtent, nRef, nLow) : 0;
    const int32_t nShifted = WrapAdd(nAt, PRESSED_SHIFT);
    return bPressed && nShifted <= nHigh ? nShifted : nAt;
}

void Widen(RECT* prc, int32_t nX, int32_t nY)
{
    if (nX < prc->left) prc->left = nX;
    if (nX > prc->right) prc->right = nX;
    if (nY < prc->top) prc->top = nY;
    if (nY > prc->bottom) prc->bottom = nY;
}

} // namespace

bool CQELViewPoints::HasPoints() const
{
    return Words()[0] >= MIN_POINTS && Words()[0] <= QEL_MAX_POINTS;
}

POINT CQELViewPoints::StretchPoint(const RECT& rcQel, uint32_t nFlags, int32_t nX, int32_t nY) const
{
    const bool bPressed = IsPressed(nFlags);
    return {StretchOne(nX, WidthOf(rcQel), RefW(), rcQel.left, rcQel.right, bPressed),
            StretchOne(nY, HeightOf(rcQel), RefH(), rcQel.top, rcQel.bottom, bPressed)};
}

int CQELViewPoints::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    if (!HasPoints()) return 0;
    pOut->nPoints = Words()[0];
    // The box starts out as all zeros, so that it always holds the device's origin: deliberate, a
    // gradient runs from there.
    pOut->rcBox = {0, 0, 0, 0};
    const int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < pOut->nPoints; ++n, pnPoint += 2) {
        pOut->pts[n] = StretchPoint(rcQel, nFlags, pnPoint[0], pnPoint[1]);
        Widen(&pOut->rcBox, pOut->pts[n].x, pOut->pts[n].y);
    }
    return 1;
}

// The points alone: the box holds the device's origin as well.
RECT CQELViewPoints::Hull(const DeviceFigure& figure) const
{
    const POINT& pt = figure.pts[0];
    RECT rc{pt.x, pt.y, pt.x, pt.y};
    for (int n = 1; n < figure.nPoints; ++n) Widen(&rc, figure.pts[n].x, figure.pts[n].y);
    return rc;
}

int CQELViewPoints::Rotate(POINT ptCentre, int32_t nAngle)
{
    if (!HasPoints()) return 0;
    const int32_t nTurn = QuarterTurn(nAngle);
    const CQELRotate turn(ptCentre, WrapSub(nTurn, Rotation()));
    int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < Words()[0]; ++n, pnPoint += 2) {
        POINT pt{pnPoint[0], pnPoint[1]};
        turn.RotatePoint(&pt);
        pnPoint[0] = pt.x;
        pnPoint[1] = pt.y;
    }
    SetRotation(nTurn);
    return MoveInside(0, 0);
}

int CQELViewPoints::MoveX(int32_t nDx)
{
    return MoveInside(nDx, 0);
}

int CQELViewPoints::MoveY(int32_t nDy)
{
    return MoveInside(0, nDy);
}

int CQELViewPoints::MoveInside(int32_t nDx, int32_t nDy)
{
    if (!HasPoints()) return 0;
    Shift(nDx, nDy);
    const RECT rc = Bounds();
    Shift(SlideInside(rc.left, rc.right, RefW()), SlideInside(rc.top, rc.bottom, RefH()));
    return 1;
}

void CQELViewPoints::Shift(int32_t nDx, int32_t nDy)
{
    int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < Words()[0]; ++n, pnPoint += 2) {
        pnPoint[0] = WrapAdd(pnPoint[0], nDx);
        pnPoint[1] = WrapAdd(pnPoint[1], nDy);
    }
}

RECT CQELViewPoints::Bounds() const
{
    const int32_t* pnPoint = Words() + 1;
    RECT rc{pnPoint[0], pnPoint[1], pnPoint[0], pnPoint[1]};
    for (int n = 1; n < Words()[0]; ++n) {
        pnPoint += 2;
        Widen(&rc, pnPoint[0], pnPoint[1]);
    }
    return rc;
}
