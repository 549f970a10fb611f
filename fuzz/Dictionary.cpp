// Prints the dictionary of the fuzzers, fuzz/qel.dict, from the engine's own tables: the tags, the
// attributes with a value of each, the keywords and the marks of the format. fuzz/dictionary.sh
// puts it in place and tells whether it is current.
#include "dynamic/Selectors.h"
#include "dynamic/SetTexts.h"
#include "engine/ElementTypes.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace {

void Entry(std::string_view text)
{
    std::putchar('"');
    for (const char c : text) {
        if (c == '"' || c == '\\')
            std::printf("\\%c", c);
        else if (c >= 0 && c < ' ')
            std::printf("\\x%02x", static_cast<unsigned>(c));
        else
            std::putchar(c);
    }
    std::puts("\"");
}

template <class Row>
void Keywords(const char* pszAttr, const Row* pRows)
{
    for (; pRows->pszName; ++pRows) Entry(std::string(pszAttr) + "=\"" + pRows->pszName + "\"");
}

// An attribute with a value of the form that it asks for.
std::string WithValue(const char* pszName, const AttrForm* pForm)
{
    const char* pszValue = "7";
    if (pForm == &g_formHex) pszValue = "0x3";
    if (pForm == &g_formColor) pszValue = "0xff80 glt";
    if (pForm == &g_formCrd) pszValue = "1 2 30 40";
    if (pForm == &g_formSettings) pszValue = "max=40 ticks=8 pin-color=0x80";
    if (pForm == &g_formReal) pszValue = "6.5";
    return std::string(" ") + pszName + "=\"" + pszValue + "\"";
}

void VisitAttr(const AttrInfo& info, void*)
{
    if (info.nId == ATTR_TEXT) return;
    Entry(WithValue(AttrName(info.nId), info.pForm));
}

} // namespace

int main()
{
    std::puts("# Made by fuzz/dictionary.sh from the engine's tables.");
    for (const ElementType* pRow = g_elementTypes.Rows(); pRow->pszName; ++pRow) {
        const std::string name = pRow->pszName;
        Entry("<" + name);
        Entry("<" + name + "/>");
        Entry("</" + name + ">");
        // The shapes all have the attributes of the first of them.
        const bool bSameAsLast =
            pRow != g_elementTypes.Rows() && pRow[-1].pfnVisitAttrs == pRow->pfnVisitAttrs;
        if (pRow->pfnVisitAttrs && !bSameAsLast) pRow->pfnVisitAttrs(VisitAttr, nullptr);
    }
    for (const KeywordRow* pRow = g_attrNames; pRow->pszName; ++pRow)
        Entry(std::string(" ") + pRow->pszName + "=\"");
    Keywords(AttrName(ATTR_MTYPE), g_meterTypeRows);
    Keywords(AttrName(ATTR_SCTYPE), g_scaleTypeRows);
    for (const SelectorRow* pRow = g_selectorRows; pRow->pszName; ++pRow)
        Entry(std::string(" ") + pRow->pszName + "=");
    for (const char* psz : {"<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n",
                            "<?xml",
                            "?>",
                            "<!--",
                            "-->",
                            "<!DOCTYPE",
                            "standalone=\"yes\"",
                            "&amp;",
                            "&lt;",
                            "&gt;",
                            "&quot;",
                            "&apos;",
                            "&#x7;",
                            "&#x41;",
                            "&#x}",
                            " glt",
                            "0x",
                            "\"/>",
                            "\">",
                            "2147483647",
                            "-2147483648",
                            "4294967295"})
        Entry(psz);
    Entry(std::string_view("\0", 1));
    return 0;
}
