// The line view; see the header.
#include "render/QELViewLine.h"

#include "render/GdiScopes.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"

int CQELViewLine::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

int CQELViewLine::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    pOut->nPoints = 2;
    pOut->pts[0] = StretchPoint(rcQel, nFlags, m_nGeometry[0], m_nGeometry[1]);
    pOut->pts[1] = StretchPoint(rcQel, nFlags, m_nGeometry[2], m_nGeometry[3]);
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
    POINT pt1{m_nGeometry[0], m_nGeometry[1]};
    POINT pt2{m_nGeometry[2], m_nGeometry[3]};
    if (!CQELRotate(ptCentre, WrapSub(nTurn, m_nRotation)).RotateTwo(&pt1, &pt2)) return 0;
    m_nGeometry[0] = pt1.x;
    m_nGeometry[1] = pt1.y;
    m_nGeometry[2] = pt2.x;
    m_nGeometry[3] = pt2.y;
    m_nRotation = nTurn;
    return 1;
}

int CQELViewLine::MoveX(int32_t nDx)
{
    m_nGeometry[0] = WrapAdd(m_nGeometry[0], nDx);
    m_nGeometry[2] = WrapAdd(m_nGeometry[2], nDx);
    return 1;
}

int CQELViewLine::MoveY(int32_t nDy)
{
    m_nGeometry[1] = WrapAdd(m_nGeometry[1], nDy);
    m_nGeometry[3] = WrapAdd(m_nGeometry[3], nDy);
    return 1;
}
