// Tables between commas; see the header.
#include "tools/qel/Csv.h"

#include "tools/qel/Command.h"

#include <fmt/format.h>

#include <windows.h>

namespace qel {

namespace {

constexpr char BYTE_ORDER_MARK[] = "\xEF\xBB\xBF";

bool IsUtf8(const std::string& bytes)
{
    return bytes.empty() || ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                                  static_cast<int>(bytes.size()), nullptr, 0) != 0;
}

class CCsvReader {
public:
    CCsvReader(const std::string& file, const std::string& bytes)
        : m_file(file), m_bytes(bytes), m_nAt(bytes.starts_with(BYTE_ORDER_MARK) ? 3 : 0)
    {
    }

    std::vector<CsvRow> Read();

private:
    CsvRow ReadRow();
    std::string ReadCell();
    std::string ReadQuoted();
    void StepOverLineEnd();
    [[nodiscard]] bool IsAtEnd() const { return m_nAt == m_bytes.size(); }
    [[nodiscard]] bool IsAt(const char* pszOf) const
    {
        return !IsAtEnd() && std::string(pszOf).find(m_bytes[m_nAt]) != std::string::npos;
    }
    [[noreturn]] void Fail(const char* pszWhy) const;

    const std::string& m_file;
    const std::string& m_bytes;
    std::size_t m_nAt;
    int m_nLine = 1;
    std::size_t m_nRow = 0;
    std::size_t m_nColumn = 1;
};

void CCsvReader::Fail(const char* pszWhy) const
{
    throw CTrouble(CsvPlace(m_file, m_nRow, m_nLine, m_nColumn) + ": " + pszWhy);
}

std::vector<CsvRow> CCsvReader::Read()
{
    std::vector<CsvRow> table;
    for (; !IsAtEnd(); ++m_nRow) {
        table.push_back(ReadRow());
        if (table.back().cells.size() == table[0].cells.size()) continue;
        throw CTrouble(fmt::format("'{}': row {} (line {}) has {} cells, and there are {} names",
                                   m_file, m_nRow, table.back().nLine, table.back().cells.size(),
                                   table[0].cells.size()));
    }
    return table;
}

CsvRow CCsvReader::ReadRow()
{
    CsvRow row{m_nLine, {}};
    for (m_nColumn = 1;; ++m_nColumn) {
        row.cells.push_back(ReadCell());
        if (!IsAt(",")) break;
        ++m_nAt;
    }
    StepOverLineEnd();
    return row;
}

std::string CCsvReader::ReadCell()
{
    if (IsAt("\"")) return ReadQuoted();
    const std::size_t nFirst = m_nAt;
    while (!IsAtEnd() && !IsAt(",\r\n\"")) ++m_nAt;
    if (IsAt("\"")) Fail("a cell with a quote in it stands between quotes, the inner ones doubled");
    return m_bytes.substr(nFirst, m_nAt - nFirst);
}

std::string CCsvReader::ReadQuoted()
{
    std::string cell;
    for (++m_nAt;; ++m_nAt) {
        if (IsAtEnd()) Fail("the closing quote is missing");
        if (IsAt("\n")) ++m_nLine;
        if (IsAt("\"") && (++m_nAt, !IsAt("\""))) break;
        cell += m_bytes[m_nAt];
    }
    if (!IsAtEnd() && !IsAt(",\r\n")) Fail("something stands behind the closing quote");
    return cell;
}

void CCsvReader::StepOverLineEnd()
{
    if (IsAt("\r")) ++m_nAt;
    if (IsAt("\n")) ++m_nAt;
    ++m_nLine;
}

} // namespace

std::string CsvPlace(const std::string& file, std::size_t nRow, int nLine, std::size_t nColumn)
{
    const std::string row =
        nRow ? fmt::format("row {} (line {})", nRow, nLine) : "the row of names";
    return fmt::format("'{}': {}, column {}", file, row, nColumn);
}

std::vector<CsvRow> ReadCsv(const std::string& file, const std::string& bytes)
{
    if (!IsUtf8(bytes)) throw CTrouble("'" + file + "' is no text in UTF-8");
    return CCsvReader(file, bytes).Read();
}

} // namespace qel
