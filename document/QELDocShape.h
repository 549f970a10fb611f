// The base of every geometric element: the style that all shapes share and the store of
// coordinates. A leaf class tells the form of its coordinates and adds nothing else; only the point
// lists read and write theirs in their own way.
#pragma once

#include "document/Attributes.h"
#include "document/QELDocElm.h"
#include "include/QELEngine.h"

#include <span>

// The longest text of coordinates: 16 points of any size, and the ending zero.
constexpr std::size_t CRD_TEXT_SIZE = 400;

// The coordinates of a class, one letter a number: x and y are positions, r an unsigned radius, w
// and h sizes.
struct CrdForm {
    const char* pszLayout;  // empty: a list of points
    bool bBox;              // the first four numbers are a rectangle
    const char* pszDefault; // what a new element has
    const char* pszMeaning; // one line for the documentation
};

class CQELDocShape : public CQELDocElm {
public:
    CQELDocShape(XmlContext** ppXml, int32_t nType) noexcept;

    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override;
    int GetRect(RECT* prc) const override;
    int SetRect(const RECT& rc) override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int Load() override;
    int Save() override;

    virtual int ParseCrd(const char* pszText);
    virtual int FormatCrd(char* pszOut) const; // CRD_TEXT_SIZE bytes
    [[nodiscard]] virtual const CrdForm& GetCrdForm() const = 0;

    void TakeFields(const CQELDocShape& source); // all data of a shape

    // The attributes in the order in which they are read and written.
    static std::span<const AttrRow<CQELDocShape>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);

protected:
    struct Shifts { // by which MapRect moves: dx and dy of the edges, then of the sizes
        int32_t nX;
        int32_t nY;
        bool bFlatX; // the old or the new width is 0
        bool bFlatY;
    };
    static Shifts ShiftsBetween(const RECT& rcOld, const RECT& rcNew);
    [[nodiscard]] const int32_t* Words() const { return m_nGeometry; }
    [[nodiscard]] int32_t* Words() { return m_nGeometry; }
    void TakeDefaultCrd(); // for the constructors of the leaf classes

private:
    int LoadRow(const AttrRow<CQELDocShape>& row);
    int SaveRow(const AttrRow<CQELDocShape>& row);

    int32_t m_nStyle = 0;
    int32_t m_nDraft = 0;
    int32_t m_clrFore = 0xFFFFFF;
    int32_t m_clrBack = 0;
    int32_t m_clrPen = 0xFFFFFF;
    int32_t m_nLineStyle = 0;
    int32_t m_nLineWidth = 1;
    char m_szText[QEL_TEXT_SIZE] = {};
    int32_t m_nFlags = 0;
    int32_t m_nGeometry[QEL_SHAPE_WORDS] = {};
};
