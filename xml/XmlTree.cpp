// The XML tree: nodes, attributes and the cursor moves. Reading is in XmlParser.cpp, writing in
// XmlWriter.cpp.
#include "xml/XmlTree.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

int Fail(XmlContext* pXml, XmlError nError)
{
    pXml->nLastError = nError;
    return 1;
}

int Done(XmlContext* pXml)
{
    pXml->nLastError = XML_OK;
    return 0;
}

bool IsNamed(const char* pszText, const char* pszName, std::size_t nLen)
{
    for (std::size_t i = 0; i < nLen; ++i)
        if (!pszText[i] || pszText[i] != pszName[i]) return false;
    return pszText[nLen] == 0;
}

// Of all bytes, for the buckets: many names may have one key.
std::size_t HashName(const char* pszName, std::size_t nLen)
{
    uint32_t nHash = 2166136261U; // FNV-1a
    for (std::size_t i = 0; i < nLen; ++i)
        nHash = (nHash ^ static_cast<unsigned char>(pszName[i])) * 16777619U;
    return nHash;
}

XmlAttr** BucketOf(const XmlAttrList* pList, const char* pszName, std::size_t nLen)
{
    return &pList->ppBuckets[HashName(pszName, nLen) % pList->nBuckets];
}

void PutInBucket(XmlAttrList* pList, XmlAttr* pAttr)
{
    XmlAttr** ppBucket = BucketOf(pList, pAttr->pszName, std::strlen(pAttr->pszName));
    pAttr->pNextInBucket = *ppBucket;
    *ppBucket = pAttr;
}

// A list of many names sees its buckets doubled; without memory for it the chains just get longer,
// or the list is searched from the head.
bool GrowIndex(CArena& arena, XmlAttrList* pList)
{
    const std::size_t nBuckets = pList->nBuckets ? pList->nBuckets * 2 : XML_INDEXED_FROM * 2;
    auto** ppBuckets = static_cast<XmlAttr**>(arena.Take(nBuckets * sizeof(XmlAttr*)));
    if (!ppBuckets) return false;
    pList->ppBuckets = ppBuckets;
    pList->nBuckets = nBuckets;
    for (XmlAttr* pAttr = pList->pHead; pAttr; pAttr = pAttr->pNext) PutInBucket(pList, pAttr);
    return true;
}

void UnlinkFromIndex(XmlAttrList* pList, XmlAttr* pAttr)
{
    if (!pList->ppBuckets) return;
    XmlAttr** ppLink = BucketOf(pList, pAttr->pszName, std::strlen(pAttr->pszName));
    while (*ppLink != pAttr) ppLink = &(*ppLink)->pNextInBucket;
    *ppLink = pAttr->pNextInBucket;
}

void Unlink(XmlNode* pNode)
{
    XmlNode* pParent = pNode->pParent;
    if (pNode->pPrev)
        pNode->pPrev->pNext = pNode->pNext;
    else if (pParent)
        pParent->pFirstChild = pNode->pNext;
    if (pNode->pNext) pNode->pNext->pPrev = pNode->pPrev;
    if (pParent && pParent->pLastChild == pNode) pParent->pLastChild = pNode->pPrev;
    pNode->pPrev = pNode->pNext = nullptr;
}

// The walk that both directions of the search for a named sibling share.
int GoNamed(XmlContext* pXml, const char* pszName, XmlNode* XmlNode::*pLink)
{
    if (!pXml) return 1;
    if (!pszName || !pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    for (XmlNode* pNode = pXml->pCursor->*pLink; pNode; pNode = pNode->*pLink) {
        if (pNode->pszName && std::strcmp(pNode->pszName, pszName) == 0) {
            pXml->pCursor = pNode;
            return Done(pXml);
        }
    }
    return Fail(pXml, XML_ERR_NO_ELEMENT);
}

int GoSibling(XmlContext* pXml, XmlNode* XmlNode::*pLink)
{
    if (!pXml) return 1;
    if (!pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    if (!(pXml->pCursor->*pLink)) return Fail(pXml, XML_ERR_NO_RELATIVE);
    pXml->pCursor = pXml->pCursor->*pLink;
    return Done(pXml);
}

int GoChild(XmlContext* pXml, XmlNode* XmlNode::*pLink)
{
    const int nResult = GoSibling(pXml, pLink);
    if (nResult == 0) ++pXml->nDepth;
    return nResult;
}

const XmlAttr* AttrAt(XmlContext* pXml, int32_t nIndex)
{
    if (!pXml) return nullptr;
    const XmlAttrList* pList = pXml->pCursor ? pXml->pCursor->pAttrs : nullptr;
    const XmlAttr* pAttr = pList && nIndex >= 0 && nIndex < pList->nCount ? pList->pHead : nullptr;
    for (int32_t i = 0; pAttr && i < nIndex; ++i) pAttr = pAttr->pNext;
    pXml->nLastError = pAttr ? XML_OK : XML_ERR_ARGUMENT;
    return pAttr;
}

} // namespace

XmlContext* XmlCreate()
{
    // Not new: where memory fails, the library's own would first take more of it for an exception.
    void* pMemory = std::malloc(sizeof(XmlContext));
    if (!pMemory) return nullptr;
    auto* pXml = new (pMemory) XmlContext;
    pXml->pRoot = pXml->arena.Take<XmlNode>();
    if (!pXml->pRoot) {
        XmlDestroy(pXml);
        return nullptr;
    }
    pXml->pCursor = pXml->pRoot;
    return pXml;
}

int XmlDestroy(XmlContext* pXml)
{
    if (!pXml) return 1;
    pXml->~XmlContext();
    std::free(pXml);
    return 0;
}

int XmlReset(XmlContext** ppXml)
{
    if (!ppXml || !*ppXml) return 1;
    XmlDestroy(*ppXml);
    *ppXml = XmlCreate();
    return *ppXml ? 0 : 1;
}

int XmlGoRoot(XmlContext* pXml)
{
    if (!pXml) return 1;
    if (!pXml->pRoot) return Fail(pXml, XML_ERR_ARGUMENT);
    pXml->pCursor = pXml->pRoot;
    pXml->nDepth = 0;
    return Done(pXml);
}

int XmlIsAtRoot(XmlContext* pXml)
{
    if (!pXml) return 0;
    pXml->nLastError = pXml->pCursor ? XML_OK : XML_ERR_ARGUMENT;
    return pXml->pCursor && pXml->pCursor == pXml->pRoot ? 1 : 0;
}

int XmlHasChildren(XmlContext* pXml)
{
    if (!pXml) return 0;
    if (!pXml->pCursor) {
        pXml->nLastError = XML_ERR_ARGUMENT;
        return 0;
    }
    pXml->nLastError = pXml->pCursor->pFirstChild ? XML_OK : XML_ERR_NO_RELATIVE;
    return pXml->pCursor->pFirstChild ? 1 : 0;
}

int XmlGoFirstChild(XmlContext* pXml)
{
    return GoChild(pXml, &XmlNode::pFirstChild);
}

int XmlGoLastChild(XmlContext* pXml)
{
    return GoChild(pXml, &XmlNode::pLastChild);
}

int XmlGoChildNamed(XmlContext* pXml, const char* pszName)
{
    if (!pXml) return 1;
    if (!pszName || !pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    XmlNode* pFirst = pXml->pCursor->pFirstChild;
    if (!pFirst) return Fail(pXml, XML_ERR_NO_RELATIVE);
    for (XmlNode* pNode = pFirst; pNode; pNode = pNode->pNext) {
        if (std::strcmp(pNode->pszName, pszName) == 0) {
            pXml->pCursor = pNode;
            ++pXml->nDepth;
            return Done(pXml);
        }
    }
    return Fail(pXml, XML_ERR_NO_ELEMENT);
}

int XmlGoNextSibling(XmlContext* pXml)
{
    return GoSibling(pXml, &XmlNode::pNext);
}

int XmlGoPrevSibling(XmlContext* pXml)
{
    return GoSibling(pXml, &XmlNode::pPrev);
}

int XmlGoLastSibling(XmlContext* pXml)
{
    if (!pXml) return 1;
    if (!pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    if (pXml->pCursor->pParent) pXml->pCursor = pXml->pCursor->pParent->pLastChild;
    return Done(pXml);
}

int XmlGoNextNamed(XmlContext* pXml, const char* pszName)
{
    return GoNamed(pXml, pszName, &XmlNode::pNext);
}

int XmlGoPrevNamed(XmlContext* pXml, const char* pszName)
{
    return GoNamed(pXml, pszName, &XmlNode::pPrev);
}

int XmlGoParent(XmlContext* pXml)
{
    if (!pXml) return 1;
    if (pXml->pCursor && pXml->pCursor != pXml->pRoot) {
        pXml->pCursor = pXml->pCursor->pParent;
        --pXml->nDepth;
    }
    if (!pXml->pCursor) return Fail(pXml, XML_ERR_NO_PARENT);
    return Done(pXml);
}

int XmlAddChild(XmlContext* pXml, const char* pszName, std::size_t nNameLen, const char* pszText,
                std::size_t nTextLen)
{
    if (!pXml) return 1;
    if (!pXml->pCursor || !pszName || nNameLen == 0) return Fail(pXml, XML_ERR_ARGUMENT);
    char* pszNewName = pXml->arena.TakeText(pszName, nNameLen);
    char* pszNewText = nullptr;
    const bool bHasText = pszText && nTextLen;
    if (bHasText) pszNewText = pXml->arena.TakeText(pszText, nTextLen);
    if (!pszNewName || (bHasText && !pszNewText)) return Fail(pXml, XML_ERR_ARGUMENT);
    XmlNode* pNode = XmlLinkChild(pXml, pszNewName, XmlNameKey(pszName, nNameLen));
    if (!pNode) return Fail(pXml, XML_ERR_MEMORY);
    pNode->pszText = pszNewText;
    return Done(pXml);
}

int XmlAddChildZ(XmlContext* pXml, const char* pszName, const char* pszText)
{
    return XmlAddChild(pXml, pszName, pszName ? std::strlen(pszName) : 0, pszText,
                       pszText ? std::strlen(pszText) : 0);
}

int XmlSetText(XmlContext* pXml, const char* pszText, std::size_t nLen)
{
    if (!pXml) return 1;
    if (!pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    pXml->pCursor->pszText = nullptr;
    if (!pszText || nLen == 0) return Done(pXml);
    pXml->pCursor->pszText = pXml->arena.TakeText(pszText, nLen);
    return pXml->pCursor->pszText ? Done(pXml) : Fail(pXml, XML_ERR_ARGUMENT);
}

int XmlSetTextZ(XmlContext* pXml, const char* pszText)
{
    return XmlSetText(pXml, pszText, pszText ? std::strlen(pszText) : 0);
}

int XmlSetName(XmlContext* pXml, const char* pszName, std::size_t nLen)
{
    if (!pXml || !pszName || nLen == 0) return 1; // the error code stays as it was
    if (!pXml->pCursor) return Fail(pXml, XML_ERR_ARGUMENT);
    char* pszCopy = pXml->arena.TakeText(pszName, nLen);
    if (!pszCopy) return Fail(pXml, XML_ERR_ARGUMENT);
    pXml->pCursor->pszName = pszCopy;
    pXml->pCursor->nKey = XmlNameKey(pszName, nLen);
    pXml->pCursor->pKnown = nullptr;
    return Done(pXml);
}

int XmlSetNameZ(XmlContext* pXml, const char* pszName)
{
    return XmlSetName(pXml, pszName, pszName ? std::strlen(pszName) : 0);
}

const char* XmlGetName(XmlContext* pXml)
{
    if (!pXml) return nullptr;
    pXml->nLastError = pXml->pCursor ? XML_OK : XML_ERR_ARGUMENT;
    return pXml->pCursor ? pXml->pCursor->pszName : nullptr;
}

const char* XmlGetText(XmlContext* pXml)
{
    if (!pXml) return nullptr;
    pXml->nLastError = pXml->pCursor ? XML_OK : XML_ERR_ARGUMENT;
    return pXml->pCursor ? pXml->pCursor->pszText : nullptr;
}

int XmlDeleteNode(XmlContext* pXml)
{
    if (!pXml) return 1;
    XmlNode* pNode = pXml->pCursor;
    if (!pNode) return Fail(pXml, XML_ERR_ARGUMENT);
    Unlink(pNode);
    pXml->pCursor = pNode->pParent; // the depth counter stays, nobody relies on it here
    if (pNode == pXml->pRoot) pXml->pRoot = nullptr;
    return Done(pXml);
}

void XmlIndexAttr(CArena& arena, XmlAttrList* pList, XmlAttr* pAttr)
{
    const bool bWantsGrowth = static_cast<std::size_t>(pList->nCount) > pList->nBuckets;
    if (bWantsGrowth && GrowIndex(arena, pList)) return; // the new one is in it already
    if (pList->ppBuckets) PutInBucket(pList, pAttr);
}

XmlAttr* XmlSearchAttr(const XmlAttrList* pList, const char* pszName, std::size_t nNameLen,
                       uint32_t nKey)
{
    const auto isIt = [=](const XmlAttr* p) {
        return p->nKey == nKey && IsNamed(p->pszName, pszName, nNameLen);
    };
    if (!pList->ppBuckets) {
        XmlAttr* pAttr = pList->pHead;
        while (pAttr && !isIt(pAttr)) pAttr = pAttr->pNext;
        return pAttr;
    }
    XmlAttr* pAttr = *BucketOf(pList, pszName, nNameLen);
    while (pAttr && !isIt(pAttr)) pAttr = pAttr->pNextInBucket;
    return pAttr;
}

int XmlSetAttr(XmlContext* pXml, const char* pszName, std::size_t nNameLen, const char* pszValue,
               std::size_t nValueLen)
{
    if (!pXml) return 1;
    XmlNode* pNode = pXml->pCursor;
    if (!pNode || !pszName || nNameLen == 0 || !pszValue || nValueLen == 0)
        return Fail(pXml, XML_ERR_ARGUMENT);

    char* pszNewValue = pXml->arena.TakeText(pszValue, nValueLen);
    if (!pszNewValue) return Fail(pXml, XML_ERR_ARGUMENT);
    const uint32_t nKey = XmlNameKey(pszName, nNameLen);
    if (XmlAttr* pAttr = XmlFindAttr(pNode, pszName, nNameLen, nKey)) {
        pAttr->pszValue = pszNewValue;
        return Done(pXml);
    }
    char* pszNewName = pXml->arena.TakeText(pszName, nNameLen);
    if (!pszNewName || !XmlLinkAttr(pXml, pszNewName, nKey, pszNewValue))
        return Fail(pXml, XML_ERR_ARGUMENT);
    return Done(pXml);
}

int XmlSetAttrZ(XmlContext* pXml, const char* pszName, const char* pszValue)
{
    return XmlSetAttr(pXml, pszName, pszName ? std::strlen(pszName) : 0, pszValue,
                      pszValue ? std::strlen(pszValue) : 0);
}

int32_t XmlAttrCount(XmlContext* pXml)
{
    if (!pXml) return -1;
    pXml->nLastError = pXml->pCursor ? XML_OK : XML_ERR_ARGUMENT;
    return pXml->pCursor && pXml->pCursor->pAttrs ? pXml->pCursor->pAttrs->nCount : -1;
}

const char* XmlGetAttr(XmlContext* pXml, const char* pszName)
{
    if (!pXml) return nullptr;
    if (!pszName || !pXml->pCursor || !pXml->pCursor->pAttrs) {
        pXml->nLastError = XML_ERR_ARGUMENT;
        return nullptr;
    }
    const std::size_t nLen = std::strlen(pszName);
    const XmlAttr* pAttr = XmlFindAttr(pXml->pCursor, pszName, nLen, XmlNameKey(pszName, nLen));
    pXml->nLastError = pAttr ? XML_OK : XML_ERR_NO_ATTR;
    return pAttr ? pAttr->pszValue : nullptr;
}

const char* XmlAttrNameAt(XmlContext* pXml, int32_t nIndex)
{
    const XmlAttr* pAttr = AttrAt(pXml, nIndex);
    return pAttr ? pAttr->pszName : nullptr;
}

const char* XmlAttrValueAt(XmlContext* pXml, int32_t nIndex)
{
    const XmlAttr* pAttr = AttrAt(pXml, nIndex);
    return pAttr ? pAttr->pszValue : nullptr;
}

int XmlDeleteAttr(XmlContext* pXml, const char* pszName)
{
    if (!pXml) return 1;
    XmlAttrList* pList = pXml->pCursor ? pXml->pCursor->pAttrs : nullptr;
    if (!pList || !pszName) return Fail(pXml, XML_ERR_ARGUMENT);
    XmlAttr* pPrev = nullptr;
    for (XmlAttr* pAttr = pList->pHead; pAttr; pPrev = pAttr, pAttr = pAttr->pNext) {
        if (std::strcmp(pAttr->pszName, pszName) != 0) continue;
        (pPrev ? pPrev->pNext : pList->pHead) = pAttr->pNext;
        if (pList->pTail == pAttr) pList->pTail = pPrev;
        UnlinkFromIndex(pList, pAttr);
        --pList->nCount;
        return Done(pXml);
    }
    return Fail(pXml, XML_ERR_NO_ATTR);
}
