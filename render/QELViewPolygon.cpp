// The polygon view; see the header.
#include "render/QELViewPolygon.h"

#include "base/GdiScopes.h"

namespace {

// A region costs by its rows.
constexpr int64_t CHEAP_ROWS = 4096; // up to here it is made whole whatever shows
constexpr int64_t MAX_ROWS = 131072; // and up to here its box is that of the whole region

} // namespace

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

// The box of one that is higher than any region should be is that of its points.
HRGN CQELViewPolygon::MakeShownRegion(const RECT& rcQel, const RECT& rcShown, bool* pbPart) const
{
    DeviceFigure figure{};
    if (!MapFigure(rcQel, 0, &figure)) return nullptr;
    RECT rcWhole = Hull(figure);
    const int64_t nRows = int64_t{rcWhole.bottom} - rcWhole.top;
    if (nRows <= CHEAP_ROWS) return MakeRegion(rcQel);
    if (nRows <= MAX_ROWS) {
        const CRegion whole(MakeRegion(rcQel));
        if (!whole.Get() || ::GetRgnBox(whole.Get(), &rcWhole) == ERROR) return nullptr;
    }
    *pbPart = true;
    if (::IsRectEmpty(&rcWhole)) return ::CreateRectRgn(0, 0, 0, 0);
    return FillShownOnCanvas(figure, rcWhole, rcShown, rcQel);
}
