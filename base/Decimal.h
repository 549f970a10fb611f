// A real number as decimal digits, exactly: rounded to the nearest, ties of the binary value to the
// even digit. The C runtimes differ in this, and some take memory for it.
#pragma once

#include <cstddef>

constexpr int MAX_DECIMALS = 255;

// Writes the number with that many decimals and, with any, a point; ended by zero. What shows
// nothing but zeros has no sign. Result: the characters without the end; 0 when they do not fit,
// for what is no finite number, and for decimals below 0 or above MAX_DECIMALS.
int WriteDecimal(double fNumber, int nDecimals, char* pszOut, std::size_t nSize);
