// Single points between a drawing's units and the device: how an element's class maps its own
// geometry, taken as one rule for each axis, and how that geometry has been turned.
#pragma once

#include "base/Rects.h"
#include "base/WrapMath.h"

#include "base/QelRect.h"

#include <windows.h>

#include <cstdint>

// One axis: nExtent pixels from nOrigin on for nRef units from nFrom on.
struct UnitAxis {
    int32_t nFrom;
    int32_t nExtent;
    int32_t nRef;
    int32_t nOrigin;

    [[nodiscard]] constexpr int32_t ToDevice(int32_t nUnit) const
    {
        return WrapAdd(WrapMulDiv(WrapSub(nUnit, nFrom), nExtent, nRef), nOrigin);
    }
};

struct UnitMap {
    UnitAxis x;
    UnitAxis y;
};

// A geometry that was turned counter-clockwise by quarters of a turn, and moved as a whole: what it
// lay in before, and what it lies in since.
struct UnitTurn {
    int32_t nQuarters = 0; // 0 to 3
    RECT rcBefore{0, 0, 0, 0};
    RECT rcSince{0, 0, 0, 0};
};

// The map of an element with the keep flags nKeep whose geometry lies in rcElem: without an anchor
// every unit is stretched, with one the element's own rectangle is mapped, before it is clipped.
// False, with nothing of use written, when it would have no extent.
bool MakeUnitMap(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem,
                 uint32_t nKeep, UnitMap* pOut);

// The image of a point in units as they were before the turn.
POINT UnitToDevice(const UnitMap& map, const UnitTurn& turn, POINT pt);
// The unit whose image is nearest to a device point, of two the smaller.
POINT DeviceToUnit(const UnitMap& map, const UnitTurn& turn, POINT pt);
