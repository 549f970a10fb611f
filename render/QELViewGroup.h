// The view of a group: draws, turns, moves and recolours its children and nothing else. It knows
// where all of them paint, so that a clip can hide it as a whole. The document side is
// document/QELDocLeaves.h.
#pragma once

#include "render/QELViewShape.h"

// What a full draw of a group does, in device units.
struct PaintedBounds {
    RECT rc;           // holds all that is painted; turned inside out when that is nothing
    LeftColors colors; // by which of its shapes they are left set
    bool bKnown;       // false: there is something in it of which the area is not known
};

class CQELViewGroup final : public CQELViewElm {
public:
    CQELViewGroup(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept;

    int NewInstance(CQELViewElm** ppOut) const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override; // takes any block and changes nothing

    // Found anew only when anything has changed since the last time.
    void DropBounds() { m_boundsChanges = {}; }
    const PaintedBounds& Bounds(const QelRect& rcQel, uint32_t nFlags);

private:
    void FindBounds(const QelRect& rcQel);
    [[nodiscard]] bool AddShape(const CQELViewShape& shape, const QelRect& rcQel);
    [[nodiscard]] bool AddGroup(CQELViewGroup* pGroup, const QelRect& rcQel);
    void AddArea(const RECT& rc);

    PaintedBounds m_bounds{};
    RECT m_rcBoundsQel{0, 0, 0, 0}; // what they hold for, at the scale that the stamp tells
    uint32_t m_nBoundsFlags = 0;
    ChangeStamp m_boundsChanges; // never
};
