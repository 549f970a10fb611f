// Pictures at another pixel scale beside the plain one enlarged: each pixel of the plain one is a
// block of as many pixels each way as the scale tells.
#pragma once

#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

class CPixels { // of a picture, to be looked at often
public:
    explicit CPixels(const CTestBitmap& picture)
        : m_nWidth(picture.Width()), m_nHeight(picture.Height())
    {
        for (int y = 0; y < m_nHeight; ++y)
            for (int x = 0; x < m_nWidth; ++x) m_pixels.push_back(picture.At(x, y));
    }
    // Of what is drawn in memory, with nothing around it.
    CPixels(const std::vector<uint32_t>& pixels, SIZE size) : m_nWidth(size.cx), m_nHeight(size.cy)
    {
        for (const uint32_t n : pixels)
            m_pixels.push_back(RGB(n >> 16 & 0xFF, n >> 8 & 0xFF, n & 0xFF));
    }
    int Width() const { return m_nWidth; }
    int Height() const { return m_nHeight; }
    COLORREF At(int nX, int nY) const
    {
        return m_pixels[static_cast<std::size_t>(nY) * static_cast<std::size_t>(m_nWidth) +
                        static_cast<std::size_t>(nX)];
    }
    // Whether a pixel of the rectangle has the colour; both ends are in it. Around the picture it
    // is white.
    bool Has(COLORREF clr, int nLeft, int nTop, int nRight, int nBottom) const
    {
        if (clr == AROUND && (nLeft < 0 || nTop < 0 || nRight >= m_nWidth || nBottom >= m_nHeight))
            return true;
        for (int y = std::max(nTop, 0); y <= std::min(nBottom, m_nHeight - 1); ++y)
            for (int x = std::max(nLeft, 0); x <= std::min(nRight, m_nWidth - 1); ++x)
                if (At(x, y) == clr) return true;
        return false;
    }
    std::map<COLORREF, int> Counts() const
    {
        std::map<COLORREF, int> counts;
        for (const COLORREF clr : m_pixels) ++counts[clr];
        return counts;
    }

private:
    static constexpr COLORREF AROUND = 0xFFFFFF;

    int m_nWidth;
    int m_nHeight;
    std::vector<COLORREF> m_pixels;
};

inline std::string PlaceText(int nTimes, int nX, int nY, COLORREF clr)
{
    char sz[120];
    std::snprintf(sz, sizeof sz, "at %d times, %d, %d (plain %d, %d), %06lx", nTimes, nX, nY,
                  nX / nTimes, nY / nTimes, static_cast<unsigned long>(clr));
    return sz;
}

// The block that a pixel is in; of those before the picture it is enough to know so.
inline int BlockOf(int n, int nTimes)
{
    return n < 0 ? -1 : n / nTimes;
}

// "" when each pixel of the large picture has one of its colour within so many pixels in the plain
// one enlarged, and each of that one in the large picture.
inline std::string Unlike(const CPixels& plain, const CPixels& large, int nReach)
{
    const int t = large.Width() / plain.Width();
    for (int y = 0; y < large.Height(); ++y)
        for (int x = 0; x < large.Width(); ++x)
            if (!plain.Has(large.At(x, y), BlockOf(x - nReach, t), BlockOf(y - nReach, t),
                           (x + nReach) / t, (y + nReach) / t))
                return PlaceText(t, x, y, large.At(x, y)) + " is new";
    for (int y = 0; y < plain.Height(); ++y)
        for (int x = 0; x < plain.Width(); ++x)
            if (!large.Has(plain.At(x, y), x * t - nReach, y * t - nReach, x * t + t - 1 + nReach,
                           y * t + t - 1 + nReach))
                return PlaceText(t, x * t, y * t, plain.At(x, y)) + " is gone";
    return "";
}

// "" when each colour that has more than some pixels covers about as large a part of the large
// picture as of the plain one: a line that stays a pixel wide at twice the size has half of it. In
// small figures the system rounds so that there may be much more.
inline std::string UnlikeShares(const CPixels& plain, const CPixels& large)
{
    constexpr int SOME = 40;
    constexpr double LEAST = 0.7;
    constexpr double MOST = 2;
    const int t = large.Width() / plain.Width();
    std::map<COLORREF, int> counts = large.Counts();
    for (const auto& [clr, nCount] : plain.Counts()) {
        const double fShare = static_cast<double>(counts[clr]) / (nCount * t * t);
        if (nCount > SOME && (fShare < LEAST || fShare > MOST))
            return PlaceText(t, 0, 0, clr) + " covers " + std::to_string(fShare) + " times as much";
    }
    return "";
}

constexpr int SCALES[] = {2, 3, 4};

// How near: to the pixel; but for round corners and ends; outlines, of which the plain picture is
// within a pixel of its geometry and the large one within two of the surface; what is reckoned in
// whole pixels from the size, which is another pixel off in the plain picture; and the inside of
// what is pointed, which that moves farther.
enum class Near { Blocks, Corners, Outlines, Reckoned, Pointed };
inline int ReachOf(Near nNear, int nTimes)
{
    switch (nNear) {
    case Near::Blocks:
        return 0;
    case Near::Corners:
        return 2;
    case Near::Outlines:
        return nTimes + 2;
    case Near::Reckoned:
        return 2 * nTimes + 2;
    default:
        return 3 * nTimes + 2;
    }
}
