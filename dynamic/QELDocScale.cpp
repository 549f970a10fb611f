#include "dynamic/QELDocScale.h"

#include "base/Rects.h"
#include "dynamic/Selectors.h"
#include "include/QELEngine.h"

#include <climits>

namespace {

constexpr DWORD BLOCK_SIZE = sizeof(QELSCALEATTR);

constexpr CrdForm g_straightForm = {"xyxy", true, "0 0 10 10", "left top right bottom"};
constexpr CrdForm g_roundForm = {"xynnn", false, "5 5 5 3 2", "cx cy tick-r circle-r hub-r"};
constexpr CrdForm g_arcForm = {"xynnnnn", false, "5 5 5 3 2 0 90",
                               "cx cy tick-r circle-r hub-r start-angle end-angle"};

int ParseType(const char* pszText, int32_t* pnValue)
{
    const int32_t nType = LookupKeyword(g_scaleTypeRows, pszText);
    *pnValue = nType == KEYWORD_NONE ? 0 : nType;
    return 1;
}

std::size_t FormatType(int32_t nValue, char* pszOut, std::size_t nSize)
{
    return CopyKeyword(g_scaleTypeRows, nValue, pszOut, nSize);
}

bool IsCleanType(const char* pszText)
{
    return LookupKeyword(g_scaleTypeRows, pszText) != KEYWORD_NONE;
}

} // namespace

const AttrForm g_formScaleType = {"a type of scale", ParseType, FormatType, IsCleanType};

CQELDocScale::CQELDocScale(const DocMaking& making) noexcept : CQELDocElm(making, QEL_TYPE_SCALE) {}

const CrdForm& CQELDocScale::CrdFormOf(int32_t nType)
{
    if (nType == SCALE_ARC) return g_arcForm;
    return nType == SCALE_ROUND ? g_roundForm : g_straightForm;
}

std::span<const AttrRow<CQELDocScale>> CQELDocScale::Attrs()
{
    using Row = AttrRow<CQELDocScale>;
    static const Row rows[] = {
        {{ATTR_SCID, &g_formCount, 0, INT_MIN, INT_MAX, "the id by which the host sets values"},
         &CQELDocScale::m_nId},
        {{ATTR_HIDESC, &g_formScan, 0, 0, 1, "1 hides the marks"}, &CQELDocScale::m_bHide},
        {{ATTR_SCTYPE, &g_formScaleType, 1, 0, SCALE_ARC,
          "the type; an unknown one reads as `vrtleft`"},
         &CQELDocScale::m_nType},
        {{ATTR_STYLE, &g_formHex, 1, INT_MIN, INT_MAX,
          "low 16 bits 1: round and arc scales fill up to the value, as straight ones always do"},
         &CQELDocScale::m_nStyle},
        {{ATTR_MIN, &g_formScan, 1, INT_MIN, INT_MAX, "lowest number of divisions"},
         &CQELDocScale::m_nMin},
        {{ATTR_MAX, &g_formScan, 100, INT_MIN, INT_MAX, "highest number of divisions"},
         &CQELDocScale::m_nMax},
        {{ATTR_PIN, &g_formScan, 0, 0, 1, "1 draws the pointer"}, &CQELDocScale::m_bPin},
        {{ATTR_CRD, &g_formCrd, 0, 0, 0, "the place; its form goes by the type"}, nullptr},
        {SET_INFO, nullptr},
        {VALUE_INFO, nullptr},
    };
    return rows;
}

void CQELDocScale::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocScale::TakeFields(const CQELDocScale& source)
{
    for (const auto& row : Attrs())
        if (row.pField) this->*row.pField = source.*row.pField;
    std::memcpy(m_nGeometry, source.m_nGeometry, sizeof m_nGeometry);
    return m_texts.Take(source.Set(), Pool());
}

int CQELDocScale::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocScale::GetAttrSize(int* pnSize) const
{
    *pnSize = BLOCK_SIZE;
    return 1;
}

int CQELDocScale::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    QELSCALEATTR block = {BLOCK_SIZE,
                          static_cast<DWORD>(m_nId),
                          m_bHide,
                          m_nType,
                          static_cast<DWORD>(m_nStyle),
                          m_nMin,
                          m_nMax,
                          m_bPin,
                          {}};
    for (int i = 0; i < SCALE_WORDS; ++i) block.nGeometry[i] = m_nGeometry[i];
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELDocScale::SetAttr(const void* pBlock)
{
    if (!pBlock) return 0;
    QELSCALEATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != BLOCK_SIZE) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    if (block.nType < 0 || block.nType > SCALE_ARC) return 0;
    m_nId = static_cast<int32_t>(block.nId);
    m_bHide = block.bHide;
    m_nType = block.nType;
    m_nStyle = static_cast<int32_t>(block.nStyle);
    m_nMin = block.nMin;
    m_nMax = block.nMax;
    m_bPin = block.bPin;
    for (int i = 0; i < SCALE_WORDS; ++i) m_nGeometry[i] = block.nGeometry[i];
    return 1;
}

int CQELDocScale::GetRect(RECT* prc) const
{
    const int32_t* n = m_nGeometry;
    RECT rc{n[0], n[1], n[2], n[3]};
    if (m_nType >= SCALE_ROUND)
        rc = {WrapSub(n[0], n[2]), WrapSub(n[1], n[2]), WrapAdd(n[0], n[2]), WrapAdd(n[1], n[2])};
    *prc = NormalizedRect(rc);
    return 1;
}

int CQELDocScale::SetRect(const RECT& rc)
{
    RECT rcOld{};
    GetRect(&rcOld);
    return MapRect(rcOld, rc);
}

int CQELDocScale::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    const CrdForm& form = CrdFormOf(m_nType);
    ShiftCrdNumbers(m_nGeometry, form.pszLayout, form.bBox, ShiftsBetween(rcOld, rcNew));
    return 1;
}

// The type decides the form and the defaults of the coordinates, so those come last.
int CQELDocScale::Load()
{
    if (!CQELDocElm::Load()) return 0;
    for (const auto& row : Attrs())
        if (row.pField) LoadAttr(this, row, Xml());
    const CrdForm& form = CrdFormOf(m_nType);
    ParseCrdNumbers(form.pszDefault, form.pszLayout, m_nGeometry);
    if (const char* pszCrd = GetXmlAttr(Xml(), ATTR_CRD))
        ParseCrdNumbers(pszCrd, form.pszLayout, m_nGeometry);
    m_bLacksMemory = !m_texts.Load(Xml(), Pool());
    return 1;
}

int CQELDocScale::Save()
{
    BeginSave();
    for (const auto& row : Attrs()) {
        if (row.pField) {
            SaveAttr(this, row, Writer());
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
