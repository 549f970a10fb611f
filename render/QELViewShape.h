// The base of every static drawing element: the style that a document shape hands over, the host
// parameters that recolour shapes, and the sequence in which every shape selects and releases its
// pen and brush around its one drawing call. A leaf class tells how its geometry is mapped and
// turned, and makes its call. The document side is document/QELDocShape.h.
#pragma once

#include "base/Keywords.h"
#include "base/PixelPen.h"
#include "base/Rects.h"
#include "document/ShapeRecord.h"
#include "render/LiveLayer.h"
#include "render/QELViewElm.h"
#include "render/UnitMap.h"

// The fill styles by keyword, spelled as drawing tools spell them, "Stoke" included.
extern const KeywordRow* const g_fillStyleRows;

// A shape's geometry in device units.
struct DeviceFigure {
    RECT rcBox;                // what a gradient runs over
    POINT pts[QEL_MAX_POINTS]; // for the classes that have points
    int nPoints;
    CPixelScale px;
};

class CMonoCanvas;
class COutlineProbe;
class CQELViewShape;

// What is known of the area that a draw paints on.
enum class Reach : uint8_t {
    Nothing, // there is no draw: the shape cannot be mapped
    Known,   // no pixel outside of the rectangle that is told
    Unknown  // it may be anywhere
};

// The shapes that were the last to leave a colour set on the device context; null for none.
struct LeftColors {
    const CQELViewShape* pBack = nullptr;
    const CQELViewShape* pText = nullptr;

    void Add(const LeftColors& later);
    void Settle(HDC hdc); // sets them, as they are now, and owes no more
};

class CQELViewShape : public CQELViewElm {
public:
    CQELViewShape(int32_t nRefW, int32_t nRefH, int32_t nType, CPool* pPool = nullptr) noexcept;
    ~CQELViewShape() override;

    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override;
    [[nodiscard]] bool DrawsChildren() const override { return false; }
    bool PaintedRect(const QelRect& rcQel, RECT* prcOut) const override;
    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;
    bool MapUnits(const QelRect& rcQel, UnitMap* pOut) const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
    int SetColorParam(uint32_t nValue) override;
    int SetDraftParam(uint32_t nValue) override;
    int SetDraftForeParam(uint32_t nValue) override;
    int SetDraftBackParam(uint32_t nValue) override;
    [[nodiscard]] uint32_t GetParamMask() const override;
    [[nodiscard]] bool Blinks() const override;

    [[nodiscard]] bool LacksMemory() const override;
    // What a record holds. 0 without memory: then all is as before.
    int TakeData(const ShapeData& data);

    // The interior in device units, without pressed shift; the caller deletes it. Null when the
    // class has no interior or the mapping fails.
    [[nodiscard]] virtual HRGN MakeRegion(const QelRect& rcQel) const;

    // Adds all that MakeRegion goes by, apart from its argument, to a sum: two sums that agree
    // stand for one region, but for a chance of one in 2 to the power 64.
    void AddRegionSource(uint64_t* pnSum) const;

    // The same where cost follows from size: inside of rcShown it is that region, outside of it has
    // what keeps the bounding box, no more. *pbPart: set to true when it is not the whole.
    [[nodiscard]] virtual HRGN MakeShownRegion(const QelRect& rcQel, const RECT& rcShown,
                                               bool* pbPart) const;

    // What a full draw paints on, in device units and rather too much than too little.
    Reach PaintedArea(const QelRect& rcQel, uint32_t nFlags, RECT* prcOut) const;
    // The same of a meter's face, which may be drawn as an outline and filled.
    bool PaintedFace(const QelRect& rcQel, RECT* prcOut) const;
    // What holds the region of a shape, as a face has it. False when it has none.
    bool FaceHull(const QelRect& rcQel, RECT* prcOut) const;
    // How a record's geometry has become its own: by so many quarter turns, and a move.
    [[nodiscard]] UnitTurn TurnFrom(const int32_t* pnDocWords) const;

    // Enters itself for the colours that a full draw of it leaves set.
    virtual void LeaveColors(LeftColors* pOut) const;
    [[nodiscard]] COLORREF LeftBackColor() const;
    [[nodiscard]] COLORREF LeftTextColor() const { return BlinkColor(ShownB()); }

    // Host values of a frame or pattern around the shape, which do not ask its flags.
    void TakeColor(uint32_t clr);
    void TakeDraft(int32_t nDraft);
    void TakeBackColor(uint32_t clr);
    // Outline only, while it is on, whatever the style says: for the face of a meter.
    void SetHollow(bool bHollow)
    {
        if (bHollow != m_bHollow) NoteChange();
        m_bHollow = bHollow;
    }
    // As the face of a meter is drawn, until a record is loaded or the own fill is given back.
    void DressAsFace(uint32_t clr, bool bHollow);
    void GiveFillBack(int32_t nOwnDraft, uint32_t clrOwnB);

protected:
    // The geometry on the device. 0: it cannot be drawn.
    int MakeFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
    {
        pOut->px = rcQel.px;
        return MapFigure(rcQel, nFlags, pOut);
    }
    // Maps the geometry. 0: it cannot be drawn (a point list out of count).
    virtual int MapFigure(const QelRect& rcQel, uint32_t nFlags, DeviceFigure* pOut) const;
    // The one drawing call, with pen and brush selected. hBrush: null when none could be made.
    virtual void Paint(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                       const QelRect& rcQel) const;
    // Whether the call draws an ellipse in the figure's box, or parts of one.
    [[nodiscard]] virtual bool IsCurved() const { return false; }
    // What all points of the figure lie in, the outline apart.
    [[nodiscard]] virtual RECT Hull(const DeviceFigure& figure) const;
    // How far a draw may paint beyond the hull, in pixels. 0: that is not known.
    virtual int PaintMargin(CPixelScale px, int32_t* pnOut) const;
    // How far a draw of a figure paints beyond its hull at most. bFace: also as it may be drawn as
    // a meter's face.
    [[nodiscard]] virtual int32_t PaintReach(const DeviceFigure& figure, bool bFace) const;
    // What it paints on at most.
    [[nodiscard]] virtual RECT PaintedBox(const DeviceFigure& figure, bool bFace) const;
    // How far the region of a figure may reach beyond its hull.
    [[nodiscard]] virtual int32_t RegionReach(const DeviceFigure&) const { return 0; }
    // Whether the figure stands in its box, so that an empty one is nothing.
    [[nodiscard]] virtual bool IsBoxed() const { return false; }
    // Whether the figure can be filled.
    [[nodiscard]] bool IsArea() const { return !IsOutlineOnly() && Type() != QEL_TYPE_TEXT; }
    // The outline that is stroked, along the middle of the pen.
    virtual void Trace(const DeviceFigure& figure, COutlineProbe* pProbe) const;
    // Pixels by which what is painted may differ from the outline, by the rounding of curves,
    // slants and the corners of wide pens.
    [[nodiscard]] virtual double Roughness() const { return m_style.nPenWidth > 1 ? 1.5 : 1; }
    // What a record's geometry lies in, in drawing units; and what the view maps as a whole, which
    // is that where keep modes are not asked.
    [[nodiscard]] virtual RECT GeometryBounds(const int32_t* pnWords) const
    {
        return BoxBounds(pnWords);
    }
    static RECT BoxBounds(const int32_t* pnWords); // of two points
    [[nodiscard]] virtual uint32_t KeepFlags() const { return QEL_KEEP_NONE; }
    // Whether the outline is left out although it has a width.
    [[nodiscard]] virtual bool HidesOutline() const { return false; }
    // Whether the pen is put back before the brush.
    [[nodiscard]] virtual bool RestoresPenFirst() const { return false; }
    // Lines and arcs: no brush; a fill style paints the gaps of a styled pen in colour B.
    [[nodiscard]] virtual bool IsOutlineOnly() const { return false; }

    // The figure as GDI fills it, as far as it lies in rc: its region, and its box, for which it
    // must not be empty there. Null and false without memory.
    [[nodiscard]] HRGN FillOnCanvas(const DeviceFigure& figure, const RECT& rc,
                                    const QelRect& rcQel) const;
    bool FindOnCanvas(const DeviceFigure& figure, const RECT& rc, const QelRect& rcQel,
                      RECT* prcOut) const;
    // What of it shows, and some pixels more that give it the bounding box rcWhole.
    [[nodiscard]] HRGN FillShownOnCanvas(const DeviceFigure& figure, const RECT& rcWhole,
                                         const RECT& rcShown, const QelRect& rcQel) const;

    // Where the outline's middle is drawn: what GDI is told of a figure in a box, and of a point.
    [[nodiscard]] RECT DrawnBox(const DeviceFigure& figure) const;
    [[nodiscard]] POINT DrawnPoint(const DeviceFigure& figure, int n) const
    {
        return StrokedPoint(figure.pts[n], StrokedPixels(), figure.px);
    }
    // How wide the outline is in pixels: 0 without one, or where it keeps within the box.
    [[nodiscard]] int32_t StrokedPixels() const;

    // The style word as it is drawn.
    [[nodiscard]] uint32_t Style() const
    {
        const auto nStyle = static_cast<uint32_t>(m_style.nStyle);
        return m_bHollow ? nStyle & ~static_cast<uint32_t>(QEL_STYLE_FILL_MASK) : nStyle;
    }
    [[nodiscard]] uint32_t FillStyle() const { return Style() & QEL_STYLE_FILL_MASK; }
    [[nodiscard]] bool IsPressed(uint32_t nFlags) const
    {
        return (m_style.nFlags & QEL_FLAG_PRESS) && (nFlags & QEL_DRAW_PRESSED);
    }
    // The anchored mapping of a rectangle, with the pressed shift when nFlags asks for it.
    int MapAnchored(const QelRect& rcQel, const RECT& rc, uint32_t nFlags, RECT* prcOut) const;

    [[nodiscard]] const int32_t* Words() const { return m_geometry.Words(); }
    [[nodiscard]] int32_t* Words() // to be written to
    {
        NoteChange();
        return m_geometry.Words();
    }
    [[nodiscard]] const char* Text() const { return m_pszText ? m_pszText : ""; }

    // The quarter turn that the geometry has been given, in degrees.
    [[nodiscard]] int32_t Rotation() const { return m_nQuarters * 90; }
    void SetRotation(int32_t nTurn)
    {
        m_nTurned = static_cast<uint8_t>((m_nTurned + (nTurn - Rotation()) / 90) & 3);
        m_nQuarters = static_cast<int8_t>(nTurn / 90);
    }

    // The colours as the host has them shown. The fill of a meter's face stays the meter's.
    [[nodiscard]] uint32_t ShownPen() const { return Shown(LIVE_PEN, m_style.clrPen); }
    [[nodiscard]] uint32_t ShownA() const { return Shown(LIVE_FORE, m_style.clrA); }
    [[nodiscard]] uint32_t ShownB() const
    {
        return m_bFace ? m_style.clrB : Shown(LIVE_BACK, m_style.clrB);
    }

    static constexpr int32_t PAINT_SLACK = 2; // pixels, for the rounding of curves and slants

    int8_t m_nQuarters = 0;
    bool m_bHollow : 1 = false;
    // The quarter turns that the geometry has been given since it was that of a record. It shares
    // its byte with the two around it.
    uint8_t m_nTurned : 2 = 0;
    bool m_bFace : 1 = false; // it has the fill of a meter's face instead of its own
    ShapeStyle m_style;

private:
    void DrawFilled(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const;
    void DrawOutline(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const;
    void FillGaps(HDC hdc, const DeviceFigure& figure, const QelRect& rcQel) const;
    bool PaintedAs(bool bFace, const QelRect& rcQel, RECT* prcOut) const;
    [[nodiscard]] bool PaintOnCanvas(const CMonoCanvas& canvas, const DeviceFigure& figure,
                                     const QelRect& rcQel) const;
    void PaintWithin(HDC hdc, const DeviceFigure& figure, HBRUSH hBrush,
                     const QelRect& rcQel) const;
    [[nodiscard]] int32_t PenWidth(CPixelScale px) const; // as it is drawn at most
    [[nodiscard]] int32_t PenWidthFor(HDC hdc, const DeviceFigure& figure) const;
    [[nodiscard]] int32_t PenWidthOn(const DeviceFigure& figure) const; // a surface
    [[nodiscard]] bool TakesDraft() const
    {
        return (m_style.nFlags & QEL_FLAG_DRAFT_PARAM) && FillStyle();
    }

    [[nodiscard]] ShapeData Data() const;
    [[nodiscard]] uint32_t Shown(LiveColorPlace place, uint32_t clrOwn) const
    {
        return IsLive() ? LiveColorOr(place, clrOwn) : clrOwn;
    }
    [[nodiscard]] uint32_t LiveColorOr(LiveColorPlace place, uint32_t clrOwn) const;

    CGeometry m_geometry;
    char* m_pszText = nullptr; // null for none
};
