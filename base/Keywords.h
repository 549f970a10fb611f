// Keyword tables: rows that begin with a number and a keyword, ended by the number -1. The tables
// of tags, attribute names, fill styles and keep modes all have this form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

struct KeywordRow {
    int32_t nId;
    const char* pszName;
};

constexpr int32_t KEYWORD_NONE = -1; // ends a table, and is the answer for an unknown keyword

// Whether two short texts are the same: in the time of a call of the library's own comparison this
// is done.
inline bool IsSameText(const char* pszA, const char* pszB)
{
    while (*pszA && *pszA == *pszB) {
        ++pszA;
        ++pszB;
    }
    return *pszA == *pszB;
}

// The number paired with the keyword equal to pszText, byte by byte; -1 when there is none.
template <class Row>
constexpr int32_t LookupKeyword(const Row* pRows, const char* pszText)
{
    if (!pszText) return KEYWORD_NONE;
    for (; pRows->nId != KEYWORD_NONE && pRows->pszName; ++pRows)
        if (std::string_view(pRows->pszName) == pszText) return pRows->nId;
    return KEYWORD_NONE;
}

// The row of a number, null when there is none.
template <class Row>
constexpr const Row* FindRow(const Row* pRows, int32_t nId)
{
    for (; pRows->nId != KEYWORD_NONE; ++pRows)
        if (pRows->nId == nId) return pRows;
    return nullptr;
}

// The keyword of the first row of that number, null when there is none.
template <class Row>
constexpr const char* NameOf(const Row* pRows, int32_t nId)
{
    const Row* pRow = FindRow(pRows, nId);
    return pRow ? pRow->pszName : nullptr;
}

// Writes the keyword of a number as a text of nSize bytes; its length, 0 when it does not fit or
// there is none.
template <class Row>
std::size_t CopyKeyword(const Row* pRows, int32_t nId, char* pszOut, std::size_t nSize)
{
    const char* pszName = NameOf(pRows, nId);
    const std::string_view name = pszName ? pszName : "";
    if (name.empty() || name.size() >= nSize) return 0;
    name.copy(pszOut, name.size());
    pszOut[name.size()] = 0;
    return name.size();
}

// Whether a row names a function. Under its sanitizers GCC cannot tell at compile time.
template <class Function>
constexpr bool HasFunction([[maybe_unused]] Function* pfn)
{
#ifdef __SANITIZE_ADDRESS__
    return true;
#else
    return pfn != nullptr;
#endif
}

// Whether a table is sound: ended, with each number and each keyword there once.
template <class Row, std::size_t N>
consteval bool IsSoundTable(const Row (&rows)[N])
{
    for (std::size_t i = 0; i + 1 < N; ++i) {
        if (!rows[i].pszName) return false;
        for (std::size_t j = 0; j < i; ++j)
            if (rows[i].nId == rows[j].nId || std::string_view(rows[i].pszName) == rows[j].pszName)
                return false;
    }
    return rows[N - 1].nId == KEYWORD_NONE;
}
