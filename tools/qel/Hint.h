// The word that was probably meant, for a message about an unknown one.
#pragma once

#include <string>
#include <vector>

namespace qel {

// Of the known words the one that is most like the unknown one, letter case aside; empty when none
// is.
std::string NearestWord(const std::string& unknown, const std::vector<std::string>& known);

// "; did you mean 'WORD'?", or nothing.
std::string MeantWord(const std::string& unknown, const std::vector<std::string>& known);

// The words of a table that ends with a row without a name.
template <class Row>
std::vector<std::string> WordsOf(const Row* pRows)
{
    std::vector<std::string> words;
    for (; pRows->pszName; ++pRows) words.emplace_back(pRows->pszName);
    return words;
}

} // namespace qel
