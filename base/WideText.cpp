#include "base/WideText.h"

#include "base/WideCharacters.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr uint32_t PAGE_JAPANESE = 932;
constexpr uint32_t PAGE_JAPANESE_EUC = 20932;
constexpr uint32_t PAGE_KOREAN = 949;
constexpr uint32_t PAGE_TRADITIONAL = 950;

struct Script {
    wchar_t cFirst;
    wchar_t cLast;
    BYTE nCharset;
};

// The first row that a letter of the text is in counts for all of it: faces of the first ones have
// the letters of the later ones too.
constexpr Script g_scripts[] = {
    {0x3040, 0x30FF, SHIFTJIS_CHARSET},   {0x1100, 0x11FF, HANGUL_CHARSET},
    {0x3130, 0x318F, HANGUL_CHARSET},     {0xAC00, 0xD7A3, HANGUL_CHARSET},
    {0x2E80, 0x9FFF, GB2312_CHARSET},     {0xF900, 0xFAFF, GB2312_CHARSET},
    {0xFF00, 0xFFEF, GB2312_CHARSET},     {0x0E00, 0x0E7F, THAI_CHARSET},
    {0x0600, 0x06FF, ARABIC_CHARSET},     {0x0590, 0x05FF, HEBREW_CHARSET},
    {0x0400, 0x052F, RUSSIAN_CHARSET},    {0x0370, 0x03FF, GREEK_CHARSET},
    {0x0100, 0x017F, EASTEUROPE_CHARSET},
};

const Script* ScriptOf(wchar_t c)
{
    return std::find_if(std::begin(g_scripts), std::end(g_scripts),
                        [c](const Script& row) { return c >= row.cFirst && c <= row.cLast; });
}

BYTE CharsetOfChinese(uint32_t nPage)
{
    switch (nPage) {
    case PAGE_JAPANESE:
    case PAGE_JAPANESE_EUC:
        return SHIFTJIS_CHARSET;
    case PAGE_KOREAN:
        return HANGUL_CHARSET;
    case PAGE_TRADITIONAL:
        return CHINESEBIG5_CHARSET;
    default:
        return GB2312_CHARSET;
    }
}

bool IsHigh(wchar_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}

bool IsLow(wchar_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

bool IsWide(uint32_t nCode)
{
    const WideRange* pRow =
        std::lower_bound(std::begin(g_wideRanges), std::end(g_wideRanges), nCode,
                         [](const WideRange& row, uint32_t n) { return row.nLast < n; });
    return pRow != std::end(g_wideRanges) && pRow->nFirst <= nCode;
}

} // namespace

int TextColumns(const wchar_t* psz, int nLength)
{
    int nColumns = 0;
    for (int n = 0; n < nLength; ++n) {
        uint32_t nCode = psz[n];
        if (n + 1 < nLength && IsHigh(psz[n]) && IsLow(psz[n + 1])) {
            nCode = 0x10000 + ((nCode - 0xD800) << 10) + (psz[n + 1] - 0xDC00U);
            ++n;
        }
        nColumns += IsWide(nCode) ? 2 : 1;
    }
    return nColumns;
}

CWideText::CWideText(uint32_t nPage, const char* pszText) noexcept : m_nPage(nPage)
{
    const std::size_t nBytes = std::min(std::strlen(pszText), TEXT_BYTES - 1);
    constexpr int ROOM = static_cast<int>(sizeof m_szText / sizeof *m_szText) - 1;
    // Nothing asked for is an error of this call.
    m_nLength =
        nBytes ? ::MultiByteToWideChar(nPage, 0, pszText, static_cast<int>(nBytes), m_szText, ROOM)
               : 0;
    m_szText[m_nLength] = 0;
}

BYTE CWideText::Charset() const
{
    const Script* pFirst = std::end(g_scripts);
    for (int n = 0; n < m_nLength; ++n) pFirst = std::min(pFirst, ScriptOf(m_szText[n]));
    if (pFirst == std::end(g_scripts)) return ANSI_CHARSET;
    return pFirst->nCharset == GB2312_CHARSET ? CharsetOfChinese(m_nPage) : pFirst->nCharset;
}

// What comes back as another text has lost a character on the way. The flags by which the system
// would tell of that are not the same for all pages.
bool ToPageText(uint32_t nPage, const wchar_t* psz, char (&szOut)[TEXT_BYTES])
{
    std::size_t nLength = 0;
    while (nLength < TEXT_BYTES && psz[nLength]) ++nLength;
    if (nLength == TEXT_BYTES) return false;
    char sz[TEXT_BYTES];
    if (!::WideCharToMultiByte(nPage, 0, psz, -1, sz, sizeof sz, nullptr, nullptr)) return false;
    const CWideText back(nPage, sz);
    if (!std::equal(psz, psz + nLength, back.Text(), back.Text() + back.Length())) return false;
    std::memcpy(szOut, sz, std::strlen(sz) + 1);
    return true;
}
