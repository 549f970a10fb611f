// From a meter element to its renderer: the geometry on the device, and the class that the meter
// type asks for.
#pragma once

#include "base/QelRect.h"
#include "dynamic/Selectors.h"
#include "include/QELEngine.h"

#include <memory>

class CMeter;

// Where a meter stands, in device units.
struct MeterPlace {
    RECT rc;        // bars: the bar; dials: what the layout rectangle has become
    POINT ptCentre; // dials
    int32_t nRadius;
    float fStart; // arcs
    float fEnd;
    CPixelScale px;
};

// What a record's geometry is laid out in, in drawing units, and the keep flags by which that is
// mapped: a bar's rectangle, the square around a circle, the layout rectangle of an arc.
struct MeterLayout {
    RECT rc;
    uint32_t nKeep;
};
MeterLayout LayoutOfMeter(const QELMETERATTR& attr);

// Whether a device point is on the rectangle or circle that a meter is laid out in.
bool IsOnMeter(const QELMETERATTR& attr, const MeterPlace& place, POINT pt);

// Maps the geometry of a meter's record. What cannot be mapped comes out empty, with radius 0.
MeterPlace MapMeter(const QELMETERATTR& attr, const QelRect& rcQel, int32_t nRefW, int32_t nRefH);

// A renderer for the type, in that place and with these settings. hFace: the region of the face,
// for the types that look at it; may be null. Null for an unknown type and without memory.
std::unique_ptr<CMeter> MakeMeterRenderer(const MeterPlace& place, HRGN hFace,
                                          const MeterSettings& settings);
