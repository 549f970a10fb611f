// Attributes as data: the names by attribute id, the textual forms, and the rows in which an
// element class lists its attributes. One row serves loading, saving, the checker and the
// documentation.
#pragma once

#include "base/Keywords.h"
#include "xml/XmlTree.h"
#include "xml/XmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// The attributes and their names, in the order of their numbers: the numbers, their count and the
// table of names are all made of this list.
#define QEL_ATTRIBUTES(ATTR)                                                                       \
    ATTR(ATTR_ID, "id")                                                                            \
    ATTR(ATTR_TYPE, "type")                                                                        \
    ATTR(ATTR_WIDTH, "width")                                                                      \
    ATTR(ATTR_HEIGHT, "height")                                                                    \
    ATTR(ATTR_LST_ROTATE, "lst_rotate")                                                            \
    ATTR(ATTR_STYLE, "style")                                                                      \
    ATTR(ATTR_CLR, "clr")                                                                          \
    ATTR(ATTR_LNSTYLE, "lnstyle")                                                                  \
    ATTR(ATTR_LNWID, "lnwid")                                                                      \
    ATTR(ATTR_DR, "dr")                                                                            \
    ATTR(ATTR_FG, "fg")                                                                            \
    ATTR(ATTR_BG, "bg")                                                                            \
    ATTR(ATTR_CRD, "crd")                                                                          \
    ATTR(ATTR_FLAG, "flag")                                                                        \
    ATTR(ATTR_D, "d")                                                                              \
    ATTR(ATTR_REF, "ref")                                                                          \
    ATTR(ATTR_ROLL, "roll")                                                                        \
    ATTR(ATTR_XMOVE, "xmove")                                                                      \
    ATTR(ATTR_YMOVE, "ymove")                                                                      \
    ATTR(ATTR_STX, "stx")                                                                          \
    ATTR(ATTR_SCID, "scid")                                                                        \
    ATTR(ATTR_HIDESC, "hidesc")                                                                    \
    ATTR(ATTR_MIN, "min")                                                                          \
    ATTR(ATTR_MAX, "max")                                                                          \
    ATTR(ATTR_SCTYPE, "sctype")                                                                    \
    ATTR(ATTR_PIN, "pin")                                                                          \
    ATTR(ATTR_MTID, "mtid")                                                                        \
    ATTR(ATTR_USC, "usc")                                                                          \
    ATTR(ATTR_UPIN, "upin")                                                                        \
    ATTR(ATTR_MTYPE, "mtype")                                                                      \
    ATTR(ATTR_IMIN, "imin")                                                                        \
    ATTR(ATTR_IMAX, "imax")                                                                        \
    ATTR(ATTR_SET, "set")                                                                          \
    ATTR(ATTR_VALUE, "value")

enum AttrId : int32_t {
#define QEL_ATTR_NUMBER(nId, pszName) nId,
    QEL_ATTRIBUTES(QEL_ATTR_NUMBER)
#undef QEL_ATTR_NUMBER
        ATTR_COUNT,  // of those that have a name
    ATTR_TEXT = 1000 // not an attribute: the element's own text, which has its place among them
};

inline constexpr KeywordRow g_attrNames[] = {
#define QEL_ATTR_ROW(nId, pszName) {nId, pszName},
    QEL_ATTRIBUTES(QEL_ATTR_ROW)
#undef QEL_ATTR_ROW
        {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_attrNames), "ids and names are unique and the end mark is there");

// The key that the XML tree has of an attribute's name.
constexpr uint32_t AttrKeyOf(AttrId nId)
{
    const std::string_view name = g_attrNames[nId].pszName;
    return XmlNameKey(name.data(), name.size());
}

// The name by which an attribute is known; "(text)" for the element's text.
const char* AttrName(AttrId nId);

// The value of an attribute of the XML element under the cursor, null when it has none.
const XmlAttr* FindXmlAttr(const XmlContext* pXml, AttrId nId);
const char* GetXmlAttr(const XmlContext* pXml, AttrId nId);

// The id of an attribute of the XML tree; ATTR_COUNT for a name that is none.
int32_t AttrIdOf(const XmlAttr& attr);

// A textual form of one 32-bit value. Parse: 0 when the text is refused; the value is then as it
// was. Format: the length, 0 when it does not fit.
struct AttrForm {
    const char* pszName; // as the documentation and the checker call it
    int (*pfnParse)(const char* pszText, int32_t* pnValue);
    std::size_t (*pfnFormat)(int32_t nValue, char* pszOut, std::size_t nSize);
    bool (*pfnIsClean)(const char* pszText); // whether the whole text is what the form asks for
};

extern const AttrForm g_formDecimal; // digits with an optional sign; what is no number reads as 0
extern const AttrForm g_formHex;     // "0x" and hexadecimal digits
extern const AttrForm g_formColor;   // the same, and the word "glt" for the blink bit
extern const AttrForm g_formScan;    // digits with an optional sign; what is no number is refused
extern const AttrForm g_formCount;   // the same without sign; a negative number wraps
extern const AttrForm g_formKind;    // decimal; anything but 0 to 2 reads as 0
extern const AttrForm g_formStatus;  // decimal; a negative number reads as 0
extern const AttrForm g_formCrd;     // the coordinates: the class reads and writes them itself
extern const AttrForm g_formText;    // text, likewise

struct AttrInfo {
    AttrId nId;
    const AttrForm* pForm;
    int32_t nDefault; // a field that holds it is not written
    int32_t nMin;     // what an author may mean; values outside are taken as they are
    int32_t nMax;
    const char* pszMeaning;               // one line for the documentation
    const char* pszWrittenWhen = nullptr; // where the class has a rule of its own for it
};

template <class T>
struct AttrRow : AttrInfo {
    int32_t T::*pField; // null for the coordinates and the text
};

constexpr std::size_t ATTR_TEXT_SIZE = 32; // room for one formatted value

// Reads one attribute of the XML element under the cursor into its field. 0: it is not there or is
// refused, and the field keeps what it holds.
template <class T>
int LoadAttr(T* pElm, const AttrRow<T>& row, XmlContext* pXml)
{
    const char* pszValue = GetXmlAttr(pXml, row.nId);
    return pszValue ? row.pForm->pfnParse(pszValue, &(pElm->*row.pField)) : 0;
}

// Writes an attribute of the element that was begun last. pszValue ends with a zero and is not
// empty.
void WriteAttrText(CXmlWriter& writer, AttrId nId, const char* pszValue, std::size_t nLen);

// Writes one field as an attribute: every form spells every value within the room.
template <class T>
void WriteAttr(const T* pElm, const AttrRow<T>& row, CXmlWriter& writer)
{
    char szValue[ATTR_TEXT_SIZE];
    const std::size_t nLen = row.pForm->pfnFormat(pElm->*row.pField, szValue, sizeof szValue);
    WriteAttrText(writer, row.nId, szValue, nLen);
}

// The same, unless the field holds its default.
template <class T>
void SaveAttr(const T* pElm, const AttrRow<T>& row, CXmlWriter& writer)
{
    if (pElm->*row.pField != row.nDefault) WriteAttr(pElm, row, writer);
}

template <class T>
void LoadAttrs(T* pElm, std::span<const AttrRow<T>> rows, XmlContext* pXml)
{
    for (const auto& row : rows) LoadAttr(pElm, row, pXml);
}

template <class T>
void SaveAttrs(const T* pElm, std::span<const AttrRow<T>> rows, CXmlWriter& writer)
{
    for (const auto& row : rows) SaveAttr(pElm, row, writer);
}

using AttrVisitor = void (*)(const AttrInfo& info, void* pUser);
