// The dial: the meter type "Arc" as it is, and the base of all other dials. It adds centre, radius
// and angles to the value model, clips all painting to the meter's rectangle, and has a complete
// set of plain layers: thin ticks, an arc as axis, numbers, a line as needle, alarm arcs.
#pragma once

#include "meter/DialGeometry.h"
#include "meter/Meter.h"

class CArcMeter : public CMeter {
public:
    // The radius in device units, the angles of minimum and maximum, and a rotation added to both.
    CArcMeter(int32_t nRadius, float fStart, float fEnd, double fOffset) noexcept;

    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    int DrawPin(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawPin(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    // Both erase at the stored whole value, whichever value they are passed.
    int ErasePin(HDC hdc, float fValue, uint32_t nFlags) override;
    int ErasePin(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawAlarmZones(HDC hdc) override;
    int DrawFrame(HDC hdc) override;
    int DrawValueText(HDC hdc, float fValue) override;
    int DrawValueText(HDC hdc, int32_t nValue) override;

    // 0 for an empty meter rectangle; else 1, also when the host's clip hides the meter.
    int Draw(HDC hdc, float fValue, uint32_t nFlags) override;
    int Draw(HDC hdc, int32_t nValue, uint32_t nFlags) override;

    [[nodiscard]] RECT PaintedRect(const RECT& rcFace) const override; // what all is clipped to

    void SetMeterRect(const RECT& rc) { m_rcMeter = rc; }
    void SetCentre(POINT pt) { m_ptCentre = pt; }
    void SetFaceColor(COLORREF clr) { m_clrFace = clr; }
    void SetScaleColor(COLORREF clr) { m_clrScale = clr; }
    void SetPinColor(COLORREF clr) { m_clrPin = clr; }
    void SetLabelColor(COLORREF clr) { m_clrLabel = clr; }
    void SetLowColor(COLORREF clr) { m_clrLow = clr; }
    void SetHighColor(COLORREF clr) { m_clrHigh = clr; }
    void SetPinStyle(int32_t n) { m_nPinStyle = n; }
    void SetAxisStyle(int32_t n) { m_nAxisStyle = n; }

    [[nodiscard]] const RECT& MeterRect() const { return m_rcMeter; }
    [[nodiscard]] POINT Centre() const { return m_ptCentre; }
    [[nodiscard]] COLORREF FaceColor() const { return m_clrFace; }
    [[nodiscard]] COLORREF ScaleColor() const { return m_clrScale; }
    [[nodiscard]] COLORREF PinColor() const { return m_clrPin; }
    [[nodiscard]] COLORREF LabelColor() const { return m_clrLabel; }
    [[nodiscard]] COLORREF LowColor() const { return m_clrLow; }
    [[nodiscard]] COLORREF HighColor() const { return m_clrHigh; }
    [[nodiscard]] int32_t PinStyle() const { return m_nPinStyle; }
    [[nodiscard]] int32_t AxisStyle() const { return m_nAxisStyle; }
    [[nodiscard]] int32_t Radius() const { return m_nRadius; }
    [[nodiscard]] float StartAngle() const { return m_fStart; }
    [[nodiscard]] float EndAngle() const { return m_fEnd; }
    [[nodiscard]] double AngleOffset() const { return m_fOffset; }

    [[nodiscard]] float AngleOf(double fValue) const; // of a value, clamped to the scale's ends
    [[nodiscard]] float TickAngle(uint32_t nTick) const;
    [[nodiscard]] bool HasLabel(uint32_t nTick) const; // whether a number stands at the tick

    // The alarm zones as they lie on the scale: mirrored, with the colours exchanged, when it is
    // reversed.
    struct AlarmZones {
        float fLow;  // the zone next to the start ends here
        float fHigh; // and the one next to the end begins here
        COLORREF clrAtStart;
        COLORREF clrAtEnd;
    };
    [[nodiscard]] AlarmZones GetAlarmZones() const;

protected:
    // The needle at an angle, or with bErase what takes it away again in the face colour. What it
    // looks like is the class's own.
    virtual int PaintNeedle(HDC hdc, float fAngle, bool bErase) const;
    // Whether there is a scale to point at, and room for a needle.
    [[nodiscard]] virtual bool HasNeedle() const;
    [[nodiscard]] bool HasSpan() const { return m_fStart < m_fEnd; }
    [[nodiscard]] bool HasScale() const { return HasSpan() && HasRange() && HasTicks(); }
    [[nodiscard]] DialSpan Span() const { return {m_fStart, m_fEnd, GetMin(), GetMax()}; }
    [[nodiscard]] float Sweep() const { return m_fEnd - m_fStart; }
    [[nodiscard]] POINT At(int32_t nRadius, float fAngle) const // of a circle around the centre
    {
        return PolarPoint(m_ptCentre, nRadius, fAngle, Px());
    }
    int DrawLabelsIn(HDC hdc, FontCell cell) const; // the labels in a font of this cell

private:
    int DrawNeedle(HDC hdc, double fValue) const;
    int EraseNeedle(HDC hdc, uint32_t nFlags) const;
    template <class Value>
    int DrawClipped(HDC hdc, Value value, uint32_t nFlags);

    RECT m_rcMeter{0, 0, 0, 0};
    POINT m_ptCentre{0, 0};
    COLORREF m_clrFace = 0;
    COLORREF m_clrScale = 0xAAAAAA;
    COLORREF m_clrPin = 0xAAAAAA;
    COLORREF m_clrLabel = 0xAAAAAA;
    COLORREF m_clrLow = 0;
    COLORREF m_clrHigh = 0;
    int32_t m_nRadius;
    float m_fStart;
    float m_fEnd;
    int32_t m_nPinStyle = 0;
    int32_t m_nAxisStyle = 0;
    double m_fOffset;
};

// The angles of the dials that have a full-circle switch: closed, or open at the bottom.
constexpr float DialStart(bool bFullCircle)
{
    return bFullCircle ? 0.0F : 30.0F;
}
constexpr float DialEnd(bool bFullCircle)
{
    return bFullCircle ? 360.0F : 330.0F;
}

// Keeps the clip of a device context and narrows it to a rectangle. bWholeContext: the whole state
// is saved, as on every system from version 3; else, and where that is refused, the clip region
// alone. Where neither can be kept nothing is narrowed, and nothing is to be painted.
class CDialClip {
public:
    CDialClip(HDC hdc, const RECT& rc, bool bWholeContext) noexcept;
    ~CDialClip();
    CDialClip(const CDialClip&) = delete;
    CDialClip& operator=(const CDialClip&) = delete;

    [[nodiscard]] bool IsVisible() const { return m_bVisible; }

private:
    bool KeepRegion();

    HDC m_hdc;
    int m_nSaved;
    HRGN m_hRegion = nullptr; // the clip as it was; with m_bHadClip false there was none
    bool m_bHadClip = false;
    bool m_bKept = false;
    bool m_bVisible = false;
};
