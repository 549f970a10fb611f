// The "drawrgn" element: the rectangle in which the host paints its own graphics. Drawn by
// dynamic/QELViewDrawRgn.h.
#pragma once

#include "document/Attributes.h"
#include "document/Crd.h"
#include "document/QELDocElm.h"

#include "include/QELEngine.h"

#include <span>

class CQELDocDrawRgn final : public CQELDocElm {
public:
    using Record = QELDRAWRGNATTR;

    explicit CQELDocDrawRgn(const DocMaking& making) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // refuses a negative style
    int GetRect(RECT* prc) const override;
    int SetRect(const RECT& rc) override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int Load() override;
    int Save() override;

    int TakeFields(const CQELDocDrawRgn& source);

    static std::span<const AttrRow<CQELDocDrawRgn>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);
    static constexpr CrdForm FORM = {"xyxy", true, "0 0 10 10", "left top right bottom"};

private:
    int32_t m_nStyle = 0;
    int32_t m_nBox[4] = {0, 0, 10, 10};
    int32_t m_nFlags = 0;
};
