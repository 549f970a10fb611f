// Fuzzes the XML library alone: parses the text, walks the tree through the cursor, writes it,
// parses that again and compares. What stands behind the first zero byte of the input is a program
// of cursor operations, after which the tree is written and read once more.
#include "fuzz/Fuzz.h"
#include "fuzz/TextModel.h"

#include "xml/XmlTree.h"

#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t MAX_OPERATIONS = 300;
constexpr std::size_t MAX_CHECKED_ATTRS = 64; // of an element: finding one by its place walks there

struct DestroyXml {
    void operator()(XmlContext* pXml) const { XmlDestroy(pXml); }
};
using Xml = std::unique_ptr<XmlContext, DestroyXml>;

struct Attr {
    std::string name;
    std::string value;
    bool operator==(const Attr&) const = default;
};

struct Node {
    int nDepth = 0;
    std::string name;
    std::string text; // empty: none
    std::vector<Attr> attrs;
    bool operator==(const Node&) const = default;
};
using Tree = std::vector<Node>; // parents first

std::string OrEmpty(const char* psz)
{
    return psz ? psz : "";
}

std::vector<Attr> ReadAttrs(XmlContext* pXml)
{
    std::vector<Attr> attrs;
    const int32_t nCount = XmlAttrCount(pXml);
    FUZZ_CHECK(nCount >= -1);
    FUZZ_CHECK(!XmlAttrNameAt(pXml, nCount < 0 ? 0 : nCount));
    FUZZ_CHECK(pXml->nLastError == XML_ERR_ARGUMENT);
    if (nCount <= 0) return attrs;
    for (const XmlAttr* p = pXml->pCursor->pAttrs->pHead; p; p = p->pNext) {
        FUZZ_CHECK(*p->pszName && *p->pszValue);                 // never empty
        FUZZ_CHECK(XmlGetAttr(pXml, p->pszName) == p->pszValue); // so no name is there twice
        attrs.push_back({p->pszName, p->pszValue});
    }
    FUZZ_CHECK(attrs.size() == static_cast<std::size_t>(nCount));
    for (std::size_t i = 0; i < attrs.size() && i < MAX_CHECKED_ATTRS; ++i) {
        FUZZ_CHECK(attrs[i].name == XmlAttrNameAt(pXml, static_cast<int32_t>(i)));
        FUZZ_CHECK(attrs[i].value == XmlAttrValueAt(pXml, static_cast<int32_t>(i)));
    }
    return attrs;
}

Node ReadNode(XmlContext* pXml, int nDepth)
{
    const char* pszText = XmlGetText(pXml);
    FUZZ_CHECK(!pszText || *pszText);
    return {nDepth, OrEmpty(XmlGetName(pXml)), OrEmpty(pszText), ReadAttrs(pXml)};
}

// Walks the whole tree through the cursor and checks every link on the way.
Tree ReadTree(XmlContext* pXml)
{
    Tree tree;
    if (XmlGoRoot(pXml)) return tree;
    for (int nDepth = 0;;) {
        FUZZ_CHECK(pXml->nDepth == nDepth);
        FUZZ_CHECK(XmlIsAtRoot(pXml) == (nDepth == 0));
        tree.push_back(ReadNode(pXml, nDepth));
        FUZZ_CHECK(nDepth == 0 || !tree.back().name.empty());
        const XmlNode* pHere = pXml->pCursor;
        const bool bHasChildren = XmlHasChildren(pXml) != 0;
        const bool bWentDown = XmlGoFirstChild(pXml) == 0;
        FUZZ_CHECK(bWentDown == bHasChildren);
        if (bWentDown) {
            FUZZ_CHECK(pXml->pCursor->pParent == pHere && !pXml->pCursor->pPrev);
            ++nDepth;
            continue;
        }
        FUZZ_CHECK(pXml->nLastError == XML_ERR_NO_RELATIVE && pXml->pCursor == pHere);
        while (nDepth && XmlGoNextSibling(pXml)) {
            FUZZ_CHECK(pXml->pCursor->pParent->pLastChild == pXml->pCursor);
            FUZZ_CHECK(XmlGoParent(pXml) == 0);
            --nDepth;
        }
        if (!nDepth) break;
        FUZZ_CHECK(pXml->pCursor->pPrev && pXml->pCursor->pPrev->pNext == pXml->pCursor);
    }
    FUZZ_CHECK(XmlGoParent(pXml) == 0 && XmlIsAtRoot(pXml)); // the parent of the root is the root
    return tree;
}

// Writes the tree; the measured length is the written one.
std::string Write(XmlContext* pXml)
{
    const std::size_t nLen = XmlSerialize(pXml, nullptr);
    std::vector<char> buffer(nLen + 2, '#');
    FUZZ_CHECK(XmlSerialize(pXml, buffer.data()) == nLen);
    FUZZ_CHECK(buffer[nLen] == 0 && buffer[nLen + 1] == '#');
    FUZZ_CHECK(std::strlen(buffer.data()) == nLen); // a zero inside would cut the drawing
    return {buffer.data(), nLen};
}

// Parses a copy of the text that ends exactly where its memory ends.
Xml Parse(const std::string& text, int* pnResult)
{
    Xml pXml(XmlCreate());
    FUZZ_CHECK(pXml);
    const auto buffer = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(buffer.get(), text.c_str(), text.size() + 1);
    *pnResult = XmlParseText(pXml.get(), buffer.get());
    FUZZ_CHECK((*pnResult == 0) == (pXml->nLastError == XML_OK));
    if (!text.empty())
        FUZZ_CHECK(pXml->pszReadPos >= buffer.get() &&
                   pXml->pszReadPos <= buffer.get() + text.size());
    return pXml;
}

Tree Predicted(const Tree& tree)
{
    Tree out = tree;
    for (Node& node : out) {
        node.text = ReadBackText(node.text);
        std::vector<Attr> attrs;
        for (const Attr& attr : node.attrs) {
            const std::string value = ReadBackValue(attr.value);
            if (!value.empty()) attrs.push_back({attr.name, value}); // empty values are dropped
        }
        node.attrs = attrs;
    }
    return out;
}

// The declaration is written as it was read, without escapes: a quote or a reference in it does not
// come back.
bool HasPlainDeclaration(const XmlContext* pXml)
{
    for (const char* psz : {pXml->pszVersion, pXml->pszEncoding, pXml->pszStandalone})
        if (psz && std::strpbrk(psz, "\"&")) return false;
    return true;
}

bool IsTooDeep(const Tree& tree)
{
    for (const Node& node : tree)
        if (node.nDepth > XML_MAX_DEPTH) return true;
    return false;
}

// Writes the tree, reads that, and compares with what is to be expected.
void CheckRoundTrip(XmlContext* pXml)
{
    const Tree tree = ReadTree(pXml);
    const std::string written = Write(pXml);
    if (tree.empty() || tree[0].name.empty() || !HasPlainDeclaration(pXml)) return;
    int nResult = 0;
    const Xml pAgain = Parse(written, &nResult);
    FUZZ_CHECK((nResult == 0) == !IsTooDeep(tree));
    if (nResult) return;
    const Tree again = ReadTree(pAgain.get());
    FUZZ_CHECK(again == Predicted(tree));
    FUZZ_CHECK(OrEmpty(pAgain->pszVersion) == OrEmpty(pXml->pszVersion));
    FUZZ_CHECK(OrEmpty(pAgain->pszEncoding) == OrEmpty(pXml->pszEncoding));
    FUZZ_CHECK(OrEmpty(pAgain->pszStandalone) == OrEmpty(pXml->pszStandalone));
    if (again == tree) FUZZ_CHECK(Write(pAgain.get()) == written);
}

// Names that are names: the writer does not check them.
std::string NameFrom(CInput& input)
{
    static constexpr const char* names[] = {"rect", "a", "qel", "id", "crd", "text"};
    const uint8_t n = input.Byte();
    if (n < 200) return names[n % 6];
    std::string name = "n";
    for (uint32_t nLen = n - 200U; nLen; --nLen) name += static_cast<char>('a' + input.Below(26));
    return name;
}

// One operation on the cursor, with the promise that goes with it.
void Operate(XmlContext* pXml, CInput& input)
{
    const uint32_t nOperation = input.Below(20);
    const bool bAtNode = pXml->pCursor != nullptr;
    const std::string name = nOperation >= 8 ? NameFrom(input) : "";
    const std::string text = nOperation >= 13 ? input.Text() : "";
    const char* pszText = text.c_str();
    int nResult = 0;
    switch (nOperation) {
    case 0:
        nResult = XmlGoRoot(pXml);
        break;
    case 1:
        nResult = XmlGoFirstChild(pXml);
        break;
    case 2:
        nResult = XmlGoLastChild(pXml);
        break;
    case 3:
        nResult = XmlGoNextSibling(pXml);
        break;
    case 4:
        nResult = XmlGoPrevSibling(pXml);
        break;
    case 5:
        nResult = XmlGoLastSibling(pXml);
        FUZZ_CHECK(nResult || !pXml->pCursor->pNext);
        break;
    case 6:
        nResult = XmlGoParent(pXml);
        break;
    case 7:
        nResult = XmlDeleteNode(pXml);
        FUZZ_CHECK((nResult == 0) == bAtNode);
        break;
    case 8:
        nResult = XmlGoChildNamed(pXml, name.c_str());
        FUZZ_CHECK(nResult || name == XmlGetName(pXml));
        break;
    case 9:
        nResult = XmlGoNextNamed(pXml, name.c_str());
        FUZZ_CHECK(nResult || name == XmlGetName(pXml));
        break;
    case 10:
        nResult = XmlGoPrevNamed(pXml, name.c_str());
        FUZZ_CHECK(nResult || name == XmlGetName(pXml));
        break;
    case 11:
        nResult = XmlDeleteAttr(pXml, name.c_str());
        FUZZ_CHECK(nResult || !XmlGetAttr(pXml, name.c_str()));
        break;
    case 12:
        nResult = XmlSetNameZ(pXml, name.c_str());
        FUZZ_CHECK(nResult || name == XmlGetName(pXml));
        break;
    case 13:
    case 14:
        nResult = XmlSetTextZ(pXml, pszText);
        FUZZ_CHECK(nResult || text == OrEmpty(XmlGetText(pXml)));
        break;
    case 15:
    case 16:
        nResult = XmlAddChildZ(pXml, name.c_str(), pszText);
        FUZZ_CHECK(nResult || name == pXml->pCursor->pLastChild->pszName);
        break;
    default:
        nResult = XmlSetAttrZ(pXml, name.c_str(), pszText);
        FUZZ_CHECK((nResult == 0) == (bAtNode && !text.empty()));
        FUZZ_CHECK(nResult || text == XmlGetAttr(pXml, name.c_str()));
        break;
    }
    FUZZ_CHECK(nResult == 0 || pXml->nLastError != XML_OK); // a failure tells why
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    const SplitInput split = SplitAtZero(pData, nSize);
    int nResult = 0;
    const Xml pXml = Parse(split.text, &nResult);
    FUZZ_CHECK(!IsTooDeep(ReadTree(pXml.get())));
    CheckRoundTrip(pXml.get());

    CInput input(reinterpret_cast<const uint8_t*>(split.program.data()), split.program.size());
    if (input.IsAtEnd()) return 0;
    for (std::size_t n = 0; n < MAX_OPERATIONS && !input.IsAtEnd(); ++n) Operate(pXml.get(), input);
    CheckRoundTrip(pXml.get());
    return 0;
}
