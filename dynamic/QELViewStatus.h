// The view of a status element: its children are drawn only while the drawing's status number
// equals its own, or is 0xFFFFFFFF. The document side is dynamic/QELDocStatus.h.
#pragma once

#include "base/Keywords.h"
#include "render/HostDriven.h"
#include "render/QELViewElm.h"

constexpr uint32_t STATUS_SHOW_ALL = 0xFFFFFFFF;

// The kinds of status pictures. An element has no kind of its own: the table only names them.
extern const KeywordRow g_statusKindRows[];

class CQELViewStatus final : public CQELViewElm, public CHostDriven {
public:
    CQELViewStatus(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept;

    int NewInstance(CQELViewElm** ppOut) const override;
    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override; // 0 while it is not shown
    [[nodiscard]] bool IsShown() const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override; // any number; a negative one is never shown

    [[nodiscard]] CHostDriven* HostSide() override { return this; }
    [[nodiscard]] uint32_t Status() const override { return m_nStatus; }
    void SetStatus(uint32_t nStatus) override { m_nStatus = nStatus; }
    [[nodiscard]] bool FollowsNumber() const override { return true; }

private:
    int32_t m_nOwn = -1;
    uint32_t m_nStatus = 0; // of the drawing
};
