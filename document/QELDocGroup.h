// The "g" element: gathers children and has no data of its own. Drawn by render/QELViewGroup.h.
#pragma once

#include "document/QELDocElm.h"

class CQELDocGroup final : public CQELDocElm {
public:
    explicit CQELDocGroup(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // takes any record and changes nothing

    void TakeFields(const CQELDocGroup&) {}
};
