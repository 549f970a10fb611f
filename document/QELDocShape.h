// The base of every geometric element: the style that all shapes share and the store of
// coordinates, whose form goes by the type; only the point lists read and write theirs in their own
// way. The classes of the shapes are in document/QELDocLeaves.h.
#pragma once

#include "document/Attributes.h"
#include "document/Crd.h"
#include "document/Geometry.h"
#include "document/QELDocElm.h"
#include "include/QELEngine.h"

#include <span>

class CQELDocShape : public CQELDocElm {
public:
    using Record = QELSHAPEATTR;

    CQELDocShape(const DocMaking& making, int32_t nType) noexcept;
    ~CQELDocShape() override;

    int GetAttrSize(int* pnSize) const override;
    int GetAttr(void* pBlock) const override;
    int SetAttr(const void* pBlock) override;
    int GetRect(RECT* prc) const override;
    int SetRect(const RECT& rc) override;
    int MapRect(const RECT& rcOld, const RECT& rcNew) override;
    int Load() override;
    int Save() override;

    virtual int ParseCrd(const char* pszText);
    // Into CRD_TEXT_SIZE bytes; the length, 0 when they cannot be spelled.
    [[nodiscard]] virtual std::size_t FormatCrd(char* pszOut) const;
    [[nodiscard]] const CrdForm& GetCrdForm() const { return ShapeFormOf(Type()); }

    int TakeFields(const CQELDocShape& source); // all data of a shape
    [[nodiscard]] ShapeData Data() const;       // as long as the shape stays as it is
    [[nodiscard]] bool LacksMemory() const override { return m_bLacksMemory; }

    // The attributes in the order in which they are read and written.
    static std::span<const AttrRow<CQELDocShape>> Attrs();
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);

protected:
    [[nodiscard]] const int32_t* Words() const { return m_geometry.Words(); }
    [[nodiscard]] int32_t* Words() { return m_geometry.Words(); }
    int TakeWords(const int32_t* pnWords, int32_t nCount); // 0 without memory: all is as before

private:
    static const AttrRow<CQELDocShape> ATTRS[];
    static const AttrRow<CQELDocShape>* RowOf(int32_t nId);
    int SaveRow(const AttrRow<CQELDocShape>& row);

    bool m_bLacksMemory = false;
    int32_t m_nStyle = 0;
    int32_t m_nDraft = 0;
    int32_t m_clrFore = 0xFFFFFF;
    int32_t m_clrBack = 0;
    int32_t m_clrPen = 0xFFFFFF;
    int32_t m_nLineStyle = 0;
    int32_t m_nLineWidth = 1;
    char* m_pszText = nullptr; // null for none
    [[no_unique_address]] CGeometry m_geometry;
    int32_t m_nFlags = 0; // may lie in what the geometry leaves of its last word
};
