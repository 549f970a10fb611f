// The view of a frame: a group whose shapes all take the frame colour, whatever their flags say.
// The document side is document/QELDocContainer.h.
#pragma once

#include "dynamic/QELViewParam.h"

class CQELViewFrame final : public CQELViewParam {
public:
    CQELViewFrame(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept
        : CQELViewParam(nRefW, nRefH, QEL_TYPE_FRAME, pPool)
    {
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
    int SetColorParam(uint32_t nValue) override;
    [[nodiscard]] uint32_t GetParamMask() const override;

    int SetHostParam(int32_t nIndex, uint32_t nValue) override;
    int GetHostParam(int32_t nIndex, uint32_t* pnValue) const override;
    [[nodiscard]] uint32_t Color() const { return m_clr; }

private:
    uint32_t m_clr = 0;
};
