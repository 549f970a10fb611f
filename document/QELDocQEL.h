// The root element of a drawing ("qel"): its kind, its reference size and a rotation that is stored
// and not applied. Drawn by render/QELViewQEL.h.
#pragma once

#include "document/Attributes.h"
#include "document/QELDocElm.h"

#include "include/QELEngine.h"

#include <span>

constexpr int32_t DEFAULT_REF_SIZE = 50; // drawing units, both ways

class CQELDocQEL final : public CQELDocElm {
public:
    using Record = QELROOTATTR;

    explicit CQELDocQEL(const DocMaking& making) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override;
    int Load() override;
    int Save() override;

    [[nodiscard]] SIZE RefSize() const { return {m_nWidth, m_nHeight}; }
    void SetRefSize(SIZE size);
    int TakeFields(const CQELDocQEL& source);

    static std::span<const AttrRow<CQELDocQEL>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);

private:
    int32_t m_nKind = 0; // 0 to 2
    int32_t m_nWidth = DEFAULT_REF_SIZE;
    int32_t m_nHeight = DEFAULT_REF_SIZE;
    int32_t m_nRotate = 0; // degrees, unsigned
};
