// Which rows a text finds; see the header.
#include "tools/studio/model/RowFilter.h"

#include <algorithm>
#include <sstream>

namespace studio {

namespace {

// Of letters beyond the first 128 both cases are told apart.
std::string Lowered(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

} // namespace

CRowFilter::CRowFilter(const std::string& text)
{
    std::istringstream words(Lowered(text));
    for (std::string word; words >> word;) m_words.push_back(word);
}

bool CRowFilter::Takes(const LiveRow& row) const
{
    if (m_words.empty()) return true;
    const std::string text = Lowered(row.name + "\n" + row.kind);
    return std::all_of(m_words.begin(), m_words.end(), [&text](const std::string& word) {
        return text.find(word) != std::string::npos;
    });
}

} // namespace studio
