// The findings; see the header.
#include "tools/studio/FindingList.h"

#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

namespace studio {

int CFindingList::Create(HWND hParent, UINT nId, std::function<void(std::size_t)> chosen)
{
    m_chosen = std::move(chosen);
    return MakeReport(hParent, nId,
                      {{IDS_FINDING_LINE, 72}, {IDS_FINDING_KIND, 72}, {IDS_FINDING_TEXT, 0}});
}

void CFindingList::Show(const std::vector<SourceFinding>& findings)
{
    Send(WM_SETREDRAW, FALSE);
    Clear();
    for (std::size_t n = 0; n < findings.size(); ++n) {
        const SourceFinding& finding = findings[n];
        AddRow({std::to_wstring(finding.nLine) + L":" + std::to_wstring(finding.nColumn),
                Text(finding.bError ? IDS_ERROR : IDS_WARNING), finding.text},
               static_cast<LPARAM>(n));
    }
    Send(WM_SETREDRAW, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
    FitColumns();
}

void CFindingList::Next()
{
    const int nRows = CountRows();
    if (!nRows) return;
    const int nAt = static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    const int nNext = (nAt + 1) % nRows;
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = item.stateMask;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(nNext), Param(&item));
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(nNext), FALSE);
}

void CFindingList::OnNotify(const NMHDR& header)
{
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    const bool bChosen = header.code == LVN_ITEMCHANGED && (change.uChanged & LVIF_STATE) &&
                         (change.uNewState & ~change.uOldState & LVIS_SELECTED);
    const bool bAgain = header.code == LVN_ITEMACTIVATE;
    if (!bChosen && !bAgain) return;
    const int nRow = bAgain ? reinterpret_cast<const NMITEMACTIVATE&>(header).iItem : change.iItem;
    const LPARAM nFinding = ParamOf(nRow);
    if (nFinding >= 0) m_chosen(static_cast<std::size_t>(nFinding));
}

} // namespace studio
