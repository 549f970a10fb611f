// Memory that is given back all at once: base/Arena.cpp.
#include "base/Arena.h"

#include "base/Block.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr std::size_t CHUNK = 256;

uintptr_t AddressOf(const void* p)
{
    return reinterpret_cast<uintptr_t>(p);
}

} // namespace

TEST(Arena, PiecesAreZeroedAlignedAndApart)
{
    for (const std::size_t nChunk : {std::size_t{0}, CHUNK}) {
        CArena arena(nChunk);
        std::vector<std::pair<unsigned char*, std::size_t>> pieces;
        for (std::size_t nSize = 1; nSize < 600; nSize += 7) {
            auto* p = static_cast<unsigned char*>(arena.Take(nSize));
            ASSERT_NE(nullptr, p);
            EXPECT_EQ(0U, AddressOf(p) % alignof(void*)) << nSize;
            for (std::size_t n = 0; n < nSize; ++n) ASSERT_EQ(0, p[n]);
            std::memset(p, static_cast<int>(pieces.size() % 255 + 1), nSize);
            pieces.emplace_back(p, nSize);
            arena.TakeBytes(3); // what follows is to be aligned all the same
        }
        for (std::size_t i = 0; i < pieces.size(); ++i) // none was written over by a later one
            for (std::size_t n = 0; n < pieces[i].second; ++n)
                ASSERT_EQ(i % 255 + 1, pieces[i].first[n]);
    }
}

TEST(Arena, TextsAreCopiedWithTheirEnd)
{
    for (const std::size_t nChunk : {std::size_t{0}, CHUNK}) {
        CArena arena(nChunk);
        std::vector<std::string> texts;
        std::vector<const char*> copies;
        for (std::size_t nLen = 0; nLen < 300; nLen += 13) {
            texts.emplace_back(nLen, static_cast<char>('a' + nLen % 26));
            copies.push_back(arena.TakeText((texts.back() + "more").c_str(), nLen));
        }
        for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(texts[i], copies[i]);
    }
}

TEST(Arena, SmallPiecesFollowEachOtherInAChunk)
{
    CArena arena(CHUNK);
    const char* p = arena.TakeBytes(1);
    EXPECT_EQ(p + 1, arena.TakeBytes(10));
    arena.TakeBytes(100 * CHUNK); // has its own chunk, and the first one goes on
    EXPECT_EQ(p + 11, arena.TakeBytes(10));
}

TEST(Arena, AnEmptiedArenaGivesMemoryAgain)
{
    CArena arena(CHUNK);
    for (int nRound = 0; nRound < 3; ++nRound) {
        for (int n = 0; n < 100; ++n) ASSERT_NE(nullptr, arena.Take(50));
        arena.Clear();
    }
    EXPECT_NE(nullptr, arena.Take(50));
}

TEST(Arena, APieceThatFitsOnlyOutOfAlignmentIsTakenElsewhere)
{
    CArena arena(CHUNK);
    char* pChunk = arena.TakeBytes(1);
    for (int n = 0; n < 4; ++n) arena.TakeBytes(50);
    const auto* p =
        static_cast<char*>(arena.Take(54)); // of the 55 that are left the first is no place
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(0U, AddressOf(p) % alignof(void*));
    EXPECT_TRUE(p + 54 <= pChunk || p >= pChunk + CHUNK);
}

TEST(Block, OfMoreThanTheAddressSpaceIsNotThere)
{
    EXPECT_EQ(nullptr, CBlock(UINT64_MAX).As<char>());
    EXPECT_EQ(nullptr, CBlock(uint64_t{SIZE_MAX / 2}).As<char>());
    EXPECT_NE(nullptr, CBlock(1).As<char>());
}

TEST(Arena, SizesBeyondMemoryAreRefused)
{
    CArena arena(CHUNK);
    EXPECT_EQ(nullptr, arena.TakeText("a", SIZE_MAX));
    EXPECT_EQ(nullptr, arena.TakeBytes(SIZE_MAX));
    EXPECT_EQ(nullptr, arena.TakeBytes(SIZE_MAX / 2));
    EXPECT_NE(nullptr, arena.Take(50));
}
