// The line view; see the header.
#include "render/QELViewLine.h"

#include "base/GdiScopes.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"

int CQELViewLine::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewLine::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    pOut->nPoints = 2;
    pOut->pts[0] = StretchPoint(rcQel, nFlags, Words()[0], Words()[1]);
    pOut->pts[1] = StretchPoint(rcQel, nFlags, Words()[2], Words()[3]);
    return 1;
}

void CQELViewLine::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const CPositionScope position(hdc, figure.pts[0]);
    ::LineTo(hdc, figure.pts[1].x, figure.pts[1].y);
}

int CQELViewLine::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    POINT pt1{Words()[0], Words()[1]};
    POINT pt2{Words()[2], Words()[3]};
    if (!CQELRotate(ptCentre, WrapSub(nTurn, Rotation())).RotateTwo(&pt1, &pt2)) return 0;
    Words()[0] = pt1.x;
    Words()[1] = pt1.y;
    Words()[2] = pt2.x;
    Words()[3] = pt2.y;
    SetRotation(nTurn);
    return 1;
}

int CQELViewLine::MoveX(int32_t nDx)
{
    Words()[0] = WrapAdd(Words()[0], nDx);
    Words()[2] = WrapAdd(Words()[2], nDx);
    return 1;
}

int CQELViewLine::MoveY(int32_t nDy)
{
    Words()[1] = WrapAdd(Words()[1], nDy);
    Words()[3] = WrapAdd(Words()[3], nDy);
    return 1;
}
