// The pieces of a dirty area: apart from each other, as few as pay, and with all of the area.
#include "render/UpdatePieces.h"

#include "base/Rects.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr RECT ALL{-10000, -10000, 10000, 10000};

CUpdatePieces PiecesOf(const std::vector<RECT>& rects, const RECT& rcShown = ALL)
{
    CDirtyArea area;
    area.Clear();
    for (const RECT& rc : rects) area.Add(rc);
    return {area, rcShown};
}

bool Meet(const RECT& a, const RECT& b)
{
    RECT rc{};
    return ::IntersectRect(&rc, &a, &b) != 0;
}

} // namespace

TEST(UpdatePieces, FarRectanglesStayByThemselves)
{
    const CUpdatePieces pieces = PiecesOf({{0, 0, 100, 100}, {500, 500, 600, 600}});
    ASSERT_EQ(2, pieces.Count());
    EXPECT_EQ(100, pieces.At(0).right);
    EXPECT_EQ(500, pieces.At(1).left);
}

TEST(UpdatePieces, WhatMeetsIsOneSinceAPixelIsPaintedOnce)
{
    const CUpdatePieces pieces = PiecesOf({{0, 0, 1000, 10}, {990, 0, 1000, 1000}});
    ASSERT_EQ(1, pieces.Count());
    const RECT rc = pieces.At(0);
    EXPECT_EQ(0, rc.left);
    EXPECT_EQ(1000, rc.right);
    EXPECT_EQ(1000, rc.bottom);
}

TEST(UpdatePieces, NeighboursAreJoinedWhereThatCostsLittle)
{
    EXPECT_EQ(1, PiecesOf({{0, 0, 20, 20}, {30, 0, 50, 20}}).Count());
    EXPECT_EQ(2, PiecesOf({{0, 0, 200, 200}, {300, 0, 500, 200}}).Count());
}

TEST(UpdatePieces, AJoinedPieceTakesInWhatItReaches)
{
    // The first two do not meet the third, their hull does.
    const CUpdatePieces pieces =
        PiecesOf({{0, 0, 900, 20}, {400, 500, 420, 520}, {880, 0, 900, 900}});
    EXPECT_EQ(1, pieces.Count());
}

TEST(UpdatePieces, OnlyWhatShowsIsPainted)
{
    const RECT rcShown{0, 0, 100, 100};
    const CUpdatePieces pieces = PiecesOf({{50, 50, 300, 300}, {400, 0, 500, 100}}, rcShown);
    ASSERT_EQ(1, pieces.Count());
    EXPECT_EQ(100, pieces.At(0).right);
    EXPECT_EQ(0, PiecesOf({{400, 0, 500, 100}}, rcShown).Count());
}

TEST(UpdatePieces, ManyLieApartAndHoldAllOfTheArea)
{
    std::vector<RECT> rects;
    uint32_t nSeed = 12345;
    const auto next = [&nSeed](uint32_t nBelow) {
        nSeed = nSeed * 1664525 + 1013904223;
        return static_cast<LONG>((nSeed >> 8) % nBelow);
    };
    for (int n = 0; n < CDirtyArea::MOST_RECTS; ++n) {
        const LONG x = next(5000);
        const LONG y = next(5000);
        rects.push_back({x, y, x + 1 + next(300), y + 1 + next(300)});
    }
    const CUpdatePieces pieces = PiecesOf(rects);
    EXPECT_GT(pieces.Count(), 1);
    for (int n = 0; n < pieces.Count(); ++n)
        for (int m = 0; m < n; ++m) EXPECT_FALSE(Meet(pieces.At(n), pieces.At(m))) << n << " " << m;
    for (const RECT& rc : rects) {
        int nHolders = 0;
        for (int n = 0; n < pieces.Count(); ++n) {
            const RECT& piece = pieces.At(n);
            nHolders += piece.left <= rc.left && piece.top <= rc.top && piece.right >= rc.right &&
                        piece.bottom >= rc.bottom;
        }
        EXPECT_EQ(1, nHolders);
    }
}
