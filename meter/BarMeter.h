// The base of the bars: the value is the length of a filled part of a rectangle, with a straight
// scale beside it. A vertical and a horizontal class supply the geometry, each with a variant that
// has a three-dimensional body.
#pragma once

#include "base/Rects.h"
#include "meter/BarGeometry.h"
#include "meter/Meter.h"

class CBarMeter : public CMeter {
public:
    // hRegion: the outline of the meter's face, which clips the bar; not owned, and may be null:
    // then nothing is filled. rcBar: the scale's place, and the span of the values.
    CBarMeter(HRGN hRegion, const RECT& rcBar) noexcept : m_hRegion(hRegion), m_rcBar(rcBar) {}

    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override; // unlike on dials, both ends always have their number
    int DrawPin(HDC hdc, float fValue, uint32_t nFlags) override; // bars have no pointer
    int DrawPin(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int ErasePin(HDC hdc, float fValue, uint32_t nFlags) override;
    int ErasePin(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawAlarmZones(HDC hdc) override; // nothing
    int DrawFrame(HDC hdc) override;      // nothing, in the flat bars
    int DrawValueText(HDC hdc, float fValue) override;
    int DrawValueText(HDC hdc, int32_t nValue) override;

    void SetBarStyle(int32_t nStyle) { m_nBarStyle = nStyle; }
    void SetBackColor(COLORREF clr) { m_clrBack = clr; }
    void SetBarColor(COLORREF clr) { m_clrBar = clr; }
    void SetScaleColor(COLORREF clr) { m_clrScale = clr; }
    void SetSecondScaleColor(COLORREF clr) { m_clrScale2 = clr; }
    void SetEmptyColor(COLORREF clr) { m_clrEmpty = clr; }
    void SetLabelColor(COLORREF clr) { m_clrLabel = clr; }
    [[nodiscard]] int32_t BarStyle() const { return m_nBarStyle; }
    [[nodiscard]] COLORREF BackColor() const { return m_clrBack; }
    [[nodiscard]] COLORREF BarColor() const { return m_clrBar; }
    [[nodiscard]] COLORREF ScaleColor() const { return m_clrScale; }
    [[nodiscard]] COLORREF SecondScaleColor() const { return m_clrScale2; }
    [[nodiscard]] COLORREF EmptyColor() const { return m_clrEmpty; }
    [[nodiscard]] COLORREF LabelColor() const { return m_clrLabel; }

    [[nodiscard]] HRGN Region() const { return m_hRegion; }
    [[nodiscard]] const RECT& BarRect() const { return m_rcBar; }
    // What the bar fills: its extent across is the column's (vertical) or the bar's (horizontal).
    [[nodiscard]] virtual RECT Column() const = 0;
    // The same as far as it is known without the face's region, by what holds its shapes.
    [[nodiscard]] virtual RECT ColumnIn(const RECT& rcFace) const = 0;
    [[nodiscard]] RECT PaintedRect(const RECT& rcFace) const override;
    // The rectangle between two values, empty when it has no length.
    [[nodiscard]] virtual RECT Segment(double fFrom, double fTo) const = 0;

protected:
    // The straight scale, as the two directions have it: its extent across, a point at so many
    // pixels from its right or lower side beside tick nTick, and where the number beside a tick
    // begins. text: its cells; nWidth: how wide the font makes it, which may be more.
    [[nodiscard]] virtual int32_t ScaleBreadth() const = 0;
    [[nodiscard]] virtual POINT BesideTick(uint32_t nTick, int32_t nFromSide) const = 0;
    [[nodiscard]] virtual POINT LabelPlace(uint32_t nTick, SIZE text, int32_t nWidth,
                                           int32_t nFromSide) const = 0;
    struct Line {
        POINT ptFrom;
        POINT ptTo;
    };
    [[nodiscard]] virtual Line LineAlong(int32_t nFromSide) const = 0; // the whole scale

    // The box of the face's region; empty without one, and when the system refuses to tell it.
    [[nodiscard]] RECT FaceBox() const;
    // What every layer asks first.
    [[nodiscard]] bool HasBar() const;
    [[nodiscard]] BarScale Scale() const { return {GetMin(), GetMax(), m_rcBar, Px()}; }
    void PaintEmpty(HDC hdc, const BarPart& part) const;
    // All parts of the bar for a value that is on the scale.
    virtual int PaintParts(HDC hdc, const BarParts& parts);

private:
    void AddScale(CRectHull* pHull) const;
    void AddLabels(CRectHull* pHull) const;
    int FillTo(HDC hdc, double fValue);

    HRGN m_hRegion;
    RECT m_rcBar;
    COLORREF m_clrBack = 0xFFFFFF;
    COLORREF m_clrBar = 0;
    COLORREF m_clrScale = 0xAAAAAA;
    COLORREF m_clrScale2 = 0xAAAAAA;
    COLORREF m_clrLabel = 0xAAAAAA;
    int32_t m_nBarStyle = 0;
    COLORREF m_clrEmpty = 0;
};

// The meter type "vert": a vertical bar that grows upwards.
class CUpBarMeter : public CBarMeter {
public:
    CUpBarMeter(HRGN hRegion, const RECT& rcBar) noexcept;

    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT ColumnIn(const RECT& rcFace) const override;
    [[nodiscard]] RECT Segment(double fFrom, double fTo) const override;

protected:
    [[nodiscard]] int32_t ScaleBreadth() const override;
    [[nodiscard]] POINT BesideTick(uint32_t nTick, int32_t nFromSide) const override;
    [[nodiscard]] POINT LabelPlace(uint32_t nTick, SIZE text, int32_t nWidth,
                                   int32_t nFromSide) const override;
    [[nodiscard]] Line LineAlong(int32_t nFromSide) const override;

private:
    [[nodiscard]] RECT ColumnNow() const;

    RECT m_rcColumn; // the region's extent across, the bar's along; empty without a region
};

// The meter type "horz": a horizontal bar that grows to the right.
class CLongBarMeter : public CBarMeter {
public:
    CLongBarMeter(HRGN hRegion, const RECT& rcBar) noexcept;

    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT ColumnIn(const RECT& rcFace) const override;
    [[nodiscard]] RECT Segment(double fFrom, double fTo) const override;

protected:
    [[nodiscard]] int32_t ScaleBreadth() const override;
    [[nodiscard]] POINT BesideTick(uint32_t nTick, int32_t nFromSide) const override;
    [[nodiscard]] POINT LabelPlace(uint32_t nTick, SIZE text, int32_t nWidth,
                                   int32_t nFromSide) const override;
    [[nodiscard]] Line LineAlong(int32_t nFromSide) const override;
};
