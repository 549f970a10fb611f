// The meter type "pieUpgrade": the pie with rectangles and lines as ticks, larger numbers and an
// outline of its whole span.
#pragma once

#include "meter/PieMeter.h"

class CPieUpgradeMeter final : public CPieMeter {
public:
    using CPieMeter::CPieMeter;

    int DrawScale(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    int DrawFrame(HDC hdc) override;
};
