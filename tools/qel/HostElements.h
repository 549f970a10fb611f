// The elements of a drawing that the host sets values of, as the exported interface shows them, and
// what they follow.
#pragma once

#include "dynamic/Selectors.h"
#include "include/QELEngine.h"
#include "tools/qel/HostIds.h"

#include <set>
#include <string>
#include <vector>

namespace qel {

struct HostMeter {
    QELMETERATTR attr; // as the picture has it
    HostReach reach;
    bool bFace;     // there is a figure in it for a bar to be painted in
    bool bRefused;  // its range is none, so the picture has the defaults
    std::string id; // its identifier, in UTF-8; empty: it has none
};

struct HostScale {
    QELSCALEATTR attr;
    HostReach reach;
    std::string id;
};

// An element that has an identifier.
struct HostBearer {
    std::string id;
    int nType;
    bool bColors; // it is a shape, or there is one in it
    bool bRun;    // a text that has a place for a number
    HQELELEM hElem;
};

struct HostElements {
    std::vector<HostMeter> meters; // in the order of the drawing
    std::vector<HostScale> scales;
    std::set<LONG> statuses;         // the numbers of the status elements
    std::vector<HostBearer> bearers; // in the order of the drawing
    CHostIds ids;
    bool bColorFollowed = false; // there is something that takes the colour parameter
    bool bDraftFollowed = false; // or the hatch and its colours

    // What the host reaches by an id; null when there is none.
    [[nodiscard]] const HostMeter* MeterAt(uint32_t nId) const;
    [[nodiscard]] const HostScale* ScaleAt(uint32_t nId) const;

    // The first one that bears an identifier; null when there is none.
    [[nodiscard]] const HostMeter* MeterNamed(const std::string& id) const;
    [[nodiscard]] const HostScale* ScaleNamed(const std::string& id) const;
    [[nodiscard]] bool IsBorne(const std::string& id) const;

    [[nodiscard]] bool HasClock() const; // one with hands
};

// Whether a text has a run for a number.
bool HasNumberRun(const std::string& text);

HostElements FindHostElements(HQELENGINE hEngine);

// Whether a setting shows in a meter or a scale of a type.
bool MeterFollows(int32_t nType, const SelectorRow& row);
bool ScaleFollows(int32_t nType, const SelectorRow& row);

// Whether a scale is filled up to its value.
bool HasFill(const QELSCALEATTR& attr);

} // namespace qel
