// The shape base: the attributes that all shapes share, the attribute record, and the coordinates
// of the classes with a fixed number of them. The view side is render/QELViewShape.cpp.
#include "document/QELDocShape.h"

#include "base/Rects.h"

#include <cstring>

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

void CQELDocShape::VisitAttrs(AttrVisitor pfnVisit, void* pUser)
{
    for (const auto& row : Attrs()) pfnVisit(row, pUser);
}

int CQELDocShape::TakeFields(const CQELDocShape& source)
{
    return TakeShapeData(source.Data(), Places());
}

ShapeData CQELDocShape::Data() const
{
    return {&m_style, Words(), m_geometry.Count(), m_pszText ? m_pszText : "",
            m_pszText ? std::strlen(m_pszText) : 0};
}

int CQELDocShape::GetAttrSize(int* pnSize) const
{
    *pnSize = sizeof(QELSHAPEATTR);
    return 1;
}

int CQELDocShape::GetAttr(void* pBlock) const
{
    return WriteShapeRecord(Data(), pBlock);
}

int CQELDocShape::SetAttr(const void* pBlock)
{
    CShapeRecord record;
    return record.Read(pBlock, Type()) && TakeShapeData(record.Data(), Places()) ? 1 : 0;
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
    return GetRect(&rcOld) ? MapRect(rcOld, rc) : 0;
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
        const ShapeRow* pRow = ShapeRowOf(AttrIdOf(*p));
        if (!pRow) continue;
        if (pRow->pField)
            pRow->pForm->pfnParse(p->pszValue, &(m_style.*pRow->pField));
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

int CQELDocShape::Save()
{
    BeginSave();
    for (const auto& row : Attrs()) SaveRow(row);
    if (m_pszText) Writer().Text(m_pszText, std::strlen(m_pszText)); // behind the attributes
    return 1;
}

void CQELDocShape::SaveRow(const ShapeRow& row)
{
    if (row.nId == ATTR_TEXT) return;
    if (row.pField) {
        SaveAttr<ShapeStyle>(&m_style, row, Writer());
        return;
    }
    char szCrd[CRD_TEXT_SIZE];
    // Points that are out of count cannot be spelled; the element is saved without them.
    if (const std::size_t nLen = FormatCrd(szCrd)) WriteAttrText(Writer(), row.nId, szCrd, nLen);
}

int CQELDocShape::ParseCrd(const char* pszText)
{
    return ParseCrdNumbers(pszText, GetCrdForm().pszLayout, Words());
}

std::size_t CQELDocShape::FormatCrd(char* pszOut) const
{
    return FormatCrdNumbers(Words(), GetCrdForm().pszLayout, pszOut);
}
