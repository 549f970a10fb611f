// The parser: one forgiving pass over the text of a drawing. It works in the text it is given and
// writes decoded characters back into it; decoding only shortens, so what follows stays in place
// and positions in the text remain those of the file. Nested elements are a loop, not recursion.
#include "xml/WidePath.h"
#include "xml/XmlTree.h"

#include <windows.h>

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr std::size_t XML_READ_AHEAD = 16; // bytes that are looked at together
constexpr std::size_t PAGE = 4096;
constexpr int MAX_IDLE_READS = 16; // reads in a row without a byte before a load is given up

// What a byte may be in a text. Bytes from 0x80 count as letters: multi-byte code pages pass
// through untouched.
enum ByteClass : uint8_t {
    SPACE = 1,
    NAME_START = 2,
    NAME_PART = 4,
    VALUE_MARK = 8 // what asks for attention in a value
};

struct ByteClasses {
    uint8_t n[256] = {};

    constexpr ByteClasses()
    {
        for (int c = 0; c < 256; ++c) {
            const bool bLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c >= 0x80;
            const bool bStart = bLetter || c == '_';
            const bool bPart = bStart || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
            if (c == ' ' || (c >= '\t' && c <= '\r')) n[c] |= SPACE | VALUE_MARK;
            if (c == 0 || c == '&' || c == '"' || c == '\'') n[c] |= VALUE_MARK;
            if (bStart) n[c] |= NAME_START;
            if (bPart) n[c] |= NAME_PART;
        }
    }
};

constexpr ByteClasses g_classes;

// The number of bits that are set, of 16. Not every processor that this runs on has an instruction
// for it.
uint32_t CountBits(uint32_t n)
{
    n -= n >> 1 & 0x5555U;
    n = (n & 0x3333U) + (n >> 2 & 0x3333U);
    n = (n + (n >> 4)) & 0x0F0FU;
    return (n + (n >> 8)) & 0x1FU;
}

bool Is(char c, ByteClass nClass)
{
    return (g_classes.n[static_cast<unsigned char>(c)] & nClass) != 0;
}

struct Entity {
    const char* pszText;
    char cValue;
};

constexpr Entity g_entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

// Digits count as their value, anything else as its lower-case code minus 0x57, which is right for
// "a" to "f". No character is refused.
char HexValue(char c)
{
    if (c >= '0' && c <= '9') return static_cast<char>(c - '0');
    const int nLower = c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : static_cast<unsigned char>(c);
    return static_cast<char>(nLower - 0x57);
}

// Reads one character at p, decoding what is a reference; tells how many bytes of the run it took.
std::size_t DecodeOne(const char* p, std::size_t nLeft, char* pcOut)
{
    *pcOut = *p;
    if (*p != '&') return 1;
    for (const Entity& entity : g_entities) {
        const std::size_t nLen = std::strlen(entity.pszText);
        if (nLeft >= nLen && std::memcmp(p, entity.pszText, nLen) == 0) {
            *pcOut = entity.cValue;
            return nLen;
        }
    }
    if (nLeft >= 5 && p[1] == '#' && p[2] == 'x') {
        if (p[4] == ';') {
            *pcOut = HexValue(p[3]);
            return 5;
        }
        if (nLeft >= 6 && p[5] == ';') {
            *pcOut = HexValue(p[4]); // the first of two digits does not count
            return 6;
        }
    }
    return 1;
}

// Decodes a run in place and returns its new length, which ends at the first zero byte.
std::size_t Decode(char* pRun, std::size_t nLen)
{
    const void* pFirst = std::memchr(pRun, '&', nLen);
    if (!pFirst) return nLen;
    auto nOut = static_cast<std::size_t>(static_cast<const char*>(pFirst) - pRun);
    for (std::size_t n = nOut; n < nLen;) {
        char c = 0;
        n += DecodeOne(pRun + n, nLen - n, &c);
        if (!c) break; // a string ends here, so nothing behind it could ever be seen
        pRun[nOut++] = c;
    }
    return nOut;
}

// The line and column counters. A line feed leaves the column as it is. They are unsigned, so that
// a line of any length wraps.
struct Counters {
    uint32_t nLine = 0;
    uint32_t nColumn = 0;
    const char* pLine; // where the line begins

    void CountSpace(const char* p)
    {
        if (*p == '\n') {
            ++nLine;
            pLine = p + 1;
        } else if (*p == '\r') {
            nColumn = 0;
        } else {
            ++nColumn;
        }
    }
};

// How many bytes of a value are neither references nor spaces other than blanks, which are counted.
// Reads ahead, as only a kept text allows; up to the quote, or some bytes before what it cannot
// pass.
std::size_t PassPlainBytes(const char* p, char cQuote, Counters* pCounters)
{
    const auto all = [](char c) { return _mm_set1_epi8(c); };
    const auto bits = [](__m128i v) { return static_cast<uint32_t>(_mm_movemask_epi8(v)); };
    for (std::size_t nLen = 0;; nLen += XML_READ_AHEAD) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + nLen));
        const __m128i otherSpace =
            _mm_and_si128(_mm_cmpgt_epi8(v, all('\t' - 1)), _mm_cmpgt_epi8(all('\r' + 1), v));
        const __m128i odd = _mm_or_si128(_mm_cmpeq_epi8(v, all('&')), otherSpace);
        const uint32_t nEnds =
            bits(_mm_or_si128(_mm_cmpeq_epi8(v, all(cQuote)), _mm_cmpeq_epi8(v, all(0))));
        const uint32_t nInside = nEnds ? (nEnds & (0U - nEnds)) - 1 : 0xFFFFU; // bits below the end
        if (bits(odd) & nInside) return nLen;
        pCounters->nColumn += CountBits(bits(_mm_cmpeq_epi8(v, all(' '))) & nInside);
        if (nEnds) return nLen + static_cast<std::size_t>(std::countr_zero(nEnds));
    }
}

class CXmlReader {
public:
    // bKept: the text lives as long as the context, so names and values may stay where they are.
    CXmlReader(XmlContext* pXml, char* pszText, bool bKept)
        : m_pXml(pXml), m_pConsumer(pXml->pConsumer), m_pBase(pszText), m_p(pszText),
          m_bKept(bKept), m_counters{0, 0, pszText}
    {
        if (!pXml->bTakesMark || !Begins(XML_MARK)) return;
        pXml->bMark = true;
        m_p += std::strlen(XML_MARK);
    }

    // Reads the whole text; the outcome stands in the context's error code.
    void ReadDocument();

private:
    enum class Kind { None, Declaration, Comment, Other, Element };
    enum class Stop { Failed, StartTag, EndTag };
    enum class TagEnd { Failed, Empty, Content };

    struct Attribute {
        char* pName = nullptr;
        std::size_t nNameLen = 0;
        uint32_t nKey = 0;
        char* pValue = nullptr; // null: there is nothing to keep
        std::size_t nValueLen = 0;
        bool bUnclosed = false;
    };

    void TellPlace() const;
    [[nodiscard]] Kind Classify() const;
    bool ReadMarkup();
    bool ReadDeclaration();
    bool KeepDeclared(const Attribute& attribute, char** ppszField);
    bool PassComment();
    bool PassOther();
    bool ReadElement();
    TagEnd ReadStartTag();
    TagEnd ReadTagRest();
    bool OpenElement(char* pName, std::size_t nLen, std::size_t nOffset);
    bool CloseElement();
    bool Tell(bool (*pfnTold)(void* pUser));
    bool ReadTagAttribute();
    bool KeepAttribute(const Attribute& attribute);
    Stop ReadContent();
    bool ReadTextRun();
    bool ReadEndTag();
    bool ReadAttribute(Attribute* pOut);
    bool ReadValue(Attribute* pOut);
    std::size_t ReadName();
    // Whether the text goes on with a prefix; the zero behind it is in none.
    [[nodiscard]] bool Begins(const char* pszPrefix) const
    {
        const char* p = m_p;
        while (*pszPrefix && *p == *pszPrefix) {
            ++p;
            ++pszPrefix;
        }
        return !*pszPrefix;
    }
    // A string of the text as the tree holds it: a kept text's own, else a copy.
    char* Hold(char* pText, std::size_t nLen)
    {
        return m_bKept ? pText : m_pXml->arena.TakeText(pText, nLen);
    }

    bool Fail(XmlError nError)
    {
        m_pXml->nLastError = nError;
        return false;
    }
    void Notice(XmlNotice nNotice, const char* pAt, const char* pszName = nullptr) const
    {
        if (m_pXml->pObserver)
            m_pXml->pObserver->pfnNotice(m_pXml->pObserver->pUser, nNotice, Offset(pAt), pszName);
    }
    [[nodiscard]] std::size_t Offset(const char* pAt) const
    {
        return static_cast<std::size_t>(pAt - m_pBase);
    }

    // Back to where an author has to look, with the counters of there.
    void GoBack(char* pTo, const Counters& counters)
    {
        m_p = pTo;
        m_failed = counters;
    }
    // These move on, keeping the counters.
    void PassMark(std::size_t nCount = 1)
    {
        m_p += nCount;
        m_counters.nColumn += static_cast<uint32_t>(nCount);
    }
    // Up to a byte; false at the end of the text, which has none.
    bool PassTo(char cLast)
    {
        for (; *m_p && *m_p != cLast; ++m_p)
            if (Is(*m_p, SPACE)) m_counters.CountSpace(m_p);
        return *m_p != 0;
    }
    void SkipSpace()
    {
        for (; Is(*m_p, SPACE); ++m_p) m_counters.CountSpace(m_p);
    }

    XmlContext* m_pXml;
    const XmlConsumer* m_pConsumer;
    char* m_pBase;
    char* m_p;
    bool m_bKept;
    int m_nTopElements = 0; // elements met at document level
    Counters m_counters;
    Counters m_failed{0, 0, nullptr}; // of the place to which the reading went back
};

void CXmlReader::ReadDocument()
{
    for (;;) {
        SkipSpace();
        if (!*m_p || !ReadMarkup()) break;
    }
    m_pXml->nLine = static_cast<int32_t>(m_counters.nLine);
    m_pXml->nColumn = static_cast<int32_t>(m_counters.nColumn);
    m_pXml->pszReadPos = m_p;
    if (m_pXml->nLastError != XML_OK) TellPlace();
}

// Where an author has to look, from the lines as they were in the text: it may be altered by now.
void CXmlReader::TellPlace() const
{
    const Counters& at = m_failed.pLine ? m_failed : m_counters;
    m_pXml->nErrorLine = at.nLine + 1;
    m_pXml->nErrorColumn = static_cast<uint32_t>(m_p - at.pLine) + 1;
}

CXmlReader::Kind CXmlReader::Classify() const
{
    if (*m_p != '<') return Kind::None;
    const char* pAfter = m_p + 1;
    while (Is(*pAfter, SPACE)) ++pAfter; // "< rect/>" is an element
    if (Is(*pAfter, NAME_START)) return Kind::Element;
    if (Begins("<?xml")) return Kind::Declaration;
    return Begins("<!--") ? Kind::Comment : Kind::Other;
}

// One piece of markup at document level. False ends the reading, with or without an error.
bool CXmlReader::ReadMarkup()
{
    char* pAt = m_p;
    bool bGoOn = false;
    switch (Classify()) {
    case Kind::Declaration:
        bGoOn = ReadDeclaration();
        break;
    case Kind::Comment:
        bGoOn = PassComment();
        break;
    case Kind::Other:
        bGoOn = PassOther();
        break;
    case Kind::Element:
        return ReadElement();
    case Kind::None:
    default:
        Notice(XML_NOTICE_TRAILING_TEXT, pAt);
        return false;
    }
    if (!bGoOn && m_pXml->nLastError == XML_OK) Notice(XML_NOTICE_UNCLOSED, pAt);
    return bGoOn;
}

bool CXmlReader::ReadDeclaration()
{
    PassMark(5);
    for (;;) {
        SkipSpace();
        if (!*m_p) return false;
        if (*m_p == '>') {
            PassMark();
            m_pXml->bDeclSeen = true;
            return true;
        }
        char** ppszField = nullptr;
        if (Begins("version")) ppszField = &m_pXml->pszVersion;
        if (Begins("encoding")) ppszField = &m_pXml->pszEncoding;
        if (Begins("standalone")) ppszField = &m_pXml->pszStandalone;
        if (!ppszField) {
            while (*m_p && !Is(*m_p, SPACE) && *m_p != '>') ++m_p;
            continue;
        }
        Attribute attribute;
        if (!ReadAttribute(&attribute)) return false;
        if (!KeepDeclared(attribute, ppszField)) return false;
    }
}

bool CXmlReader::KeepDeclared(const Attribute& attribute, char** ppszField)
{
    if (m_pXml->bDeclSeen || !attribute.pValue || !attribute.nValueLen) return true;
    char* pszCopy = m_pXml->arena.TakeText(attribute.pValue, attribute.nValueLen);
    if (!pszCopy) return Fail(XML_ERR_MEMORY);
    *ppszField = pszCopy;
    return true;
}

bool CXmlReader::PassComment()
{
    m_p += 4;
    const char* pContent = m_p;
    while (PassTo('>')) {
        ++m_p;
        if (m_p - pContent >= 3 && m_p[-2] == '-' && m_p[-3] == '-') return true;
    }
    return false;
}

bool CXmlReader::PassOther()
{
    if (!PassTo('>')) return false;
    ++m_p;
    return true;
}

// An element with all that is in it. The elements that are open are the cursor and its parents, so
// no stack is needed beside the tree.
bool CXmlReader::ReadElement()
{
    std::size_t nOpen = 0;
    ++m_nTopElements;
    do {
        const TagEnd nEnd = ReadStartTag();
        if (nEnd == TagEnd::Failed) return false;
        if (m_pConsumer && !Tell(m_pConsumer->pfnOpened)) return false;
        if (nEnd == TagEnd::Content)
            ++nOpen;
        else if (!CloseElement())
            return false;
        Stop nStop = Stop::EndTag;
        while (nOpen && nStop == Stop::EndTag) {
            nStop = ReadContent();
            if (nStop == Stop::Failed) return false;
            if (nStop == Stop::EndTag) {
                if (!ReadEndTag()) return false;
                --nOpen;
            }
        }
    } while (nOpen);
    return true;
}

// The name gets its end when all of the tag is read, since that may overwrite what stands behind
// it.
CXmlReader::TagEnd CXmlReader::ReadStartTag()
{
    const std::size_t nOffset = Offset(m_p);
    const Counters before = m_counters;
    PassMark(); // "<", as the caller saw
    SkipSpace();
    char* pName = m_p;
    const std::size_t nLen = ReadName();
    const bool bEnds = !*m_p;
    if (!OpenElement(pName, nLen, nOffset)) {
        if (m_pXml->bTooDeep) GoBack(m_pBase + nOffset, before);
        return TagEnd::Failed;
    }
    TagEnd nEnd = TagEnd::Failed;
    if (bEnds)
        Fail(XML_ERR_END_NAME);
    else
        nEnd = ReadTagRest();
    if (m_bKept) pName[nLen] = 0;
    return nEnd;
}

CXmlReader::TagEnd CXmlReader::ReadTagRest()
{
    for (;;) {
        SkipSpace();
        if (!*m_p) {
            Fail(XML_ERR_END_TAG);
            return TagEnd::Failed;
        }
        if (*m_p == '/') {
            if (m_p[1] != '>') {
                Fail(XML_ERR_SLASH);
                return TagEnd::Failed;
            }
            PassMark(2);
            return TagEnd::Empty;
        }
        if (*m_p == '>') {
            PassMark();
            return TagEnd::Content;
        }
        if (!ReadTagAttribute()) return TagEnd::Failed;
    }
}

// The first element of the text names the root that the context holds already.
bool CXmlReader::OpenElement(char* pName, std::size_t nLen, std::size_t nOffset)
{
    if (!m_pXml->bRootSeen) {
        if (XmlSetName(m_pXml, pName, nLen)) return Fail(XML_ERR_MEMORY);
        m_pXml->bRootSeen = true;
    } else {
        if (m_pXml->nDepth >= XML_MAX_DEPTH) {
            m_pXml->bTooDeep = true;
            return Fail(XML_ERR_MEMORY);
        }
        if (m_nTopElements > 1 && m_pXml->nDepth == 0)
            Notice(XML_NOTICE_SECOND_ROOT, m_pBase + nOffset);
        char* pszName = Hold(pName, nLen);
        XmlNode* pNode = pszName ? XmlLinkChild(m_pXml, pszName, XmlNameKey(pName, nLen)) : nullptr;
        if (!pNode) return Fail(XML_ERR_MEMORY);
        m_pXml->pCursor = pNode;
        ++m_pXml->nDepth;
    }
    m_pXml->pCursor->nOffset = nOffset;
    return true;
}

// Goes on with the parent. A consumer has no more use for an element that is read.
bool CXmlReader::CloseElement()
{
    if (!m_pConsumer) {
        XmlGoParent(m_pXml);
        return true;
    }
    if (!Tell(m_pConsumer->pfnClosed)) return false;
    if (m_pXml->pCursor != m_pXml->pRoot) XmlDropNode(m_pXml);
    return true;
}

bool CXmlReader::Tell(bool (*pfnTold)(void* pUser))
{
    if (!pfnTold(m_pConsumer->pUser)) return Fail(XML_ERR_MEMORY);
    m_pXml->nLastError = XML_OK; // what the consumer asked for and did not find is no fault
    return true;
}

bool CXmlReader::ReadTagAttribute()
{
    Attribute attribute;
    // A value that is never closed keeps its own code; all else that is wrong with an attribute is
    // reported as a bad start tag.
    if (!ReadAttribute(&attribute)) return attribute.bUnclosed ? false : Fail(XML_ERR_START_TAG);
    if (!attribute.pValue || !attribute.nValueLen) {
        Notice(attribute.pValue ? XML_NOTICE_ATTR_EMPTY : XML_NOTICE_ATTR_UNQUOTED,
               attribute.pName);
        return true; // the tree holds no empty values: dropped
    }
    return KeepAttribute(attribute);
}

bool CXmlReader::KeepAttribute(const Attribute& attribute)
{
    char* pszValue = Hold(attribute.pValue, attribute.nValueLen);
    if (!pszValue) return Fail(XML_ERR_MEMORY);
    pszValue[attribute.nValueLen] = 0;
    XmlAttr* pAttr =
        XmlFindAttr(m_pXml->pCursor, attribute.pName, attribute.nNameLen, attribute.nKey);
    if (pAttr) {
        Notice(XML_NOTICE_ATTR_REPEATED, attribute.pName, pAttr->pszName);
        pAttr->pszValue = pszValue;
    } else {
        char* pszName = Hold(attribute.pName, attribute.nNameLen);
        if (!pszName) return Fail(XML_ERR_MEMORY);
        pszName[attribute.nNameLen] = 0; // behind it stood "=" or a blank, which are read
        pAttr = XmlLinkAttr(m_pXml, pszName, attribute.nKey, pszValue);
        if (!pAttr) return Fail(XML_ERR_MEMORY);
    }
    pAttr->nNameOffset = Offset(attribute.pName);
    pAttr->nValueOffset = Offset(attribute.pValue);
    return true;
}

// Passes over text, comments and other markup up to the next start or end tag.
CXmlReader::Stop CXmlReader::ReadContent()
{
    for (;;) {
        SkipSpace();
        bool bGoOn = false;
        if (*m_p == '<' && m_p[1] == '/') return Stop::EndTag;
        switch (*m_p ? Classify() : Kind::Other) {
        case Kind::Element:
            return Stop::StartTag;
        case Kind::None:
            bGoOn = ReadTextRun();
            break;
        case Kind::Declaration:
            bGoOn = ReadDeclaration();
            break;
        case Kind::Comment:
            bGoOn = PassComment();
            break;
        case Kind::Other:
        default:
            bGoOn = PassOther();
            break;
        }
        if (bGoOn) continue;
        if (m_pXml->nLastError == XML_OK) Fail(XML_ERR_END_CONTENT);
        return Stop::Failed;
    }
}

// Up to the next "<". A later run replaces an earlier one: an element has one text.
bool CXmlReader::ReadTextRun()
{
    char* pRun = m_p;
    const bool bEnds = PassTo('<');
    const std::size_t nLen = Decode(pRun, static_cast<std::size_t>(m_p - pRun));
    if (nLen) {
        XmlNode* pNode = m_pXml->pCursor;
        if (pNode->pszText) Notice(XML_NOTICE_TEXT_REPLACED, pRun, pNode->pszName);
        if (XmlSetText(m_pXml, pRun, nLen)) return Fail(XML_ERR_MEMORY);
        pNode->nTextOffset = Offset(pRun);
    }
    return bEnds;
}

bool CXmlReader::ReadEndTag()
{
    const char* pszName = m_pXml->pCursor->pszName;
    std::size_t nLen = 0;
    while (pszName[nLen] && m_p[2 + nLen] == pszName[nLen]) ++nLen;
    if (pszName[nLen] || m_p[2 + nLen] != '>') return Fail(XML_ERR_MISMATCH);
    PassMark(nLen + 3);
    return CloseElement();
}

bool CXmlReader::ReadAttribute(Attribute* pOut)
{
    const Counters before = m_counters;
    pOut->pName = m_p;
    pOut->nNameLen = ReadName();
    if (!pOut->nNameLen) return Fail(XML_ERR_ATTR);
    pOut->nKey = XmlNameKey(pOut->pName, pOut->nNameLen);
    SkipSpace();
    if (*m_p != '=') return Fail(XML_ERR_ATTR);
    PassMark();
    SkipSpace();
    if (!*m_p) return Fail(XML_ERR_ATTR);
    if (*m_p != '"' && *m_p != '\'') {
        while (*m_p && !Is(*m_p, SPACE) && *m_p != '/' && *m_p != '>') ++m_p;
        return true; // an unquoted value is passed over and not kept
    }
    if (ReadValue(pOut)) return true;
    PassMark(); // the quote
    pOut->bUnclosed = true;
    GoBack(pOut->pName, before);
    return Fail(XML_ERR_ATTR);
}

// From the opening quote to behind the closing one. False, with nothing counted, without one.
bool CXmlReader::ReadValue(Attribute* pOut)
{
    const char cQuote = *m_p;
    char* pValue = m_p + 1;
    Counters counters = m_counters;
    std::size_t nLen = m_bKept ? PassPlainBytes(pValue, cQuote, &counters) : 0;
    bool bEncoded = false;
    for (;; ++nLen) {
        while (!Is(pValue[nLen], VALUE_MARK)) ++nLen;
        const char c = pValue[nLen];
        if (c == cQuote) break;
        if (!c) return false;
        if (c == '&') bEncoded = true;
        if (Is(c, SPACE)) counters.CountSpace(pValue + nLen);
    }
    m_counters = counters;
    m_counters.nColumn += 2; // the quotes
    m_p = pValue + nLen + 1;
    pOut->pValue = pValue;
    pOut->nValueLen = bEncoded ? Decode(pValue, nLen) : nLen;
    return true;
}

std::size_t CXmlReader::ReadName()
{
    if (!Is(*m_p, NAME_START)) return 0;
    const char* p = m_p + 1;
    while (Is(*p, NAME_PART)) ++p;
    const auto nLen = static_cast<std::size_t>(p - m_p);
    PassMark(nLen);
    return nLen;
}

class CFileHandle {
public:
    explicit CFileHandle(HANDLE hFile) noexcept : m_hFile(hFile) {}
    ~CFileHandle()
    {
        if (m_hFile != INVALID_HANDLE_VALUE) ::CloseHandle(m_hFile);
    }
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;
    [[nodiscard]] HANDLE Get() const { return m_hFile; }

private:
    HANDLE m_hFile;
};

// Reads nSize bytes. A file that shrank, or a read that keeps failing, ends it.
bool ReadAll(HANDLE hFile, char* pBuffer, std::size_t nSize)
{
    constexpr std::size_t CHUNK = 0x40000000;
    int nIdle = 0;
    for (std::size_t nDone = 0; nDone < nSize;) {
        const std::size_t nLeft = nSize - nDone;
        DWORD nRead = 0;
        const auto nWanted = static_cast<DWORD>(std::min(nLeft, CHUNK));
        if (!::ReadFile(hFile, pBuffer + nDone, nWanted, &nRead, nullptr)) nRead = 0;
        if (nRead > nWanted) return false;
        nIdle = nRead ? 0 : nIdle + 1;
        if (nIdle == MAX_IDLE_READS) return false;
        nDone += nRead;
    }
    return true;
}

bool Fail(XmlContext* pXml, XmlError nError)
{
    pXml->nLastError = nError;
    return false;
}

bool FailBySystem(XmlContext* pXml)
{
    pXml->nSystemError = ::GetLastError();
    return Fail(pXml, XML_ERR_OPEN);
}

// A buffer for a text of that many bytes, with zeros behind it.
char* MakeRoom(XmlContext* pXml, uint64_t nSize)
{
    char* pBuffer = nullptr;
    if (nSize < SIZE_MAX / 2)
        pBuffer = pXml->arena.TakeBytes(static_cast<std::size_t>(nSize) + XML_READ_AHEAD);
    if (!pBuffer) {
        Fail(pXml, XML_ERR_MEMORY);
        return nullptr;
    }
    pXml->pszReadBase = pBuffer;
    pXml->nTextSize = static_cast<std::size_t>(nSize);
    std::memset(pBuffer + nSize, 0, XML_READ_AHEAD);
    return pBuffer;
}

bool TakeBytes(XmlContext* pXml, const XmlSource& source)
{
    if (source.nSize == 0) return false; // without an error code, as an empty file
    char* pBuffer = MakeRoom(pXml, source.nSize);
    if (!pBuffer) return false;
    std::memcpy(pBuffer, source.pBytes, source.nSize);
    return true;
}

// Alone by an ANSI path, as ever. By a wide one others may read the file meanwhile, rename it and
// delete it, which changes nothing of what is read; who writes to it would.
HANDLE OpenSource(const XmlSource& source)
{
    if (source.pszPath)
        return ::CreateFileA(source.pszPath, GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    const CWidePath path(source.pszWidePath);
    if (!path.Get()) {
        ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
    return ::CreateFileW(path.Get(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool ReadWhole(XmlContext* pXml, const XmlSource& source)
{
    const CFileHandle file(OpenSource(source));
    if (file.Get() == INVALID_HANDLE_VALUE) return FailBySystem(pXml);
    DWORD nHigh = 0;
    ::SetLastError(NO_ERROR);
    const DWORD nLow = ::GetFileSize(file.Get(), &nHigh);
    if (nLow == INVALID_FILE_SIZE && ::GetLastError() != NO_ERROR) return FailBySystem(pXml);
    const uint64_t nSize = (static_cast<uint64_t>(nHigh) << 32) | nLow;
    pXml->bOpened = true;
    if (nSize == 0) return false; // an empty file has no error code
    char* pBuffer = MakeRoom(pXml, nSize);
    if (!pBuffer) return false;
    // Touched here, page by page: where the system first reads the pages to see whether they
    // may be written, each new page would be a fault twice.
    for (std::size_t n = 0; n < nSize; n += PAGE) pBuffer[n] = 0;
    ::SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
    return ReadAll(file.Get(), pBuffer, static_cast<std::size_t>(nSize)) || FailBySystem(pXml);
}

int ParseAll(XmlContext* pXml, char* pszText, bool bKept)
{
    if (!*pszText) {
        pXml->nLastError = XML_ERR_EMPTY;
        return 1;
    }
    CXmlReader(pXml, pszText, bKept).ReadDocument();
    return pXml->nLastError == XML_OK ? 0 : 1;
}

} // namespace

int XmlParseText(XmlContext* pXml, char* pszText)
{
    if (!pXml) return 1;
    pXml->nLastError = XML_OK;
    if (!pszText) {
        pXml->nLastError = XML_ERR_ARGUMENT;
        return 1;
    }
    return ParseAll(pXml, pszText, false);
}

int XmlLoadFile(XmlContext* pXml, const char* pszPath)
{
    XmlSource source;
    source.pszPath = pszPath;
    return XmlLoad(pXml, source);
}

int XmlLoad(XmlContext* pXml, const XmlSource& source)
{
    if (!pXml) return 1;
    pXml->nLastError = XML_OK;
    if (source.IsNone()) {
        pXml->nLastError = XML_ERR_ARGUMENT;
        return 1;
    }
    const bool bRead = source.pBytes ? TakeBytes(pXml, source) : ReadWhole(pXml, source);
    return bRead ? ParseAll(pXml, pXml->pszReadBase, true) : 1;
}
