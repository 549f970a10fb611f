// The table of element types: one row a type, with the number, the tag in the file, the makers of
// both halves of an element, its record, its attributes, and what a host and a tool ask of it. The
// table itself stands in engine/ElementTypes.cpp, where every class is known, and is handed down.
#pragma once

#include "base/Keywords.h"
#include "document/Attributes.h"
#include "document/KeyIndex.h"
#include "document/ShapeForms.h"
#include "include/QELEngine.h"

#include <array>
#include <cstdint>
#include <string_view>

class CPool;
class CQELDocElm;
class CQELViewElm;
struct CrdForm;
struct DocContext;

// What is true of all elements of a type; a sum of these.
enum ElementTraits : uint32_t {
    TRAIT_SHAPE = 1,       // drawn by one call; has the record and the attributes of shapes
    TRAIT_OUTLINE = 2,     // a shape without an inside
    TRAIT_ANCHORED = 4,    // follows keep modes
    TRAIT_SHIFTS = 8,      // shifts its rectangle while it is pressed
    TRAIT_AREA = 16,       // gives an area to a meter that it is the face of
    TRAIT_TEXT = 32,       // shows its text
    TRAIT_HOST_VALUES = 64 // registered with the view, which hands it the host's values
};

struct ElementType {
    int32_t nId;
    const char* pszName;
    uint32_t nTraits;
    std::size_t nRecord;  // bytes of the record; 0 for a type without a class
    const CrdForm* pForm; // of the coordinates; null where they go by another attribute
    // Null, both: known, and skipped with its contents.
    CQELDocElm* (*pfnMakeDoc)(DocContext* pContext, CPool* pPool);
    CQELViewElm* (*pfnMakeView)(CPool* pPool, int32_t nRefW, int32_t nRefH);
    // Null: no attributes but the identifier.
    void (*pfnVisitAttrs)(AttrVisitor pfnVisit, void* pUser);
    const char* pszMeaning; // one line for the documentation

    [[nodiscard]] constexpr bool Is(ElementTraits trait) const { return (nTraits & trait) != 0; }
};

class CElementTypes {
public:
    static constexpr std::size_t ROWS = QEL_TYPE_NONE + 1; // the row that ends the table counted

    constexpr explicit CElementTypes(const ElementType (&rows)[ROWS]) : m_pRows(rows), m_index(rows)
    {
        for (std::size_t n = 0; rows[n].pszName; ++n) m_names[n] = rows[n].pszName;
    }

    // The rows in the order of their numbers, ended by one without a name.
    [[nodiscard]] const ElementType* Rows() const { return m_pRows; }
    // The row of a number, null when there is none.
    [[nodiscard]] const ElementType* Row(int32_t nType) const
    {
        return nType >= 0 && nType < QEL_TYPE_NONE ? &m_pRows[nType] : nullptr;
    }
    // The tag of a type, empty when it has none.
    [[nodiscard]] std::string_view Name(int32_t nType) const
    {
        return nType >= 0 && nType < QEL_TYPE_NONE ? m_names[static_cast<std::size_t>(nType)]
                                                   : std::string_view();
    }
    // The row of an element's tag, null for an unknown one.
    [[nodiscard]] const ElementType* Of(XmlNode* pNode) const;

    // A new element of a type; null when the type has no class, or without memory.
    CQELDocElm* MakeDoc(int32_t nType, DocContext* pContext, CPool* pPool = nullptr) const;
    CQELViewElm* MakeView(int32_t nType, CPool* pPool, int32_t nRefW, int32_t nRefH) const;

private:
    const ElementType* m_pRows;
    CKeyIndex<ROWS> m_index;
    std::array<std::string_view, QEL_TYPE_NONE> m_names{}; // with their lengths
};

// Whether a table is in the order of its numbers, with each tag there once, and its shapes are
// those that have a form of coordinates.
consteval bool IsSoundTypeTable(const ElementType (&rows)[CElementTypes::ROWS])
{
    for (int32_t n = 0; n < QEL_TYPE_NONE; ++n)
        if (rows[n].nId != n || rows[n].Is(TRAIT_SHAPE) != IsShapeType(n) ||
            HasFunction(rows[n].pfnMakeDoc) != HasFunction(rows[n].pfnMakeView))
            return false;
    return IsSoundTable(rows);
}
