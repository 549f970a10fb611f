// The "status" element: a group that is shown at one status number. Drawn by
// dynamic/QELViewStatus.h.
#pragma once

#include "document/Attributes.h"
#include "document/QELDocElm.h"

#include "include/QELEngine.h"

#include <span>

class CQELDocStatus final : public CQELDocElm {
public:
    using Record = QELWORDATTR;

    explicit CQELDocStatus(const DocMaking& making) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // a negative number is stored as 0
    int Load() override;
    int Save() override;

    int TakeFields(const CQELDocStatus& source)
    {
        m_nStatus = source.m_nStatus;
        return 1;
    }

    static std::span<const AttrRow<CQELDocStatus>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);

private:
    int32_t m_nStatus = 0;
};
