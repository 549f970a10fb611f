// The base of every geometric element: the style that all shapes share and the store of
// coordinates, whose form goes by the type; only the point lists read and write theirs in their own
// way. The classes of the shapes are in document/QELDocLeaves.h.
#pragma once

#include "document/Crd.h"
#include "document/QELDocElm.h"
#include "document/ShapeRecord.h"
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
    static std::span<const ShapeRow> Attrs() { return ShapeRows(); }
    static void VisitAttrs(AttrVisitor pfnVisit, void* pUser);

protected:
    [[nodiscard]] const int32_t* Words() const { return m_geometry.Words(); }
    [[nodiscard]] int32_t* Words() { return m_geometry.Words(); }
    int TakeWords(const int32_t* pnWords, int32_t nCount); // 0 without memory: all is as before

private:
    [[nodiscard]] ShapePlaces Places()
    {
        return {Pool(), Type(), &m_style, &m_geometry, &m_pszText};
    }
    void SaveRow(const ShapeRow& row);

    bool m_bLacksMemory = false;
    ShapeStyle m_style;
    CGeometry m_geometry;
    char* m_pszText = nullptr; // null for none
};
