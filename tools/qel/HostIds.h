// Rules of scales and meters, for the listing and for the checker: which of them the host's calls
// reach by id, as QELSetScaleParam finds them in a drawing whose elements are told in their order,
// and what a meter needs to show something.
#pragma once

#include "engine/ElementTypes.h"
#include "include/QELEngine.h"
#include "render/HostDriven.h"

#include <cstdint>
#include <set>

namespace qel {

enum class HostReach {
    Reached,
    Pin,   // a meter whose id is that of a pin
    Second // an element of this kind and id stands before it
};

// Whether the picture takes a meter's record; else it has a meter with the defaults, id 0 among
// them.
inline bool HasRange(const QELMETERATTR& attr)
{
    return attr.nMin >= 1 && attr.nMin <= attr.nMax;
}

// Whether an element in a meter gives it an area: bars are painted within those of their face.
inline bool HasArea(int32_t nType)
{
    const ElementType* pType = g_elementTypes.Row(nType);
    return pType && pType->Is(TRAIT_AREA);
}

class CHostIds {
public:
    HostReach AddScale(uint32_t nId)
    {
        return m_scales.insert(nId).second ? HostReach::Reached : HostReach::Second;
    }
    HostReach AddMeter(uint32_t nId)
    {
        if (nId != MeterOf(nId)) return HostReach::Pin;
        return m_meters.insert(nId).second ? HostReach::Reached : HostReach::Second;
    }

    // Whether a call with the id reaches a scale, a meter.
    [[nodiscard]] bool HasScale(uint32_t nId) const { return m_scales.contains(nId); }
    [[nodiscard]] bool HasMeter(uint32_t nId) const { return m_meters.contains(MeterOf(nId)); }

    // The id of the meter that a call with the id reaches.
    static uint32_t MeterOf(uint32_t nId) { return MeterIdOf(nId); }

    [[nodiscard]] const std::set<uint32_t>& Scales() const { return m_scales; }
    [[nodiscard]] const std::set<uint32_t>& Meters() const { return m_meters; }

private:
    std::set<uint32_t> m_scales;
    std::set<uint32_t> m_meters;
};

} // namespace qel
