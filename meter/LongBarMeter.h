// The meter type "horz": a horizontal bar that grows to the right.
#pragma once

#include "meter/BarMeter.h"

class CLongBarMeter : public CBarMeter {
public:
    CLongBarMeter(HRGN hRegion, const RECT& rcBar) noexcept;

    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT Segment(double fFrom, double fTo) const override;
};
