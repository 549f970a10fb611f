// A table of values; see the header.
#include "tools/qel/ValueTable.h"

#include "tools/qel/Csv.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <algorithm>

namespace qel {

CValueTable::CValueTable(const std::wstring& path) : m_file(ToUtf8(path))
{
    std::string bytes;
    if (!ReadBytes(path, &bytes))
        throw CTrouble("cannot read the values '" + m_file + "': " + WhyNotRead(path));
    const std::vector<CsvRow> table = ReadCsv(m_file, bytes);
    if (table.size() < 2)
        throw CTrouble("'" + m_file + "' wants a row of names, and a row of values for each frame");
    for (const std::string& name : table[0].cells) AddColumn(name);
    for (std::size_t n = 1; n < table.size(); ++n) AddRow(table[n].nLine, table[n].cells);
    MakeWholeColumnsReal();
}

std::string CValueTable::Place(std::size_t nRow, int nLine, std::size_t nColumn) const
{
    return CsvPlace(m_file, nRow, nLine, nColumn + 1) + " " + QuotedWord(m_names[nColumn]);
}

void CValueTable::AddColumn(const std::string& name)
{
    const bool bTwice = std::find(m_names.begin(), m_names.end(), name) != m_names.end();
    m_names.push_back(name);
    LiveAction action{LiveAction::Kind::Value, Place(0, 1, m_columns.size())};
    if (name.empty()) throw CTrouble(action.option + ": a column has a name");
    if (bTwice) throw CTrouble(action.option + ": another column has this name, too");
    ReadTarget(name, &action);
    m_columns.push_back(std::move(action));
}

void CValueTable::AddRow(int nLine, const std::vector<std::string>& cells)
{
    Row row{nLine, {}};
    for (std::size_t n = 0; n < cells.size(); ++n) {
        row.values.emplace_back();
        if (cells[n].empty()) continue;
        row.values[n] = ReadLiveNumber(Place(m_rows.size() + 1, nLine, n), cells[n]);
    }
    m_rows.push_back(std::move(row));
}

// A meter draws the kind of number that was set last, so one kind goes through a column.
void CValueTable::MakeWholeColumnsReal()
{
    for (std::size_t n = 0; n < m_columns.size(); ++n) {
        const auto isReal = [n](const Row& row) { return row.values[n] && row.values[n]->bReal; };
        if (std::none_of(m_rows.begin(), m_rows.end(), isReal)) continue;
        for (Row& row : m_rows)
            if (row.values[n]) *row.values[n] = {true, 0, row.values[n]->AsReal()};
    }
}

void CValueTable::SetRow(HQELENGINE hEngine, int nRow) const
{
    const auto nAt = static_cast<std::size_t>(nRow);
    const Row& row = m_rows[nAt];
    for (std::size_t n = 0; n < m_columns.size(); ++n) {
        if (!row.values[n]) continue;
        LiveAction action = m_columns[n];
        action.option = Place(nAt + 1, row.nLine, n);
        SetLive(hEngine, action, *row.values[n]);
    }
}

void CValueTable::RequireTargets(HQELENGINE hEngine) const
{
    const HostElements elements = FindHostElements(hEngine);
    for (const LiveAction& column : m_columns) RequireTarget(elements, column);
}

} // namespace qel
