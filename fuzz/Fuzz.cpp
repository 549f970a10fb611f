#include "fuzz/Fuzz.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr uint8_t SMALL = 128;      // bytes below are the number itself
constexpr uint8_t NEGATIVE = 160;   // below: small negative numbers
constexpr uint8_t REMARKABLE = 224; // below: the table; above: four bytes follow

constexpr int32_t g_remarkable[] = {INT_MAX,
                                    INT_MIN,
                                    INT_MIN + 1,
                                    INT_MAX - 1,
                                    0x7FFF,
                                    0x8000,
                                    -0x8000,
                                    0xFFFF,
                                    0x10000,
                                    0x3FFFFFFF,
                                    0x40000000,
                                    -0x40000000,
                                    180,
                                    270,
                                    360,
                                    450,
                                    -180,
                                    1000,
                                    -1000,
                                    10000,
                                    100000,
                                    0x1000000,
                                    0xFFFFFF,
                                    0x1000,
                                    0x4000,
                                    0x30000,
                                    0x200000,
                                    0xD9000,
                                    0x1F4000,
                                    1000000000,
                                    -360,
                                    255,
                                    46341,
                                    -46341,
                                    65535,
                                    0x7FFFFF,
                                    0xC20000,
                                    0x8000 | 0x20000,
                                    0x40000 | 0x100000,
                                    0x80000 | 0x400000,
                                    0x10000 | 0x800000,
                                    0x80,
                                    0x81,
                                    424,
                                    24,
                                    60,
                                    28,
                                    68};
constexpr std::size_t REMARKABLE_COUNT = sizeof g_remarkable / sizeof g_remarkable[0];

} // namespace

void FuzzFail(const char* pszFile, int nLine, const char* pszPromise)
{
    std::fprintf(stderr, "%s:%d: broken promise: %s\n", pszFile, nLine, pszPromise);
    std::abort();
}

int32_t CInput::Number()
{
    const uint8_t n = Byte();
    if (n < SMALL) return n;
    if (n < NEGATIVE) return SMALL - n - 1;
    if (n < REMARKABLE) return g_remarkable[(n - NEGATIVE) % REMARKABLE_COUNT];
    uint32_t nWord = 0;
    for (int i = 0; i < 4; ++i) nWord = nWord << 8 | Byte();
    return static_cast<int32_t>(nWord);
}

float CInput::Real()
{
    const int32_t n = Number();
    if (Byte() % 2 == 0) return static_cast<float>(n) / 4;
    float f = 0;
    static_assert(sizeof f == sizeof n);
    std::memcpy(&f, &n, sizeof f);
    return f;
}

std::string CInput::Text()
{
    std::size_t nLen = Byte();
    if (nLen == 255) nLen = 300; // longer than any text of the engine
    std::string text;
    while (nLen-- && !IsAtEnd()) {
        const char c = static_cast<char>(Byte());
        if (!c) break;
        text += c;
    }
    return text;
}

SplitInput SplitAtZero(const uint8_t* pData, std::size_t nSize)
{
    const std::string_view all(reinterpret_cast<const char*>(pData), nSize);
    const std::size_t nZero = all.find('\0');
    if (nZero == std::string_view::npos) return {std::string(all), {}};
    return {std::string(all.substr(0, nZero)), all.substr(nZero + 1)};
}
