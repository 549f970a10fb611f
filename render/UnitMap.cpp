#include "render/UnitMap.h"

#include "render/Mapping.h"

#include <algorithm>
#include <cstdlib>

namespace {

// What a device axis shows: one of the two axes before the turn, forwards or backwards.
struct Way {
    const UnitAxis* pAxis;
    int32_t nSign;  // of the unit before the turn
    int32_t nShift; // from it to the one since

    [[nodiscard]] int32_t ToDevice(int32_t nUnit) const
    {
        return pAxis->ToDevice(WrapAdd(nSign > 0 ? nUnit : WrapSub(0, nUnit), nShift));
    }
    // Grows with the unit, whichever way the axis runs.
    [[nodiscard]] int64_t Growing(int64_t nUnit) const
    {
        return int64_t{nSign} * ToDevice(static_cast<int32_t>(nUnit));
    }
};

struct Ways {
    Way ofX; // which device axis shows the x of the unit before, and how
    Way ofY;
    bool bCrossed; // x is shown by the device's y
};

Ways WaysOf(const UnitMap& map, const UnitTurn& turn)
{
    const RECT& was = turn.rcBefore;
    const RECT& is = turn.rcSince;
    switch (turn.nQuarters) {
    case 1:
        return {
            {&map.y, -1, WrapAdd(is.top, was.right)}, {&map.x, 1, WrapSub(is.left, was.top)}, true};
    case 2:
        return {{&map.x, -1, WrapAdd(is.left, was.right)},
                {&map.y, -1, WrapAdd(is.top, was.bottom)},
                false};
    case 3:
        return {{&map.y, 1, WrapSub(is.top, was.left)},
                {&map.x, -1, WrapAdd(is.left, was.bottom)},
                true};
    default:
        return {
            {&map.x, 1, WrapSub(is.left, was.left)}, {&map.y, 1, WrapSub(is.top, was.top)}, false};
    }
}

// The smallest unit from nLow on whose image is not below nImage; past nHigh when there is none.
int64_t FirstNotBelow(const Way& way, int64_t nImage, int64_t nLow, int64_t nHigh)
{
    while (nLow <= nHigh) {
        const int64_t nMiddle = nLow + (nHigh - nLow) / 2;
        if (way.Growing(nMiddle) < nImage)
            nLow = nMiddle + 1;
        else
            nHigh = nMiddle - 1;
    }
    return nLow;
}

// Among the units whose images do not wrap around.
int32_t NearestUnit(const Way& way, int32_t nDevice)
{
    const UnitAxis& axis = *way.pAxis;
    const int64_t nMost = INT32_MAX / axis.nExtent;
    const int64_t nZero = int64_t{way.nSign} * (int64_t{axis.nFrom} - way.nShift);
    const int64_t nLow = std::max<int64_t>(nZero - nMost, -INT32_MAX);
    const int64_t nHigh = std::min<int64_t>(nZero + nMost, INT32_MAX);
    const int64_t nImage = int64_t{way.nSign} * nDevice;
    const int64_t nAbove = FirstNotBelow(way, nImage, nLow, nHigh);
    if (nAbove <= nLow) return static_cast<int32_t>(nLow);
    const int64_t nBelowImage = way.Growing(nAbove - 1);
    const int64_t nBelow = FirstNotBelow(way, nBelowImage, nLow, nAbove - 1);
    const bool bBelow = nAbove > nHigh || nImage - nBelowImage <= way.Growing(nAbove) - nImage;
    return static_cast<int32_t>(bBelow ? nBelow : nAbove);
}

bool HasExtent(const UnitAxis& axis)
{
    return axis.nExtent > 0 && axis.nRef > 0;
}

} // namespace

bool MakeUnitMap(const QelRect& rcQel, int32_t nRefW, int32_t nRefH, const RECT& rcElem,
                 uint32_t nKeep, UnitMap* pOut)
{
    if (::IsRectEmpty(&rcQel) || nRefW < 1 || nRefH < 1) return false;
    if (AnchorOf(nKeep) == QEL_KEEP_NONE) {
        *pOut = {{0, WidthOf(rcQel), nRefW, rcQel.left}, {0, HeightOf(rcQel), nRefH, rcQel.top}};
        return HasExtent(pOut->x) && HasExtent(pOut->y);
    }
    RECT rc{};
    if (!PlaceRect(rcQel, nRefW, nRefH, rcElem, &rc, nKeep) || ::IsRectEmpty(&rc)) return false;
    *pOut = {{rcElem.left, WidthOf(rc), WidthOf(rcElem), rc.left},
             {rcElem.top, HeightOf(rc), HeightOf(rcElem), rc.top}};
    return HasExtent(pOut->x) && HasExtent(pOut->y);
}

POINT UnitToDevice(const UnitMap& map, const UnitTurn& turn, POINT pt)
{
    const Ways ways = WaysOf(map, turn);
    const int32_t nOfX = ways.ofX.ToDevice(pt.x);
    const int32_t nOfY = ways.ofY.ToDevice(pt.y);
    return ways.bCrossed ? POINT{nOfY, nOfX} : POINT{nOfX, nOfY};
}

POINT DeviceToUnit(const UnitMap& map, const UnitTurn& turn, POINT pt)
{
    const Ways ways = WaysOf(map, turn);
    return {NearestUnit(ways.ofX, ways.bCrossed ? pt.y : pt.x),
            NearestUnit(ways.ofY, ways.bCrossed ? pt.x : pt.y)};
}
