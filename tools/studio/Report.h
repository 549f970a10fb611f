// A list of rows with columns, as the system shows one.
#pragma once

#include "tools/studio/Window.h"

#include <commctrl.h>

#include <string>
#include <vector>

namespace studio {

class CReport : public CControl {
protected:
    struct Column {
        unsigned nTitle; // of the string table
        int nWidth;      // at 96 dots an inch; 0: what the others leave
        bool bRight = false;
    };
    int MakeReport(HWND hParent, UINT nId, std::vector<Column> columns);
    void Clear() const;
    void AddRow(const std::vector<std::wstring>& cells, LPARAM nParam = 0) const;
    [[nodiscard]] LPARAM ParamOf(int nRow) const;

public:
    void FitColumns() const; // to the width that it has now
    [[nodiscard]] int CountRows() const;

private:
    std::vector<Column> m_columns;
};

} // namespace studio
