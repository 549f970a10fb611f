// The types of meters: one row each, with the keyword in the file, the form of the geometry, the
// family of the renderer and what makes it, what hosts are told that it supports, and how it shows
// its value.
#pragma once

#include "base/Keywords.h"

#include <windows.h>

#include <cstdint>
#include <memory>

class CMeter;
struct MeterPlace;
struct MeterSettings;

enum MeterType : int32_t {
    METER_VERT,
    METER_VERT3D,
    METER_HORZ,
    METER_HORZ3D,
    METER_ROUND,
    METER_ARC,
    METER_PIE,
    METER_CLOCK,
    METER_ROUND_UPGRADE,
    METER_PIE_UPGRADE,
    METER_SECTOR,
    METER_TYPE_COUNT
};

// The three forms of a meter's geometry.
enum class MeterForm { Rectangle, Circle, Arc };

// Which class the renderer derives from, and so which settings it has.
enum class MeterFamily { Bar, Dial, Pie, Sector };

// What shows the value.
enum class MeterShows { Bar, Pointer, PointerOrReadOut, Fill, Pins, Time };

// hFace: the region of the face, for the families that look at it; may be null.
using MeterMaker = std::unique_ptr<CMeter> (*)(const MeterPlace& place, HRGN hFace,
                                               const MeterSettings& settings);

struct MeterTypeRow {
    int32_t nId;
    const char* pszName;
    MeterForm form;
    MeterFamily family;
    uint32_t nParamMask; // of supported parameters; of bars only when there are shapes as a face
    MeterShows shows;
    MeterMaker pfnMake;

    // Bars and share charts are painted within the figures of their face.
    [[nodiscard]] constexpr bool UsesFace() const
    {
        return family == MeterFamily::Bar || family == MeterFamily::Sector;
    }
};

// In the order of the numbers, ended by a row without a name.
extern const MeterTypeRow* const g_meterTypeRows;

// The row of a type; null for an unknown one.
const MeterTypeRow* MeterTypeOf(int32_t nType);

constexpr uint32_t MeterTypeBit(int32_t nType)
{
    return nType >= 0 && nType < METER_TYPE_COUNT ? 1U << nType : 0;
}
