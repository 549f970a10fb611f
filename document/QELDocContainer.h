// What the elements that only gather children share (group, frame, pattern): a record of one word
// that is read as 0, and no data of their own.
#pragma once

#include "document/QELDocElm.h"
#include "include/QELEngine.h"

class CQELDocContainer : public CQELDocElm {
public:
    using Record = QELWORDATTR;

    CQELDocContainer(const DocMaking& making, int32_t nType) noexcept : CQELDocElm(making, nType) {}

    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // takes any record and changes nothing

    static int TakeFields(const CQELDocContainer&) { return 1; }
};
