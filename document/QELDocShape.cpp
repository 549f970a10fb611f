// The shape base: the attributes that all shapes share, the attribute record, and the coordinates
// of the classes with a fixed number of them. The view side is render/QELViewShape.cpp.
#include "document/QELDocShape.h"

#include "render/Mapping.h"

#include <climits>

namespace {

constexpr int SHAPE_ATTR_SIZE = sizeof(QELSHAPEATTR);

} // namespace

CQELDocShape::CQELDocShape(XmlContext** ppXml, int32_t nType) noexcept : CQELDocElm(ppXml, nType) {}

std::span<const AttrRow<CQELDocShape>> CQELDocShape::Attrs()
{
    using Row = AttrRow<CQELDocShape>;
    static const Row rows[] = {
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
    return rows;
}

void CQELDocShape::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

void CQELDocShape::TakeFields(const CQELDocShape& source)
{
    for (const auto& row : Attrs())
        if (row.pField) this->*row.pField = source.*row.pField;
    std::memcpy(m_szText, source.m_szText, sizeof m_szText);
    std::memcpy(m_nGeometry, source.m_nGeometry, sizeof m_nGeometry);
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
    static_assert(sizeof block.nGeometry == sizeof m_nGeometry);
    std::memcpy(block.nGeometry, m_nGeometry, sizeof m_nGeometry);
    std::memcpy(block.szText, m_szText, std::strlen(m_szText)); // nothing behind the text leaks out
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
    m_nStyle = static_cast<int32_t>(block.nStyle);
    m_nDraft = block.nDraft;
    m_clrFore = static_cast<int32_t>(block.clrA);
    m_clrBack = static_cast<int32_t>(block.clrB);
    m_clrPen = static_cast<int32_t>(block.clrPen);
    m_nLineStyle = block.nPenStyle;
    m_nLineWidth = block.nPenWidth;
    std::memcpy(m_nGeometry, block.nGeometry, sizeof m_nGeometry);
    std::memcpy(m_szText, block.szText, sizeof m_szText);
    m_szText[sizeof m_szText - 1] = 0; // the host may have left the end mark out
    m_nFlags = static_cast<int32_t>(block.nFlags);
    return 1;
}

int CQELDocShape::GetRect(RECT* prc) const
{
    const int32_t* n = m_nGeometry;
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
    ShiftCrdNumbers(m_nGeometry, form.pszLayout, form.bBox, ShiftsBetween(rcOld, rcNew));
    return 1;
}

int CQELDocShape::Load()
{
    if (!CQELDocElm::Load()) return 0;
    for (const auto& row : Attrs()) LoadRow(row); // what cannot be read keeps its default
    return 1;
}

int CQELDocShape::LoadRow(const AttrRow<CQELDocShape>& row)
{
    if (row.nId == ATTR_TEXT) {
        const char* pszText = XmlGetText(Xml());
        if (!pszText) return 0;
        std::strncpy(m_szText, pszText, sizeof m_szText - 1);
        return 1;
    }
    if (row.pField) return LoadAttr(this, row, Xml());
    const char* pszCrd = XmlGetAttr(Xml(), AttrName(row.nId));
    return pszCrd ? ParseCrd(pszCrd) : 0;
}

int CQELDocShape::Save()
{
    if (!CQELDocElm::Save()) return 0;
    for (const auto& row : Attrs())
        if (!SaveRow(row)) return 0;
    return 1;
}

int CQELDocShape::SaveRow(const AttrRow<CQELDocShape>& row)
{
    if (row.nId == ATTR_TEXT) return *m_szText && XmlSetTextZ(Xml(), m_szText) ? 0 : 1;
    if (row.pField) return SaveAttr(this, row, Xml());
    char szCrd[CRD_TEXT_SIZE] = {};
    // Points that are out of count cannot be spelled; the element is saved without them.
    if (!FormatCrd(szCrd) || !*szCrd) return 1;
    return XmlSetAttrZ(Xml(), AttrName(row.nId), szCrd) ? 0 : 1;
}

int CQELDocShape::ParseCrd(const char* pszText)
{
    return ParseCrdNumbers(pszText, GetCrdForm().pszLayout, m_nGeometry);
}

int CQELDocShape::FormatCrd(char* pszOut) const
{
    return FormatCrdNumbers(m_nGeometry, GetCrdForm().pszLayout, pszOut);
}

void CQELDocShape::TakeDefaultCrd()
{
    ParseCrd(GetCrdForm().pszDefault);
}
