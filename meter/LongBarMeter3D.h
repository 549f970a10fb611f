// The meter type "horz3d": the horizontal bar with a three-dimensional body. Like the vertical one
// it has a column of its own, the extent of the face across the bar, so that ticks and numbers
// stand clear of the body.
#pragma once

#include "meter/BarBody.h"
#include "meter/LongBarMeter.h"

class CLongBarMeter3D final : public CBarMeter3D<CLongBarMeter, false> {
public:
    using CBarMeter3D::CBarMeter3D;

    [[nodiscard]] RECT Column() const override;
};
