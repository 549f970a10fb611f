// The view of a draw region: fills and frames the rectangle in which the host paints, and tells the
// host what is left inside of the border. The document side is dynamic/QELDocDrawRgn.h.
#pragma once

#include "dynamic/QELViewParam.h"

class CQELViewDrawRgn final
    : public CQELViewLeaf<CQELViewDrawRgn, CQELViewParam, QEL_TYPE_DRAWRGN> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override;
    bool PaintedRect(const QelRect& rcQel, RECT* prcOut) const override;
    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;
    [[nodiscard]] bool DrawsChildren() const override { return false; }
    bool MapUnits(const QelRect& rcQel, UnitMap* pOut) const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
    [[nodiscard]] uint32_t GetParamMask() const override;
    [[nodiscard]] bool Blinks() const override;

    // The host's parameters 1 to 3. Here parameter 2 is the background and 3 the hatch colour, the
    // other way round than in shapes.
    int SetHostParam(int32_t nIndex, uint32_t nValue) override;
    int GetHostParam(int32_t nIndex, uint32_t* pnValue) const override;

    int GetGraphRect(const QelRect& rcQel, RECT* prcOut) const override; // 0 when the mapping fails

private:
    [[nodiscard]] bool HasBorder() const;
    void Fill(HDC hdc, const RECT& rc, CPixelScale px) const;

    RECT m_rc{0, 0, 10, 10};
    uint32_t m_nStyle = 0;
    int32_t m_nDraft = 0;
    uint32_t m_clrA = 0xFFFFFF;
    uint32_t m_clrB = 0;
    uint32_t m_nFlags = 0;
};
