// Blocks that serve again once they were given back: base/Pool.cpp, and document/Geometry.cpp,
// which keeps the words of a shape in them.
#include "base/Pool.h"
#include "document/ShapeRecord.h"
#include "render/QELViewElm.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::size_t CHUNK = 1024;
constexpr std::size_t MODES[] = {0, CHUNK}; // blocks of the heap, and blocks in chunks

// An element that does nothing.
struct CElement : CQELViewElm {
    explicit CElement(CPool* pPool = nullptr) : CQELViewElm(50, 50, pPool) {}
    int NewInstance(CQELViewElm**) const override { return 0; }
    int GetAttrBlockSize(int*) const override { return 0; }
    int GetAttrBlock(void*) const override { return 0; }
    int SetAttrBlock(const void*) override { return 0; }
};

struct CCounted : CElement {
    explicit CCounted(int* pnLive, CPool* pPool = nullptr) : CElement(pPool), m_pnLive(pnLive)
    {
        ++*m_pnLive;
    }
    ~CCounted() override { --*m_pnLive; }
    int* m_pnLive;
};

struct CThrowing : CElement {
    CThrowing() { throw 1; }
};

std::vector<int32_t> WordsOf(const CGeometry& geometry)
{
    const ShapeStyle style;
    QELSHAPEATTR record;
    std::memset(&record, -1, sizeof record);
    EXPECT_EQ(1, WriteShapeRecord({&style, geometry.Words(), geometry.Count(), "", 0}, &record));
    return {std::begin(record.nGeometry), std::end(record.nGeometry)};
}

std::vector<int32_t> Padded(std::vector<int32_t> words)
{
    words.resize(QEL_SHAPE_WORDS);
    return words;
}

} // namespace

TEST(Pool, BlocksOfAnySizeAreApart)
{
    for (const std::size_t nMode : MODES) {
        CPool pool(nMode);
        std::vector<std::pair<unsigned char*, std::size_t>> blocks;
        for (std::size_t nSize = 1; nSize < 800; nSize += 11) {
            auto* p = static_cast<unsigned char*>(pool.Take(nSize));
            ASSERT_NE(nullptr, p);
            EXPECT_EQ(0U, reinterpret_cast<uintptr_t>(p) % alignof(void*));
            std::memset(p, static_cast<int>(blocks.size()), nSize);
            blocks.emplace_back(p, nSize);
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            for (std::size_t n = 0; n < blocks[i].second; ++n)
                ASSERT_EQ(i & 0xFF, blocks[i].first[n]);
            pool.Give(blocks[i].first, blocks[i].second);
        }
        pool.Clear();
    }
}

TEST(Pool, ABlockThatWasGivenBackServesTheNextRequestOfItsSize)
{
    CPool pool(CHUNK);
    void* p = pool.Take(40);
    void* pOther = pool.Take(40);
    ASSERT_NE(p, pOther);
    pool.Give(p, 40);
    EXPECT_NE(p, pool.Take(80)); // another size
    EXPECT_EQ(p, pool.Take(40));
    pool.Give(p, 40);
    pool.Give(pOther, 40);
    EXPECT_EQ(pOther, pool.Take(40)); // the last one first
    EXPECT_EQ(p, pool.Take(40));
}

// However long it goes on, no more is taken than was in use at once.
TEST(Pool, MakingAndDeletingForeverTakesNoMoreMemory)
{
    CPool pool(CHUNK);
    std::set<void*> seen;
    for (int n = 0; n < 10000; ++n) {
        void* p = pool.Take(24);
        void* pOther = pool.Take(24);
        seen.insert(p);
        seen.insert(pOther);
        pool.Give(p, 24);
        pool.Give(pOther, 24);
    }
    EXPECT_EQ(2U, seen.size());
}

TEST(Pool, WithoutAPoolABlockIsOneOfTheHeap)
{
    void* p = TakeBlock(nullptr, 100);
    ASSERT_NE(nullptr, p);
    std::memset(p, 1, 100);
    GiveBlock(nullptr, p, 100);
    CPool pool(CHUNK);
    GiveBlock(&pool, nullptr, 100); // nothing to give
    EXPECT_NE(nullptr, TakeBlock(&pool, 100));
}

TEST(Pool, TextsAreKeptInBlocksOfTheirLength)
{
    for (const std::size_t nMode : MODES) {
        CPool pool(nMode);
        EXPECT_EQ(nullptr, TakePoolText(&pool, "abc", 0)); // none is needed
        char* psz = TakePoolText(&pool, "abcdef", 3);
        EXPECT_STREQ("abc", psz);
        GivePoolText(&pool, psz);
        GivePoolText(&pool, nullptr);
    }
}

TEST(Pool, TextsThatChangeAllTheTimeTakeFewBlocks)
{
    CPool pool(CHUNK);
    std::set<char*> blocks;
    char* pszText = nullptr;
    for (std::size_t n = 0; n < 2000; ++n) {
        const std::string text(1 + n * 7 % 255, 'x');
        ASSERT_EQ(1, ReplacePoolText(&pool, &pszText, text.data(), text.size()));
        EXPECT_EQ(text, pszText);
        blocks.insert(pszText);
    }
    // Of up to sixteen bytes each size of words has blocks of its own, above that each 32 bytes; a
    // text that takes the place of one of its size needs another block for a moment.
    EXPECT_GE(2 * (16 / sizeof(void*) + 256 / 32), blocks.size());
    EXPECT_LE(8U, blocks.size());
    GivePoolText(&pool, pszText);
}

TEST(Pool, ATextMayTakeThePlaceOfTheOneThatItIsAPartOf)
{
    CPool pool(CHUNK);
    char* pszText = nullptr;
    ASSERT_EQ(1, ReplacePoolText(&pool, &pszText, "one two", 7));
    ASSERT_EQ(1, ReplacePoolText(&pool, &pszText, pszText + 4, 3));
    EXPECT_STREQ("two", pszText);
    ASSERT_EQ(1, ReplacePoolText(&pool, &pszText, pszText, 0));
    EXPECT_EQ(nullptr, pszText);
}

TEST(Pool, ObjectsLieInItAndGoBackToIt)
{
    CPool pool(CHUNK);
    int nLive = 0;
    CQELViewElm* pElm = new (&pool) CCounted(&nLive, &pool);
    EXPECT_EQ(&pool, pElm->Pool());
    EXPECT_EQ(1, nLive);
    void* pBlock = pElm;
    delete pElm;
    EXPECT_EQ(0, nLive);
    pElm = new (&pool) CCounted(&nLive, &pool);
    EXPECT_EQ(pBlock, pElm);
    delete pElm;
}

TEST(Pool, ObjectsWithoutOneAreOnTheHeapOrTheStack)
{
    int nLive = 0;
    {
        const CCounted onStack(&nLive);
        EXPECT_EQ(nullptr, onStack.Pool());
        CQELViewElm* p = new CCounted(&nLive);
        CQELViewElm* pOther = new (std::nothrow) CCounted(&nLive);
        CQELViewElm* pLast = new (static_cast<CPool*>(nullptr)) CCounted(&nLive);
        EXPECT_EQ(4, nLive);
        for (CQELViewElm* pElm : {p, pOther, pLast}) {
            EXPECT_EQ(nullptr, pElm->Pool());
            delete pElm;
        }
    }
    EXPECT_EQ(0, nLive);
}

TEST(Pool, AnObjectWhoseConstructorThrowsIsGivenBack)
{
    EXPECT_THROW(new CThrowing, int);
    CPool pool(CHUNK);
    EXPECT_THROW(new (&pool) CThrowing, int); // its block goes with the pool
    EXPECT_THROW(new (static_cast<CPool*>(nullptr)) CThrowing, int);
}

TEST(Arena, MemoryThatIsTakenOverServesTheNextPieces)
{
    CArena old(CHUNK);
    char* pFirst = old.TakeBytes(CHUNK / 8);
    char* pLarge = old.TakeBytes(64 * CHUNK); // a chunk of its own
    CArena arena(CHUNK);
    arena.TakeOver(old);
    const auto isInside = [](const char* p, const char* pStart, std::size_t nSize) {
        return p >= pStart && p < pStart + nSize;
    };
    int nInside = 0;
    for (int n = 0; n < 16; ++n) {
        const char* p = arena.TakeBytes(CHUNK / 8);
        ASSERT_NE(nullptr, p);
        nInside += isInside(p, pFirst, CHUNK) || isInside(p, pLarge, 64 * CHUNK);
    }
    EXPECT_EQ(16, nInside);
    EXPECT_NE(nullptr, old.TakeBytes(10)); // the other goes on with memory of its own
}

TEST(Arena, APieceThatSpareMemoryCannotHoldGetsNewMemory)
{
    CArena old(64);
    ASSERT_NE(nullptr, old.TakeBytes(8));
    CArena arena(CHUNK);
    arena.TakeOver(old);
    char* p = arena.TakeBytes(200); // small beside the chunks, more than the spare one holds
    ASSERT_NE(nullptr, p);
    std::memset(p, 1, 200);
}

TEST(Arena, SpareMemoryIsPassedOnAndGivenBack)
{
    CArena old(CHUNK);
    char* pText = old.TakeBytes(8 * CHUNK);
    ASSERT_NE(nullptr, pText);
    CArena between(CHUNK);
    between.TakeOver(old);
    CPool pool(CHUNK);
    pool.TakeOver(between);
    const auto* p = static_cast<char*>(pool.Take(16));
    EXPECT_TRUE(p >= pText && p < pText + 8 * CHUNK);
    pool.FreeSpare(); // what is in use stays
    EXPECT_NE(nullptr, pool.Take(16));
    between.FreeSpare(); // has none any more
}

TEST(Records, OneThatIsGivenBackIsTheNextAndIsZeroed)
{
    struct Record {
        int* pn;
        int nValue;
    };
    CArena arena(CHUNK);
    CRecords<Record> records;
    Record* pFirst = records.Take(arena);
    Record* pSecond = records.Take(arena);
    ASSERT_TRUE(pFirst && pSecond && pFirst != pSecond);
    *pFirst = {&pFirst->nValue, 5};
    *pSecond = {&pSecond->nValue, 6};
    records.Give(pFirst);
    records.Give(pSecond);
    EXPECT_EQ(pSecond, records.Take(arena));
    EXPECT_EQ(pFirst, records.Take(arena));
    for (const Record* p : {pFirst, pSecond}) {
        EXPECT_EQ(nullptr, p->pn);
        EXPECT_EQ(0, p->nValue);
    }
}

TEST(Geometry, HoldsWhatItIsGivenAndReadsZeroBeyond)
{
    for (const std::size_t nMode : MODES) {
        CPool pool(nMode);
        CGeometry geometry;
        EXPECT_EQ(Padded({}), WordsOf(geometry));
        const std::vector<int32_t> words = {7, -2, 3, 4, 5, 6, 70, 8, 9};
        for (const int32_t nCount : {1, 4, 5, 9, 2, 9, 6, 4}) {
            ASSERT_EQ(1, geometry.Set(&pool, words.data(), nCount, 4));
            EXPECT_EQ(Padded({words.begin(), words.begin() + nCount}), WordsOf(geometry));
        }
        ASSERT_EQ(1, geometry.Set(&pool, words.data(), 2, 8)); // more may be written to
        EXPECT_EQ(8, geometry.Count());
        geometry.Words()[7] = 11;
        EXPECT_EQ(Padded({7, -2, 0, 0, 0, 0, 0, 11}), WordsOf(geometry));
        geometry.Drop(&pool);
        EXPECT_EQ(Padded({}), WordsOf(geometry));
    }
}

TEST(Geometry, EachTypeHasItsNumberOfWordsAndListsGoByTheirCount)
{
    EXPECT_EQ(4, ShapeWordsOf(QEL_TYPE_RECT, 99));
    EXPECT_EQ(4, ShapeWordsOf(QEL_TYPE_LINE, 99));
    EXPECT_EQ(6, ShapeWordsOf(QEL_TYPE_ROUNDRECT, 99));
    for (const int32_t nType : {QEL_TYPE_ARC, QEL_TYPE_PIE, QEL_TYPE_CHORD})
        EXPECT_EQ(8, ShapeWordsOf(nType, 99));
    for (const int32_t nType : {QEL_TYPE_POLYLINE, QEL_TYPE_POLYGON}) {
        for (int32_t nPoints = 1; nPoints <= QEL_MAX_POINTS; ++nPoints)
            EXPECT_EQ(1 + 2 * nPoints, ShapeWordsOf(nType, nPoints));
        for (const int32_t nWrong : {INT32_MIN, -1, 0, QEL_MAX_POINTS + 1, INT32_MAX})
            EXPECT_EQ(1, ShapeWordsOf(nType, nWrong)) << nWrong;
    }
}

TEST(Geometry, OfARecordTheWordsUpToTheLastOneThatIsNotZeroAreUsed)
{
    int32_t nWords[QEL_SHAPE_WORDS] = {};
    EXPECT_EQ(4, UsedWords(nWords, QEL_TYPE_RECT));
    nWords[20] = -1;
    EXPECT_EQ(21, UsedWords(nWords, QEL_TYPE_RECT));
    nWords[QEL_SHAPE_WORDS - 1] = 1;
    EXPECT_EQ(QEL_SHAPE_WORDS, UsedWords(nWords, QEL_TYPE_RECT));
    int32_t nPoints[QEL_SHAPE_WORDS] = {QEL_MAX_POINTS};
    EXPECT_EQ(QEL_SHAPE_WORDS, UsedWords(nPoints, QEL_TYPE_POLYGON));
}
