// The shape base: the attributes that all shapes share, the attribute record, and the coordinates
// of the classes with a fixed number of them. The view side is render/QELViewShape.cpp.
#include "document/QELDocShape.h"

#include "base/Rects.h"

#include <array>
#include <climits>

namespace {

constexpr int SHAPE_ATTR_SIZE = sizeof(QELSHAPEATTR);

} // namespace

CQELDocShape::CQELDocShape(const DocMaking& making, int32_t nType) noexcept
    : CQELDocElm(making, nType)
{
    TakeWords(GetCrdForm().nDefault, GetCrdForm().nWords);
}

CQELDocShape::~CQELDocShape()
{
    GivePoolText(Pool(), m_pszText);
    m_geometry.Drop(Pool());
}

int CQELDocShape::TakeWords(const int32_t* pnWords, int32_t nCount)
{
    const int nResult = m_geometry.Set(Pool(), pnWords, nCount, ShapeWordsOf(Type(), pnWords[0]));
    m_bLacksMemory = !nResult;
    return nResult;
}

// In the order in which they are written.
constexpr AttrRow<CQELDocShape> CQELDocShape::ATTRS[] = {
    {{ATTR_STYLE, &g_formHex, 0, INT_MIN, INT_MAX,
      "low 16 bits: fill style; high 16 bits: width of the 3D border in pixels, 0 meaning 2"},
     &CQELDocShape::m_nStyle},
    {{ATTR_DR, &g_formDecimal, 0, 0, DRAFT_COUNT - 1, "hatch (0 to 9) or gradient (10 to 37)"},
     &CQELDocShape::m_nDraft},
    {{ATTR_FG, &g_formColour, 0xFFFFFF, INT_MIN, INT_MAX,
      "colour A: the 1 bits of a hatch, the second colour of a gradient, the colour of a text"},
     &CQELDocShape::m_clrFore},
    {{ATTR_BG, &g_formColour, 0, INT_MIN, INT_MAX,
      "colour B: the 0 bits of a hatch, the first colour of a gradient, the gaps of a styled "
      "line, "
      "the background of a text"},
     &CQELDocShape::m_clrBack},
    {{ATTR_CLR, &g_formColour, 0xFFFFFF, INT_MIN, INT_MAX, "colour of the outline"},
     &CQELDocShape::m_clrPen},
    {{ATTR_LNSTYLE, &g_formDecimal, 0, 0, 6,
      "style of the outline: 0 solid, 1 dash, 2 dot, 3 dash dot, 4 dash dot dot, 5 none, "
      "6 inside the frame"},
     &CQELDocShape::m_nLineStyle},
    {{ATTR_LNWID, &g_formDecimal, 1, 0, INT_MAX, "width of the outline in pixels; 0 for none"},
     &CQELDocShape::m_nLineWidth},
    {{ATTR_CRD, &g_formCrd, 0, 0, 0, "the coordinates, in drawing units"}, nullptr},
    {{ATTR_TEXT, &g_formText, 0, 0, 0, "the text, at most 255 bytes"}, nullptr},
    {{ATTR_FLAG, &g_formHex, 0, INT_MIN, INT_MAX, "host values, pressed shift and keep modes"},
     &CQELDocShape::m_nFlags},
};

namespace {

// One bit of an element tells whether it has an attribute of a shape at all.
template <std::size_t N>
consteval bool AreToldApart(const AttrRow<CQELDocShape> (&rows)[N])
{
    uint32_t nSeen = XmlSeenBit(AttrKeyOf(ATTR_ID));
    for (const auto& row : rows) {
        if (row.nId == ATTR_TEXT) continue;
        const uint32_t nBit = XmlSeenBit(AttrKeyOf(row.nId));
        if (nSeen & nBit) return false;
        nSeen |= nBit;
    }
    return true;
}

} // namespace

std::span<const AttrRow<CQELDocShape>> CQELDocShape::Attrs()
{
    static_assert(AreToldApart(ATTRS), "the attributes of shapes are told apart by one bit");
    return ATTRS;
}

void CQELDocShape::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocShape::TakeFields(const CQELDocShape& source)
{
    const char* pszText = source.m_pszText ? source.m_pszText : "";
    if (!ReplacePoolText(Pool(), &m_pszText, pszText, std::strlen(pszText))) return 0;
    if (!TakeWords(source.Words(), source.m_geometry.Count())) return 0;
    for (const auto& row : Attrs())
        if (row.pField) this->*row.pField = source.*row.pField;
    return 1;
}

ShapeData CQELDocShape::Data() const
{
    return {static_cast<DWORD>(m_nStyle),
            m_nDraft,
            static_cast<DWORD>(m_clrFore),
            static_cast<DWORD>(m_clrBack),
            static_cast<DWORD>(m_clrPen),
            m_nLineStyle,
            m_nLineWidth,
            static_cast<DWORD>(m_nFlags),
            Words(),
            m_geometry.Count(),
            m_pszText ? m_pszText : "",
            m_pszText ? std::strlen(m_pszText) : 0};
}

int CQELDocShape::GetAttrSize(int* pnSize) const
{
    *pnSize = SHAPE_ATTR_SIZE;
    return 1;
}

int CQELDocShape::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    QELSHAPEATTR block{};
    block.nSize = SHAPE_ATTR_SIZE;
    block.nStyle = static_cast<DWORD>(m_nStyle);
    block.nDraft = m_nDraft;
    block.clrA = static_cast<DWORD>(m_clrFore);
    block.clrB = static_cast<DWORD>(m_clrBack);
    block.clrPen = static_cast<DWORD>(m_clrPen);
    block.nPenStyle = m_nLineStyle;
    block.nPenWidth = m_nLineWidth;
    m_geometry.CopyTo(block.nGeometry);
    if (m_pszText) std::memcpy(block.szText, m_pszText, std::strlen(m_pszText));
    block.nFlags = static_cast<DWORD>(m_nFlags);
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELDocShape::SetAttr(const void* pBlock)
{
    if (!pBlock) return 0;
    QELSHAPEATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != SHAPE_ATTR_SIZE) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    block.szText[sizeof block.szText - 1] = 0; // the host may have left the end mark out
    int32_t nWords[QEL_SHAPE_WORDS];
    std::memcpy(nWords, block.nGeometry, sizeof nWords);
    const std::size_t nText = std::strlen(block.szText);
    char* pszText = TakePoolText(Pool(), block.szText, nText);
    if (nText && !pszText) return 0;
    if (!m_geometry.Set(Pool(), nWords, UsedWords(nWords, Type()),
                        ShapeWordsOf(Type(), nWords[0]))) {
        GivePoolText(Pool(), pszText);
        return 0;
    }
    GivePoolText(Pool(), m_pszText);
    m_pszText = pszText;
    m_nStyle = static_cast<int32_t>(block.nStyle);
    m_nDraft = block.nDraft;
    m_clrFore = static_cast<int32_t>(block.clrA);
    m_clrBack = static_cast<int32_t>(block.clrB);
    m_clrPen = static_cast<int32_t>(block.clrPen);
    m_nLineStyle = block.nPenStyle;
    m_nLineWidth = block.nPenWidth;
    m_nFlags = static_cast<int32_t>(block.nFlags);
    return 1;
}

int CQELDocShape::GetRect(RECT* prc) const
{
    const int32_t* n = Words();
    const char* pszLayout = GetCrdForm().pszLayout;
    if (pszLayout[2] == 'r')
        *prc = {WrapSub(n[0], n[2]), WrapSub(n[1], n[2]), WrapAdd(n[0], n[2]), WrapAdd(n[1], n[2])};
    else
        *prc = {n[0], n[1], n[2], n[3]};
    *prc = NormalizedRect(*prc);
    return 1;
}

int CQELDocShape::SetRect(const RECT& rc)
{
    RECT rcOld{};
    return GetRect(&rcOld) && MapRect(rcOld, rc) ? 1 : 0;
}

int CQELDocShape::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    const CrdForm& form = GetCrdForm();
    ShiftCrdNumbers(Words(), form.pszLayout, form.bBox, ShiftsBetween(rcOld, rcNew));
    return 1;
}

// Goes by what the element has, which is less than what it may have. What cannot be read keeps its
// default.
int CQELDocShape::Load()
{
    if (!CQELDocElm::Load()) return 0;
    const XmlNode* pNode = Xml()->pCursor;
    for (const XmlAttr* p = pNode->pAttrs ? pNode->pAttrs->pHead : nullptr; p; p = p->pNext) {
        const AttrRow<CQELDocShape>* pRow = RowOf(AttrIdOf(*p));
        if (!pRow) continue;
        if (pRow->pField)
            pRow->pForm->pfnParse(p->pszValue, &(this->*pRow->pField));
        else
            ParseCrd(p->pszValue);
    }
    if (const char* pszText = pNode->pszText) {
        const std::size_t nLen = std::strlen(pszText);
        if (!ReplacePoolText(Pool(), &m_pszText, pszText,
                             nLen < QEL_TEXT_SIZE ? nLen : QEL_TEXT_SIZE - 1))
            m_bLacksMemory = true;
    }
    return 1;
}

// The row of an attribute, null when shapes do not have it.
const AttrRow<CQELDocShape>* CQELDocShape::RowOf(int32_t nId)
{
    static const std::array<const AttrRow<CQELDocShape>*, ATTR_COUNT + 1> s_rows = [] {
        std::array<const AttrRow<CQELDocShape>*, ATTR_COUNT + 1> rows{};
        for (const auto& row : Attrs())
            if (row.nId != ATTR_TEXT) rows[static_cast<std::size_t>(row.nId)] = &row;
        return rows;
    }();
    return s_rows[static_cast<std::size_t>(nId)];
}

int CQELDocShape::Save()
{
    if (!CQELDocElm::Save()) return 0;
    for (const auto& row : Attrs())
        if (!SaveRow(row)) return 0;
    if (m_pszText) Writer().Text(m_pszText, std::strlen(m_pszText)); // behind the attributes
    return 1;
}

int CQELDocShape::SaveRow(const AttrRow<CQELDocShape>& row)
{
    if (row.nId == ATTR_TEXT) return 1;
    if (row.pField) return SaveAttr(this, row, Writer());
    char szCrd[CRD_TEXT_SIZE];
    // Points that are out of count cannot be spelled; the element is saved without them.
    if (const std::size_t nLen = FormatCrd(szCrd)) WriteAttrText(Writer(), row.nId, szCrd, nLen);
    return 1;
}

int CQELDocShape::ParseCrd(const char* pszText)
{
    return ParseCrdNumbers(pszText, GetCrdForm().pszLayout, Words());
}

std::size_t CQELDocShape::FormatCrd(char* pszOut) const
{
    return FormatCrdNumbers(Words(), GetCrdForm().pszLayout, pszOut);
}
