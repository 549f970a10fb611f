// Who bears which identifier: the index by it and by element, in both modes and through edits. The
// code is engine/Identifiers.*.
#include "engine/Identifiers.h"

#include "engine/QELEngine.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

constexpr const char* DRAWING = "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                                "<qel id=\"plant\" width=\"100\" height=\"80\">\r\n"
                                "<g id=\"pump\"><rect id=\"lamp\" crd=\"10 20 40 60\"/>"
                                "<rect crd=\"1 2 4 6\"/></g>\r\n"
                                "<meter id=\"dial\"><rect id=\"lamp\" crd=\"1 2 3 4\"/></meter>\r\n"
                                "<line id=\"lamp\" crd=\"1 2 3 4\"/>\r\n"
                                "<line id=\"Lamp\" crd=\"1 2 3 4\"/>\r\n"
                                "</qel>\r\n";

class Identifiers : public ::testing::TestWithParam<bool> {
protected:
    void Open(const std::string& bytes = DRAWING)
    {
        const std::string path = m_folder.Path("in.qel");
        ASSERT_TRUE(WriteBytes(path, bytes));
        ASSERT_EQ(1, m_engine.Open(path.c_str()));
    }

    // The elements that bear an identifier, by the numbers that they have in a walk of the picture.
    std::vector<int> Bearers(const char* pszId)
    {
        std::vector<int> all;
        const CIdentifiers* pIds = m_engine.Identifiers();
        if (!pIds) return {-1};
        for (const IdBearer* p = pIds->Find(pszId); p; p = pIds->Next(p)) {
            EXPECT_STREQ(pszId, p->pszId);
            EXPECT_EQ(p->pDoc != nullptr, !GetParam());
            all.push_back(NumberOf(p->pView));
        }
        return all;
    }

    int NumberOf(const CQELViewElm* pView)
    {
        CQELViewElm* pRoot = m_engine.View().Root();
        int n = 0;
        for (CQELViewElm* pElm = pRoot; pElm && pElm != pView; pElm = pElm->NextInTree(pRoot)) ++n;
        return n;
    }

    std::string AllIds()
    {
        std::string all;
        const CIdentifiers* pIds = m_engine.Identifiers();
        for (uint32_t n = 0; n < pIds->CountIds(); ++n)
            all += std::string(pIds->FirstOf(n)->pszId) + ":" +
                   std::to_string(pIds->FirstOf(n)->pView->Type()) + " ";
        EXPECT_EQ(nullptr, pIds->FirstOf(pIds->CountIds()));
        return all;
    }

    CTestFolder m_folder;
    CQELEngine m_engine{GetParam()};
};

using Ints = std::vector<int>;

TEST_P(Identifiers, FindEveryElementThatBearsOneInDocumentOrder)
{
    Open();
    EXPECT_EQ(Ints({2, 5, 6}), Bearers("lamp"));
    EXPECT_EQ(Ints({1}), Bearers("pump"));
    EXPECT_EQ(Ints({4}), Bearers("dial"));
    EXPECT_EQ(Ints({0}), Bearers("plant"));
}

TEST_P(Identifiers, CompareByteByByte)
{
    Open();
    EXPECT_EQ(Ints({7}), Bearers("Lamp"));
    EXPECT_EQ(Ints(), Bearers("lam"));
    EXPECT_EQ(Ints(), Bearers("lamp "));
}

TEST_P(Identifiers, FindNothingForNoneAndAnEmptyOne)
{
    Open();
    EXPECT_EQ(Ints(), Bearers(""));
    EXPECT_EQ(nullptr, m_engine.Identifiers()->Find(nullptr));
    m_engine.Close();
    EXPECT_EQ(Ints(), Bearers("lamp"));
    EXPECT_EQ(0U, m_engine.Identifiers()->CountIds());
}

// The two have the same sum by which identifiers are found.
TEST_P(Identifiers, AreToldApartByAllOfTheirBytes)
{
    const auto sumOf = [](const char* psz) {
        uint32_t nSum = 2166136261U;
        for (; *psz; ++psz) nSum = (nSum ^ static_cast<unsigned char>(*psz)) * 16777619U;
        return nSum;
    };
    ASSERT_EQ(sumOf("costarring"), sumOf("liquid"));
    Open("<qel><line id='liquid' crd='1 2 3 4'/><line id='costarring' crd='1 2 3 4'/></qel>");
    EXPECT_EQ(Ints({1}), Bearers("liquid"));
    EXPECT_EQ(Ints({2}), Bearers("costarring"));
    Open("<qel><line id='costarring' crd='1 2 3 4'/></qel>");
    EXPECT_EQ(Ints(), Bearers("liquid"));
}

TEST_P(Identifiers, AreCountedOnceEachInDocumentOrder)
{
    Open();
    EXPECT_EQ("plant:0 pump:15 lamp:2 dial:21 Lamp:9 ", AllIds());
}

TEST_P(Identifiers, TellWhatAnElementBears)
{
    Open();
    const CIdentifiers* pIds = m_engine.Identifiers();
    CQELViewElm* pRoot = m_engine.View().Root();
    std::string all;
    for (CQELViewElm* pElm = pRoot; pElm; pElm = pElm->NextInTree(pRoot)) {
        const IdBearer* pBearer = pIds->BearerOf(pElm);
        all += pBearer ? std::string(pBearer->pszId) + " " : "- ";
        if (!pBearer) continue;
        EXPECT_EQ(pBearer, pIds->BearerAt(pIds->NumberOf(pBearer)));
    }
    EXPECT_EQ("plant pump lamp - dial lamp lamp Lamp ", all);
}

TEST_P(Identifiers, OfALargeDrawingAreAllFound)
{
    constexpr int COUNT = 3000;
    std::string body;
    std::vector<std::vector<int>> expected(500);
    std::mt19937 random(7);
    for (int n = 0; n < COUNT; ++n) {
        const auto nId = static_cast<int>(random() % 500);
        expected[static_cast<std::size_t>(nId)].push_back(n + 1);
        body += "<line id=\"sensor " + std::to_string(nId) + "\" crd=\"1 2 3 4\"/>";
    }
    Open("<qel>" + body + "</qel>");
    EXPECT_EQ(static_cast<uint32_t>(COUNT), m_engine.Identifiers()->CountBearers());
    for (std::size_t n = 0; n < expected.size(); ++n)
        ASSERT_EQ(expected[n], Bearers(("sensor " + std::to_string(n)).c_str())) << n;
}

// They differ in one byte alone, and one goes on where the other ends.
TEST_P(Identifiers, OfEveryLengthAreToldApart)
{
    std::string body;
    for (std::size_t n = 1; n < 100; ++n)
        for (const char* pszEnd : {"a", "b"})
            body += "<line id=\"" + std::string(n, 'x') + pszEnd + "\" crd=\"1 2 3 4\"/>";
    Open("<qel>" + body + "</qel>");
    int nNumber = 0;
    for (std::size_t n = 1; n < 100; ++n)
        for (const char* pszEnd : {"a", "b"})
            EXPECT_EQ(Ints({++nNumber}), Bearers((std::string(n, 'x') + pszEnd).c_str())) << n;
    EXPECT_EQ(Ints(), Bearers(std::string(50, 'x').c_str()));
}

INSTANTIATE_TEST_SUITE_P(BothModes, Identifiers, ::testing::Bool());

// ---- edits

class IdentifiersOfEdits : public Identifiers {
protected:
    CQELDocElm* Elm(const char* pszId)
    {
        const IdBearer* pBearer = m_engine.Identifiers()->Find(pszId);
        return pBearer ? pBearer->pDoc : nullptr;
    }
    CQELDocElm* Root() { return m_engine.Document().GetRoot(); }
};

TEST_P(IdentifiersOfEdits, FollowASetIdentifier)
{
    Open();
    ASSERT_EQ(1, m_engine.SetElemId(Elm("Lamp"), "other"));
    EXPECT_EQ(Ints({7}), Bearers("other"));
    EXPECT_EQ(Ints(), Bearers("Lamp"));
    ASSERT_EQ(1, m_engine.SetElemId(Elm("pump"), ""));
    EXPECT_EQ("plant:0 lamp:2 dial:21 other:9 ", AllIds());
}

TEST_P(IdentifiersOfEdits, FollowWhatIsMadeCopiedAndDeleted)
{
    Open();
    CQELDocElm* pNew = m_engine.CreateElem(QEL_TYPE_RECT, Elm("pump"), nullptr);
    ASSERT_NE(nullptr, pNew);
    ASSERT_EQ(1, m_engine.SetElemId(pNew, "lamp"));
    EXPECT_EQ(Ints({2, 4, 6, 7}), Bearers("lamp"));
    ASSERT_NE(nullptr, m_engine.CopyElem(Elm("pump")));
    EXPECT_EQ(Ints({5}), Bearers("pump_1"));
    EXPECT_EQ(Ints({6, 8}), Bearers("lamp_1"));
    ASSERT_EQ(1, m_engine.DeleteElem(Elm("pump")));
    EXPECT_EQ(Ints({6, 7}), Bearers("lamp"));
    EXPECT_EQ(Ints({1}), Bearers("pump_1"));
}

TEST_P(IdentifiersOfEdits, LeaveOutWhatIsOutOfThePicture)
{
    Open();
    CQELDocElm* pPump = Elm("pump");
    ASSERT_EQ(1, m_engine.MoveElem(pPump, nullptr, nullptr));
    EXPECT_EQ(Ints(), Bearers("pump"));
    EXPECT_EQ(Ints({2, 3}), Bearers("lamp"));
    ASSERT_EQ(1, m_engine.MoveElem(pPump, Root(), Elm("Lamp")));
    EXPECT_EQ(Ints({5}), Bearers("pump"));
    EXPECT_EQ(Ints({2, 3, 6}), Bearers("lamp"));
}

TEST_P(IdentifiersOfEdits, AreThoseOfANewRoot)
{
    Open();
    EXPECT_EQ(Ints({1}), Bearers("pump"));
    CQELDocElm* pRoot = m_engine.CreateElem(QEL_TYPE_ROOT, nullptr, nullptr);
    ASSERT_NE(nullptr, pRoot);
    EXPECT_EQ("", AllIds());
    ASSERT_EQ(1, m_engine.SetElemId(pRoot, "again"));
    EXPECT_EQ(Ints({0}), Bearers("again"));
}

INSTANTIATE_TEST_SUITE_P(WithADocument, IdentifiersOfEdits, ::testing::Values(false));

} // namespace
