#include "dynamic/SetWords.h"

#include "document/TextNumbers.h"
#include "dynamic/Selectors.h"
#include "include/QELEngine.h"
#include "render/HostDriven.h"
#include "render/LiveElement.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned DECIMAL = 10;
constexpr unsigned HEXADECIMAL = 16;
constexpr std::size_t HEX_DIGITS = 8; // of a number of 32 bits

struct Word {
    double fNumber;
    uint32_t nSelector;
};

constexpr uint64_t BitOf(uint32_t nSelector)
{
    return uint64_t{1} << nSelector;
}
static_assert(QEL_SEL_COUNT <= 64, "there is a bit for each selector");

// A number of decimal digits: nDigits * 10 to the power nExponent.
class CDecimal {
public:
    // Digits that add nothing to what a real number can hold are counted only.
    void Add(unsigned nDigit, bool bAfterPoint)
    {
        const bool bFits = m_nDigits <= (UINT64_MAX - nDigit) / DECIMAL;
        if (bFits) m_nDigits = m_nDigits * DECIMAL + nDigit;
        m_nExponent += (bFits ? 0 : 1) - (bAfterPoint ? 1 : 0);
    }
    [[nodiscard]] double Number() const
    {
        constexpr double STEP = 1e22; // the largest power of ten that a real number holds
        constexpr int STEP_POWER = 22;
        auto f = static_cast<double>(m_nDigits);
        int n = m_nExponent;
        for (; n > STEP_POWER && std::isfinite(f); n -= STEP_POWER) f *= STEP;
        for (; n < -STEP_POWER && f > 0; n += STEP_POWER) f /= STEP;
        double fPower = 1;
        for (int i = 0; i < std::abs(n) && i < STEP_POWER; ++i) fPower *= DECIMAL;
        return n < 0 ? f / fPower : f * fPower;
    }

private:
    uint64_t m_nDigits = 0;
    int m_nExponent = 0;
};

// A part of a text by its ends: what std::string_view has for that may throw, for which the library
// would bring its exceptions along.
std::string_view Between(const char* pBegin, const char* pEnd)
{
    return {pBegin, static_cast<std::size_t>(pEnd - pBegin)};
}

bool ReadHex(std::string_view digits, double* pfOut)
{
    while (digits.size() > HEX_DIGITS && digits[0] == '0') digits.remove_prefix(1);
    if (digits.empty() || digits.size() > HEX_DIGITS) return false;
    uint32_t nNumber = 0;
    for (const char c : digits) {
        const unsigned nDigit = text_numbers::DigitOf(c);
        if (nDigit >= HEXADECIMAL) return false;
        nNumber = nNumber * HEXADECIMAL + nDigit;
    }
    *pfOut = nNumber;
    return true;
}

bool ReadDecimal(std::string_view text, double* pfOut)
{
    CDecimal number;
    std::size_t nDigits = 0;
    bool bAfterPoint = false;
    for (const char c : text) {
        const unsigned nDigit = text_numbers::DigitOf(c);
        const bool bPoint = c == '.' && !bAfterPoint;
        if (!bPoint && nDigit >= DECIMAL) return false;
        if (!bPoint) number.Add(nDigit, bAfterPoint);
        if (!bPoint) ++nDigits;
        bAfterPoint |= bPoint;
    }
    *pfOut = number.Number();
    return nDigits && std::isfinite(*pfOut);
}

// The first word of a name counts, also where it is no number.
struct WordList {
    Word words[QEL_SEL_COUNT]{};
    uint32_t nCount = 0;
    uint64_t nNamed = BitOf(QEL_SEL_VALUE); // which has an attribute of its own

    void Add(uint32_t nSelector, std::string_view number)
    {
        Word& word = words[nCount];
        word.nSelector = nSelector;
        if (ReadSetNumber(number, &word.fNumber)) ++nCount;
    }
    void AddNamed(const SetWordText& text)
    {
        const int32_t nSelector = SelectorOfName(text.name);
        if (nSelector == KEYWORD_NONE) return;
        const uint64_t nBit = BitOf(static_cast<uint32_t>(nSelector));
        if (!(nNamed & nBit)) Add(static_cast<uint32_t>(nSelector), text.number);
        nNamed |= nBit;
    }
};

WordList ReadWords(const SetTexts& texts)
{
    WordList list;
    SetWordText word{};
    const char* pszSet = texts.pszSet;
    while (pszSet && NextSetWord(&pszSet, &word)) list.AddNamed(word);
    Word& last = list.words[list.nCount];
    last.nSelector = QEL_SEL_VALUE;
    if (texts.pszValue && ReadValueText(texts.pszValue, &last.fNumber)) ++list.nCount;
    return list;
}

void Give(CHostDriven& host, const Word& word)
{
    if (word.nSelector == QEL_SEL_VALUE)
        host.ShowNumber(word.fNumber);
    else
        SetHostSelector(host, word.nSelector, word.fNumber);
}

} // namespace

struct CSetWords::Kept {
    uint64_t nHost;  // a bit for each selector that the host has set
    uint32_t nCount; // of the words, which stand behind it

    [[nodiscard]] Word* Words() { return reinterpret_cast<Word*>(this + 1); }
    static Kept* Make(const Word* pWords, uint32_t nCount)
    {
        auto* pKept = static_cast<Kept*>(std::malloc(sizeof(Kept) + nCount * sizeof(Word)));
        if (!pKept) return nullptr;
        pKept->nHost = 0;
        pKept->nCount = nCount;
        std::memcpy(pKept->Words(), pWords, nCount * sizeof(Word));
        return pKept;
    }
};

bool NextSetWord(const char** ppText, SetWordText* pOut)
{
    SkipTextSpace(ppText);
    const char* pStart = *ppText;
    while (**ppText && !IsTextSpace(**ppText)) ++*ppText;
    const char* pNameEnd = std::find(pStart, *ppText, '=');
    pOut->bHasNumber = pNameEnd != *ppText;
    pOut->name = Between(pStart, pNameEnd);
    pOut->number = Between(pOut->bHasNumber ? pNameEnd + 1 : *ppText, *ppText);
    return *ppText != pStart;
}

int32_t SelectorOfName(std::string_view name)
{
    const SelectorRow* pRow = g_selectorRows;
    while (pRow->pszName && name != pRow->pszName) ++pRow;
    return pRow->pszName ? pRow->nId : KEYWORD_NONE;
}

bool ReadSetNumber(std::string_view text, double* pfOut)
{
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        return ReadHex(text, pfOut);
    }
    const bool bMinus = text.starts_with('-');
    if (bMinus || text.starts_with('+')) text.remove_prefix(1);
    double fNumber = 0;
    if (!ReadDecimal(text, &fNumber)) return false;
    *pfOut = bMinus ? -fNumber : fNumber;
    return true;
}

bool ReadValueText(const char* pszText, double* pfOut)
{
    SkipTextSpace(&pszText);
    std::string_view text = pszText;
    while (!text.empty() && IsTextSpace(text.back())) text.remove_suffix(1);
    return ReadSetNumber(text, pfOut);
}

CSetWords::~CSetWords()
{
    std::free(m_pKept);
}

int CSetWords::Take(const SetTexts& texts)
{
    if (m_pKept || texts.IsNone()) return 1;
    const WordList list = ReadWords(texts);
    if (!list.nCount) return 1;
    m_pKept = Kept::Make(list.words, list.nCount);
    return m_pKept ? 1 : 0;
}

int CSetWords::TakeCopy(const CSetWords& source)
{
    if (!source.m_pKept) return 1;
    std::free(m_pKept);
    m_pKept = Kept::Make(source.m_pKept->Words(), source.m_pKept->nCount);
    if (m_pKept) m_pKept->nHost = source.m_pKept->nHost;
    return m_pKept ? 1 : 0;
}

// What is given here goes the way of the host's settings, but is none.
void CSetWords::Apply(CHostDriven& host)
{
    if (!m_pKept) return;
    const uint64_t nHost = m_pKept->nHost;
    const Word* pEnd = m_pKept->Words() + m_pKept->nCount;
    for (const Word* p = m_pKept->Words(); p < pEnd; ++p)
        if (!(nHost & BitOf(p->nSelector))) Give(host, *p);
    m_pKept->nHost = nHost;
}

void CSetWords::ApplyAll(CHostDriven& host)
{
    if (m_pKept) m_pKept->nHost = 0;
    Apply(host);
}

void CSetWords::Note(uint32_t nSelector)
{
    m_pKept->nHost |= BitOf(nSelector);
}

// It is the last of the words.
const double* CSetWords::Value() const
{
    if (!m_pKept || (m_pKept->nHost & BitOf(QEL_SEL_VALUE))) return nullptr;
    const Word& last = m_pKept->Words()[m_pKept->nCount - 1];
    return last.nSelector == QEL_SEL_VALUE ? &last.fNumber : nullptr;
}
