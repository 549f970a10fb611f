// 32-bit arithmetic that wraps, as the drawing rules ask for, without undefined behaviour: a host
// or a file may name any numbers. A division that would trap (by zero, or the lowest number by -1)
// gives 0.
#pragma once

#include <cstdint>

constexpr int32_t WrapAdd(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

constexpr int32_t WrapSub(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

constexpr int32_t WrapMul(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

constexpr int32_t WrapAbs(int32_t a)
{
    return a < 0 ? WrapSub(0, a) : a;
}

constexpr int32_t SafeDiv(int32_t a, int32_t b)
{
    return b == 0 || (a == INT32_MIN && b == -1) ? 0 : a / b;
}

constexpr int32_t SafeMod(int32_t a, int32_t b)
{
    return b == 0 || b == -1 ? 0 : a % b;
}

// a * b / c: the product is formed first, the division truncates toward zero.
constexpr int32_t WrapMulDiv(int32_t a, int32_t b, int32_t c)
{
    return SafeDiv(WrapMul(a, b), c);
}

// The same in 64 bits.
constexpr int64_t WrapAdd64(int64_t a, int64_t b)
{
    return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}

constexpr int64_t WrapSub64(int64_t a, int64_t b)
{
    return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

constexpr int64_t WrapMul64(int64_t a, int64_t b)
{
    return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}

constexpr int64_t SafeDiv64(int64_t a, int64_t b)
{
    return b == 0 || (a == INT64_MIN && b == -1) ? 0 : a / b;
}

// A real number as an integer, truncated toward zero; out of range it saturates, no number gives 0.
constexpr int32_t TruncToInt(double f)
{
    if (f != f) return 0;
    if (f >= 2147483647.0) return INT32_MAX;
    if (f <= -2147483648.0) return INT32_MIN;
    return static_cast<int32_t>(f);
}
