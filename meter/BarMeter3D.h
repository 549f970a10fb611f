// The meter types "vert3d" and "horz3d": the bars with a three-dimensional body.
#pragma once

#include "meter/BarBody.h"
#include "meter/LongBarMeter.h"
#include "meter/UpBarMeter.h"

class CUpBarMeter3D final : public CBarMeter3D<CUpBarMeter, true> {
public:
    using CBarMeter3D::CBarMeter3D;
};

// Like the vertical one it has a column of its own, the extent of the face across the bar, so that
// ticks and numbers stand clear of the body.
class CLongBarMeter3D final : public CBarMeter3D<CLongBarMeter, false> {
public:
    using CBarMeter3D::CBarMeter3D;

    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT ColumnIn(const RECT& rcFace) const override;
};
