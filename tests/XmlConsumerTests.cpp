// Elements that are taken one by one while a text is read: the order in which they are heard of,
// what is known then, what stays, and how a reading is stopped. The code is xml/XmlParser.cpp.
#include "xml/XmlTree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

// Writes down what it hears: "<a" and "a>" with the attributes and the text that are known then.
class CListener {
public:
    explicit CListener(std::string text, int nStopAt = -1) : m_nStopAt(nStopAt)
    {
        m_pXml->pConsumer = &m_consumer;
        m_nResult = XmlParseText(m_pXml, text.data());
    }
    ~CListener() { XmlDestroy(m_pXml); }
    CListener(const CListener&) = delete;
    CListener& operator=(const CListener&) = delete;
    [[nodiscard]] XmlContext* Context() const { return m_pXml; }
    [[nodiscard]] int Result() const { return m_nResult; }
    [[nodiscard]] const std::string& Heard() const { return m_heard; }

private:
    bool Hear(const std::string& what)
    {
        m_heard += (m_heard.empty() ? "" : " ") + what;
        return --m_nStopAt != 0;
    }
    static bool OnOpened(void* pUser)
    {
        auto* pThis = static_cast<CListener*>(pUser);
        return pThis->Hear("<" + pThis->Seen());
    }
    static bool OnClosed(void* pUser)
    {
        auto* pThis = static_cast<CListener*>(pUser);
        return pThis->Hear(pThis->Seen() + ">");
    }
    std::string Seen() const
    {
        const XmlNode* pNode = m_pXml->pCursor;
        std::string seen = pNode->pszName;
        for (const XmlAttr* p = pNode->pAttrs ? pNode->pAttrs->pHead : nullptr; p; p = p->pNext)
            seen += std::string("[") + p->pszName + "=" + p->pszValue + "]";
        if (pNode->pszText) seen += std::string("{") + pNode->pszText + "}";
        EXPECT_EQ(nullptr, pNode->pFirstChild); // children are gone by then
        return seen;
    }

    XmlContext* m_pXml = XmlCreate();
    XmlConsumer m_consumer{OnOpened, OnClosed, this};
    int m_nStopAt;
    int m_nResult;
    std::string m_heard;
};

void ExpectHeard(const std::string& expected, const std::string& text)
{
    const CListener listener(text);
    EXPECT_EQ(0, listener.Result());
    EXPECT_EQ(expected, listener.Heard());
}

} // namespace

TEST(Consumer, HearsOfEachElementBeforeAndAfterItsChildren)
{
    ExpectHeard("<a[x=1] <b[y=2] b[y=2]> <c <d d> c> a[x=1]{two}>",
                "<a x='1'><b y='2'/>one<c><d/></c>two</a>");
}

TEST(Consumer, OnlyTheRootStays)
{
    const CListener listener("<a x='1'><b/><c>t</c></a>");
    const XmlNode* pRoot = listener.Context()->pRoot;
    EXPECT_STREQ("a", pRoot->pszName);
    EXPECT_EQ(nullptr, pRoot->pFirstChild);
    EXPECT_EQ(nullptr, pRoot->pLastChild);
    EXPECT_EQ(pRoot, listener.Context()->pCursor);
    EXPECT_EQ(0, listener.Context()->nDepth);
}

TEST(Consumer, WhatFollowsTheRootIsHeardOfBelowIt)
{
    ExpectHeard("<a a> <b b> <c <d d> c>", "<a/><b/><c><d/></c>");
}

TEST(Consumer, AnElementHasNothingOfTheOneWhosePlaceItTakes)
{
    ExpectHeard("<a <b[x=1][y=2] b[x=1][y=2]{t}> <b b> <c[z=3] c[z=3]> a>",
                "<a><b x='1' y='2'>t</b><b/><c z='3'/></a>");
}

TEST(Consumer, ManyAttributesAreGivenBackAndFoundAgain)
{
    std::string attrs;
    for (int n = 0; n < 100; ++n) attrs += " a" + std::to_string(n) + "='1'";
    std::string text = "<r>";
    for (int n = 0; n < 50; ++n) text += "<e" + attrs + " a7='2'/>";
    std::string seen;
    for (int n = 0; n < 100; ++n) seen += "[a" + std::to_string(n) + (n == 7 ? "=2]" : "=1]");
    std::string expected = "<r";
    for (int n = 0; n < 50; ++n) expected += " <e" + seen + " e" + seen + ">";
    ExpectHeard(expected + " r>", text + "</r>");
}

TEST(Consumer, StopsTheReadingAtAnyCall)
{
    const std::string text = "<a><b/><c>t</c></a>";
    const std::string heard[] = {"<a", " <b", " b>", " <c", " c{t}>", " a>"};
    std::string expected;
    for (int n = 1; n <= 6; ++n) {
        expected += heard[n - 1];
        const CListener listener(text, n);
        EXPECT_EQ(1, listener.Result()) << n;
        EXPECT_EQ(XML_ERR_MEMORY, listener.Context()->nLastError) << n;
        EXPECT_EQ(expected, listener.Heard()) << n;
    }
}

TEST(Consumer, HearsOfWhatStandsBeforeAnError)
{
    const CListener listener("<a><b/><c></d>");
    EXPECT_EQ(1, listener.Result());
    EXPECT_EQ(XML_ERR_MISMATCH, listener.Context()->nLastError);
    EXPECT_EQ("<a <b b> <c", listener.Heard());
}

TEST(Consumer, AskingForWhatIsNotThereIsNoFaultOfTheText)
{
    std::string text = "<a><b/></a>";
    std::string cut = "<a>";
    XmlContext* pXml = XmlCreate();
    const auto ask = [](void* pUser) {
        return XmlGetAttr(static_cast<XmlContext*>(pUser), "none") == nullptr;
    };
    const XmlConsumer consumer{ask, ask, pXml};
    pXml->pConsumer = &consumer;
    EXPECT_EQ(0, XmlParseText(pXml, text.data()));
    EXPECT_EQ(1, XmlParseText(pXml, cut.data()));
    EXPECT_EQ(XML_ERR_END_CONTENT, pXml->nLastError); // not that of the question
    XmlDestroy(pXml);
}
