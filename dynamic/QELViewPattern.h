// The view of a pattern: a group whose shapes all take the host's hatch and its two colours,
// whatever their flags say. The document side is document/QELDocContainer.h.
#pragma once

#include "dynamic/QELViewParam.h"

class CQELViewPattern final : public CQELViewParam {
public:
    CQELViewPattern(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewParam(nRefW, nRefH, QEL_TYPE_PATTERN, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
    [[nodiscard]] uint32_t GetParamMask() const override;

    // The host's parameters 1 to 3, given to the pattern directly; the broadcast to flagged shapes
    // passes through it. A hatch outside 0 to 37 leaves the stored one, which is applied again.
    int SetHostParam(int32_t nIndex, uint32_t nValue) override;
    int GetHostParam(int32_t nIndex, uint32_t* pnValue) const override;

private:
    int32_t m_nDraft = 0;
    uint32_t m_clrFore = 0;
    uint32_t m_clrBack = 0;
};
