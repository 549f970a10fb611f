// The meter type "vert3d": the vertical bar with a three-dimensional body.
#pragma once

#include "meter/BarBody.h"
#include "meter/UpBarMeter.h"

class CUpBarMeter3D final : public CBarMeter3D<CUpBarMeter, true> {
public:
    using CBarMeter3D::CBarMeter3D;
};
