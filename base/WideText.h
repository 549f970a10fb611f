// Texts as Unicode: the bytes of a drawing's code page as wide characters, how many columns these
// take, and the way back.
#pragma once

#include "base/TextPages.h"

#include <windows.h>

constexpr std::size_t TEXT_BYTES = 256; // of a drawing's text, the ending zero included

// The columns of a text: two of a wide character, one of any other.
int TextColumns(const wchar_t* psz, int nLength);

class CWideText {
public:
    // At most 255 bytes are taken. What is no text of the page becomes what the system puts there.
    CWideText(uint32_t nPage, const char* pszText) noexcept;

    [[nodiscard]] const wchar_t* Text() const { return m_szText; } // ended by a zero
    [[nodiscard]] int Length() const { return m_nLength; }
    [[nodiscard]] int Columns() const { return TextColumns(m_szText, m_nLength); }
    // The character set by which the system finds a face that has the letters. It follows from the
    // letters alone, so that a text looks the same whatever the page of its bytes or of the system;
    // only Chinese characters that others share go by the page.
    [[nodiscard]] BYTE Charset() const;

private:
    uint32_t m_nPage;
    int m_nLength;
    wchar_t m_szText[2 * TEXT_BYTES]; // no byte stands for more than two of them
};

// The bytes of a text in a page. False when the page cannot express it, or takes more than 255
// bytes for it.
bool ToPageText(uint32_t nPage, const wchar_t* psz, char (&szOut)[TEXT_BYTES]);
