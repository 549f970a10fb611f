#include "document/Attributes.h"

#include "document/KeyIndex.h"
#include "document/TextNumbers.h"
#include "include/QELEngine.h"

#include <array>
#include <cstring>
#include <string_view>

namespace {

// The names by id, measured once and for all.
struct AttrKey {
    std::size_t nLen;
    uint32_t nKey;
};

constexpr std::array<AttrKey, ATTR_COUNT> g_keys = [] {
    std::array<AttrKey, ATTR_COUNT> keys{};
    for (int32_t n = 0; n < ATTR_COUNT; ++n) {
        const std::string_view name = g_attrNames[n].pszName;
        keys[static_cast<std::size_t>(n)] = {name.size(), XmlNameKey(name.data(), name.size())};
    }
    return keys;
}();
constexpr CKeyIndex g_index(g_attrNames);

constexpr std::string_view BLINK_WORD = "glt";

bool IsAtEnd(const char* pszText)
{
    SkipTextSpace(&pszText);
    return *pszText == 0;
}

// No error when the text is not a number: the value is 0 then.
int ParseDecimal(const char* pszText, int32_t* pnValue)
{
    *pnValue = 0;
    ScanDecimal(&pszText, pnValue);
    return 1;
}

std::size_t FormatDecimalValue(int32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatDecimal(nValue, pszOut, nSize);
}

bool IsCleanDecimal(const char* pszText)
{
    int32_t nValue = 0;
    return ScanDecimal(&pszText, &nValue) && IsAtEnd(pszText);
}

int ParseScan(const char* pszText, int32_t* pnValue)
{
    return ScanDecimal(&pszText, pnValue);
}

int ParseCount(const char* pszText, int32_t* pnValue)
{
    uint32_t nValue = 0;
    if (!ScanUnsigned(&pszText, &nValue)) return 0;
    *pnValue = static_cast<int32_t>(nValue);
    return 1;
}

std::size_t FormatCount(int32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatUnsigned(static_cast<uint32_t>(nValue), pszOut, nSize);
}

int ParseHex(const char* pszText, int32_t* pnValue)
{
    uint32_t nValue = 0;
    if (!ScanPrefixedHex(&pszText, &nValue)) return 0;
    *pnValue = static_cast<int32_t>(nValue);
    return 1;
}

std::size_t FormatHex(int32_t nValue, char* pszOut, std::size_t nSize)
{
    return FormatPrefixedHex(static_cast<uint32_t>(nValue), pszOut, nSize);
}

bool IsCleanHex(const char* pszText)
{
    uint32_t nValue = 0;
    return ScanPrefixedHex(&pszText, &nValue) && IsAtEnd(pszText);
}

// The next word, without the blanks before it.
std::string_view NextWord(const char** ppText)
{
    SkipTextSpace(ppText);
    const char* pStart = *ppText;
    while (**ppText && !IsTextSpace(**ppText)) ++*ppText;
    return {pStart, static_cast<std::size_t>(*ppText - pStart)};
}

int ParseColor(const char* pszText, int32_t* pnValue)
{
    uint32_t nValue = 0;
    if (!ScanPrefixedHex(&pszText, &nValue)) return 0;
    if (NextWord(&pszText) == BLINK_WORD) nValue |= QEL_COLOR_BLINK;
    *pnValue = static_cast<int32_t>(nValue);
    return 1;
}

std::size_t FormatColor(int32_t nValue, char* pszOut, std::size_t nSize)
{
    const auto nColor = static_cast<uint32_t>(nValue);
    std::size_t nLen = FormatPrefixedHex(nColor & ~QEL_COLOR_BLINK, pszOut, nSize);
    if (!nLen || !(nColor & QEL_COLOR_BLINK)) return nLen;
    if (nLen + 1 + BLINK_WORD.size() >= nSize) return 0;
    pszOut[nLen++] = ' ';
    std::memcpy(pszOut + nLen, BLINK_WORD.data(), BLINK_WORD.size());
    nLen += BLINK_WORD.size();
    pszOut[nLen] = 0;
    return nLen;
}

bool IsCleanColor(const char* pszText)
{
    uint32_t nValue = 0;
    if (!ScanPrefixedHex(&pszText, &nValue) || nValue > 0xFFFFFF) return false;
    const std::string_view word = NextWord(&pszText);
    return (word.empty() || word == BLINK_WORD) && IsAtEnd(pszText);
}

int ParseKind(const char* pszText, int32_t* pnValue)
{
    ParseDecimal(pszText, pnValue);
    if (*pnValue < 0 || *pnValue > 2) *pnValue = 0;
    return 1;
}

int ParseStatus(const char* pszText, int32_t* pnValue)
{
    ParseDecimal(pszText, pnValue);
    if (*pnValue < 0) *pnValue = 0;
    return 1;
}

} // namespace

const AttrForm g_formDecimal = {"decimal", ParseDecimal, FormatDecimalValue, IsCleanDecimal};
const AttrForm g_formHex = {"0x hexadecimal", ParseHex, FormatHex, IsCleanHex};
const AttrForm g_formColor = {"colour", ParseColor, FormatColor, IsCleanColor};
const AttrForm g_formScan = {"decimal", ParseScan, FormatDecimalValue, IsCleanDecimal};
const AttrForm g_formCount = {"decimal", ParseCount, FormatCount, IsCleanDecimal};
const AttrForm g_formStatus = {"decimal", ParseStatus, FormatDecimalValue, IsCleanDecimal};
const AttrForm g_formKind = {"decimal", ParseKind, FormatDecimalValue, IsCleanDecimal};
const AttrForm g_formCrd = {"coordinates", nullptr, nullptr, nullptr};
const AttrForm g_formText = {"text", nullptr, nullptr, nullptr};

const char* AttrName(AttrId nId)
{
    return nId == ATTR_TEXT ? "(text)" : NameOf(g_attrNames, nId);
}

void WriteAttrText(CXmlWriter& writer, AttrId nId, const char* pszValue, std::size_t nLen)
{
    writer.Attr(g_attrNames[nId].pszName, g_keys[static_cast<std::size_t>(nId)].nLen, pszValue,
                nLen);
}

int32_t AttrIdOf(const XmlAttr& attr)
{
    const std::size_t nRow = g_index.Find(attr.nKey, [&](std::size_t n) {
        const AttrKey& key = g_keys[n];
        if (key.nKey != attr.nKey) return false;
        // All bytes of a name of up to three are in its key, but not the length of very long names.
        return key.nLen <= 3 ? !attr.pszName[key.nLen]
                             : IsSameText(g_attrNames[n].pszName, attr.pszName);
    });
    return nRow == NO_ROW ? ATTR_COUNT : static_cast<int32_t>(nRow);
}

const XmlAttr* FindXmlAttr(const XmlContext* pXml, AttrId nId)
{
    const AttrKey& key = g_keys[static_cast<std::size_t>(nId)];
    return XmlFindAttr(pXml->pCursor, g_attrNames[nId].pszName, key.nLen, key.nKey);
}

const char* GetXmlAttr(const XmlContext* pXml, AttrId nId)
{
    const XmlAttr* pAttr = FindXmlAttr(pXml, nId);
    return pAttr ? pAttr->pszValue : nullptr;
}
