// Handles: a number is looked up by its kind, dies with its object and does not come back. The code
// is base/Handles.*.
#include "base/Handles.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <memory>
#include <set>
#include <vector>

namespace {

constexpr HandleKind g_kinds[] = {HandleKind::Engine, HandleKind::Record, HandleKind::Gradient};

// An object that has nothing but its handle, as document elements have it.
struct CNamed : CElementHandle {
    static CNamed* Find(uintptr_t nValue) { return static_cast<CNamed*>(FindHandle(nValue)); }
};

} // namespace

TEST(Handles, FindTheirObjectByNumberAndKind)
{
    for (const HandleKind nKind : g_kinds) {
        int nObject = 0;
        CHandleEntry entry(nKind, &nObject);
        const uintptr_t nValue = entry.Value();
        ASSERT_NE(0u, nValue);
        EXPECT_EQ(nValue, entry.Value()); // the same number each time
        for (const HandleKind nOther : g_kinds)
            EXPECT_EQ(nOther == nKind ? &nObject : nullptr, CHandleEntry::Find(nOther, nValue));
    }
}

TEST(Handles, RefuseNullAndNumbersThatWereNeverGivenOut)
{
    int nObject = 0;
    CHandleEntry entry(HandleKind::Engine, &nObject);
    const uintptr_t nValue = entry.Value();
    for (const HandleKind nKind : g_kinds) {
        for (const uintptr_t nNumber :
             {uintptr_t{0}, ~uintptr_t{0}, reinterpret_cast<uintptr_t>(&nObject),
              reinterpret_cast<uintptr_t>(&entry), ~uintptr_t{0} / 2, nValue + 1, nValue - 1,
              nValue ^ (uintptr_t{1} << (sizeof(uintptr_t) * 8 - 1))})
            EXPECT_EQ(nullptr, CHandleEntry::Find(nKind, nNumber)) << nNumber;
    }
    EXPECT_EQ(&nObject, CHandleEntry::Find(HandleKind::Engine, nValue));
}

TEST(Handles, DieWithTheirObjectAndAreNotGivenOutAgain)
{
    std::set<uintptr_t> seen;
    for (int i = 0; i < 20000; ++i) {
        int nObject = 0;
        uintptr_t nValue = 0;
        {
            CHandleEntry entry(g_kinds[i % 3], &nObject);
            nValue = entry.Value();
            ASSERT_TRUE(seen.insert(nValue).second) << "number " << nValue << " again at " << i;
        }
        ASSERT_EQ(nullptr, CHandleEntry::Find(g_kinds[i % 3], nValue));
    }
    for (const uintptr_t nValue : seen)
        for (const HandleKind nKind : g_kinds)
            ASSERT_EQ(nullptr, CHandleEntry::Find(nKind, nValue));
}

TEST(Handles, OfManyObjectsAreAllFoundWhicheverOfThemGo)
{
    constexpr std::size_t COUNT = 5000;
    std::array<int, COUNT> objects{};
    std::vector<std::unique_ptr<CHandleEntry>> entries;
    std::vector<uintptr_t> numbers;
    for (int& nObject : objects) {
        entries.push_back(std::make_unique<CHandleEntry>(HandleKind::Record, &nObject));
        numbers.push_back(entries.back()->Value());
    }
    for (std::size_t i = 0; i < COUNT; ++i)
        if (i % 3 != 1) entries[i].reset();
    for (std::size_t i = 0; i < COUNT; ++i)
        ASSERT_EQ(i % 3 == 1 ? &objects[i] : nullptr,
                  CHandleEntry::Find(HandleKind::Record, numbers[i]))
            << i;
}

TEST(Handles, AreFoundAtTheSameCostHoweverManyAreLive)
{
    // 200,000 live handles and a million look-ups: a walk over the live ones would take hours.
    constexpr int COUNT = 200000;
    int nObject = 0;
    std::deque<CHandleEntry> entries;
    std::vector<uintptr_t> numbers;
    for (int i = 0; i < COUNT; ++i)
        numbers.push_back(entries.emplace_back(HandleKind::Record, &nObject).Value());
    int nFound = 0;
    for (int nRound = 0; nRound < 5; ++nRound)
        for (const uintptr_t nValue : numbers)
            nFound += CHandleEntry::Find(HandleKind::Record, nValue) == &nObject;
    EXPECT_EQ(5 * COUNT, nFound);
    entries.clear();
    for (const uintptr_t nValue : numbers)
        ASSERT_EQ(nullptr, CHandleEntry::Find(HandleKind::Record, nValue));
}

TEST(Handles, OfElementsAreFoundAmongElementsOnly)
{
    constexpr std::size_t COUNT = 5000;
    std::deque<CNamed> elements(COUNT);
    int nObject = 0;
    CHandleEntry entry(HandleKind::Record, &nObject);
    std::set<uintptr_t> numbers = {entry.Value()};
    for (CNamed& named : elements) {
        const uintptr_t nValue = named.HandleValue();
        EXPECT_EQ(nValue, named.HandleValue());
        ASSERT_TRUE(numbers.insert(nValue).second);
        ASSERT_EQ(&named, CNamed::Find(nValue));
        for (const HandleKind nKind : g_kinds)
            ASSERT_EQ(nullptr, CHandleEntry::Find(nKind, nValue));
    }
    EXPECT_EQ(nullptr, CNamed::Find(entry.Value()));
    EXPECT_EQ(nullptr, CNamed::Find(0));
    elements.clear();
    for (const uintptr_t nValue : numbers) ASSERT_EQ(nullptr, CNamed::Find(nValue));
}

TEST(Handles, ThatNoHostSeesDoNotUseNumbersUp)
{
    int nObject = 0;
    std::set<uintptr_t> seen;
    for (int i = 0; i < 1000; ++i) {
        CHandleEntry entry(HandleKind::Gradient, &nObject);
        const uintptr_t nValue = entry.PrivateValue();
        ASSERT_NE(0u, nValue);
        ASSERT_EQ(&nObject, CHandleEntry::Find(HandleKind::Gradient, nValue));
        seen.insert(nValue);
    }
    EXPECT_GT(10u, seen.size());
}

TEST(Handles, OfAHiddenObjectStayTheSame)
{
    int nObject = 0;
    CHandleEntry entry(HandleKind::Gradient, &nObject);
    const uintptr_t nValue = entry.PrivateValue();
    EXPECT_EQ(nValue, entry.PrivateValue());
    EXPECT_EQ(nValue, entry.Value()); // and once it is given to a host
    EXPECT_EQ(nValue, entry.PrivateValue());
    EXPECT_EQ(&nObject, CHandleEntry::Find(HandleKind::Gradient, nValue));
}

// Only so many free numbers are kept; all others are used up.
TEST(Handles, OfManyHiddenObjectsAtOnceAreAllFound)
{
    constexpr int COUNT = 1000;
    int nObject = 0;
    std::set<uintptr_t> last;
    for (int nRound = 0; nRound < 3; ++nRound) {
        std::vector<std::unique_ptr<CHandleEntry>> entries;
        std::set<uintptr_t> seen;
        for (int i = 0; i < COUNT; ++i) {
            entries.push_back(std::make_unique<CHandleEntry>(HandleKind::Gradient, &nObject));
            seen.insert(entries.back()->PrivateValue());
        }
        EXPECT_EQ(0u, seen.count(0));
        EXPECT_EQ(static_cast<std::size_t>(COUNT), seen.size());
        for (const uintptr_t nValue : seen)
            ASSERT_EQ(&nObject, CHandleEntry::Find(HandleKind::Gradient, nValue));
        for (const uintptr_t nValue : last) {
            if (seen.count(nValue)) continue;
            ASSERT_EQ(nullptr, CHandleEntry::Find(HandleKind::Gradient, nValue));
        }
        last = seen;
    }
}

TEST(Handles, ThatTwoHoldersKnowAreNotUsedAgain)
{
    int nObject = 0;
    uintptr_t nShared = 0;
    {
        CHandleEntry entry(HandleKind::Gradient, &nObject);
        nShared = entry.PrivateValue();
        entry.Share();
    }
    EXPECT_EQ(nullptr, CHandleEntry::Find(HandleKind::Gradient, nShared));
    for (int i = 0; i < 1000; ++i) {
        CHandleEntry hidden(HandleKind::Gradient, &nObject);
        CHandleEntry seen(HandleKind::Gradient, &nObject);
        ASSERT_NE(nShared, hidden.PrivateValue());
        ASSERT_NE(nShared, seen.Value());
    }
}

TEST(Handles, GivenToAHostAreNeverThoseOfHiddenObjects)
{
    // A hidden number that is free for the next hidden object must not come out to a host.
    int nObject = 0;
    std::set<uintptr_t> hidden;
    for (int i = 0; i < 100; ++i) {
        CHandleEntry entry(HandleKind::Gradient, &nObject);
        hidden.insert(entry.PrivateValue());
    }
    for (int i = 0; i < 1000; ++i) {
        CHandleEntry entry(g_kinds[i % 3], &nObject);
        ASSERT_EQ(0u, hidden.count(entry.Value()));
    }
}

TEST(Handles, CrossBetweenNumbersAndPointerTypesUnchanged)
{
    struct Opaque;
    EXPECT_EQ(uintptr_t{0x1234}, ToNumber(ToHandle<Opaque*>(0x1234)));
    EXPECT_EQ(nullptr, ToHandle<Opaque*>(0));
}
