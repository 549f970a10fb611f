#include "dynamic/QELDocMeter.h"

#include "base/Rects.h"
#include "dynamic/Selectors.h"
#include "include/QELEngine.h"

#include <climits>

namespace {

constexpr DWORD BLOCK_SIZE = sizeof(QELMETERATTR);
constexpr int32_t LAYOUT = 3; // the first geometry word of the layout rectangle
constexpr int32_t START_ANGLE = 7;
constexpr int32_t END_ANGLE = 8;
constexpr int32_t FULL_TURN = 360;

constexpr CrdForm g_rectangleForm = {"xyxy", true, "0 0 10 10", "left top right bottom"};
constexpr CrdForm g_circleForm = {"xyrxyxy", false, "0 0 10 10 0 0 0",
                                  "cx cy r left top right bottom"};
constexpr CrdForm g_arcForm = {"xyrxyxynn", false, "0 0 10 10 0 0 0 0 0",
                               "cx cy r left top right bottom [start-angle end-angle]"};

int ParseType(const char* pszText, int32_t* pnValue)
{
    const int32_t nType = LookupKeyword(g_meterTypeRows, pszText);
    *pnValue = nType == KEYWORD_NONE ? 0 : nType;
    return 1;
}

std::size_t FormatType(int32_t nValue, char* pszOut, std::size_t nSize)
{
    return CopyKeyword(g_meterTypeRows, nValue, pszOut, nSize);
}

bool IsCleanType(const char* pszText)
{
    return LookupKeyword(g_meterTypeRows, pszText) != KEYWORD_NONE;
}

bool HasType(int32_t nType)
{
    return MeterTypeOf(nType) != nullptr;
}

} // namespace

const AttrForm g_formMeterType = {"a type of meter", ParseType, FormatType, IsCleanType};

MeterForm MeterFormOf(int32_t nType)
{
    const MeterTypeRow* pType = MeterTypeOf(nType);
    return pType ? pType->form : MeterForm::Rectangle;
}

bool TakeMeterBlock(const void* pBlock, tagQELMETERATTR* pOut)
{
    if (!pBlock) return false;
    DWORD nSize = 0;
    std::memcpy(&nSize, pBlock, sizeof nSize);
    if (nSize < BLOCK_SIZE) return false;
    std::memcpy(pOut, pBlock, BLOCK_SIZE);
    return pOut->nMin >= 1 && pOut->nMax >= 1 && pOut->nMin <= pOut->nMax;
}

CQELDocMeter::CQELDocMeter(const DocMaking& making) noexcept : CQELDocElm(making, QEL_TYPE_METER) {}

const CrdForm& CQELDocMeter::CrdFormOf(int32_t nType)
{
    switch (MeterFormOf(nType)) {
    case MeterForm::Circle:
        return g_circleForm;
    case MeterForm::Arc:
        return g_arcForm;
    default:
        return g_rectangleForm;
    }
}

std::span<const AttrRow<CQELDocMeter>> CQELDocMeter::Attrs()
{
    using Row = AttrRow<CQELDocMeter>;
    static const Row rows[] = {
        {{ATTR_MTID, &g_formCount, 0, INT_MIN, INT_MAX, "the id by which the host sets values"},
         &CQELDocMeter::m_nId},
        {{ATTR_USC, &g_formScan, 1, 0, 1, "0: there is no scale to be shown", "0"},
         &CQELDocMeter::m_bUseScale},
        {{ATTR_UPIN, &g_formScan, 0, 0, 1, "1: there is a pointer to be shown"},
         &CQELDocMeter::m_bUsePin},
        {{ATTR_MTYPE, &g_formMeterType, 0, 0, METER_TYPE_COUNT - 1,
          "the type; an unknown one reads as `vert`", "always"},
         &CQELDocMeter::m_nType},
        {{ATTR_IMIN, &g_formScan, 1, 1, INT_MAX, "no range: changes nothing from 1 to `imax`",
          "1 to `imax`"},
         &CQELDocMeter::m_nMin},
        {{ATTR_IMAX, &g_formScan, 100, 1, INT_MAX, "no range: changes nothing from `imin` on",
          "1 or more, and not below `imin`"},
         &CQELDocMeter::m_nMax},
        {{ATTR_CRD, &g_formCrd, 0, 0, 0, "the place; its form goes by the type"}, nullptr},
        {{ATTR_FLAG, &g_formHex, 0, INT_MIN, INT_MAX,
          "keep modes; 0x1000000: the whole drawing is drawn anew with every value"},
         &CQELDocMeter::m_nFlags},
        {SET_INFO, nullptr},
        {VALUE_INFO, nullptr},
    };
    return rows;
}

void CQELDocMeter::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocMeter::TakeFields(const CQELDocMeter& source)
{
    for (const auto& row : Attrs())
        if (row.pField) this->*row.pField = source.*row.pField;
    std::memcpy(m_nGeometry, source.m_nGeometry, sizeof m_nGeometry);
    return m_texts.Take(source.Set(), Pool());
}

int CQELDocMeter::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocMeter::GetAttrSize(int* pnSize) const
{
    *pnSize = BLOCK_SIZE;
    return 1;
}

int CQELDocMeter::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    QELMETERATTR block = {
        BLOCK_SIZE, static_cast<DWORD>(m_nId),   m_bUseScale, m_bUsePin, m_nType, m_nMax, m_nMin,
        {},         static_cast<DWORD>(m_nFlags)};
    for (int i = 0; i < METER_WORDS; ++i) block.nGeometry[i] = m_nGeometry[i];
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELDocMeter::SetAttr(const void* pBlock)
{
    QELMETERATTR block;
    if (!TakeMeterBlock(pBlock, &block)) return 0;
    m_nId = static_cast<int32_t>(block.nId);
    m_bUseScale = block.bUseScale;
    m_bUsePin = block.bUsePin;
    m_nType = block.nType;
    m_nMax = block.nMax;
    m_nMin = block.nMin;
    for (int i = 0; i < METER_WORDS; ++i) m_nGeometry[i] = block.nGeometry[i];
    m_nFlags = static_cast<int32_t>(block.nFlags);
    return 1;
}

int CQELDocMeter::GetRect(RECT* prc) const
{
    const int32_t* n = m_nGeometry + (MeterFormOf(m_nType) == MeterForm::Rectangle ? 0 : LAYOUT);
    *prc = NormalizedRect({n[0], n[1], n[2], n[3]});
    return 1;
}

int CQELDocMeter::SetRect(const RECT& rc)
{
    RECT rcOld{};
    GetRect(&rcOld);
    return MapRect(rcOld, rc);
}

// A dial moves with its layout rectangle; radius and angles stay.
int CQELDocMeter::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    const CrdShifts shifts = ShiftsBetween(rcOld, rcNew);
    if (MeterFormOf(m_nType) == MeterForm::Rectangle) {
        ShiftCrdNumbers(m_nGeometry, g_rectangleForm.pszLayout, true, shifts);
        return 1;
    }
    ShiftCrdNumbers(m_nGeometry, "xy", false, shifts);
    ShiftCrdNumbers(m_nGeometry + LAYOUT, g_rectangleForm.pszLayout, true, shifts);
    return 1;
}

// Without readable coordinates the geometry stays. An arc without angles is a full turn.
void CQELDocMeter::ParseGeometry(const char* pszCrd)
{
    int32_t nRead[METER_WORDS];
    if (MeterFormOf(m_nType) != MeterForm::Arc) {
        ParseCrdNumbers(pszCrd, CrdFormOf(m_nType).pszLayout, m_nGeometry);
    } else if (ParseCrdNumbers(pszCrd, g_arcForm.pszLayout, nRead)) {
        std::memcpy(m_nGeometry, nRead, sizeof nRead);
    } else if (ParseCrdNumbers(pszCrd, g_circleForm.pszLayout, nRead)) {
        nRead[START_ANGLE] = 0;
        ParseCrdNumbers(pszCrd, "xyrxyxyn", nRead); // the start angle alone may stand there
        nRead[END_ANGLE] = FULL_TURN;
        std::memcpy(m_nGeometry, nRead, sizeof nRead);
    }
}

int CQELDocMeter::Load()
{
    if (!CQELDocElm::Load()) return 0;
    for (const auto& row : Attrs())
        if (row.pField) LoadAttr(this, row, Xml());
    if (const char* pszCrd = GetXmlAttr(Xml(), ATTR_CRD)) ParseGeometry(pszCrd);
    m_bLacksMemory = !m_texts.Load(Xml(), Pool());
    return 1;
}

bool CQELDocMeter::IsWritten(const AttrRow<CQELDocMeter>& row) const
{
    switch (row.nId) {
    case ATTR_USC:
        return m_bUseScale == 0;
    case ATTR_MTYPE:
        return HasType(m_nType);
    case ATTR_IMIN:
        return m_nMin >= 1 && m_nMin <= m_nMax;
    case ATTR_IMAX:
        return m_nMax >= 1 && m_nMin <= m_nMax;
    default:
        return this->*row.pField != row.nDefault;
    }
}

int CQELDocMeter::Save()
{
    BeginSave();
    for (const auto& row : Attrs()) {
        if (row.pField) {
            if (IsWritten(row)) WriteAttr(this, row, Writer());
            continue;
        }
        if (row.nId != ATTR_CRD) continue;
        char szCrd[CRD_TEXT_SIZE];
        WriteAttrText(Writer(), row.nId, szCrd,
                      FormatCrdNumbers(m_nGeometry, CrdFormOf(m_nType).pszLayout, szCrd));
    }
    m_texts.Save(Writer());
    return 1;
}
