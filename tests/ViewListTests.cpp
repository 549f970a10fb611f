// The list of dynamic elements: their order, and the index by host id beside it. The code is
// render/QELViewList.cpp.
#include "render/QELViewList.h"

#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <string>
#include <vector>

namespace {

// An element that notes its draws, with the place that it has in the list under test.
class CNoting final : public CQELViewElm {
public:
    explicit CNoting(int nName) : CQELViewElm(50, 50), m_nName(nName) {}

    int NewInstance(CQELViewElm**) const override { return 0; }
    int GetAttrBlockSize(int*) const override { return 0; }
    int GetAttrBlock(void*) const override { return 0; }
    int SetAttrBlock(const void*) override { return 0; }
    int Draw(HDC, const QelRect& rcQel, uint32_t nFlags) override
    {
        s_notes += (s_notes.empty() ? "" : " ") + std::to_string(m_nName);
        s_rcQel = rcQel;
        s_nFlags = nFlags;
        return m_nName % 2; // a failure does not end the walk
    }
    int Name() const { return m_nName; }

    ViewListNode* m_pPlace = nullptr;
    inline static std::string s_notes;
    inline static RECT s_rcQel{};
    inline static uint32_t s_nFlags = 0;

private:
    int m_nName;
};

class ViewList : public testing::Test {
protected:
    // Elements are named from 0 in the order in which they are made.
    CNoting& Add(uint32_t nKey)
    {
        m_elements.emplace_back(static_cast<int>(m_elements.size()));
        CNoting& elm = m_elements.back();
        EXPECT_EQ(1, m_list.Append(&elm.m_pPlace, &elm, nKey));
        EXPECT_NE(nullptr, elm.m_pPlace);
        return elm;
    }
    int Found(uint32_t nKey) const // its name; -1: none
    {
        const CQELViewElm* pElm = m_list.Find(nKey);
        return pElm ? static_cast<const CNoting*>(pElm)->Name() : -1;
    }
    std::string Drawn()
    {
        CNoting::s_notes.clear();
        m_list.Draw(nullptr, {1, 2, 3, 4}, 5);
        return CNoting::s_notes;
    }
    // The names along the chain, checked in both directions.
    std::string Chain() const
    {
        std::string text;
        const ViewListNode* pPrev = nullptr;
        for (const ViewListNode* p = m_list.First(); p; pPrev = p, p = p->pNext) {
            EXPECT_EQ(pPrev, p->pPrev);
            if (!text.empty()) text += ' ';
            text += std::to_string(static_cast<const CNoting*>(p->pElm)->Name());
        }
        return text;
    }

    std::deque<CNoting> m_elements; // before the list: they outlive it
    CQELViewList m_list;
};

TEST_F(ViewList, IsEmptyAtFirst)
{
    EXPECT_EQ(nullptr, m_list.First());
    EXPECT_EQ(nullptr, m_list.Find(0));
    EXPECT_EQ(nullptr, m_list.Find(0xFFFFFFFF));
    EXPECT_EQ("", Drawn());
}

TEST_F(ViewList, KeepsAndDrawsItsElementsInTheOrderOfRegistration)
{
    for (const uint32_t nKey : {7U, 3U, 0xFFFFFFFFU, 0U, 5U}) Add(nKey);
    EXPECT_EQ("0 1 2 3 4", Chain());
    EXPECT_EQ("0 1 2 3 4", Drawn());
    EXPECT_EQ(1, CNoting::s_rcQel.left);
    EXPECT_EQ(4, CNoting::s_rcQel.bottom);
    EXPECT_EQ(5u, CNoting::s_nFlags);
    EXPECT_EQ(1, Found(3));
    EXPECT_EQ(2, Found(0xFFFFFFFF));
    EXPECT_EQ(3, Found(0));
    EXPECT_EQ(-1, Found(4));
}

TEST_F(ViewList, FindsTheFirstOfEqualKeys)
{
    Add(1), Add(2), Add(2), Add(1), Add(2);
    EXPECT_EQ(0, Found(1));
    EXPECT_EQ(1, Found(2));
    EXPECT_EQ(1, m_list.Remove(&m_elements[1].m_pPlace));
    EXPECT_EQ(2, Found(2));
    EXPECT_EQ(1, m_list.Remove(&m_elements[4].m_pPlace)); // the last of them
    EXPECT_EQ(2, Found(2));
    EXPECT_EQ(1, m_list.Remove(&m_elements[2].m_pPlace));
    EXPECT_EQ(-1, Found(2));
    EXPECT_EQ(0, Found(1));
    EXPECT_EQ("0 3", Chain());
}

TEST_F(ViewList, RefusesAnElementThatHasAPlaceAlready)
{
    CNoting& elm = Add(9);
    Add(10);
    const ViewListNode* const pPlace = elm.m_pPlace;
    EXPECT_EQ(0, m_list.Append(&elm.m_pPlace, &elm, 11));
    EXPECT_EQ(pPlace, elm.m_pPlace);
    EXPECT_EQ("0 1", Chain());
    EXPECT_EQ(0, Found(9));
    EXPECT_EQ(-1, Found(11));
}

TEST_F(ViewList, RemovesFromEveryPlaceOnceOnly)
{
    for (int n = 0; n < 6; ++n) Add(n / 2);
    const struct {
        int nElement;
        const char* pszLeft;
    } rows[] = {{0, "1 2 3 4 5"}, {5, "1 2 3 4"}, {2, "1 3 4"}, {3, "1 4"}, {1, "4"}, {4, ""}};
    for (const auto& row : rows) {
        ViewListNode** ppPlace = &m_elements[row.nElement].m_pPlace;
        EXPECT_EQ(1, m_list.Remove(ppPlace));
        EXPECT_EQ(nullptr, *ppPlace);
        EXPECT_EQ(row.pszLeft, Chain());
        EXPECT_EQ(row.pszLeft, Drawn());
        EXPECT_EQ(0, m_list.Remove(ppPlace));
    }
    EXPECT_EQ(nullptr, m_list.First());
    for (uint32_t nKey = 0; nKey < 3; ++nKey) EXPECT_EQ(-1, Found(nKey));
}

TEST_F(ViewList, AnElementThatComesBackStandsLast)
{
    Add(4), Add(4), Add(6);
    ASSERT_EQ(1, m_list.Remove(&m_elements[0].m_pPlace));
    ASSERT_EQ(1, m_list.Append(&m_elements[0].m_pPlace, &m_elements[0], 4));
    EXPECT_EQ("1 2 0", Chain());
    EXPECT_EQ(1, Found(4));
}

TEST_F(ViewList, AChangedKeyLeavesTheOrder)
{
    for (const uint32_t nKey : {1U, 2U, 3U, 2U}) Add(nKey);
    m_list.SetKey(m_elements[2].m_pPlace, 2); // between the two that have it
    EXPECT_EQ("0 1 2 3", Chain());
    EXPECT_EQ(-1, Found(3));
    EXPECT_EQ(1, Found(2));
    m_list.SetKey(m_elements[1].m_pPlace, 9);
    EXPECT_EQ(2, Found(2)); // it was registered before the fourth
    EXPECT_EQ(1, Found(9));
    m_list.SetKey(m_elements[0].m_pPlace, 2);
    EXPECT_EQ(0, Found(2)); // and this one before all
    EXPECT_EQ(-1, Found(1));
    m_list.SetKey(m_elements[0].m_pPlace, 2); // the same again
    EXPECT_EQ(0, Found(2));
    m_list.SetKey(m_elements[1].m_pPlace, 2);
    ASSERT_EQ(1, m_list.Remove(&m_elements[0].m_pPlace));
    EXPECT_EQ(1, Found(2));
    ASSERT_EQ(1, m_list.Remove(&m_elements[1].m_pPlace));
    EXPECT_EQ(2, Found(2));
    ASSERT_EQ(1, m_list.Remove(&m_elements[2].m_pPlace));
    EXPECT_EQ(3, Found(2));
    EXPECT_EQ("3", Drawn());
}

TEST_F(ViewList, ClearedItIsEmptyAndCanBeFilledAgain)
{
    for (uint32_t n = 0; n < 100; ++n) Add(n);
    m_list.Clear();
    EXPECT_EQ(nullptr, m_list.First());
    EXPECT_EQ(-1, Found(5));
    m_list.Clear();
    for (CNoting& elm : m_elements) elm.m_pPlace = nullptr; // their places are gone
    ASSERT_EQ(1, m_list.Append(&m_elements[8].m_pPlace, &m_elements[8], 5));
    EXPECT_EQ(8, Found(5));
    EXPECT_EQ("8", Chain());
}

// What the list must answer, the slow way.
int FirstOf(const std::vector<std::pair<uint32_t, int>>& entries, uint32_t nKey)
{
    for (const auto& entry : entries)
        if (entry.first == nKey) return entry.second;
    return -1;
}

TEST_F(ViewList, AgreesWithASlowListThroughThousandsOfChanges)
{
    std::vector<std::pair<uint32_t, int>> entries; // key and name, in order
    uint32_t nSeed = 12345;
    const auto random = [&](uint32_t nBelow) {
        nSeed = nSeed * 1664525 + 1013904223;
        return (nSeed >> 8) % nBelow;
    };
    for (int nStep = 0; nStep < 6000; ++nStep) {
        const uint32_t nAction = random(10);
        const uint32_t nKey = random(40) * 0x10001; // many equal ones, some far apart
        if (nAction < 5 || entries.empty()) {
            entries.emplace_back(nKey, Add(nKey).Name());
        } else {
            const uint32_t nAt = random(static_cast<uint32_t>(entries.size()));
            CNoting& elm = m_elements[entries[nAt].second];
            if (nAction < 8) {
                m_list.SetKey(elm.m_pPlace, nKey);
                entries[nAt].first = nKey;
            } else {
                ASSERT_EQ(1, m_list.Remove(&elm.m_pPlace));
                entries.erase(entries.begin() + nAt);
            }
        }
        const uint32_t nAsked = random(41) * 0x10001;
        ASSERT_EQ(FirstOf(entries, nAsked), Found(nAsked)) << "step " << nStep;
    }
    std::string expected;
    for (const auto& entry : entries)
        expected += (expected.empty() ? "" : " ") + std::to_string(entry.second);
    EXPECT_EQ(expected, Chain());
}

// How long so many lookups take.
double SecondsToFind(const CQELViewList& list, uint32_t nKeys, int nTimes)
{
    const auto begin = std::chrono::steady_clock::now();
    std::size_t nFound = 0;
    for (int n = 0; n < nTimes; ++n) nFound += list.Find(n % nKeys) != nullptr;
    EXPECT_EQ(static_cast<std::size_t>(nTimes), nFound);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST_F(ViewList, GrowsToTenThousandAndAnswersAsFastAsAlone)
{
    for (uint32_t n = 0; n < 10; ++n) Add(n);
    const int nTimes = 2000000;
    const double fFew = SecondsToFind(m_list, 10, nTimes);
    for (uint32_t n = 10; n < 10000; ++n) Add(n);
    for (uint32_t n = 0; n < 10000; ++n) ASSERT_EQ(static_cast<int>(n), Found(n));
    EXPECT_EQ(-1, Found(10000));
    // A walk along the chain would take a thousand times as long; ten covers what the processor's
    // caches and a busy machine make of it, and a tenth of a second what the clock does.
    EXPECT_LT(SecondsToFind(m_list, 10000, nTimes), fFew * 10 + 0.1);
    for (uint32_t n = 0; n < 10000; n += 2) ASSERT_EQ(1, m_list.Remove(&m_elements[n].m_pPlace));
    for (uint32_t n = 0; n < 10000; ++n) ASSERT_EQ(n % 2 ? static_cast<int>(n) : -1, Found(n));
}

TEST_F(ViewList, HoldsTenThousandOfOneKey)
{
    for (int n = 0; n < 10000; ++n) Add(77);
    for (int n = 0; n < 9999; ++n) {
        ASSERT_EQ(n, Found(77));
        ASSERT_EQ(1, m_list.Remove(&m_elements[n].m_pPlace));
    }
    EXPECT_EQ(9999, Found(77));
    EXPECT_EQ("9999", Chain());
}

} // namespace
