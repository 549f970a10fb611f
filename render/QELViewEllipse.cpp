// The ellipse view; see the header.
#include "render/QELViewEllipse.h"

#include "base/DrawLimits.h"

int CQELViewEllipse::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewEllipse::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const RECT& rc = figure.rcBox;
    ::Ellipse(hdc, rc.left, rc.top, rc.right, rc.bottom);
}

HRGN CQELViewEllipse::MakeRegion(const RECT& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc) || !IsDrawableCurve(rc)) return nullptr;
    return ::CreateEllipticRgn(rc.left, rc.top, rc.right, rc.bottom);
}
