#include "document/TextEncoding.h"

#include "xml/XmlTree.h"

#include <cstring>

namespace {

bool IsNamePart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c && std::strchr("-_.:()", c));
}

// Whether a name can be written as it was read. Anything else in its place is no name.
bool IsName(const char* pszName)
{
    std::size_t nLength = 0;
    while (IsNamePart(pszName[nLength])) ++nLength;
    return nLength && nLength < ENCODING_SIZE && !pszName[nLength];
}

} // namespace

// A byte order mark is of UTF-8, whatever stands behind it. A page that the system does not know is
// read as what most drawings have.
TextEncoding EncodingOfFile(const XmlContext& xml, uint32_t nSetPage)
{
    TextEncoding encoding;
    const bool bNamed = xml.pszEncoding && IsName(xml.pszEncoding);
    const uint32_t nNamed = bNamed ? PageOfName(xml.pszEncoding) : 0;
    if (IsKnownPage(nNamed)) encoding.nPage = nNamed;
    if (xml.bMark) encoding.nPage = PAGE_UTF8;
    if (nSetPage == PAGE_ANSI) return encoding;
    encoding.bMark = xml.bMark;
    const char* pszNew = NameOfPage(nSetPage == PAGE_DECLARED ? encoding.nPage : nSetPage);
    if (bNamed)
        std::strcpy(encoding.szName, xml.pszEncoding);
    else if (pszNew)
        std::strcpy(encoding.szName, pszNew);
    return encoding;
}

TextEncoding EncodingFor(uint32_t nPage)
{
    TextEncoding encoding;
    encoding.nPage = nPage;
    std::strcpy(encoding.szName, NameOfPage(nPage));
    return encoding;
}
