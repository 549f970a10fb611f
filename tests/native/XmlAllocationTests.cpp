// The XML tree without memory: each request of each edit and of a parse fails in turn.
#include "tests/native/AllocationFaults.h"
#include "xml/XmlTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using XmlPtr = std::unique_ptr<XmlContext, int (*)(XmlContext*)>;

constexpr int MOST_REQUESTS = 100;

XmlPtr Parsed(std::string text)
{
    XmlPtr xml(XmlCreate(), XmlDestroy);
    EXPECT_EQ(0, XmlParseText(xml.get(), text.data()));
    return xml;
}

std::string Text(XmlContext* pXml)
{
    std::string text(XmlSerialize(pXml, nullptr), 0);
    XmlSerialize(pXml, text.data());
    return text;
}

struct Edit {
    const char* pszWhat;
    int (*pfnDo)(XmlContext* pXml);
    const char* pszDone; // the tree after it
    int nRequests;       // pieces of memory that it takes
};

constexpr char BEFORE[] = "<a x=\"1\">t<b/>\r\n</a>\r\n";

const Edit g_edits[] = {
    {"a child with its name and text", [](XmlContext* p) { return XmlAddChildZ(p, "c", "u"); },
     "<a x=\"1\">t<b/>\r\n<c>u</c>\r\n</a>\r\n", 3},
    {"a value in the place of another", [](XmlContext* p) { return XmlSetAttrZ(p, "x", "2"); },
     "<a x=\"2\">t<b/>\r\n</a>\r\n", 1},
    {"an attribute with its name and value", [](XmlContext* p) { return XmlSetAttrZ(p, "y", "2"); },
     "<a x=\"1\" y=\"2\">t<b/>\r\n</a>\r\n", 3},
    {"a name", [](XmlContext* p) { return XmlSetNameZ(p, "n"); }, "<n x=\"1\">t<b/>\r\n</n>\r\n",
     1},
    {"the first attribute, with the list",
     [](XmlContext* p) {
         XmlGoFirstChild(p);
         return XmlSetAttrZ(p, "y", "2");
     },
     "<a x=\"1\">t<b y=\"2\"/>\r\n</a>\r\n", 4},
};

} // namespace

TEST(XmlAllocation, AnEditThatFailsLeavesTheTreeAsItWas)
{
    for (const Edit& edit : g_edits) {
        SCOPED_TRACE(edit.pszWhat);
        int nRequest = 1;
        for (bool bFailed = true; bFailed && nRequest < MOST_REQUESTS; ++nRequest) {
            const XmlPtr xml = Parsed(BEFORE);
            int nResult = -1;
            {
                const alloc::CFault fault(nRequest);
                nResult = edit.pfnDo(xml.get());
                bFailed = alloc::Count() >= nRequest;
            }
            EXPECT_EQ(bFailed ? 1 : 0, nResult) << "request " << nRequest;
            const int nError = xml->nLastError;
            EXPECT_EQ(bFailed, nError == XML_ERR_ARGUMENT || nError == XML_ERR_MEMORY);
            EXPECT_EQ(std::string("<?xml ?>\r\n") + (bFailed ? BEFORE : edit.pszDone),
                      Text(xml.get()));
        }
        EXPECT_EQ(edit.nRequests, nRequest - 2); // the last one was not reached any more
    }
}

TEST(XmlAllocation, AnOldTextIsGoneWhenTheNewOneCannotBeKept)
{
    const XmlPtr xml = Parsed(BEFORE);
    {
        const alloc::CFault fault(1);
        EXPECT_EQ(1, XmlSetTextZ(xml.get(), "u"));
    }
    EXPECT_EQ(XML_ERR_ARGUMENT, xml->nLastError);
    EXPECT_EQ("<?xml ?>\r\n<a x=\"1\">\r\n<b/>\r\n</a>\r\n", Text(xml.get()));
}

TEST(XmlAllocation, ANodeThatCannotBeAllocatedIsError2AndItsStringsAreError1)
{
    int nNodes = 0;
    int nStrings = 0;
    for (int nRequest = 1; nRequest <= 3; ++nRequest) {
        const XmlPtr xml = Parsed(BEFORE);
        const alloc::CFault fault(nRequest);
        EXPECT_EQ(1, XmlAddChildZ(xml.get(), "c", "u"));
        nNodes += xml->nLastError == XML_ERR_MEMORY;
        nStrings += xml->nLastError == XML_ERR_ARGUMENT;
    }
    EXPECT_EQ(1, nNodes);
    EXPECT_EQ(2, nStrings);
}

TEST(XmlAllocation, AParseThatFailsSaysSoAtEachRequest)
{
    constexpr char TEXT[] = "<?xml version='1.0' encoding='e' standalone='s'?>"
                            "<a x='1' x='2'>t<b y='2'>u<c/></b></a>";
    int nRequest = 1;
    for (bool bFailed = true; bFailed && nRequest < MOST_REQUESTS; ++nRequest) {
        const XmlPtr xml(XmlCreate(), XmlDestroy);
        std::string text = TEXT;
        const alloc::CFault fault(nRequest);
        const int nResult = XmlParseText(xml.get(), text.data());
        bFailed = alloc::Count() >= nRequest;
        EXPECT_EQ(bFailed ? 1 : 0, nResult) << "request " << nRequest;
        EXPECT_EQ(bFailed, xml->nLastError == XML_ERR_MEMORY) << xml->nLastError;
    }
    EXPECT_GT(nRequest, 10);
}

// Without memory for an index a long list is searched from its head, and nothing of it is lost.
TEST(XmlAllocation, ManyAttributesAreKeptWithoutAnIndex)
{
    constexpr int COUNT = 200;
    const XmlPtr whole = Parsed("<a/>");
    for (int n = 0; n < COUNT; ++n)
        XmlSetAttrZ(whole.get(), ("n" + std::to_string(n)).c_str(), "1");
    const std::string expected = Text(whole.get());
    int nLost = 0;
    for (int nAttr = 30; nAttr < COUNT; ++nAttr) {
        // Of an attribute's requests the fourth is the index, when there is to be a larger one.
        const XmlPtr xml = Parsed("<a/>");
        for (int n = 0; n < COUNT; ++n) {
            if (n == nAttr) alloc::Fail(4);
            EXPECT_EQ(0, XmlSetAttrZ(xml.get(), ("n" + std::to_string(n)).c_str(), "1"));
            if (n == nAttr) {
                nLost += alloc::Count() >= 4;
                alloc::Off();
            }
        }
        EXPECT_EQ(expected, Text(xml.get()));
        EXPECT_STREQ("1", XmlGetAttr(xml.get(), "n199"));
    }
    EXPECT_GT(nLost, 1); // the first index, and the larger one
}
