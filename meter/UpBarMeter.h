// The meter type "vert": a vertical bar that grows upwards.
#pragma once

#include "meter/BarMeter.h"

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
    RECT m_rcColumn; // the region's extent across, the bar's along; empty without a region
};
