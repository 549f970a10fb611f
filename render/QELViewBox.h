// The views of rectangle, rounded rectangle and ellipse, and what they share with the text: the
// turn and the move of the rectangle, kept inside the drawing. The document side is
// document/QELDocShape.h.
#pragma once

#include "render/QELViewShape.h"

class CQELViewBox : public CQELViewShape {
public:
    CQELViewBox(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept
        : CQELViewShape(nRefW, nRefH, nType, pPool)
    {
    }

    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;

protected:
    [[nodiscard]] RECT Box() const;
    [[nodiscard]] bool IsBoxed() const override { return true; }
    [[nodiscard]] uint32_t KeepFlags() const override
    {
        return static_cast<uint32_t>(m_style.nFlags);
    }

private:
    void SetBoxInside(const RECT& rc);
};

// The one shape with 3D borders.
class CQELViewRect final : public CQELViewLeaf<CQELViewRect, CQELViewBox, QEL_TYPE_RECT> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override;
    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;
    int PaintMargin(CPixelScale px, int32_t* pnOut) const override;
    [[nodiscard]] RECT PaintedBox(const DeviceFigure& figure, bool bFace) const override;
    [[nodiscard]] int32_t RegionReach(const DeviceFigure& figure) const override;
    [[nodiscard]] double Roughness() const override;
    [[nodiscard]] bool HidesOutline() const override; // behind a 3D border
    [[nodiscard]] bool RestoresPenFirst() const override { return true; }
};

// The corners keep their size in pixels at every scale.
class CQELViewRoundRect final
    : public CQELViewLeaf<CQELViewRoundRect, CQELViewBox, QEL_TYPE_ROUNDRECT> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override;

protected:
    [[nodiscard]] bool IsCurved() const override { return true; }
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;

    void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const override;

private:
    // Of what is drawn there.
    [[nodiscard]] SIZE CornerIn(const RECT& rc, CPixelScale px) const;
    [[nodiscard]] SIZE
    Corner(CPixelScale px) const; // of the corner ellipse; 0 for an empty rectangle
};

class CQELViewEllipse final : public CQELViewLeaf<CQELViewEllipse, CQELViewBox, QEL_TYPE_ELLIPSE> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override;

protected:
    [[nodiscard]] bool IsCurved() const override { return true; }
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
               const QelRect& rcQel) const override;
    void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const override;
};
