// The view of a circle: the mapped box is cut to a square around its middle, so that the circle
// stays round. The document side is document/QELDocShape.h.
#pragma once

#include "render/QELViewShape.h"

class CQELViewCircle final : public CQELViewLeaf<CQELViewCircle, CQELViewShape, QEL_TYPE_CIRCLE> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;
    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override;

protected:
    int MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const override;
    [[nodiscard]] bool IsCurved() const override { return true; }
    [[nodiscard]] bool IsBoxed() const override { return true; }
    void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const override;
    [[nodiscard]] RECT GeometryBounds(const int32_t* pnWords) const override;
    [[nodiscard]] uint32_t KeepFlags() const override
    {
        return static_cast<uint32_t>(m_style.nFlags);
    }
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;

private:
    [[nodiscard]] RECT Box() const; // around the circle, drawing units
    int MapSquare(const QelRect& rcQel, uint32_t nFlags, RECT* prcOut) const;
};
