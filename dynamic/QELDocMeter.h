// The "meter" element: a dial or a bar. Drawn by dynamic/QELViewMeter.h.
#pragma once

#include "document/Attributes.h"
#include "document/Crd.h"
#include "document/QELDocElm.h"
#include "dynamic/MeterTypes.h"
#include "dynamic/SetTexts.h"

#include "include/QELEngine.h"

#include <span>

constexpr int32_t METER_WORDS = 9;

MeterForm MeterFormOf(int32_t nType); // a rectangle for an unknown type

extern const AttrForm g_formMeterType; // a keyword; an unknown one reads as 0, "vert"

class CQELDocMeter final : public CQELDocElm {
public:
    using Record = QELMETERATTR;

    explicit CQELDocMeter(const DocMaking& making) noexcept;
    ~CQELDocMeter() override { m_texts.Free(Pool()); }

    int Clone(CQELDocElm** ppOut) const override;
    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override; // refuses a range that no file can hold
    int GetRect(RECT* prc) const override;    // dials: the layout rectangle
    int SetRect(const RECT& rc) override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int Load() override;
    int Save() override;
    [[nodiscard]] SetTexts Set() const override { return m_texts.Get(); }
    [[nodiscard]] bool LacksMemory() const override { return m_bLacksMemory; }

    int TakeFields(const CQELDocMeter& source);

    static std::span<const AttrRow<CQELDocMeter>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);
    static const CrdForm& CrdFormOf(int32_t nType);

private:
    void ParseGeometry(const char* pszCrd);
    [[nodiscard]] bool IsWritten(const AttrRow<CQELDocMeter>& row) const;

    bool m_bLacksMemory = false;
    int32_t m_nId = 0;
    int32_t m_bUseScale = 1;
    int32_t m_bUsePin = 0;
    int32_t m_nType = 0;
    int32_t m_nMin = 1;
    int32_t m_nMax = 100;
    int32_t m_nGeometry[METER_WORDS] = {0, 0, 10, 10, 0, 0, 0, 0, 0};
    int32_t m_nFlags = 0;
    CSetTexts m_texts;
};

// Whether a meter's record may be taken: its size, and a range from 1 on. The document and the view
// ask the same.
struct tagQELMETERATTR;
bool TakeMeterBlock(const void* pBlock, tagQELMETERATTR* pOut);
