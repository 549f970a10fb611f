// The arc view; see the header.
#include "render/QELViewArc.h"

#include "base/GdiScopes.h"

int CQELViewArc::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewArc::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const CArcDirectionScope direction(hdc, AD_COUNTERCLOCKWISE);
    const RECT& rc = figure.rcBox;
    const POINT& ptStart = figure.pts[0];
    const POINT& ptEnd = figure.pts[1];
    ::Arc(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}
