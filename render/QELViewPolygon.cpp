// The polygon view; see the header.
#include "render/QELViewPolygon.h"

int CQELViewPolygon::NewInstance(CQELViewElm** ppOut) const
{
    return NewInstanceAs(*this, ppOut);
}

void CQELViewPolygon::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const RECT&) const
{
    ::Polygon(hdc, figure.pts, figure.nPoints);
}

HRGN CQELViewPolygon::MakeRegion(const RECT& rcQel) const
{
    DeviceFigure figure{};
    if (!MapFigure(rcQel, 0, &figure)) return nullptr;
    return ::CreatePolygonRgn(figure.pts, figure.nPoints, ALTERNATE);
}
