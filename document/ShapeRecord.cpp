// The table of a shape's fields, and the records that are written and read by it.
#include "document/ShapeRecord.h"

#include <array>
#include <climits>
#include <cstring>
#include <string_view>

namespace {

struct Range {
    int32_t nMin;
    int32_t nMax;
};
constexpr Range ANY{INT_MIN, INT_MAX};

consteval ShapeRow Field(AttrId nId, const AttrForm* pForm, int32_t ShapeStyle::*pField,
                         std::size_t nPlace, Range range, const char* pszMeaning)
{
    const int32_t nDefault = ShapeStyle{}.*pField;
    return {{{nId, pForm, nDefault, range.nMin, range.nMax, pszMeaning}, pField}, nPlace};
}

// What is no word of the style: the class reads and writes it in its own way.
consteval ShapeRow Part(AttrId nId, const AttrForm* pForm, std::size_t nPlace,
                        const char* pszMeaning)
{
    return {{{nId, pForm, 0, 0, 0, pszMeaning}, nullptr}, nPlace};
}

// In the order in which they are written.
constexpr ShapeRow g_rows[] = {
    Field(ATTR_STYLE, &g_formHex, &ShapeStyle::nStyle, offsetof(QELSHAPEATTR, nStyle), ANY,
          "low 16 bits: fill style; high 16 bits: width of the 3D border in pixels, 0 meaning 2"),
    Field(ATTR_DR, &g_formDecimal, &ShapeStyle::nDraft, offsetof(QELSHAPEATTR, nDraft),
          {0, DRAFT_COUNT - 1}, "hatch (0 to 9) or gradient (10 to 37)"),
    Field(ATTR_FG, &g_formColor, &ShapeStyle::clrA, offsetof(QELSHAPEATTR, clrA), ANY,
          "colour A: the 1 bits of a hatch, the second colour of a gradient, the colour of a text"),
    Field(ATTR_BG, &g_formColor, &ShapeStyle::clrB, offsetof(QELSHAPEATTR, clrB), ANY,
          "colour B: the 0 bits of a hatch, the first colour of a gradient, the gaps of a styled "
          "line, "
          "the background of a text"),
    Field(ATTR_CLR, &g_formColor, &ShapeStyle::clrPen, offsetof(QELSHAPEATTR, clrPen), ANY,
          "colour of the outline"),
    Field(ATTR_LNSTYLE, &g_formDecimal, &ShapeStyle::nPenStyle, offsetof(QELSHAPEATTR, nPenStyle),
          {0, 6},
          "style of the outline: 0 solid, 1 dash, 2 dot, 3 dash dot, 4 dash dot dot, 5 none, "
          "6 inside the frame"),
    Field(ATTR_LNWID, &g_formDecimal, &ShapeStyle::nPenWidth, offsetof(QELSHAPEATTR, nPenWidth),
          {0, INT_MAX}, "width of the outline in pixels; 0 for none"),
    Part(ATTR_CRD, &g_formCrd, offsetof(QELSHAPEATTR, nGeometry),
         "the coordinates, in drawing units"),
    Part(ATTR_TEXT, &g_formText, offsetof(QELSHAPEATTR, szText), "the text, at most 255 bytes"),
    Field(ATTR_FLAG, &g_formHex, &ShapeStyle::nFlags, offsetof(QELSHAPEATTR, nFlags), ANY,
          "host values, pressed shift and keep modes"),
};

constexpr std::size_t SizeOf(const ShapeRow& row)
{
    if (row.pField) return sizeof(int32_t);
    return row.nId == ATTR_TEXT ? sizeof QELSHAPEATTR::szText : sizeof QELSHAPEATTR::nGeometry;
}

consteval bool HaveFieldsAndPlacesOfTheirOwn(const ShapeRow& row, const ShapeRow& other)
{
    if (row.pField && row.pField == other.pField) return false;
    return row.nPlace + SizeOf(row) <= other.nPlace || other.nPlace + SizeOf(other) <= row.nPlace;
}

template <std::size_t N>
consteval bool AreWhole(const ShapeRow (&rows)[N])
{
    std::size_t nStyle = 0;
    std::size_t nRecord = sizeof QELSHAPEATTR::nSize;
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            if (!HaveFieldsAndPlacesOfTheirOwn(rows[i], rows[j])) return false;
        if (rows[i].nPlace < sizeof QELSHAPEATTR::nSize) return false;
        if (rows[i].pField) nStyle += sizeof(int32_t);
        nRecord += SizeOf(rows[i]);
    }
    return nStyle == sizeof(ShapeStyle) && nRecord == sizeof(QELSHAPEATTR);
}
static_assert(AreWhole(g_rows), "a row for each field of a shape, and one for each of its record");

// One bit of an element tells whether it has an attribute of a shape at all.
template <std::size_t N>
consteval bool AreToldApart(const ShapeRow (&rows)[N])
{
    uint32_t nSeen = XmlSeenBit(AttrKeyOf(ATTR_ID));
    for (const auto& row : rows) {
        if (row.nId == ATTR_TEXT) continue;
        const uint32_t nBit = XmlSeenBit(AttrKeyOf(row.nId));
        if (nSeen & nBit) return false;
        nSeen |= nBit;
    }
    return true;
}
static_assert(AreToldApart(g_rows), "the attributes of shapes are told apart by one bit");

constexpr std::array<const ShapeRow*, ATTR_COUNT + 1> g_rowOf = [] {
    std::array<const ShapeRow*, ATTR_COUNT + 1> rows{};
    for (const auto& row : g_rows)
        if (row.nId != ATTR_TEXT) rows[static_cast<std::size_t>(row.nId)] = &row;
    return rows;
}();

} // namespace

std::span<const ShapeRow> ShapeRows()
{
    return g_rows;
}

const ShapeRow* ShapeRowOf(int32_t nId)
{
    return g_rowOf[static_cast<std::size_t>(nId)];
}

int TakeShapeData(const ShapeData& data, const ShapePlaces& places)
{
    char* const pszOld = *places.ppszText;
    const std::string_view text(data.pText, data.nText);
    const bool bSameText = pszOld ? std::string_view(pszOld) == text : text.empty();
    char* pszText = pszOld;
    if (!bSameText) {
        pszText = TakePoolText(places.pPool, data.pText, data.nText);
        if (data.nText && !pszText) return 0;
    }
    if (!places.pGeometry->Set(places.pPool, data.pnWords, data.nWords,
                               ShapeWordsOf(places.nType, data.pnWords[0]))) {
        if (!bSameText) GivePoolText(places.pPool, pszText);
        return 0;
    }
    if (!bSameText) GivePoolText(places.pPool, pszOld);
    *places.ppszText = pszText;
    *places.pStyle = *data.pStyle;
    return 1;
}

int WriteShapeRecord(const ShapeData& data, void* pBlock)
{
    if (!pBlock) return 0;
    auto* pBytes = static_cast<char*>(pBlock);
    std::memset(pBytes, 0, sizeof(QELSHAPEATTR));
    const DWORD nSize = sizeof(QELSHAPEATTR);
    std::memcpy(pBytes + offsetof(QELSHAPEATTR, nSize), &nSize, sizeof nSize);
    for (const ShapeRow& row : g_rows)
        if (row.pField)
            std::memcpy(pBytes + row.nPlace, &(data.pStyle->*row.pField), sizeof(int32_t));
    std::memcpy(pBytes + offsetof(QELSHAPEATTR, nGeometry), data.pnWords,
                static_cast<std::size_t>(data.nWords) * sizeof(int32_t));
    std::memcpy(pBytes + offsetof(QELSHAPEATTR, szText), data.pText, data.nText);
    return 1;
}

int CShapeRecord::Read(const void* pBlock, int32_t nType)
{
    if (!pBlock) return 0;
    DWORD nSize = 0;
    const auto* pBytes = static_cast<const char*>(pBlock);
    std::memcpy(&nSize, pBytes + offsetof(QELSHAPEATTR, nSize), sizeof nSize);
    if (nSize != sizeof(QELSHAPEATTR)) return 0;
    for (const ShapeRow& row : g_rows)
        if (row.pField) std::memcpy(&(m_style.*row.pField), pBytes + row.nPlace, sizeof(int32_t));
    std::memcpy(m_nWords, pBytes + offsetof(QELSHAPEATTR, nGeometry), sizeof m_nWords);
    m_nUsed = UsedWords(m_nWords, nType);
    std::memcpy(m_szText, pBytes + offsetof(QELSHAPEATTR, szText), sizeof m_szText);
    m_szText[sizeof m_szText - 1] = 0; // the host may have left the end mark out
    return 1;
}

ShapeData CShapeRecord::Data() const
{
    return {&m_style, m_nWords, m_nUsed, m_szText, std::strlen(m_szText)};
}
