// The decimal digits of real numbers, for the numbers that stand in texts.
#include "base/Decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace {

std::string Written(double f, int nDecimals, std::size_t nSize = 400)
{
    std::string text(nSize, '?');
    const int nLength = WriteDecimal(f, nDecimals, text.data(), nSize);
    if (!nLength) return "none";
    EXPECT_EQ(0, text[static_cast<std::size_t>(nLength)]);
    return text.substr(0, static_cast<std::size_t>(nLength));
}

// Digits as whole-number arithmetic has them: nTimes / 8 in the given number of decimals, of which
// three are all that an eighth can have.
std::string Eighths(int64_t nTimes, int nDecimals)
{
    int64_t nScale = 8;
    int64_t nPower = 1;
    for (int n = 0; n < nDecimals; ++n) nPower *= 10;
    const int64_t nSize = nTimes < 0 ? -nTimes : nTimes;
    int64_t nWhole = nSize * nPower / nScale;
    const int64_t nRest = nSize * nPower % nScale * 2;
    if (nRest > nScale || (nRest == nScale && nWhole % 2)) ++nWhole;
    std::string text = std::to_string(nWhole);
    while (text.size() <= static_cast<std::size_t>(nDecimals)) text.insert(0, "0");
    if (nDecimals) text.insert(text.size() - static_cast<std::size_t>(nDecimals), ".");
    return (nTimes < 0 && nWhole ? "-" : "") + text;
}

} // namespace

TEST(Decimal, IsTheNearestWithTiesToTheEvenDigit)
{
    for (int64_t nTimes = -5000; nTimes <= 5000; ++nTimes)
        for (int nDecimals = 0; nDecimals <= 4; ++nDecimals)
            ASSERT_EQ(Eighths(nTimes, nDecimals),
                      Written(static_cast<double>(nTimes) / 8, nDecimals))
                << nTimes << " " << nDecimals;
}

TEST(Decimal, TiesAreThoseOfTheBinaryValue)
{
    EXPECT_EQ("1.00", Written(1.005, 2)); // 1.00499999999999989...
    EXPECT_EQ("1.01", Written(1.015, 2)); // 1.01499999999999990...
    EXPECT_EQ("1.14", Written(1.135, 2)); // 1.13500000000000000888... is above, 1.125 a true tie:
    EXPECT_EQ("1.12", Written(1.125, 2));
    EXPECT_EQ("0.1000000000000000055511151231257827021181583404541015625",
              Written(0.1, 55)); // all that 0.1 has
}

TEST(Decimal, NothingButZerosHasNoSign)
{
    EXPECT_EQ("0", Written(-0.0, 0));
    EXPECT_EQ("0.0", Written(-0.04, 1));
    EXPECT_EQ("-0.1", Written(-0.06, 1));
}

TEST(Decimal, WholeNumbersBeyondTheMantissaHaveAllTheirDigits)
{
    EXPECT_EQ("18446744073709551616.00", Written(std::ldexp(1.0, 64), 2));
    std::string most = Written(std::numeric_limits<double>::max(), 0);
    EXPECT_EQ(309U, most.size());
    EXPECT_EQ("17976931348623157", most.substr(0, 17));
}

TEST(Decimal, TheSmallestNumbersRoundToZero)
{
    EXPECT_EQ("0.000", Written(std::numeric_limits<double>::denorm_min(), 3));
    EXPECT_EQ("0." + std::string(255, '0'), Written(std::numeric_limits<double>::min(), 255));
}

TEST(Decimal, ReadsBackAsTheNumber)
{
    std::mt19937_64 random(11);
    for (int n = 0; n < 5000; ++n) {
        const double f = std::ldexp(static_cast<double>(random()) - 9e18, -40);
        EXPECT_EQ(f, std::stod(Written(f, 60))) << f;
    }
}

TEST(Decimal, WhatDoesNotFitIsNotWritten)
{
    EXPECT_EQ("123.4", Written(123.4, 1, 6));
    EXPECT_EQ("none", Written(123.4, 1, 5));
    EXPECT_EQ("none", Written(-123.4, 1, 6));
    EXPECT_EQ("none", Written(1, 0, 0));
}

TEST(Decimal, WhatIsNoNumberIsNotWritten)
{
    EXPECT_EQ("none", Written(std::nan(""), 0));
    EXPECT_EQ("none", Written(HUGE_VAL, 0));
    EXPECT_EQ("none", Written(1, -1));
    EXPECT_EQ("none", Written(1, MAX_DECIMALS + 1));
}

TEST(Decimal, RoundingUpGoesOnIntoTheHigherDigits)
{
    // 2 to the power 32, less a half: the even neighbour is the power itself, and likewise for 64.
    EXPECT_EQ("4294967296", Written(4294967295.5, 0));
    EXPECT_EQ("4294967294", Written(4294967294.5, 0));
    EXPECT_EQ("-4294967296", Written(-4294967295.5, 0));
}
