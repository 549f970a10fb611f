#include "render/QELViewPoints.h"

#include "base/GdiScopes.h"
#include "base/Refusals.h"
#include "render/Mapping.h"
#include "render/OutlineProbe.h"
#include "render/QELRotate.h"

namespace {

constexpr int MIN_POINTS = 2;

bool HasPointCount(int32_t nCount)
{
    return nCount >= MIN_POINTS && nCount <= QEL_MAX_POINTS;
}

LONG StretchOne(int32_t nPos, int32_t nRef, int32_t nLow, int32_t nHigh, CPixelScale px,
                bool bPressed)
{
    const int32_t nExtent = WrapSub(nHigh, nLow);
    const int32_t nAt = nRef ? px.Sampled(Stretch(nPos, nExtent, nRef, nLow)) : 0;
    const int32_t nShifted = WrapAdd(nAt, px(PRESSED_SHIFT));
    return bPressed && nShifted <= px.Sampled(nHigh) ? nShifted : nAt;
}

void Widen(RECT* prc, int32_t nX, int32_t nY)
{
    if (nX < prc->left) prc->left = nX;
    if (nX > prc->right) prc->right = nX;
    if (nY < prc->top) prc->top = nY;
    if (nY > prc->bottom) prc->bottom = nY;
}

} // namespace

bool CQELViewPoints::HasPoints() const
{
    return HasPointCount(Words()[0]);
}

POINT CQELViewPoints::StretchPoint(const QelRect& rcQel, uint32_t nFlags, int32_t nX,
                                   int32_t nY) const
{
    const bool bPressed = IsPressed(nFlags);
    return {StretchOne(nX, RefW(), rcQel.left, rcQel.right, rcQel.px, bPressed),
            StretchOne(nY, RefH(), rcQel.top, rcQel.bottom, rcQel.px, bPressed)};
}

int CQELViewPoints::MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    if (!HasPoints()) return 0;
    pOut->nPoints = Words()[0];
    // The box starts out as all zeros, so that it always holds the device's origin: a gradient runs
    // from there.
    pOut->rcBox = {0, 0, 0, 0};
    const int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < pOut->nPoints; ++n, pnPoint += 2) {
        pOut->pts[n] = StretchPoint(rcQel, nFlags, pnPoint[0], pnPoint[1]);
        Widen(&pOut->rcBox, pOut->pts[n].x, pOut->pts[n].y);
    }
    return 1;
}

// The points alone: the box holds the device's origin as well.
RECT CQELViewPoints::Hull(const DeviceFigure& figure) const
{
    const POINT& pt = figure.pts[0];
    RECT rc{pt.x, pt.y, pt.x, pt.y};
    for (int n = 1; n < figure.nPoints; ++n) Widen(&rc, figure.pts[n].x, figure.pts[n].y);
    return rc;
}

void CQELViewPoints::Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const
{
    for (int n = 1; n < figure.nPoints; ++n)
        pProbe->Line(DrawnPoint(figure, n - 1), DrawnPoint(figure, n));
    if (!IsOutlineOnly())
        pProbe->Line(DrawnPoint(figure, figure.nPoints - 1), DrawnPoint(figure, 0));
}

int CQELViewPoints::Rotate(POINT ptCentre, int32_t nAngle)
{
    if (!HasPoints()) return 0;
    const int32_t nTurn = QuarterTurn(nAngle);
    const CQELRotate turn(ptCentre, WrapSub(nTurn, Rotation()));
    int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < Words()[0]; ++n, pnPoint += 2) {
        POINT pt{pnPoint[0], pnPoint[1]};
        turn.RotatePoint(&pt);
        pnPoint[0] = pt.x;
        pnPoint[1] = pt.y;
    }
    SetRotation(nTurn);
    return MoveInside(0, 0);
}

int CQELViewPoints::MoveX(int32_t nDx)
{
    return MoveInside(nDx, 0);
}

int CQELViewPoints::MoveY(int32_t nDy)
{
    return MoveInside(0, nDy);
}

int CQELViewPoints::MoveInside(int32_t nDx, int32_t nDy)
{
    if (!HasPoints()) return 0;
    Shift(nDx, nDy);
    const RECT rc = GeometryBounds(Words());
    Shift(SlideInside(rc.left, rc.right, RefW()), SlideInside(rc.top, rc.bottom, RefH()));
    return 1;
}

void CQELViewPoints::Shift(int32_t nDx, int32_t nDy)
{
    int32_t* pnPoint = Words() + 1;
    for (int n = 0; n < Words()[0]; ++n, pnPoint += 2) {
        pnPoint[0] = WrapAdd(pnPoint[0], nDx);
        pnPoint[1] = WrapAdd(pnPoint[1], nDy);
    }
}

RECT CQELViewPoints::GeometryBounds(const int32_t* pnWords) const
{
    if (!HasPointCount(pnWords[0])) return {0, 0, 0, 0};
    const int32_t* pnPoint = pnWords + 1;
    RECT rc{pnPoint[0], pnPoint[1], pnPoint[0], pnPoint[1]};
    for (int n = 1; n < pnWords[0]; ++n) {
        pnPoint += 2;
        Widen(&rc, pnPoint[0], pnPoint[1]);
    }
    return rc;
}

int CQELViewLine::MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    pOut->nPoints = 2;
    pOut->pts[0] = StretchPoint(rcQel, nFlags, Words()[0], Words()[1]);
    pOut->pts[1] = StretchPoint(rcQel, nFlags, Words()[2], Words()[3]);
    return 1;
}

void CQELViewLine::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    DrawPixelLines(hdc, figure.pts, 2, StrokedPixels(), figure.px);
}

int CQELViewLine::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    POINT pt1{Words()[0], Words()[1]};
    POINT pt2{Words()[2], Words()[3]};
    CQELRotate(ptCentre, WrapSub(nTurn, Rotation())).RotateTwo(&pt1, &pt2);
    Words()[0] = pt1.x;
    Words()[1] = pt1.y;
    Words()[2] = pt2.x;
    Words()[3] = pt2.y;
    SetRotation(nTurn);
    return 1;
}

int CQELViewLine::MoveX(int32_t nDx)
{
    Words()[0] = WrapAdd(Words()[0], nDx);
    Words()[2] = WrapAdd(Words()[2], nDx);
    return 1;
}

int CQELViewLine::MoveY(int32_t nDy)
{
    Words()[1] = WrapAdd(Words()[1], nDy);
    Words()[3] = WrapAdd(Words()[3], nDy);
    return 1;
}

void CQELViewPolyline::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    DrawPixelLines(hdc, figure.pts, figure.nPoints, StrokedPixels(), figure.px);
}

namespace {

// A region costs by its rows.
constexpr int64_t CHEAP_ROWS = 4096; // up to here it is made whole whatever shows
constexpr int64_t MAX_ROWS = 131072; // and up to here its box is that of the whole region

} // namespace

void CQELViewPolygon::Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const
{
    DrawPixelPolygon(hdc, figure.pts, figure.nPoints, StrokedPixels(), figure.px);
}

HRGN CQELViewPolygon::MakeRegion(const QelRect& rcQel) const
{
    DeviceFigure figure{};
    if (!MakeFigure(rcQel, 0, &figure)) return nullptr;
    const RECT rc = Hull(figure);
    return Made(::CreatePolygonRgn(figure.pts, figure.nPoints, ALTERNATE), !::IsRectEmpty(&rc));
}

// The box of one that is higher than any region should be is that of its points.
HRGN CQELViewPolygon::MakeShownRegion(const QelRect& rcQel, const RECT& rcShown, bool* pbPart) const
{
    DeviceFigure figure{};
    if (!MakeFigure(rcQel, 0, &figure)) return nullptr;
    RECT rcWhole = Hull(figure);
    const int64_t nRows = int64_t{rcWhole.bottom} - rcWhole.top;
    if (nRows <= CHEAP_ROWS) return MakeRegion(rcQel);
    if (nRows <= MAX_ROWS) {
        const CRegion whole(MakeRegion(rcQel));
        if (!whole.Get() || ::GetRgnBox(whole.Get(), &rcWhole) == ERROR) return nullptr;
    }
    *pbPart = true;
    if (::IsRectEmpty(&rcWhole)) return Made(::CreateRectRgn(0, 0, 0, 0));
    return FillShownOnCanvas(figure, rcWhole, rcShown, rcQel);
}
