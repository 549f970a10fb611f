// A list of rows; see the header.
#include "tools/studio/Report.h"

#include "tools/studio/Dpi.h"
#include "tools/studio/Strings.h"

#include <algorithm>

namespace studio {

int CReport::MakeReport(HWND hParent, UINT nId, std::vector<Column> columns)
{
    m_columns = std::move(columns);
    if (!Make(WC_LISTVIEWW,
              WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                  LVS_NOSORTHEADER,
              hParent, nId))
        return 0;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    for (std::size_t n = 0; n < m_columns.size(); ++n) {
        std::wstring title = Text(m_columns[n].nTitle);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
        column.fmt = m_columns[n].bRight ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = m_columns[n].nWidth;
        column.pszText = title.data();
        Send(LVM_INSERTCOLUMNW, n, Param(&column));
    }
    return 1;
}

void CReport::Clear() const
{
    Send(LVM_DELETEALLITEMS);
}

void CReport::AddRow(const std::vector<std::wstring>& cells, LPARAM nParam) const
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = CountRows();
    item.lParam = nParam;
    item.pszText = const_cast<wchar_t*>(cells[0].c_str()); // the control only reads it
    Send(LVM_INSERTITEMW, 0, Param(&item));
    for (std::size_t n = 1; n < cells.size(); ++n) {
        item.iSubItem = static_cast<int>(n);
        item.pszText = const_cast<wchar_t*>(cells[n].c_str());
        Send(LVM_SETITEMTEXTW, static_cast<WPARAM>(item.iItem), Param(&item));
    }
}

LPARAM CReport::ParamOf(int nRow) const
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = nRow;
    return Send(LVM_GETITEMW, 0, Param(&item)) ? item.lParam : -1;
}

int CReport::CountRows() const
{
    return static_cast<int>(Send(LVM_GETITEMCOUNT));
}

void CReport::FitColumns() const
{
    RECT rc{};
    ::GetClientRect(Handle(), &rc);
    const int nDpi = static_cast<int>(DpiOf(Handle()));
    int nLeft = rc.right;
    for (const Column& column : m_columns) nLeft -= ::MulDiv(column.nWidth, nDpi, PLAIN_DPI);
    for (std::size_t n = 0; n < m_columns.size(); ++n) {
        const int nWidth = ::MulDiv(m_columns[n].nWidth, nDpi, PLAIN_DPI);
        const int nRest = std::max(nLeft, ::MulDiv(64, nDpi, PLAIN_DPI));
        Send(LVM_SETCOLUMNWIDTH, n, MAKELPARAM(nWidth ? nWidth : nRest, 0));
    }
}

} // namespace studio
