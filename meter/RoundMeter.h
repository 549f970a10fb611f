// The meter type "roundUpgrade": a gauge with broad bands, large numbers, five needles and a
// read-out.
#pragma once

#include "meter/ArcMeter.h"

class CRoundMeter final : public CArcMeter {
public:
    CRoundMeter(int32_t nRadius, bool bFullCircle, double fOffset) noexcept
        : CArcMeter(nRadius, DialStart(bFullCircle), DialEnd(bFullCircle), fOffset)
    {
    }

    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    int DrawAlarmZones(HDC hdc) override;
    int DrawValueText(HDC hdc, float fValue) override;
    int DrawValueText(HDC hdc, int32_t nValue) override;

    // What the read-out says: the number that the scale shows for the value, with a decimal.
    int FormatReadOut(char (&szOut)[VALUE_TEXT_SIZE], double fValue) const;

protected:
    int PaintNeedle(HDC hdc, float fAngle, bool bErase) const override;
    [[nodiscard]] bool HasNeedle() const override;

private:
    int DrawReadOut(HDC hdc, double fValue) const;
    [[nodiscard]] COLORREF ReadOutColor() const;
};
