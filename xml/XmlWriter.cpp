// The writer: turns the tree back into text that the parser reads as the same tree, and saves it so
// that a drawing which stood in the file before is never lost.
#include "xml/XmlTree.h"

#include "engine/Block.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int MAX_IDLE_WRITES = 16;    // writes in a row without progress before a save is given up
constexpr std::size_t TEMP_ENDING = 4; // ".00~"
constexpr int MAX_TEMP_NAMES = 100;    // names beside the target that are tried

// Counts, and with a buffer also stores, what is written. The length sticks at its maximum instead
// of wrapping, so that a document too large for memory is never measured as a small one.
class CXmlSink {
public:
    explicit CXmlSink(char* pOut) : m_pOut(pOut) {}

    void Put(const char* pText, std::size_t nLen)
    {
        if (m_pOut) std::memcpy(m_pOut + m_nLen, pText, nLen); // all of it was counted before
        m_nLen += std::min(nLen, SIZE_MAX - m_nLen);
    }
    void Put(const char* pszText) { Put(pszText, std::strlen(pszText)); }
    [[nodiscard]] std::size_t Length() const { return m_nLen; }

private:
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
            sink.Put(p, 1);
        ++p;
    }
}

// A raw double quote anywhere but in front asks for single quotes around the value; since quotes
// are escaped both forms read back the same.
void PutAttr(CXmlSink& sink, const XmlAttr& attr)
{
    const char cQuote = std::strchr(attr.pszValue + 1, '"') ? '\'' : '"';
    sink.Put(" ");
    sink.Put(attr.pszName);
    sink.Put("=");
    sink.Put(&cQuote, 1);
    PutEscaped(sink, attr.pszValue, cQuote);
    sink.Put(&cQuote, 1);
}

void PutStart(CXmlSink& sink, const XmlNode& node)
{
    sink.Put("<");
    if (node.pszName) sink.Put(node.pszName);
    if (node.pAttrs)
        for (const XmlAttr* pAttr = node.pAttrs->pHead; pAttr; pAttr = pAttr->pNext)
            PutAttr(sink, *pAttr);
    if (node.pszText || node.pFirstChild) {
        sink.Put(">");
        if (node.pszText) PutEscaped(sink, node.pszText, '<');
    } else {
        sink.Put("/>");
    }
    if (!node.pszText) sink.Put("\r\n");
}

void PutEnd(CXmlSink& sink, const XmlNode& node)
{
    if (!node.pszText && !node.pFirstChild) return; // "/>" ended it
    sink.Put("</");
    if (node.pszName) sink.Put(node.pszName);
    sink.Put(">\r\n");
}

// A loop over the links, not recursion: the tree may have been nested to any depth by calls.
void PutTree(CXmlSink& sink, const XmlNode* pRoot)
{
    const XmlNode* pNode = pRoot;
    PutStart(sink, *pNode);
    for (;;) {
        if (pNode->pFirstChild) {
            pNode = pNode->pFirstChild;
            PutStart(sink, *pNode);
            continue;
        }
        PutEnd(sink, *pNode);
        while (pNode != pRoot && !pNode->pNext) {
            pNode = pNode->pParent;
            PutEnd(sink, *pNode);
        }
        if (pNode == pRoot) return;
        pNode = pNode->pNext;
        PutStart(sink, *pNode);
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

bool WriteAll(HANDLE hFile, const char* pData, std::size_t nSize)
{
    constexpr std::size_t CHUNK = 0x40000000;
    int nIdle = 0;
    for (std::size_t nDone = 0; nDone < nSize;) {
        const std::size_t nLeft = nSize - nDone;
        const auto nWanted = static_cast<DWORD>(nLeft < CHUNK ? nLeft : CHUNK);
        DWORD nWritten = 0;
        if (!::WriteFile(hFile, pData + nDone, nWanted, &nWritten, nullptr)) nWritten = 0;
        nIdle = nWritten ? 0 : nIdle + 1;
        if (nIdle == MAX_IDLE_WRITES) return false;
        nDone += nWritten;
    }
    return true;
}

// Whether the target can be replaced: it is missing, or a plain file that nobody has open and that
// is not read-only. Replacing by name would pass over all of that silently on some systems.
bool IsReplaceable(const char* pszPath)
{
    const DWORD nAttributes = ::GetFileAttributesA(pszPath);
    if (nAttributes != INVALID_FILE_ATTRIBUTES &&
        (nAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)))
        return false;
    const HANDLE hFile = ::CreateFileA(pszPath, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile != INVALID_HANDLE_VALUE) {
        const bool bIsDiskFile = ::GetFileType(hFile) == FILE_TYPE_DISK;
        ::CloseHandle(hFile);
        return bIsDiskFile;
    }
    return ::GetLastError() == ERROR_FILE_NOT_FOUND;
}

// How much of a path stands before the name of the file. A separator may be the second byte of a
// character and is none then.
std::size_t FolderLength(const char* pszPath)
{
    std::size_t nFolder = 0;
    for (std::size_t n = 0; pszPath[n]; ++n) {
        if (::IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(pszPath[n])) && pszPath[n + 1])
            ++n;
        else if (pszPath[n] == '\\' || pszPath[n] == '/' || pszPath[n] == ':')
            nFolder = n + 1;
    }
    return nFolder;
}

// Creates a file beside the target under a name that nothing has, and leaves the name in pszTemp.
// It is the target's with an ending or, where the system would not take so long a path, one of its
// own that is not longer than the target's.
HANDLE CreateBeside(const char* pszPath, char* pszTemp, std::size_t nTempSize)
{
    const std::size_t nLength = std::strlen(pszPath);
    const bool bFits = nLength + TEMP_ENDING < MAX_PATH;
    const auto nKept = static_cast<int>(bFits ? nLength : FolderLength(pszPath));
    for (int n = 0; n < MAX_TEMP_NAMES; ++n) {
        if (std::snprintf(pszTemp, nTempSize, "%.*s.%02d~", nKept, pszPath, n) < 0) break;
        const HANDLE hFile = ::CreateFileA(pszTemp, GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE) return hFile;
        if (::GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return INVALID_HANDLE_VALUE;
}

// The old or the new file is whole at every moment: the bytes go to a new file first, which takes
// the target's place by one rename once they have reached the disk.
bool SaveWhole(const char* pszPath, const char* pData, std::size_t nSize)
{
    const std::size_t nTempSize = std::strlen(pszPath) + 8;
    const CBlock temp(nTempSize);
    if (!temp.As<char>() || !IsReplaceable(pszPath)) return false;
    const HANDLE hFile = CreateBeside(pszPath, temp.As<char>(), nTempSize);
    if (hFile == INVALID_HANDLE_VALUE) return false;
    bool bDone = WriteAll(hFile, pData, nSize) && ::FlushFileBuffers(hFile);
    bDone = ::CloseHandle(hFile) && bDone;
    bDone = bDone && ::MoveFileExA(temp.As<char>(), pszPath,
                                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!bDone) ::DeleteFileA(temp.As<char>());
    return bDone;
}

} // namespace

std::size_t XmlSerialize(XmlContext* pXml, char* pszBuffer)
{
    if (!pXml) return 0;
    CXmlSink sink(pszBuffer);
    sink.Put("<?xml ");
    PutDeclared(sink, "version", pXml->pszVersion);
    PutDeclared(sink, "encoding", pXml->pszEncoding);
    PutDeclared(sink, "standalone", pXml->pszStandalone);
    sink.Put("?>\r\n");
    if (XmlGoRoot(pXml) == 0) PutTree(sink, pXml->pRoot);
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
    const std::size_t nLen = XmlSerialize(pXml, nullptr);
    pXml->nLastError = XML_ERR_MEMORY;
    if (nLen >= SIZE_MAX / 2) return 1;
    const CBlock text(nLen + 1);
    if (!text.As<char>()) return 1;
    XmlSerialize(pXml, text.As<char>());
    // The ending zero is part of the file: deliberate, readers stop there.
    const bool bSaved = SaveWhole(pszPath, text.As<char>(), nLen + 1);
    pXml->nLastError = bSaved ? XML_OK : XML_ERR_CREATE;
    return bSaved ? 0 : 1;
}
