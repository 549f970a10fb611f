// The rounded-rectangle view; see the header.
#include "render/QELViewRoundRect.h"

#include "base/DrawLimits.h"

int CQELViewRoundRect::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

SIZE CQELViewRoundRect::Corner() const
{
    const RECT rc = Box();
    if (::IsRectEmpty(&rc)) return {0, 0};
    return {Words()[4], Words()[5]};
}

void CQELViewRoundRect::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    const RECT& rc = figure.rcBox;
    const SIZE corner = Corner();
    ::RoundRect(hdc, rc.left, rc.top, rc.right, rc.bottom, corner.cx, corner.cy);
}

HRGN CQELViewRoundRect::MakeRegion(const RECT& rcQel) const
{
    RECT rc{};
    if (!MapAnchored(rcQel, Box(), 0, &rc) || !IsDrawableCurve(rc)) return nullptr;
    const SIZE corner = Corner();
    return ::CreateRoundRectRgn(rc.left, rc.top, rc.right, rc.bottom, corner.cx, corner.cy);
}
