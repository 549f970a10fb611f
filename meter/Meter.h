// The abstract base of every meter renderer: the objects that paint one dial or bar for a value.
// It owns the value model that all of them share, and the order in which the layers of a picture
// are painted; the families CArcMeter (dials) and CBarMeter (bars) supply the layers. The meter
// element (dynamic/QELViewMeter.h) makes one renderer, sets its fields and calls Draw.
#pragma once

#include "base/ClockTimes.h"
#include "base/PixelScale.h"

#include <cstddef>
#include <cstdint>

// Above this, tick counts draw as this many: no value that a host may set makes a draw endless.
constexpr uint32_t MAX_DRAWN_TICKS = 10000;
constexpr uint32_t MAX_DECIMAL_SHIFT = 9; // a larger one counts as this

// A character cell in logical units.
struct FontCell {
    int32_t nWidth;
    int32_t nHeight;
    bool bWide = false; // its texts are drawn as Unicode, whatever the code page of the system
};

class CMeter {
public:
    static constexpr std::size_t VALUE_TEXT_SIZE = 64; // of a formatted value, the end included

    CMeter() noexcept = default;
    virtual ~CMeter() = default;
    CMeter(const CMeter&) = delete;
    CMeter& operator=(const CMeter&) = delete;

    // The layers. Each returns 1 when it drew, 0 when it drew nothing.
    virtual int DrawScale(HDC hdc) = 0;
    virtual int DrawAxis(HDC hdc) = 0;
    virtual int DrawLabels(HDC hdc) = 0;
    virtual int DrawPin(HDC hdc, float fValue, uint32_t nFlags) = 0;
    virtual int DrawPin(HDC hdc, int32_t nValue, uint32_t nFlags) = 0;
    virtual int ErasePin(HDC hdc, float fValue, uint32_t nFlags) = 0;
    virtual int ErasePin(HDC hdc, int32_t nValue, uint32_t nFlags) = 0;
    virtual int DrawFill(HDC hdc, float fValue, uint32_t nFlags) = 0;
    virtual int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) = 0;
    virtual int DrawAlarmZones(HDC hdc) = 0;
    virtual int DrawFrame(HDC hdc) = 0;
    virtual int DrawValueText(HDC hdc, float fValue) = 0;
    virtual int DrawValueText(HDC hdc, int32_t nValue) = 0;

    // Paints every layer that is switched on, the fill first and the pointer last. nFlags:
    // QEL_DRAW_FULL says that the area was repainted, so that there is no old pointer to erase.
    virtual int Draw(HDC hdc, float fValue, uint32_t nFlags);
    virtual int Draw(HDC hdc, int32_t nValue, uint32_t nFlags);
    // Clocks show that time instead of the present one; it is to stay as long as the renderer.
    virtual void SetClock(const ClockTimes*) {}
    // The same while bar or pointer are still on their way to the value, at fPointer now.
    int DrawOnWay(HDC hdc, float fValue, float fPointer, uint32_t nFlags);

    // What a draw paints on at most, whatever the value. rcFace: what holds the shapes of the face,
    // empty for none.
    [[nodiscard]] virtual RECT PaintedRect(const RECT& rcFace) const;

    // How large the pixels of its constants are; from the start on.
    void SetPixelScale(CPixelScale px) { m_px = px; }
    [[nodiscard]] CPixelScale Px() const { return m_px; }

    void SetMin(int32_t n) { m_nMin = n; }
    void SetMax(int32_t n) { m_nMax = n; }
    void SetScaleEnd(int32_t n) { m_nScaleEnd = n; }
    void SetScaleStart(int32_t n) { m_nScaleStart = n; }
    void SetLowLimit(int32_t n) { m_nLowLimit = n; }
    void SetHighLimit(int32_t n) { m_nHighLimit = n; }
    void SetTickCount(uint32_t n) { m_nTickCount = n; }
    void SetMajorEvery(uint32_t n) { m_nMajorEvery = n; }
    void SetLastValue(int32_t n) { m_nLastValue = m_nLastReadOut = n; }
    void SetLastReadOut(int32_t n) { m_nLastReadOut = n; }
    void SetDecimalShift(uint32_t n) { m_nDecimalShift = n; }
    void SetShowPin(int32_t b) { m_bShowPin = b; }
    void SetShowScale(int32_t b) { m_bShowScale = b; }
    void SetShowAxis(int32_t b) { m_bShowAxis = b; }
    void SetShowLabels(int32_t b) { m_bShowLabels = b; }
    void SetShowFill(int32_t b) { m_bShowFill = b; }
    void SetShowAlarm(int32_t b) { m_bShowAlarm = b; }
    void SetReverse(int32_t b) { m_bReverse = b; }
    void SetBaseValue(int32_t n) { m_nBaseValue = n; }
    void SetUseBaseValue(int32_t b) { m_bUseBaseValue = b; }
    void SetFillOnly(int32_t b) { m_bFillOnly = b; }
    void SetShowFrame(int32_t b) { m_bShowFrame = b; }
    void SetFrameOption(int32_t n) { m_nFrameOption = n; }
    void SetShowValue(int32_t b) { m_bShowValue = b; }
    void SetFontSize(uint32_t n) { m_nFontSize = n; }
    void SetWideTexts(bool b) { m_bWideTexts = b; }

    [[nodiscard]] int32_t GetMin() const { return m_nMin; }
    [[nodiscard]] int32_t GetMax() const { return m_nMax; }
    [[nodiscard]] int32_t GetScaleEnd() const { return m_nScaleEnd; }
    [[nodiscard]] int32_t GetScaleStart() const { return m_nScaleStart; }
    [[nodiscard]] int32_t GetLowLimit() const { return m_nLowLimit; }
    [[nodiscard]] int32_t GetHighLimit() const { return m_nHighLimit; }
    [[nodiscard]] uint32_t GetTickCount() const { return m_nTickCount; }
    [[nodiscard]] uint32_t GetMajorEvery() const { return m_nMajorEvery; }
    [[nodiscard]] int32_t GetLastValue() const { return m_nLastValue; }
    [[nodiscard]] int32_t GetLastReadOut() const { return m_nLastReadOut; }
    [[nodiscard]] uint32_t GetDecimalShift() const { return m_nDecimalShift; }
    [[nodiscard]] int32_t GetShowPin() const { return m_bShowPin; }
    [[nodiscard]] int32_t GetShowScale() const { return m_bShowScale; }
    [[nodiscard]] int32_t GetShowAxis() const { return m_bShowAxis; }
    [[nodiscard]] int32_t GetShowLabels() const { return m_bShowLabels; }
    [[nodiscard]] int32_t GetShowFill() const { return m_bShowFill; }
    [[nodiscard]] int32_t GetShowAlarm() const { return m_bShowAlarm; }
    [[nodiscard]] int32_t GetReverse() const { return m_bReverse; }
    [[nodiscard]] int32_t GetBaseValue() const { return m_nBaseValue; }
    [[nodiscard]] int32_t GetUseBaseValue() const { return m_bUseBaseValue; }
    [[nodiscard]] int32_t GetFillOnly() const { return m_bFillOnly; }
    [[nodiscard]] int32_t GetShowFrame() const { return m_bShowFrame; }
    [[nodiscard]] int32_t GetFrameOption() const { return m_nFrameOption; }
    [[nodiscard]] int32_t GetShowValue() const { return m_bShowValue; }
    [[nodiscard]] uint32_t GetFontSize() const { return m_nFontSize; }
    [[nodiscard]] bool HasWideTexts() const { return m_bWideTexts; }

    // The last value as it was painted: mirrored when the scale is reversed.
    [[nodiscard]] int32_t GetShownValue() const { return AsPainted(m_nLastValue); }
    [[nodiscard]] int32_t GetShownReadOut() const { return AsPainted(m_nLastReadOut); }
    // The numbers at the two ends of the scale as it is drawn.
    [[nodiscard]] int32_t GetScaleEndShown() const
    {
        return m_bReverse ? m_nScaleStart : m_nScaleEnd;
    }
    [[nodiscard]] int32_t GetScaleStartShown() const
    {
        return m_bReverse ? m_nScaleEnd : m_nScaleStart;
    }

    // Prints a value for labels and read-outs: no decimals below a fraction of .05, else one; with
    // a decimal shift that many more. Result: 1.
    int FormatValue(char (&szOut)[VALUE_TEXT_SIZE], float fValue) const;
    // The character cell of the font size code; code 0 goes by the hint, a length in the picture.
    int GetFontSize(int32_t nHint, FontCell* pCell) const;

protected:
    // The value range and the ticks are such that a value has a place on the scale.
    [[nodiscard]] bool HasRange() const { return m_nMax > m_nMin; }
    [[nodiscard]] bool HasTicks() const { return m_nTickCount > 0; }
    [[nodiscard]] uint32_t DrawnTicks() const
    {
        return m_nTickCount < MAX_DRAWN_TICKS ? m_nTickCount : MAX_DRAWN_TICKS;
    }
    [[nodiscard]] bool IsMajor(uint32_t nTick) const
    {
        return m_nMajorEvery != 0 && nTick % m_nMajorEvery == 0;
    }
    // As many characters as the number at any tick has at most.
    [[nodiscard]] int32_t LongestNumber() const;
    // The number that stands at a tick.
    [[nodiscard]] float TickNumber(uint32_t nTick) const;
    [[nodiscard]] double AlarmRange() const { return static_cast<double>(m_nMax) - m_nMin; }

private:
    template <class Value>
    void DrawLayers(HDC hdc, Value value, uint32_t nFlags);
    [[nodiscard]] int32_t AsPainted(int32_t nValue) const;

    int32_t m_nMin = 0;
    int32_t m_nMax = 10;
    int32_t m_nScaleEnd = 10;
    int32_t m_nScaleStart = 0;
    int32_t m_nLowLimit = 0;
    int32_t m_nHighLimit = 10;
    uint32_t m_nTickCount = 10;
    uint32_t m_nMajorEvery = 5;
    int32_t m_nLastValue = 0;   // of the pointer, in the caller's sense, before any mirroring
    int32_t m_nLastReadOut = 0; // the value that it was on its way to
    bool m_bOnWay = false;      // bar and pointer stand at m_fPointer
    float m_fPointer = 0;
    uint32_t m_nDecimalShift = 0;
    int32_t m_bShowPin = 0;
    int32_t m_bShowScale = 0;
    int32_t m_bShowAxis = 0;
    int32_t m_bShowLabels = 0;
    int32_t m_bShowFill = 0;
    int32_t m_bShowAlarm = 0;
    int32_t m_bReverse = 0;
    int32_t m_nBaseValue = 0;
    int32_t m_bUseBaseValue = 0;
    int32_t m_bFillOnly = 0;
    int32_t m_bShowFrame = 0;
    int32_t m_nFrameOption = 0;
    int32_t m_bShowValue = 0;
    uint32_t m_nFontSize = 0;
    CPixelScale m_px;
    bool m_bWideTexts = false;
};

constexpr FontCell ScaledCell(FontCell cell, CPixelScale px)
{
    return {px(cell.nWidth), px(cell.nHeight), cell.bWide};
}

// A font for texts in a picture: the cell as given, character set 255, no face name. weight: 0 for
// labels, FW_BOLD for read-outs. Null when there is none to be had. Wide texts have the character
// set of digits, 0: that of 255 goes by the system's code page.
HFONT MakeMeterFont(FontCell cell, int nWeight, CPixelScale px = {});
