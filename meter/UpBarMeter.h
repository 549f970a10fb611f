// The meter type "vert": a vertical bar that grows upwards.
#pragma once

#include "meter/BarMeter.h"

class CUpBarMeter : public CBarMeter {
public:
    CUpBarMeter(HRGN hRegion, const RECT& rcBar) noexcept;

    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT Segment(double fFrom, double fTo) const override;

private:
    RECT m_rcColumn; // the region's extent across, the bar's along; empty without a region
};
