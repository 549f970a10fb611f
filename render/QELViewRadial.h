// The views of arc, chord and pie, and what they share: the box of an ellipse and two points
// towards which its ends run, stretched without keep modes and drawn counter-clockwise; the turn
// and the move of all three. The document side is document/QELDocShape.h.
#pragma once

#include "base/GdiScopes.h"
#include "base/PixelPen.h"
#include "render/QELViewShape.h"

class CQELViewRadial : public CQELViewShape {
public:
    CQELViewRadial(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept
        : CQELViewShape(nRefW, nRefH, nType, pPool)
    {
    }

    int Rotate(POINT ptCentre, int32_t nAngle) override;
    int MoveX(int32_t nDx) override;
    int MoveY(int32_t nDy) override;
    [[nodiscard]] HRGN MakeShownRegion(const QelRect& rcQel, const RECT& rcShown,
                                       bool* pbPart) const override;

protected:
    // pts[0] is the start point, pts[1] the end point.
    int MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const override;

    [[nodiscard]] bool IsCurved() const override { return true; }
    [[nodiscard]] RECT PaintedBox(const DeviceFigure& figure, bool bFace) const override;
    void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const override;
    // Whether the figure slides back into the drawing after a turn or a move.
    [[nodiscard]] virtual bool StaysInside() const = 0;
    // Where the coordinates lie along an axis whose reference size is below 1: false, the box at 0;
    // true, all of them at the QEL rect's edge.
    [[nodiscard]] virtual bool CollapsesToEdge() const = 0;
    // Whether the filled figure goes to the middle of the ellipse.
    [[nodiscard]] virtual bool ReachesMiddle() const = 0;

    // The filled figure as a region, for the classes that have one. Null for an empty box and for
    // one larger than 16384 pixels a side.
    //
    // GDI itself fills the figure, and its black pixels are the region: where GDI lets a ray meet a
    // flat ellipse is its own affair, and no polygon cut from outside agrees with it everywhere.
    [[nodiscard]] HRGN MakeFilledRegion(const QelRect& rcQel) const;

private:
    bool FindFilledBox(const DeviceFigure& figure, const RECT& rc, const QelRect& rcQel,
                       RECT* prcOut) const;
    void Shift(int32_t nDx, int32_t nDy);
    void KeepInside();
};

// What arc, chord and pie differ in.
struct RadialRules {
    int32_t nType;
    void (*pfnCall)(HDC hdc, const RECT& rc, POINT ptStart, POINT ptEnd, CPixelScale px);
    bool bOutlineOnly;
    bool bStaysInside;
    bool bCollapsesToEdge;
    bool bReachesMiddle;
};

inline constexpr RadialRules g_arcRules = {QEL_TYPE_ARC, DrawPixelArc, true, false, false, false};
inline constexpr RadialRules g_chordRules = {QEL_TYPE_CHORD, DrawPixelChord, false,
                                             true,           false,          false};
inline constexpr RadialRules g_pieRules = {QEL_TYPE_PIE, DrawPixelPie, false, true, true, true};

template <const RadialRules& RULES>
class CQELViewRadialLeaf final
    : public CQELViewLeaf<CQELViewRadialLeaf<RULES>, CQELViewRadial, RULES.nType> {
public:
    using CQELViewLeaf<CQELViewRadialLeaf, CQELViewRadial, RULES.nType>::CQELViewLeaf;

    [[nodiscard]] HRGN MakeRegion(const QelRect& rcQel) const override
    {
        return RULES.bOutlineOnly ? nullptr : this->MakeFilledRegion(rcQel);
    }

protected:
    void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH, const QelRect&) const noexcept override
    {
        const CArcDirectionScope direction(hdc, AD_COUNTERCLOCKWISE);
        RULES.pfnCall(hdc, this->DrawnBox(figure), this->DrawnPoint(figure, 0),
                      this->DrawnPoint(figure, 1), figure.px);
    }
    [[nodiscard]] bool IsOutlineOnly() const override { return RULES.bOutlineOnly; }
    [[nodiscard]] bool StaysInside() const override { return RULES.bStaysInside; }
    [[nodiscard]] bool CollapsesToEdge() const override { return RULES.bCollapsesToEdge; }
    [[nodiscard]] bool ReachesMiddle() const override { return RULES.bReachesMiddle; }
};

using CQELViewArc = CQELViewRadialLeaf<g_arcRules>;
using CQELViewChord = CQELViewRadialLeaf<g_chordRules>;
using CQELViewPie = CQELViewRadialLeaf<g_pieRules>;
