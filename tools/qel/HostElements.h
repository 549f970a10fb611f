// The elements of a drawing that the host sets values of, as the exported interface shows them.
#pragma once

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
};

HostElements FindHostElements(const CDrawing& drawing);

} // namespace qel
