// The numbers of a shape, on the document side and on the view side: up to 33 words in a record, of
// which only those are held that the class has or that are not zero. All others read as zero.
#pragma once

#include "base/Pool.h"
#include "document/ShapeForms.h"
#include "include/QELEngine.h"

#include <cstdint>
#include <cstring>

class CGeometry {
public:
    CGeometry() noexcept = default;
    CGeometry(const CGeometry&) = delete;
    CGeometry& operator=(const CGeometry&) = delete;
    ~CGeometry() = default; // the owner drops it, who knows the pool

    [[nodiscard]] const int32_t* Words() const { return m_nCount > HERE ? More() : m_nHere; }
    [[nodiscard]] int32_t* Words() { return m_nCount > HERE ? More() : m_nHere; }
    [[nodiscard]] int32_t Count() const { return m_nCount; }

    // Takes nCount words and holds at least nLeast, which may be written to from then on. 0 without
    // memory: then it is as before.
    int Set(CPool* pPool, const int32_t* pnWords, int32_t nCount, int32_t nLeast)
    {
        if (nCount > HERE || nLeast > HERE || m_nCount > HERE)
            return SetMore(pPool, pnWords, nCount, nLeast);
        for (int32_t n = 0; n < HERE; ++n) m_nHere[n] = n < nCount ? pnWords[n] : 0;
        return 1;
    }
    void Drop(CPool* pPool);

private:
    int SetMore(CPool* pPool, const int32_t* pnWords, int32_t nCount, int32_t nLeast);

    static constexpr int32_t HERE = 4; // as many words as most classes have need no block

    [[nodiscard]] int32_t* More() const
    {
        int32_t* pnMore = nullptr;
        std::memcpy(&pnMore, m_nHere, sizeof pnMore);
        return pnMore;
    }

    // The words, or the address of their block. It is no pointer, which on 64 bits would need a
    // place of its own alignment and leave a hole behind the words of a shape's style.
    int32_t m_nHere[HERE] = {};
    uint8_t m_nCount = HERE;
};

// How many words a shape of a type has at least, going by its first word, which counts the points
// of a list.
constexpr int32_t ShapeWordsOf(int32_t nType, int32_t nFirst)
{
    constexpr int32_t LEAST = 4; // have room in the shape itself
    const CrdForm& form = ShapeFormOf(nType);
    if (!*form.pszLayout) return nFirst >= 1 && nFirst <= QEL_MAX_POINTS ? 1 + 2 * nFirst : 1;
    return form.nWords > LEAST ? form.nWords : LEAST;
}

// How many of a record's words are to be held: those that the type has, and others up to the last
// one that is not zero.
int32_t UsedWords(const int32_t (&nWords)[QEL_SHAPE_WORDS], int32_t nType);
