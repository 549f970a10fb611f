// A table of values, one row after another: what --data names.
#pragma once

#include "tools/qel/LiveAction.h"

#include <optional>
#include <string>
#include <vector>

namespace qel {

class CValueTable {
public:
    // CTrouble, with row and column, for what cannot be read or has something that is no number.
    explicit CValueTable(const std::wstring& path);

    [[nodiscard]] const std::string& File() const { return m_file; }
    [[nodiscard]] int CountRows() const { return static_cast<int>(m_rows.size()); }

    // Sets the values of a row, from 0 on; an empty cell leaves the value as it was. CTrouble when
    // the drawing refuses one.
    void SetRow(HQELENGINE hEngine, int nRow) const;

    // CTrouble for a name that nothing answers to, also where its column has no values.
    void RequireTargets(HQELENGINE hEngine) const;

    // An action a column, for the values that show nowhere.
    [[nodiscard]] const std::vector<LiveAction>& Columns() const { return m_columns; }

private:
    struct Row {
        int nLine;
        std::vector<std::optional<LiveNumber>> values;
    };

    void AddColumn(const std::string& name);
    void AddRow(int nLine, const std::vector<std::string>& cells);
    void MakeWholeColumnsReal();
    [[nodiscard]] std::string Place(std::size_t nRow, int nLine, std::size_t nColumn) const;

    std::string m_file;
    std::vector<std::string> m_names;
    std::vector<LiveAction> m_columns;
    std::vector<Row> m_rows;
};

} // namespace qel
