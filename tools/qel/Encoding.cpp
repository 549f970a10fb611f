// The encoding of the drawing at hand; see the header.
#include "tools/qel/Encoding.h"

#include "document/TextEncoding.h"
#include "xml/XmlTree.h"

#include <windows.h>

#include <cstdio>
#include <memory>
#include <new>

namespace qel {

namespace {

constexpr unsigned PAGE_GB18030 = 54936;
constexpr unsigned PAGE_ASCII = 20127; // the system reads all of its bytes, by seven bits
constexpr const char* DECLARATION = "<?xml";

unsigned g_nDrawingPage = PAGE_GB2312;

unsigned char ByteAt(const std::string& text, std::size_t nAt)
{
    return nAt < text.size() ? static_cast<unsigned char>(text[nAt]) : 0;
}

std::size_t Utf8Length(unsigned char c)
{
    if (c < 0xC2 || c > 0xF4) return 1;
    return c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
}

// How many bytes a character has that begins with these.
std::size_t LengthAt(const std::string& text, std::size_t nAt)
{
    const unsigned char c = ByteAt(text, nAt);
    if (g_nDrawingPage == PAGE_UTF8) return Utf8Length(c);
    if (!::IsDBCSLeadByteEx(g_nDrawingPage, c)) return 1;
    const unsigned char cNext = ByteAt(text, nAt + 1);
    return g_nDrawingPage == PAGE_GB18030 && cNext >= '0' && cNext <= '9' ? 4 : 2;
}

// What the first declaration of a text says, read as the engine does.
struct Declared {
    std::string name;
    unsigned nPage;
    bool bMark;
};

Declared ReadDeclared(const std::string& bytes)
{
    const std::size_t nAt = bytes.find(DECLARATION);
    const std::size_t nEnd = nAt == std::string::npos ? nAt : bytes.find('>', nAt);
    // A mark stands in front also where there is no declaration.
    std::string head = bytes.substr(0, nEnd == std::string::npos ? 3 : nEnd + 1);
    const std::unique_ptr<XmlContext, int (*)(XmlContext*)> xml(XmlCreate(), XmlDestroy);
    if (!xml) throw std::bad_alloc();
    xml->bTakesMark = true;
    XmlParseText(xml.get(), head.data());
    return {xml->pszEncoding ? xml->pszEncoding : "", EncodingOfFile(*xml, PAGE_DECLARED).nPage,
            xml->bMark};
}

std::size_t PlaceOfName(const std::string& bytes, const std::string& name)
{
    const std::size_t nAt = bytes.find("encoding", bytes.find(DECLARATION));
    const std::size_t nName = bytes.find(name, nAt == std::string::npos ? 0 : nAt + 8);
    return nName == std::string::npos ? 0 : nName;
}

std::string BytesText(const std::string& bytes, std::size_t nFrom, std::size_t nTo)
{
    constexpr std::size_t SHOWN = 8;
    std::string text;
    for (std::size_t n = nFrom; n < nTo && n < nFrom + SHOWN; ++n) {
        char sz[4];
        std::snprintf(sz, sizeof sz, " %02X", ByteAt(bytes, n));
        text += sz;
    }
    return text + (nTo - nFrom > SHOWN ? " ..." : "");
}

// Each run of bytes that are no characters, up to the zero that ends the drawing.
void AddBadBytes(const std::string& bytes, std::size_t nFrom, const std::string& name,
                 std::vector<Finding>* pFindings)
{
    for (std::size_t n = nFrom; n < bytes.size() && bytes[n];) {
        if (const std::size_t nLength = CharacterAt(bytes, n)) {
            n += nLength;
            continue;
        }
        const std::size_t nBad = n;
        while (n < bytes.size() && bytes[n] && !CharacterAt(bytes, n)) ++n;
        pFindings->push_back({nBad, true,
                              (n - nBad > 1 ? "the bytes" : "the byte") +
                                  BytesText(bytes, nBad, n) + (n - nBad > 1 ? " are" : " is") +
                                  " no text in " + name});
    }
}

} // namespace

unsigned DeclaredPage(const std::string& bytes)
{
    return ReadDeclared(bytes).nPage;
}

void SetDrawingPage(unsigned nPage)
{
    g_nDrawingPage = nPage;
}

unsigned DrawingPage()
{
    return g_nDrawingPage;
}

std::size_t CharacterAt(const std::string& text, std::size_t nAt)
{
    const unsigned char c = ByteAt(text, nAt);
    if (c < 0x80) return 1;
    const std::size_t nLength = LengthAt(text, nAt);
    if (g_nDrawingPage == PAGE_ASCII || nAt + nLength > text.size()) return 0;
    wchar_t sz[8];
    return ::MultiByteToWideChar(g_nDrawingPage, MB_ERR_INVALID_CHARS, text.data() + nAt,
                                 static_cast<int>(nLength), sz, 8) > 0
               ? nLength
               : 0;
}

std::vector<Finding> EncodingFindings(const std::string& bytes)
{
    std::vector<Finding> findings;
    const Declared declared = ReadDeclared(bytes);
    const unsigned nNamed = PageOfName(declared.name.c_str());
    const char* pszPage =
        declared.bMark || !nNamed ? NameOfPage(declared.nPage) : declared.name.c_str();
    if (declared.bMark)
        findings.push_back({0, false,
                            "a byte order mark stands before the drawing: hosts that set no code "
                            "page for texts do not open it"});
    if (!declared.name.empty() && (!nNamed || (declared.bMark && nNamed != PAGE_UTF8)))
        findings.push_back(
            {PlaceOfName(bytes, declared.name), false,
             (nNamed ? "a byte order mark is of utf-8, not of '" : "unknown encoding '") +
                 declared.name + "': texts are read as " + pszPage});
    AddBadBytes(bytes, declared.bMark ? 3 : 0, pszPage, &findings);
    return findings;
}

} // namespace qel
