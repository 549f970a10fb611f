#include "dynamic/QELDocDrawRgn.h"

#include "base/Rects.h"
#include "include/QELEngine.h"

#include <climits>

namespace {

constexpr DWORD BLOCK_SIZE = sizeof(QELDRAWRGNATTR);

} // namespace

CQELDocDrawRgn::CQELDocDrawRgn(const DocMaking& making) noexcept
    : CQELDocElm(making, QEL_TYPE_DRAWRGN)
{
}

std::span<const AttrRow<CQELDocDrawRgn>> CQELDocDrawRgn::Attrs()
{
    using Row = AttrRow<CQELDocDrawRgn>;
    static const Row rows[] = {
        {{ATTR_STYLE, &g_formHex, 0, 0, INT_MAX,
          "low 16 bits: not 0 fills the rectangle, 0x2 raised border, 0x4 sunken border; high 16 "
          "bits: "
          "width of the border in pixels, 0 meaning 2"},
         &CQELDocDrawRgn::m_nStyle},
        {{ATTR_CRD, &g_formCrd, 0, 0, 0, "the rectangle, in drawing units"}, nullptr},
        {{ATTR_FLAG, &g_formHex, 0, INT_MIN, INT_MAX, "keep modes"}, &CQELDocDrawRgn::m_nFlags},
    };
    return rows;
}

void CQELDocDrawRgn::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocDrawRgn::TakeFields(const CQELDocDrawRgn& source)
{
    m_nStyle = source.m_nStyle;
    std::memcpy(m_nBox, source.m_nBox, sizeof m_nBox);
    m_nFlags = source.m_nFlags;
    return 1;
}

int CQELDocDrawRgn::Clone(CQELDocElm** ppOut) const
{
    return CloneAs(*this, ppOut);
}

int CQELDocDrawRgn::GetAttrSize(int* pnSize) const
{
    *pnSize = BLOCK_SIZE;
    return 1;
}

int CQELDocDrawRgn::GetAttr(void* pBlock) const
{
    if (!pBlock) return 0;
    const QELDRAWRGNATTR block = {BLOCK_SIZE,
                                  m_nStyle,
                                  {m_nBox[0], m_nBox[1], m_nBox[2], m_nBox[3]},
                                  static_cast<DWORD>(m_nFlags)};
    std::memcpy(pBlock, &block, sizeof block);
    return 1;
}

int CQELDocDrawRgn::SetAttr(const void* pBlock)
{
    if (!pBlock) return 0;
    QELDRAWRGNATTR block;
    std::memcpy(&block.nSize, pBlock, sizeof block.nSize);
    if (block.nSize != BLOCK_SIZE) return 0;
    std::memcpy(&block, pBlock, sizeof block);
    if (block.nStyle < 0) return 0;
    m_nStyle = block.nStyle;
    m_nBox[0] = block.rc.left;
    m_nBox[1] = block.rc.top;
    m_nBox[2] = block.rc.right;
    m_nBox[3] = block.rc.bottom;
    m_nFlags = static_cast<int32_t>(block.nFlags);
    return 1;
}

int CQELDocDrawRgn::GetRect(RECT* prc) const
{
    *prc = NormalizedRect({m_nBox[0], m_nBox[1], m_nBox[2], m_nBox[3]});
    return 1;
}

int CQELDocDrawRgn::SetRect(const RECT& rc)
{
    RECT rcOld{};
    GetRect(&rcOld);
    return MapRect(rcOld, rc);
}

int CQELDocDrawRgn::MapRect(const RECT& rcOld, const RECT& rcNew)
{
    ShiftCrdNumbers(m_nBox, FORM.pszLayout, FORM.bBox, ShiftsBetween(rcOld, rcNew));
    return 1;
}

int CQELDocDrawRgn::Load()
{
    if (!CQELDocElm::Load()) return 0;
    for (const auto& row : Attrs()) {
        if (row.pField) {
            const int32_t nBefore = this->*row.pField;
            LoadAttr(this, row, Xml());
            if (row.nId == ATTR_STYLE && m_nStyle < 0) m_nStyle = nBefore; // ignored
        } else if (const char* pszCrd = GetXmlAttr(Xml(), row.nId)) {
            ParseCrdNumbers(pszCrd, FORM.pszLayout, m_nBox);
        }
    }
    return 1;
}

int CQELDocDrawRgn::Save()
{
    BeginSave();
    for (const auto& row : Attrs()) {
        if (row.pField) {
            SaveAttr(this, row, Writer());
            continue;
        }
        char szCrd[CRD_TEXT_SIZE];
        WriteAttrText(Writer(), row.nId, szCrd, FormatCrdNumbers(m_nBox, FORM.pszLayout, szCrd));
    }
    return 1;
}
