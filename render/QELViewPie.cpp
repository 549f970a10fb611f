// The pie view; see the header.
#include "render/QELViewPie.h"

#include "base/GdiScopes.h"

int CQELViewPie::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewPie::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const CArcDirectionScope direction(hdc, AD_COUNTERCLOCKWISE);
    const RECT& rc = figure.rcBox;
    const POINT& ptStart = figure.pts[0];
    const POINT& ptEnd = figure.pts[1];
    ::Pie(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

HRGN CQELViewPie::MakeRegion(const RECT& rcQel) const
{
    return MakeFilledRegion(rcQel);
}
