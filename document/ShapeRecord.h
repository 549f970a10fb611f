// What a shape holds, on the document side and on the view side: the words of its style, its
// coordinates and its text. One table tells of each field which attribute of the file it is and
// where it stands in the record that hosts exchange.
#pragma once

#include "document/Attributes.h"
#include "document/Geometry.h"
#include "include/QELEngine.h"

#include <cstddef>
#include <cstdint>
#include <span>

// Named as in the record, whose words have the same bits.
struct ShapeStyle {
    int32_t nStyle = 0;
    int32_t nDraft = 0;
    int32_t clrA = 0xFFFFFF;
    int32_t clrB = 0;
    int32_t clrPen = 0xFFFFFF;
    int32_t nPenStyle = 0;
    int32_t nPenWidth = 1;
    int32_t nFlags = 0;
};

struct ShapeRow : AttrRow<ShapeStyle> {
    std::size_t nPlace; // in QELSHAPEATTR
};

std::span<const ShapeRow> ShapeRows();   // in the order in which they are written
const ShapeRow* ShapeRowOf(int32_t nId); // null for an attribute that shapes do not have

// All fields of a shape, for handing them on without spelling the record out.
struct ShapeData {
    const ShapeStyle* pStyle;
    const int32_t* pnWords;
    int32_t nWords;
    const char* pText; // not ended by a zero
    std::size_t nText;
};

// Where one side keeps the fields.
struct ShapePlaces {
    CPool* pPool;
    int32_t nType;
    ShapeStyle* pStyle;
    CGeometry* pGeometry;
    char** ppszText; // null for none
};

// A text that stays the same and words of the same number need no memory. 0 without memory: then
// all is as before.
int TakeShapeData(const ShapeData& data, const ShapePlaces& places);

int WriteShapeRecord(const ShapeData& data, void* pBlock); // 0 without a block

// The fields that a host's record tells.
class CShapeRecord {
public:
    int Read(const void* pBlock, int32_t nType); // 0 without a block and for another size
    [[nodiscard]] ShapeData Data() const;

private:
    ShapeStyle m_style;
    int32_t m_nWords[QEL_SHAPE_WORDS];
    int32_t m_nUsed = 0; // of the words
    char m_szText[QEL_TEXT_SIZE];
};
