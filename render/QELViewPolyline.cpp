// The polyline view; see the header.
#include "render/QELViewPolyline.h"

#include "base/GdiScopes.h"

int CQELViewPolyline::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewPolyline::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const CPositionScope position(hdc, figure.pts[0]);
    for (int n = 1; n < figure.nPoints; ++n) ::LineTo(hdc, figure.pts[n].x, figure.pts[n].y);
}
