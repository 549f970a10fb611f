// Coordinates as data: the layout of a class's numbers, reading and writing them as text, and the
// shifts by which a resize moves them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

// The longest text of coordinates: 16 points of any size, and the ending zero.
constexpr std::size_t CRD_TEXT_SIZE = 400;

// The coordinates of a class, one letter a number: x and y are positions, r an unsigned radius, w
// and h sizes, n any other number.
struct CrdForm {
    static constexpr int32_t MOST = 9;

    const char* pszLayout;    // empty: a list of points
    bool bBox;                // the first four numbers are a rectangle
    const char* pszDefault;   // what a new element has
    const char* pszMeaning;   // one line for the documentation
    int32_t nDefault[MOST]{}; // the same in words: a list begins with the number of its points
    int32_t nWords;

    constexpr CrdForm(const char* pszLayoutIn, bool bBoxIn, const char* pszDefaultIn,
                      const char* pszMeaningIn)
        : pszLayout(pszLayoutIn), bBox(bBoxIn), pszDefault(pszDefaultIn), pszMeaning(pszMeaningIn),
          nWords(*pszLayoutIn ? 0 : 1)
    {
        const int32_t nFirst = nWords;
        for (const char* p = pszDefaultIn; *p; ++nWords) {
            for (; *p >= '0' && *p <= '9'; ++p)
                nDefault[nWords] = nDefault[nWords] * 10 + (*p - '0');
            if (*p == ' ') ++p;
        }
        if (nFirst) nDefault[0] = nWords / 2;
    }
};

// Reads all numbers of a layout. 0, and nothing is changed, when one is missing.
int ParseCrdNumbers(const char* pszText, const char* pszLayout, int32_t* pnWords);
// Writes them, separated by blanks, into CRD_TEXT_SIZE bytes; the length.
std::size_t FormatCrdNumbers(const int32_t* pnWords, const char* pszLayout, char* pszOut);

// How a resize from one rectangle to another moves every coordinate.
struct CrdShifts {
    int32_t nX;
    int32_t nY;
    bool bFlatX; // the old or the new width is 0
    bool bFlatY;
};
CrdShifts ShiftsBetween(const RECT& rcOld, const RECT& rcNew);

// Moves the positions of a layout; a rectangle (bBox) whose old or new side is 0 loses that side.
void ShiftCrdNumbers(int32_t* pnWords, const char* pszLayout, bool bBox, const CrdShifts& shifts);
