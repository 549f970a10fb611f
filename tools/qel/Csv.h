// Tables as spreadsheets write them: cells between commas, where quotes enclose one that has a
// comma, a quote (doubled) or an end of line in it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qel {

struct CsvRow {
    int nLine; // where it begins, from 1 on
    std::vector<std::string> cells;
};

// Where in a table something is wrong: "'FILE': row 2 (line 3), column 1". Row 0 has the names.
std::string CsvPlace(const std::string& file, std::size_t nRow, int nLine, std::size_t nColumn);

// All rows of a text in UTF-8. CTrouble with the place when it is none, when quotes are wrong or a
// row has another number of cells than the first one.
std::vector<CsvRow> ReadCsv(const std::string& file, const std::string& bytes);

} // namespace qel
