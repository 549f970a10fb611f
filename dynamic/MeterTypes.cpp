#include "dynamic/MeterTypes.h"

#include "base/Rects.h"
#include "dynamic/MeterRenderer.h"
#include "meter/BarMeter3D.h"
#include "meter/CircleMeter.h"
#include "meter/ClockMeter.h"
#include "meter/PieMeter.h"
#include "meter/RoundMeter.h"
#include "meter/SectorMeter.h"

namespace {

constexpr int32_t WIDENED_BY_PARTS = 19; // of the layout's width, to each side, for "pieUpgrade"

template <class T>
using Made = std::unique_ptr<T>;

std::unique_ptr<CMeter> Placed(std::unique_ptr<CArcMeter> pDial, const MeterPlace& place)
{
    if (!pDial) return nullptr;
    pDial->SetCentre(place.ptCentre);
    pDial->SetMeterRect(place.rc);
    return pDial;
}

template <class T>
std::unique_ptr<CMeter> MakeBar(const MeterPlace& place, HRGN hFace, const MeterSettings&)
{
    return Made<CMeter>(new (std::nothrow) T(hFace, place.rc));
}

bool IsFullCircle(const MeterSettings& settings)
{
    return settings.Number(QEL_SEL_FULL_CIRCLE) != 0;
}

// The dials that can be turned.
template <class T>
std::unique_ptr<CMeter> MakeTurned(const MeterPlace& place, HRGN, const MeterSettings& settings)
{
    const double fOffset = settings.pnValues[QEL_SEL_ANGLE_OFFSET];
    return Placed(
        Made<CArcMeter>(new (std::nothrow) T(place.nRadius, IsFullCircle(settings), fOffset)),
        place);
}

std::unique_ptr<CMeter> MakeClock(const MeterPlace& place, HRGN, const MeterSettings& settings)
{
    return Placed(
        Made<CArcMeter>(new (std::nothrow) CClockMeter(place.nRadius, IsFullCircle(settings))),
        place);
}

std::unique_ptr<CMeter> MakeSector(const MeterPlace& place, HRGN hFace,
                                   const MeterSettings& settings)
{
    Made<CSectorMeter> pMeter(new (std::nothrow)
                                  CSectorMeter(place.nRadius, IsFullCircle(settings)));
    if (!pMeter) return nullptr;
    RECT rc = SquareAround(place.ptCentre, place.nRadius);
    if (hFace) ::GetRgnBox(hFace, &rc);
    pMeter->SetSectorRect(rc);
    return Placed(std::move(pMeter), place);
}

std::unique_ptr<CMeter> MakeArc(const MeterPlace& place, HRGN, const MeterSettings&)
{
    return Placed(
        Made<CArcMeter>(new (std::nothrow) CArcMeter(place.nRadius, place.fStart, place.fEnd, 0)),
        place);
}

template <class T>
std::unique_ptr<CMeter> MakePie(const MeterPlace& place, HRGN, const MeterSettings&)
{
    return Placed(Made<CArcMeter>(new (std::nothrow) T(place.nRadius, place.fStart, place.fEnd)),
                  place);
}

// The numbers of the wider ticks need room at the sides.
std::unique_ptr<CMeter> MakePieUpgrade(const MeterPlace& place, HRGN hFace,
                                       const MeterSettings& settings)
{
    MeterPlace wide = place;
    wide.rc.left = WrapSub(wide.rc.left, WidthOf(wide.rc) / WIDENED_BY_PARTS);
    wide.rc.right = WrapAdd(wide.rc.right, WidthOf(wide.rc) / WIDENED_BY_PARTS);
    return MakePie<CPieUpgradeMeter>(wide, hFace, settings);
}

using enum MeterForm;
using F = MeterFamily;
using S = MeterShows;

constexpr MeterTypeRow g_rows[METER_TYPE_COUNT + 1] = {
    {METER_VERT, "vert", Rectangle, F::Bar, 0x80, S::Bar, MakeBar<CUpBarMeter>},
    {METER_VERT3D, "vert3d", Rectangle, F::Bar, 0x800080, S::Bar, MakeBar<CUpBarMeter3D>},
    {METER_HORZ, "horz", Rectangle, F::Bar, 0x80, S::Bar, MakeBar<CLongBarMeter>},
    {METER_HORZ3D, "horz3d", Rectangle, F::Bar, 0x800080, S::Bar, MakeBar<CLongBarMeter3D>},
    {METER_ROUND, "round", Circle, F::Dial, 0x480080, S::Pointer, MakeTurned<CCircleMeter>},
    {METER_ARC, "Arc", Arc, F::Dial, 0x480080, S::Pointer, MakeArc},
    {METER_PIE, "pie", Arc, F::Pie, 0x80, S::Fill, MakePie<CPieMeter>},
    {METER_CLOCK, "clock", Circle, F::Dial, 0x300081, S::Time, MakeClock},
    {METER_ROUND_UPGRADE, "roundUpgrade", Circle, F::Dial, 0x780081, S::PointerOrReadOut,
     MakeTurned<CRoundMeter>},
    {METER_PIE_UPGRADE, "pieUpgrade", Arc, F::Pie, 0x100080, S::Fill, MakePieUpgrade},
    {METER_SECTOR, "sector", Circle, F::Sector, 0, S::Pins, MakeSector},
    {KEYWORD_NONE, nullptr, Rectangle, F::Bar, 0, S::Bar, nullptr}};

consteval bool IsWhole()
{
    for (int32_t n = 0; n < METER_TYPE_COUNT; ++n)
        if (g_rows[n].nId != n || !g_rows[n].pszName || !HasFunction(g_rows[n].pfnMake))
            return false;
    return IsSoundTable(g_rows);
}
static_assert(IsWhole(), "a row with a keyword and a maker for each type, in their order");

} // namespace

const MeterTypeRow* const g_meterTypeRows = g_rows;

const MeterTypeRow* MeterTypeOf(int32_t nType)
{
    return nType >= 0 && nType < METER_TYPE_COUNT ? &g_rows[nType] : nullptr;
}
