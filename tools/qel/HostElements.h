// The elements of a drawing that the host sets values of, as the exported interface shows them, and
// what they follow.
#pragma once

#include "dynamic/Selectors.h"
#include "tools/qel/Drawing.h"
#include "tools/qel/HostIds.h"

#include <set>
#include <vector>

namespace qel {

struct HostMeter {
    QELMETERATTR attr; // as the picture has it
    HostReach reach;
    bool bFace;    // there is a figure in it for a bar to be painted in
    bool bRefused; // its range is none, so the picture has the defaults
};

struct HostScale {
    QELSCALEATTR attr;
    HostReach reach;
};

struct HostElements {
    std::vector<HostMeter> meters; // in the order of the drawing
    std::vector<HostScale> scales;
    std::set<LONG> statuses; // the numbers of the status elements
    CHostIds ids;
    bool bColorFollowed = false; // there is something that takes the colour parameter
    bool bDraftFollowed = false; // or the hatch and its colours

    // What the host reaches by an id; null when there is none.
    [[nodiscard]] const HostMeter* MeterAt(uint32_t nId) const;
    [[nodiscard]] const HostScale* ScaleAt(uint32_t nId) const;
};

HostElements FindHostElements(const CDrawing& drawing);

// Whether a setting shows in a meter or a scale of a type.
bool MeterFollows(int32_t nType, const SelectorRow& row);
bool ScaleFollows(int32_t nType, const SelectorRow& row);

// Whether a scale is filled up to its value.
bool HasFill(const QELSCALEATTR& attr);

} // namespace qel
