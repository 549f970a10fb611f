// The views of line, polyline and polygon, and what they share: stretching without keep modes, and
// for the lists the turn and the move of the whole figure, kept inside the drawing. The document
// sides are document/QELDocShape.h and document/QELDocPointList.h.
#pragma once

#include "render/QELViewShape.h"

class CQELViewPoints : public CQELViewShape {
public:
    CQELViewPoints(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept
        : CQELViewShape(nRefW, nRefH, nType, pPool)
    {
    }

    // 0 for a count outside 2 to 16; the shape is then as it was.
    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;

protected:
    int MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const override;

    [[nodiscard]] RECT Hull(const DeviceFigure& figure) const override;
    void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const override;
    [[nodiscard]] RECT GeometryBounds(const int32_t* pnWords) const override;

    // Stretches a point. A reference size of 0 puts the coordinate at 0; a pressed point moves
    // where it stays inside the QEL rect.
    [[nodiscard]] POINT StretchPoint(const QelRect& rcQel, uint32_t nFlags, int32_t nX,
                                     int32_t nY) const;

private:
    [[nodiscard]] bool HasPoints() const;
    int MoveInside(int32_t nDx, int32_t nDy);
    void Shift(int32_t nDx, int32_t nDy);
};

// Turned and moved freely, not kept inside the drawing.
class CQELViewLine final : public CQELViewLeaf<CQELViewLine, CQELViewPoints, QEL_TYPE_LINE> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;

protected:
    int MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const override;
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;
    [[nodiscard]] RECT GeometryBounds(const int32_t* pnWords) const override
    {
        return BoxBounds(pnWords);
    }
    [[nodiscard]] bool IsOutlineOnly() const override { return true; }
};

class CQELViewPolyline final
    : public CQELViewLeaf<CQELViewPolyline, CQELViewPoints, QEL_TYPE_POLYLINE> {
public:
    using CQELViewLeaf::CQELViewLeaf;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;
    [[nodiscard]] bool IsOutlineOnly() const override { return true; }
};

class CQELViewPolygon final
    : public CQELViewLeaf<CQELViewPolygon, CQELViewPoints, QEL_TYPE_POLYGON> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override;
    [[nodiscard]] HRGN MakeShownRegion(const QelRect& rcQel, const RECT& rcShown,
                                       bool* pbPart) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;
};
