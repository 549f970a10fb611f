// The "scale" element: a simple gauge. Drawn by dynamic/QELViewScale.h.
#pragma once

#include "document/Attributes.h"
#include "document/Crd.h"
#include "document/QELDocElm.h"
#include "dynamic/SetTexts.h"

#include "include/QELEngine.h"

#include <span>

constexpr int32_t SCALE_ROUND = 4; // the first of the types with a centre
constexpr int32_t SCALE_ARC = 5;
constexpr int32_t SCALE_WORDS = 7;

extern const AttrForm g_formScaleType; // a keyword; an unknown one reads as 0, "vrtleft"

class CQELDocScale final : public CQELDocElm {
public:
    using Record = QELSCALEATTR;

    explicit CQELDocScale(const DocMaking& making) noexcept;
    ~CQELDocScale() override { m_texts.Free(Pool()); }

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // refuses an unknown type
    int GetRect(RECT* prc) const override;    // round and arc: the square of the tick radius
    int SetRect(const RECT& rc) override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int Load() override;
    int Save() override;
    [[nodiscard]] SetTexts Set() const override { return m_texts.Get(); }
    [[nodiscard]] bool LacksMemory() const override { return m_bLacksMemory; }

    int TakeFields(const CQELDocScale& source);

    static std::span<const AttrRow<CQELDocScale>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);
    static const CrdForm& CrdFormOf(int32_t nType); // of a type from 0 to 5

private:
    bool m_bLacksMemory = false;
    int32_t m_nId = 0;
    int32_t m_bHide = 0;
    int32_t m_nType = 1; // without an "sctype"; an unknown one is 0
    int32_t m_nStyle = 1;
    int32_t m_nMin = 1;
    int32_t m_nMax = 100;
    int32_t m_bPin = 0;
    int32_t m_nGeometry[SCALE_WORDS] = {0, 0, 10, 10, 0, 0, 0};
    CSetTexts m_texts;
};
