// How shapes let GDI fill their figures to have their regions; the rest of the class is in
// render/QELViewShape.cpp.
#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "base/WrapMath.h"
#include "render/MonoCanvas.h"
#include "render/QELViewShape.h"

namespace {

bool Contains(const RECT& rc, LONG x, LONG y)
{
    return x >= rc.left && x < rc.right && y >= rc.top && y < rc.bottom;
}

// Adds a pixel of the line between two that does not show, if there is one. Else all of the line
// shows, and what of it belongs to the region is there.
bool AddHidden(HRGN hRegion, POINT pt1, POINT pt2, const RECT& rcShown)
{
    const bool bFirst = !Contains(rcShown, pt1.x, pt1.y);
    const POINT& pt = bFirst ? pt1 : pt2;
    if (!bFirst && Contains(rcShown, pt2.x, pt2.y)) return true;
    const CRegion pixel(Made(::CreateRectRgn(pt.x, pt.y, pt.x + 1, pt.y + 1)));
    return pixel.Get() && ::CombineRgn(hRegion, hRegion, pixel.Get(), RGN_OR) != ERROR;
}

// One hidden pixel at each side of the box.
bool WidenHidden(HRGN hRegion, const RECT& rc, const RECT& rcShown)
{
    const LONG nLastX = rc.right - 1;
    const LONG nLastY = rc.bottom - 1;
    return AddHidden(hRegion, {rc.left, rc.top}, {rc.left, nLastY}, rcShown) &&
           AddHidden(hRegion, {rc.left, rc.top}, {nLastX, rc.top}, rcShown) &&
           AddHidden(hRegion, {nLastX, rc.top}, {nLastX, nLastY}, rcShown) &&
           AddHidden(hRegion, {rc.left, nLastY}, {nLastX, nLastY}, rcShown);
}

} // namespace

bool CQELViewShape::PaintOnCanvas(const CMonoCanvas& canvas, const DeviceFigure& figure,
                                  const QelRect& rcQel) const
{
    if (!canvas.Dc()) return false;
    const LONG nX = canvas.Place().left;
    const LONG nY = canvas.Place().top;
    DeviceFigure moved = figure;
    moved.rcBox = {WrapSub(figure.rcBox.left, nX), WrapSub(figure.rcBox.top, nY),
                   WrapSub(figure.rcBox.right, nX), WrapSub(figure.rcBox.bottom, nY)};
    for (POINT& pt : moved.pts) pt = {WrapSub(pt.x, nX), WrapSub(pt.y, nY)};
    const CSelectScope pen(canvas.Dc(), ::GetStockObject(NULL_PEN));
    const CSelectScope brush(canvas.Dc(), ::GetStockObject(BLACK_BRUSH));
    Paint(canvas.Dc(), moved, nullptr, rcQel);
    return true;
}

HRGN CQELViewShape::FillOnCanvas(const DeviceFigure& figure, const RECT& rc,
                                 const QelRect& rcQel) const
{
    const CMonoCanvas canvas(rc);
    return PaintOnCanvas(canvas, figure, rcQel) ? canvas.BlackRegion() : nullptr;
}

bool CQELViewShape::FindOnCanvas(const DeviceFigure& figure, const RECT& rc, const QelRect& rcQel,
                                 RECT* prcOut) const
{
    const CMonoCanvas canvas(rc);
    return PaintOnCanvas(canvas, figure, rcQel) && canvas.FindBlackBox(prcOut) &&
           !::IsRectEmpty(prcOut);
}

HRGN CQELViewShape::FillShownOnCanvas(const DeviceFigure& figure, const RECT& rcWhole,
                                      const RECT& rcShown, const QelRect& rcQel) const
{
    RECT rc{};
    CRegion region(::IntersectRect(&rc, &rcWhole, &rcShown) ? FillOnCanvas(figure, rc, rcQel)
                                                            : Made(::CreateRectRgn(0, 0, 0, 0)));
    if (!region.Get() || !WidenHidden(region.Get(), rcWhole, rcShown)) return nullptr;
    return region.Take();
}
