// The view of a group: draws, turns, moves and recolours its children and nothing else. The
// document side is document/QELDocGroup.h.
#pragma once

#include "render/QELViewElm.h"

class CQELViewGroup final : public CQELViewElm {
public:
    CQELViewGroup(int32_t nRefW, int32_t nRefH) noexcept;

    int NewInstance(CQELViewElm** ppOut) const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override; // takes any block and changes nothing
};
