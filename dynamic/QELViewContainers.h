// The views of frame and pattern: groups whose shapes all take what the host sets, whatever their
// flags say. The document side is document/QELDocLeaves.h.
#pragma once

#include "dynamic/QELViewParam.h"

// A record of one word that is read as 0; any one is taken.
class CQELViewContainer : public CQELViewParam {
public:
    using CQELViewParam::CQELViewParam;

    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
};

// The frame colour.
class CQELViewFrame final : public CQELViewLeaf<CQELViewFrame, CQELViewContainer, QEL_TYPE_FRAME> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int SetColorParam(uint32_t nValue) override;
    [[nodiscard]] uint32_t GetParamMask() const override;

    int SetHostParam(int32_t nIndex, uint32_t nValue) override;
    int GetHostParam(int32_t nIndex, uint32_t* pnValue) const override;
    [[nodiscard]] uint32_t Color() const { return m_clr; }

private:
    uint32_t m_clr = 0;
};

// The host's hatch and its two colours.
class CQELViewPattern final
    : public CQELViewLeaf<CQELViewPattern, CQELViewContainer, QEL_TYPE_PATTERN> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
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
