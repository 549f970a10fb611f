// The tree of elements; see the header. What is in an element is added when it is opened, so that a
// drawing of any size shows at once.
#include "tools/studio/ElementTree.h"

namespace studio {

namespace {

constexpr std::size_t SHOWN_TEXT = 40;

} // namespace

int CElementTree::Create(HWND hParent, UINT nId, std::function<void(HQELELEM)> select)
{
    m_select = std::move(select);
    return Make(WC_TREEVIEWW,
                WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
                    TVS_FULLROWSELECT,
                hParent, nId);
}

void CElementTree::Show(const CDrawingFile* pFile)
{
    m_bFilling = true;
    Send(WM_SETREDRAW, FALSE);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    m_items.clear();
    m_pFile = pFile && pFile->Engine() ? pFile : nullptr;
    HQELELEM hRoot = m_pFile ? QELGetRootElem(m_pFile->Engine()) : nullptr;
    if (hRoot) {
        Add(TVI_ROOT, hRoot);
        AddChildren(m_items[hRoot], hRoot);
        Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(m_items[hRoot]));
    }
    Send(WM_SETREDRAW, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
    m_bFilling = false;
}

// The kind; then the identifier or, of a text without one, what it says.
std::wstring CElementTree::Label(HQELELEM hElem) const
{
    std::wstring label = KindName(QELGetElemType(m_pFile->Engine(), hElem));
    const SourceElement* pSource = m_pFile->SourceOf(hElem);
    if (!pSource) return label;
    for (const SourceAttr& attr : pSource->attrs)
        if (attr.name == L"id") return label + L"  " + attr.value;
    if (pSource->nType != QEL_TYPE_TEXT || pSource->text.empty()) return label;
    const bool bLong = pSource->text.size() > SHOWN_TEXT;
    return label + L"  \x201C" + pSource->text.substr(0, SHOWN_TEXT) + (bLong ? L"\x2026" : L"") +
           L"\x201D";
}

void CElementTree::Add(HTREEITEM hParent, HQELELEM hElem)
{
    std::wstring label = Label(hElem);
    TVINSERTSTRUCTW insert{};
    insert.hParent = hParent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
    insert.item.pszText = label.data();
    insert.item.lParam = reinterpret_cast<LPARAM>(hElem);
    insert.item.cChildren = QELGetFirstChild(m_pFile->Engine(), hElem) != nullptr;
    m_items[hElem] = Passed<HTREEITEM>(Send(TVM_INSERTITEMW, 0, Param(&insert)));
}

void CElementTree::AddChildren(HTREEITEM hItem, HQELELEM hElem)
{
    HQELENGINE hEngine = m_pFile->Engine();
    HQELELEM hChild = QELGetFirstChild(hEngine, hElem);
    if (m_items.contains(hChild)) return; // it was open before
    for (; hChild; hChild = QELGetNextElem(hEngine, hChild)) Add(hItem, hChild);
}

HTREEITEM CElementTree::Reach(HQELELEM hElem)
{
    if (!m_pFile || !hElem) return nullptr;
    HQELELEM hAt = QELGetRootElem(m_pFile->Engine());
    const std::vector<int> path = m_pFile->PathOf(hElem);
    for (std::size_t n = 1; n < path.size() && m_items.contains(hAt); ++n) {
        AddChildren(m_items[hAt], hAt);
        hAt = m_pFile->ElementAt({path.begin(), path.begin() + static_cast<std::ptrdiff_t>(n) + 1});
    }
    const auto at = m_items.find(hElem);
    return at == m_items.end() ? nullptr : at->second;
}

void CElementTree::Select(HQELELEM hElem)
{
    if (hElem == Selected()) return;
    m_bFilling = true;
    HTREEITEM hItem = Reach(hElem);
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(hItem));
    if (hItem) Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(hItem));
    m_bFilling = false;
}

HQELELEM CElementTree::ElementOf(HTREEITEM hItem) const
{
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = hItem;
    if (!hItem || !Send(TVM_GETITEMW, 0, Param(&item))) return nullptr;
    return Passed<HQELELEM>(item.lParam);
}

HQELELEM CElementTree::Selected() const
{
    return ElementOf(Passed<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET)));
}

void CElementTree::OnNotify(const NMHDR& header)
{
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    if (header.code == TVN_ITEMEXPANDINGW && change.action == TVE_EXPAND && m_pFile)
        AddChildren(change.itemNew.hItem, ElementOf(change.itemNew.hItem));
    if (header.code == TVN_SELCHANGEDW && !m_bFilling) m_select(ElementOf(change.itemNew.hItem));
}

} // namespace studio
