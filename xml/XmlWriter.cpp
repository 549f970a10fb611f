// The writer: turns elements, attributes and texts into what the parser reads as the same.
#include "xml/XmlWriter.h"

#include "xml/XmlFile.h"
#include "xml/XmlTree.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

// Counts, and with a buffer also stores, what is written. The length sticks at its maximum instead
// of wrapping, so that a document too large for memory is never measured as a small one.
class CTextSink final : public CXmlSink {
public:
    explicit CTextSink(char* pOut) : m_pOut(pOut) {}
    [[nodiscard]] std::size_t Length() const { return m_nLen; }

private:
    void PutMore(const char* pText, std::size_t nLen) override
    {
        if (m_pOut) std::memcpy(m_pOut + m_nLen, pText, nLen); // all of it was counted before
        m_nLen += std::min(nLen, SIZE_MAX - m_nLen);
    }

    char* m_pOut;
    std::size_t m_nLen = 0;
};

const char* EscapeOf(char c)
{
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    default:
        return nullptr;
    }
}

constexpr std::array<bool, 256> g_isEscaped = [] {
    std::array<bool, 256> isEscaped{};
    for (const char c : {'&', '<', '>', '"', '\''}) isEscaped[static_cast<unsigned char>(c)] = true;
    return isEscaped;
}();

// The length of a text up to the first byte that is not written as it is.
std::size_t PlainLength(const char* pText, std::size_t nLen)
{
    std::size_t n = 0;
    while (n < nLen && !g_isEscaped[static_cast<unsigned char>(pText[n])]) ++n;
    return n;
}

// The next place of a byte in a text, looked for again only when the writing has passed the last
// one.
class CNextOf {
public:
    CNextOf(const char* pszText, char c) : m_c(c), m_pAt(std::strchr(pszText, c)) {}

    const char* From(const char* p) // null when there is none
    {
        if (m_pAt && m_pAt < p) m_pAt = std::strchr(p, m_c);
        return m_pAt;
    }

private:
    char m_c;
    const char* m_pAt;
};

// How many bytes of a character reference stand at p, to be copied as they are; 0 for none. The run
// up to ";" is taken whatever it holds, save the one byte that would end the text or value it
// stands in: copying that would change the file's structure.
std::size_t ReferenceLength(const char* p, CNextOf& semicolon, CNextOf& end)
{
    if (p[0] != '&' || p[1] != '#' || p[2] != 'x' || !p[3] || !p[4]) return 0;
    const char* pLast = semicolon.From(p);
    const char* pEnd = end.From(p);
    if (!pLast || (pEnd && pEnd < pLast)) return 0;
    return static_cast<std::size_t>(pLast - p) + 1;
}

void PutEscaped(CXmlSink& sink, const char* pszText, char cEnd)
{
    CNextOf semicolon(pszText, ';');
    CNextOf end(pszText, cEnd);
    for (const char* p = pszText; *p;) {
        if (const std::size_t nReference = ReferenceLength(p, semicolon, end)) {
            sink.Put(p, nReference);
            p += nReference;
            continue;
        }
        if (const char* pszEscape = EscapeOf(*p))
            sink.Put(pszEscape);
        else
            sink.Put(*p);
        ++p;
    }
}

void PutDeclared(CXmlSink& sink, const char* pszKeyword, const char* pszValue)
{
    if (!pszValue) return;
    sink.Put(pszKeyword);
    sink.Put("=\"");
    sink.Put(pszValue);
    sink.Put("\" ");
}

void PutStart(CXmlWriter& writer, const XmlNode& node)
{
    writer.Start(node.pszName, node.pszName ? std::strlen(node.pszName) : 0);
    if (node.pAttrs)
        for (const XmlAttr* p = node.pAttrs->pHead; p; p = p->pNext)
            writer.Attr(p->pszName, std::strlen(p->pszName), p->pszValue, std::strlen(p->pszValue));
    if (node.pszText) writer.Text(node.pszText, std::strlen(node.pszText));
}

void PutEnd(CXmlWriter& writer, const XmlNode& node)
{
    writer.End(node.pszName, node.pszName ? std::strlen(node.pszName) : 0);
}

// A loop over the links, not recursion: the tree may have been nested to any depth by calls.
void PutTree(CXmlWriter& writer, const XmlNode* pRoot)
{
    const XmlNode* pNode = pRoot;
    PutStart(writer, *pNode);
    for (;;) {
        if (pNode->pFirstChild) {
            pNode = pNode->pFirstChild;
            PutStart(writer, *pNode);
            continue;
        }
        PutEnd(writer, *pNode);
        while (pNode != pRoot && !pNode->pNext) {
            pNode = pNode->pParent;
            PutEnd(writer, *pNode);
        }
        if (pNode == pRoot) return;
        pNode = pNode->pNext;
        PutStart(writer, *pNode);
    }
}

void PutDocument(CXmlSink& sink, XmlContext* pXml)
{
    CXmlWriter writer(sink);
    writer.Declaration(pXml->pszVersion, pXml->pszEncoding, pXml->pszStandalone);
    if (XmlGoRoot(pXml) == 0) PutTree(writer, pXml->pRoot);
}

} // namespace

void CXmlWriter::Declaration(const char* pszVersion, const char* pszEncoding,
                             const char* pszStandalone)
{
    m_sink.Put("<?xml ");
    PutDeclared(m_sink, "version", pszVersion);
    PutDeclared(m_sink, "encoding", pszEncoding);
    PutDeclared(m_sink, "standalone", pszStandalone);
    m_sink.Put("?>\r\n");
}

void CXmlWriter::EndTag()
{
    if (m_bTagOpen) m_sink.Put(">\r\n", 3);
}

void CXmlWriter::Start(const char* pszName, std::size_t nLen)
{
    EndTag();
    m_sink.Put('<');
    m_sink.Put(pszName, nLen);
    m_bTagOpen = true;
}

// A raw double quote anywhere but in front asks for single quotes around the value; since quotes
// are escaped both forms read back the same.
void CXmlWriter::Attr(const char* pszName, std::size_t nNameLen, const char* pszValue,
                      std::size_t nValueLen)
{
    m_sink.Put(' ');
    m_sink.Put(pszName, nNameLen);
    if (PlainLength(pszValue, nValueLen) == nValueLen) {
        m_sink.Put("=\"", 2);
        m_sink.Put(pszValue, nValueLen);
        m_sink.Put('"');
        return;
    }
    const char cQuote = std::strchr(pszValue + 1, '"') ? '\'' : '"';
    m_sink.Put('=');
    m_sink.Put(cQuote);
    PutEscaped(m_sink, pszValue, cQuote);
    m_sink.Put(cQuote);
}

void CXmlWriter::Text(const char* pszText, std::size_t nLen)
{
    m_sink.Put('>');
    m_bTagOpen = false;
    if (PlainLength(pszText, nLen) == nLen)
        m_sink.Put(pszText, nLen);
    else
        PutEscaped(m_sink, pszText, '<');
}

void CXmlWriter::End(const char* pszName, std::size_t nLen)
{
    if (m_bTagOpen) {
        m_sink.Put("/>\r\n", 4);
    } else {
        m_sink.Put("</", 2);
        m_sink.Put(pszName, nLen);
        m_sink.Put(">\r\n", 3);
    }
    m_bTagOpen = false;
}

std::size_t XmlSerialize(XmlContext* pXml, char* pszBuffer)
{
    if (!pXml) return 0;
    CTextSink sink(pszBuffer);
    PutDocument(sink, pXml);
    if (pszBuffer) pszBuffer[sink.Length()] = 0;
    return sink.Length();
}

int XmlSaveFile(XmlContext* pXml, const char* pszPath)
{
    if (!pXml) return 1;
    if (!pszPath) {
        pXml->nLastError = XML_ERR_ARGUMENT;
        return 1;
    }
    CXmlFile file;
    XmlError nError = file.Open(pszPath);
    if (nError == XML_OK) {
        PutDocument(file, pXml);
        file.Put('\0'); // part of the file: readers stop there
        if (!file.Commit()) nError = XML_ERR_CREATE;
    }
    pXml->nLastError = nError;
    return nError == XML_OK ? 0 : 1;
}
