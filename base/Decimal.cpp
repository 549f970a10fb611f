#include "base/Decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr int MANTISSA_BITS = 53;
constexpr int WORD_BITS = 32;
constexpr int WORDS = 36; // 1,024 bits of a number, or 53 and 255 decimals, and some to spare
constexpr uint32_t TEN = 10;

// A natural number of up to WORDS words, the lowest first.
class CNatural {
public:
    explicit CNatural(uint64_t n) noexcept
        : m_nWords{static_cast<uint32_t>(n), static_cast<uint32_t>(n >> WORD_BITS)}
    {
    }

    [[nodiscard]] bool IsZero() const
    {
        return std::all_of(m_nWords, m_nWords + WORDS, [](uint32_t n) { return n == 0; });
    }

    void TimesTen()
    {
        uint64_t nCarry = 0;
        for (uint32_t& nWord : m_nWords) {
            nCarry += static_cast<uint64_t>(nWord) * TEN;
            nWord = static_cast<uint32_t>(nCarry);
            nCarry >>= WORD_BITS;
        }
    }

    uint32_t DivideByTen() // the remainder
    {
        uint64_t nRest = 0;
        for (int n = WORDS - 1; n >= 0; --n) {
            nRest = nRest << WORD_BITS | m_nWords[n];
            m_nWords[n] = static_cast<uint32_t>(nRest / TEN);
            nRest %= TEN;
        }
        return static_cast<uint32_t>(nRest);
    }

    void ShiftUp(int nBits)
    {
        for (int n = WORDS - 1; n >= 0; --n) m_nWords[n] = WordAt(n * WORD_BITS - nBits);
    }

    // To the nearest, half of it to the even one.
    void ShiftDown(int nBits)
    {
        const bool bHalf = Bit(nBits - 1);
        bool bRest = false;
        for (int n = 0; n < nBits - 1 && !bRest; ++n) bRest = Bit(n);
        for (int n = 0; n < WORDS; ++n) m_nWords[n] = WordAt(n * WORD_BITS + nBits);
        if (bHalf && (bRest || Bit(0))) Increment();
    }

private:
    [[nodiscard]] bool Bit(int nBit) const
    {
        const int nWord = nBit / WORD_BITS;
        return nWord < WORDS && (m_nWords[nWord] >> (nBit % WORD_BITS) & 1) != 0;
    }
    // The 32 bits that begin at a bit; there is nothing but zeros beyond both ends.
    [[nodiscard]] uint32_t WordAt(int nBit) const
    {
        const int nWord = nBit >= 0 ? nBit / WORD_BITS : -((WORD_BITS - 1 - nBit) / WORD_BITS);
        const int nShift = nBit - nWord * WORD_BITS;
        const uint64_t nLow = Word(nWord);
        const uint64_t nHigh = Word(nWord + 1);
        return static_cast<uint32_t>((nHigh << WORD_BITS | nLow) >> nShift);
    }
    [[nodiscard]] uint32_t Word(int n) const { return n >= 0 && n < WORDS ? m_nWords[n] : 0; }
    // There is room to spare, so that the carry ends.
    void Increment()
    {
        for (uint32_t* pWord = m_nWords; ++*pWord == 0;) ++pWord;
    }

    uint32_t m_nWords[WORDS];
};

// The digits without sign and point, the last one first, in a buffer that may be too small.
class CDigits {
public:
    CDigits(char* pchOut, std::size_t nSize) noexcept : m_pchOut(pchOut), m_nSize(nSize) {}

    void Add(char ch)
    {
        if (m_nCount < m_nSize) m_pchOut[m_nCount] = ch;
        ++m_nCount;
    }
    [[nodiscard]] int Finish() // turns them around, and ends them
    {
        if (m_nCount >= m_nSize) return 0;
        std::reverse(m_pchOut, m_pchOut + m_nCount);
        m_pchOut[m_nCount] = 0;
        return static_cast<int>(m_nCount);
    }

private:
    char* m_pchOut;
    std::size_t m_nSize;
    std::size_t m_nCount = 0;
};

// The number times ten to the power of its decimals, as a whole one; nZeros: the decimals that
// are 0 because it is whole by itself.
CNatural Scaled(double fNumber, int nDecimals, int* pnZeros)
{
    int nExponent = 0;
    const double fMantissa = std::frexp(std::fabs(fNumber), &nExponent);
    CNatural number(static_cast<uint64_t>(std::ldexp(fMantissa, MANTISSA_BITS)));
    nExponent -= MANTISSA_BITS;
    *pnZeros = nExponent >= 0 ? nDecimals : 0;
    if (nExponent >= 0) {
        number.ShiftUp(nExponent);
    } else {
        for (int n = 0; n < nDecimals; ++n) number.TimesTen();
        number.ShiftDown(-nExponent);
    }
    return number;
}

} // namespace

int WriteDecimal(double fNumber, int nDecimals, char* pszOut, std::size_t nSize)
{
    if (!std::isfinite(fNumber) || nDecimals < 0 || nDecimals > MAX_DECIMALS) return 0;
    int nZeros = 0;
    CNatural number = Scaled(fNumber, nDecimals, &nZeros);
    const bool bSign = fNumber < 0 && !number.IsZero();
    CDigits digits(pszOut, nSize);
    for (int n = 0; n < nDecimals; ++n)
        digits.Add(static_cast<char>('0' + (n < nZeros ? 0 : number.DivideByTen())));
    if (nDecimals) digits.Add('.');
    do digits.Add(static_cast<char>('0' + number.DivideByTen()));
    while (!number.IsZero());
    if (bSign) digits.Add('-');
    return digits.Finish();
}
