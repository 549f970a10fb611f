// The XML tree of a drawing and the cursor that walks it: one context holds the tree, the node
// under the cursor and the last error. The parser (XmlParser.cpp) and the writer (XmlWriter.cpp)
// are the other two halves of this library.
//
// Every operation takes the context first. Where it returns int and says nothing else, 0 is success
// and 1 failure, and the context's error code tells why; pointers are null on failure. Names are
// compared byte by byte; no character set is interpreted.
#pragma once

#include "base/Arena.h"

#include <cstddef>
#include <cstdint>

enum XmlError : int32_t {
    XML_OK = 0,
    XML_ERR_ARGUMENT = 1, // bad or missing argument, no cursor or list, string not allocated, index
    XML_ERR_MEMORY = 2,   // node, list or buffer not allocated; elements nested too deep
    XML_ERR_OPEN = 3,     // the file to load cannot be opened
    XML_ERR_EMPTY = 5,    // the text to parse is empty
    XML_ERR_NO_RELATIVE = 9,  // no child, or no sibling in that direction
    XML_ERR_NO_ELEMENT = 10,  // no element of that name
    XML_ERR_NO_PARENT = 11,   // nothing under the cursor after the move to the parent
    XML_ERR_NO_ATTR = 12,     // no attribute of that name
    XML_ERR_NO_DECL = 13,     // an XML declaration was expected
    XML_ERR_ATTR = 14,        // attribute without name, "=" or value
    XML_ERR_NO_MARKUP = 15,   // input ends where an element was expected
    XML_ERR_START_TAG = 16,   // "<" expected, or an attribute in a start tag cannot be read
    XML_ERR_END_NAME = 17,    // input ends right after an element name
    XML_ERR_END_TAG = 18,     // input ends inside a start tag
    XML_ERR_SLASH = 19,       // "/" in a tag not followed by ">"
    XML_ERR_MISMATCH = 20,    // end tag does not match the open element
    XML_ERR_END_CONTENT = 21, // input ends inside an element's content
    XML_ERR_NO_COMMENT = 22,  // a comment was expected
    XML_ERR_UNCLOSED = 23,    // markup not closed by ">"
    XML_ERR_CREATE = 25       // the file to save cannot be created, written or put in place
};

// How deep elements of a parsed text may nest below the root, so that what is built from the tree
// may be walked by recursion. The calls of this interface nest to any depth.
constexpr int32_t XML_MAX_DEPTH = 512;

// Nodes, attributes and their strings lie in the context's arena or, those of a file, in the file's
// own text: what is replaced or deleted is given back with the context. The records of an element
// that a consumer has taken serve the next one.
struct XmlAttr {
    char* pszName;
    char* pszValue; // never empty
    XmlAttr* pNext; // in the order in which they were first set
    XmlAttr* pNextInBucket;
    uint32_t nKey;           // XmlNameKey of the name
    std::size_t nNameOffset; // where it stands in the parsed text; 0 when it was set by a call
    std::size_t nValueOffset;
};

struct XmlAttrList {
    XmlAttr* pHead;
    XmlAttr* pTail;
    int32_t nCount;
    uint32_t nSeen;      // a bit for the key of each name that was ever set
    XmlAttr** ppBuckets; // null while the list is short enough to be searched from the head
    std::size_t nBuckets;
};

struct XmlNode {
    char* pszName;       // null only for a root that is not named yet
    char* pszText;       // null when there is none
    XmlAttrList* pAttrs; // null until the first attribute is set
    XmlNode* pParent;
    XmlNode* pPrev;
    XmlNode* pNext;
    XmlNode* pFirstChild;
    XmlNode* pLastChild;
    uint32_t nKey;           // XmlNameKey of the name
    const void* pKnown;      // what a reader of the tree found for the name; null when not yet
    std::size_t nOffset;     // of its "<" in the parsed text
    std::size_t nTextOffset; // of its text
};

// What a forgiving reader passes over without a word; an author wants to hear of it.
enum XmlNotice {
    XML_NOTICE_ATTR_UNQUOTED, // dropped: the value has no quotes
    XML_NOTICE_ATTR_EMPTY,    // dropped: the value is empty
    XML_NOTICE_ATTR_REPEATED, // the value replaces an earlier one
    XML_NOTICE_TEXT_REPLACED, // the text replaces an earlier run of the same element
    XML_NOTICE_SECOND_ROOT,   // an element after the root became the root's child
    XML_NOTICE_TRAILING_TEXT, // reading stopped at text outside of any element
    XML_NOTICE_UNCLOSED       // reading stopped inside markup that is not closed
};

struct XmlObserver {
    void (*pfnNotice)(void* pUser, XmlNotice nNotice, std::size_t nOffset, const char* pszName);
    void* pUser;
};

// Takes the elements of a text one by one while it is read, so that a large file need not lie in
// memory as a tree: an element whose end has been read is gone, with all in it, when the call
// returns. Only the root stays. Both are called with the cursor on the element; false, for want of
// memory, ends the reading.
struct XmlConsumer {
    bool (*pfnOpened)(void* pUser); // its start tag is read
    bool (*pfnClosed)(void* pUser); // all of it is read
    void* pUser;
};

// Where a text is: in a file, by a path of one of the two kinds, or in memory. The bytes are
// copied.
struct XmlSource {
    const char* pszPath = nullptr;
    const wchar_t* pszWidePath = nullptr; // the file is shared with others that read it
    const void* pBytes = nullptr;
    std::size_t nSize = 0;

    [[nodiscard]] bool IsNone() const { return !pszPath && !pszWidePath && !pBytes; }
};

// The byte order mark of UTF-8.
constexpr const char* XML_MARK = "\xEF\xBB\xBF";

struct XmlContext {
    int32_t nLastError = XML_OK;
    int32_t nLine = 0; // counted by the parser from 0
    int32_t nColumn = 0;
    uint32_t nErrorLine = 0; // where the parser failed: from 1, columns by bytes; 0: nowhere
    uint32_t nErrorColumn = 0;
    bool bTooDeep = false;      // it failed over the nesting, not for want of memory
    bool bOpened = false;       // the file was opened
    uint32_t nSystemError = 0;  // why it was not, or could not be read
    char* pszVersion = nullptr; // from the declaration, null when not given
    char* pszEncoding = nullptr;
    char* pszStandalone = nullptr;
    char* pszReadBase = nullptr; // the file's text, freed with the context
    std::size_t nTextSize = 0;
    char* pszReadPos = nullptr; // where the parser stands, or stopped
    bool bTakesMark = false;    // a byte order mark of UTF-8 may stand before the text
    bool bMark = false;         // it did
    bool bDeclSeen = false;
    XmlNode* pRoot = nullptr;
    XmlNode* pCursor = nullptr;
    bool bRootSeen = false;
    int32_t nDepth = 0;
    const XmlObserver* pObserver = nullptr; // null: nobody listens
    const XmlConsumer* pConsumer = nullptr; // null: a text becomes a tree
    class CXmlWriter* pWriter = nullptr;    // while a document without a tree is written
    CArena arena;
    CRecords<XmlNode> nodes;
    CRecords<XmlAttrList> lists;
    CRecords<XmlAttr> attrs;
};

XmlContext* XmlCreate();
int XmlDestroy(XmlContext* pXml);
int XmlReset(XmlContext** ppXml);

int XmlGoRoot(XmlContext* pXml);
int XmlIsAtRoot(XmlContext* pXml);    // 1 on the root, else 0
int XmlHasChildren(XmlContext* pXml); // 1 with children, else 0
int XmlGoFirstChild(XmlContext* pXml);
int XmlGoLastChild(XmlContext* pXml);
int XmlGoChildNamed(XmlContext* pXml, const char* pszName);
int XmlGoNextSibling(XmlContext* pXml);
int XmlGoPrevSibling(XmlContext* pXml);
int XmlGoLastSibling(XmlContext* pXml);
int XmlGoNextNamed(XmlContext* pXml, const char* pszName);
int XmlGoPrevNamed(XmlContext* pXml, const char* pszName);
int XmlGoParent(XmlContext* pXml);

// The new element becomes the last child of the node under the cursor; the cursor stays.
int XmlAddChild(XmlContext* pXml, const char* pszName, std::size_t nNameLen, const char* pszText,
                std::size_t nTextLen);
int XmlAddChildZ(XmlContext* pXml, const char* pszName, const char* pszText);
int XmlSetText(XmlContext* pXml, const char* pszText, std::size_t nLen);
int XmlSetTextZ(XmlContext* pXml, const char* pszText);
int XmlSetName(XmlContext* pXml, const char* pszName, std::size_t nLen);
int XmlSetNameZ(XmlContext* pXml, const char* pszName);
const char* XmlGetName(XmlContext* pXml);
const char* XmlGetText(XmlContext* pXml);
int XmlDeleteNode(XmlContext* pXml);

// An attribute never holds an empty value: setting one fails and leaves the element unchanged.
int XmlSetAttr(XmlContext* pXml, const char* pszName, std::size_t nNameLen, const char* pszValue,
               std::size_t nValueLen);
int XmlSetAttrZ(XmlContext* pXml, const char* pszName, const char* pszValue);
int32_t XmlAttrCount(XmlContext* pXml); // -1: the element never had an attribute
const char* XmlGetAttr(XmlContext* pXml, const char* pszName);
const char* XmlAttrNameAt(XmlContext* pXml, int32_t nIndex);
const char* XmlAttrValueAt(XmlContext* pXml, int32_t nIndex);
int XmlDeleteAttr(XmlContext* pXml, const char* pszName);

// Parsing. The text is altered: decoded characters are written back into it.
int XmlParseText(XmlContext* pXml, char* pszText);
int XmlLoadFile(XmlContext* pXml, const char* pszPath);
int XmlLoad(XmlContext* pXml, const XmlSource& source);

// Writing. Serialize returns the length without the ending zero; a null buffer only measures.
std::size_t XmlSerialize(XmlContext* pXml, char* pszBuffer);
int XmlSaveFile(XmlContext* pXml, const char* pszPath);

// A number by which names are told apart before they are compared: cheap, since every name that is
// read gets one.
constexpr uint32_t XmlNameKey(const char* pszName, std::size_t nLen)
{
    if (!nLen) return 0;
    const auto byteAt = [=](std::size_t n) {
        return static_cast<uint32_t>(static_cast<unsigned char>(pszName[n]));
    };
    const uint32_t nEnds = byteAt(0) | byteAt(nLen / 2) << 8 | byteAt(nLen - 1) << 16;
    return (nEnds + (static_cast<uint32_t>(nLen) << 24)) * 2654435761U; // spreads to the high bits
}

// For the parser: a new last child of the node under the cursor, and a new last attribute of it, of
// strings that live as long as the context. Null when memory fails.
inline XmlNode* XmlLinkChild(XmlContext* pXml, char* pszName, uint32_t nKey)
{
    XmlNode* pNode = pXml->nodes.Take(pXml->arena);
    if (!pNode) return nullptr;
    XmlNode* pParent = pXml->pCursor;
    pNode->pszName = pszName;
    pNode->nKey = nKey;
    pNode->pParent = pParent;
    pNode->pPrev = pParent->pLastChild;
    (pParent->pLastChild ? pParent->pLastChild->pNext : pParent->pFirstChild) = pNode;
    pParent->pLastChild = pNode;
    return pNode;
}

// From here on an attribute list is found through buckets: a file may give one element any number
// of attributes, and each set looks for an earlier one of the same name.
constexpr int32_t XML_INDEXED_FROM = 32;
void XmlIndexAttr(CArena& arena, XmlAttrList* pList, XmlAttr* pAttr);
XmlAttr* XmlSearchAttr(const XmlAttrList* pList, const char* pszName, std::size_t nNameLen,
                       uint32_t nKey);

// The one of 32 bits that stands for a key. It is another one for each attribute that shapes have,
// so that their names are seldom compared.
constexpr uint32_t XmlSeenBit(uint32_t nKey)
{
    return 1U << (nKey >> 26 & 31U);
}

inline XmlAttr* XmlLinkAttr(XmlContext* pXml, char* pszName, uint32_t nKey, char* pszValue)
{
    XmlNode* pNode = pXml->pCursor;
    XmlAttr* pAttr = pXml->attrs.Take(pXml->arena);
    if (!pAttr) return nullptr;
    if (!pNode->pAttrs) pNode->pAttrs = pXml->lists.Take(pXml->arena);
    XmlAttrList* pList = pNode->pAttrs;
    if (!pList) return nullptr;
    pAttr->pszName = pszName;
    pAttr->nKey = nKey;
    pAttr->pszValue = pszValue;
    (pList->pTail ? pList->pTail->pNext : pList->pHead) = pAttr;
    pList->pTail = pAttr;
    ++pList->nCount;
    pList->nSeen |= XmlSeenBit(nKey);
    if (pList->ppBuckets || pList->nCount > XML_INDEXED_FROM)
        XmlIndexAttr(pXml->arena, pList, pAttr);
    return pAttr;
}

// For the parser: the node under the cursor, which has no children, is gone; its parent is under
// the cursor.
inline void XmlDropNode(XmlContext* pXml)
{
    XmlNode* pNode = pXml->pCursor;
    XmlNode* pParent = pNode->pParent;
    pParent->pLastChild = pNode->pPrev;
    (pNode->pPrev ? pNode->pPrev->pNext : pParent->pFirstChild) = nullptr;
    if (XmlAttrList* pList = pNode->pAttrs) {
        for (XmlAttr* pAttr = pList->pHead; pAttr;) {
            XmlAttr* pNext = pAttr->pNext;
            pXml->attrs.Give(pAttr);
            pAttr = pNext;
        }
        pXml->lists.Give(pList);
    }
    pXml->nodes.Give(pNode);
    pXml->pCursor = pParent;
    --pXml->nDepth;
}

inline XmlAttr* XmlFindAttr(const XmlNode* pNode, const char* pszName, std::size_t nNameLen,
                            uint32_t nKey)
{
    const XmlAttrList* pList = pNode->pAttrs;
    if (!pList || !(pList->nSeen & XmlSeenBit(nKey))) return nullptr;
    return XmlSearchAttr(pList, pszName, nNameLen, nKey);
}
