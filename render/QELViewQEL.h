// The view of the root element: draws its children. It keeps the drawing's kind and name for the
// host. The document side is document/QELDocQEL.h.
#pragma once

#include "base/TextPages.h"
#include "render/DirtyArea.h"
#include "render/LiveLayer.h"
#include "render/QELViewElm.h"

class CQELViewQEL final : public CQELViewElm {
public:
    CQELViewQEL(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept;
    ~CQELViewQEL() override
    {
        Detach();
        SetType(QEL_TYPE_NONE); // what is left of it does not count changes
    }

    int NewInstance(CQELViewElm** ppOut) const override;
    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override; // always 0
    int SetAttrBlock(const void* pBlock) override; // the subtree takes the reference size

    [[nodiscard]] int32_t Kind() const { return m_nKind; }
    [[nodiscard]] const char* Name() const { return m_szName; }
    void SetName(const char* pszName);

    // What the host sets by identifier, of this drawing's elements; null for none.
    [[nodiscard]] CLiveLayer* DrawingLayer() const { return m_pLiveLayer; }
    void SetLiveLayer(CLiveLayer* pLayer) { m_pLiveLayer = pLayer; }

    [[nodiscard]] CDirtyArea* Dirty() const { return m_pDirty; }
    void SetDirtyArea(CDirtyArea* pDirty) { m_pDirty = pDirty; }

    // The code page of its texts; PAGE_ANSI: they are drawn as their bytes.
    [[nodiscard]] uint32_t TextPage() const { return m_nTextPage; }
    void SetTextPage(uint32_t nPage) { m_nTextPage = nPage; }

    // The changes of the tree (CQELViewElm::Changes).
    [[nodiscard]] ChangeStamp ChangeCount() const { return m_changes; }
    void CountChange()
    {
        if (++m_changes.nLow == 0) ++m_changes.nHigh;
    }

private:
    CLiveLayer* m_pLiveLayer = nullptr;
    CDirtyArea* m_pDirty = nullptr; // null for none
    ChangeStamp m_changes{1, 0};    // 0 is never reached again: 64 bits do not come round
    uint32_t m_nTextPage = PAGE_ANSI;
    int32_t m_nKind = 0;
    char m_szName[QEL_TEXT_SIZE] = {};
};
