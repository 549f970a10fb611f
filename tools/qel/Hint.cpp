// The word that was probably meant; see the header.
#include "tools/qel/Hint.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace qel {

namespace {

constexpr std::size_t FAR_OFF = 3; // so many changes make another word

std::string Lower(std::string text)
{
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// How many letters have to be put in, left out or exchanged.
std::size_t Changes(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t nDiagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t nExchanged = nDiagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            nDiagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, nExchanged});
        }
    }
    return row[b.size()];
}

bool BeginsAlike(const std::string& a, const std::string& b)
{
    constexpr std::size_t TELLING = 3; // letters that tell a word
    return a.size() >= TELLING && b.size() >= TELLING && (a.starts_with(b) || b.starts_with(a));
}

} // namespace

std::string NearestWord(const std::string& unknown, const std::vector<std::string>& known)
{
    const std::string word = Lower(unknown);
    std::string nearest;
    std::size_t nBest = FAR_OFF;
    for (const std::string& candidate : known) {
        std::size_t nChanges = Changes(word, Lower(candidate));
        if (nChanges >= FAR_OFF && BeginsAlike(word, Lower(candidate))) nChanges = FAR_OFF - 1;
        // Of short words hardly a letter would be left.
        if (nChanges >= nBest || nChanges >= candidate.size()) continue;
        nBest = nChanges;
        nearest = candidate;
    }
    return nearest;
}

std::string MeantWord(const std::string& unknown, const std::vector<std::string>& known)
{
    const std::string nearest = NearestWord(unknown, known);
    return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

} // namespace qel
