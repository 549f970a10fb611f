// What the fuzzers share: numbers and texts taken out of the input, and the check that turns a
// broken promise into a crash, which is what the fuzzing library collects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Ends the run with the promise that was broken.
[[noreturn]] void FuzzFail(const char* pszFile, int nLine, const char* pszPromise);

#define FUZZ_CHECK(promise)                                                                        \
    do {                                                                                           \
        if (!(promise)) FuzzFail(__FILE__, __LINE__, #promise);                                    \
    } while (0)

// Reads an input from its front. At the end everything reads as 0 or empty, so that every input is
// a whole program.
class CInput {
public:
    CInput(const uint8_t* pData, std::size_t nSize) : m_p(pData), m_pEnd(pData + nSize) {}

    [[nodiscard]] bool IsAtEnd() const { return m_p == m_pEnd; }
    uint8_t Byte() { return m_p < m_pEnd ? *m_p++ : 0; }
    uint32_t Below(uint32_t nLimit) { return Byte() % nLimit; }
    // Small numbers take one byte, and so do the numbers at which arithmetic goes wrong; any other
    // takes five.
    int32_t Number();
    uint32_t Word() { return static_cast<uint32_t>(Number()); }
    float Real();       // any float, infinities and what is no number included
    std::string Text(); // a length byte, then that many bytes up to a zero
    std::string_view Rest() const
    {
        return {reinterpret_cast<const char*>(m_p), static_cast<std::size_t>(m_pEnd - m_p)};
    }

private:
    const uint8_t* m_p;
    const uint8_t* m_pEnd;
};

// The text of a drawing and what stands behind it: reading ends at the first zero byte, so the
// bytes after it are the program.
struct SplitInput {
    std::string text;
    std::string_view program;
};
SplitInput SplitAtZero(const uint8_t* pData, std::size_t nSize);
