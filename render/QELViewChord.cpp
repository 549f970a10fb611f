// The chord view; see the header.
#include "render/QELViewChord.h"

#include "base/GdiScopes.h"

int CQELViewChord::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewChord::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const CArcDirectionScope direction(hdc, AD_COUNTERCLOCKWISE);
    const RECT& rc = figure.rcBox;
    const POINT& ptStart = figure.pts[0];
    const POINT& ptEnd = figure.pts[1];
    ::Chord(hdc, rc.left, rc.top, rc.right, rc.bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

HRGN CQELViewChord::MakeRegion(const RECT& rcQel) const
{
    return MakeFilledRegion(rcQel);
}
