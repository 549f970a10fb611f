// The needle of the "roundUpgrade" gauge, in five styles.
#pragma once

#include <windows.h>

#include <cstdint>

constexpr int32_t ROUND_PIN_STYLES = 5;

class CRoundMeterPin {
public:
    // The second colour is kept for those who derive from this; the needles do not use it.
    CRoundMeterPin(int32_t nRadius, COLORREF clrNeedle, COLORREF clrSecond) noexcept
        : m_nRadius(nRadius), m_clrNeedle(clrNeedle), m_clrSecond(clrSecond)
    {
    }
    virtual ~CRoundMeterPin() = default;
    CRoundMeterPin(const CRoundMeterPin&) = delete;
    CRoundMeterPin& operator=(const CRoundMeterPin&) = delete;

    // 0 for a style out of 0 to 4.
    int Draw(HDC hdc, POINT ptCentre, float fAngle, int32_t nStyle) const;
    [[nodiscard]] COLORREF SecondColor() const { return m_clrSecond; }

private:
    int32_t m_nRadius;
    COLORREF m_clrNeedle;
    COLORREF m_clrSecond;
};
