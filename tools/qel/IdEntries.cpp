// What the host can set; see the header.
#include "tools/qel/IdEntries.h"

#include "engine/ElementTypes.h"

#include <algorithm>
#include <map>

namespace qel {

using Words = std::vector<std::string>;

namespace {

void AddType(const std::string& type, IdEntry* pEntry)
{
    Words& types = pEntry->types;
    if (std::find(types.begin(), types.end(), type) == types.end()) types.push_back(type);
}

void AddBearer(const HostBearer& bearer, IdEntry* pEntry)
{
    const ElementType* pType = g_elementTypes.Row(bearer.nType);
    if (bearer.nType != QEL_TYPE_METER && bearer.nType != QEL_TYPE_SCALE && pType)
        AddType(pType->pszName, pEntry);
    pEntry->bValue |= bearer.nType == QEL_TYPE_STATUS || bearer.bRun;
    pEntry->bText |= bearer.nType == QEL_TYPE_TEXT;
    pEntry->bColors |= bearer.bColors;
}

// A clock has the time for its value, and a share chart those of its sectors.
void AddMeter(const HostMeter& meter, IdEntry* pEntry)
{
    const MeterTypeRow* pType = MeterTypeOf(meter.attr.nType);
    AddType(std::string("meter ") + NameOf(g_meterTypeRows, meter.attr.nType), pEntry);
    const bool bPins = pType && pType->shows == MeterShows::Pins;
    const bool bTime = pType && pType->shows == MeterShows::Time;
    pEntry->bPins |= bPins;
    pEntry->bValue |= !bTime && (!bPins || meter.attr.bUsePin);
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n)
        if (n != QEL_SEL_VALUE && MeterFollows(meter.attr.nType, *FindSelector(n)))
            pEntry->nSelectors |= uint64_t{1} << n;
}

void AddScale(const HostScale& scale, IdEntry* pEntry)
{
    AddType(std::string("scale ") + NameOf(g_scaleTypeRows, scale.attr.nType), pEntry);
    pEntry->bValue = true;
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n)
        if (n != QEL_SEL_VALUE && ScaleFollows(scale.attr.nType, *FindSelector(n)))
            pEntry->nSelectors |= uint64_t{1} << n;
}

using Entries = std::map<uint32_t, IdEntry>;

IdEntry* EntryAt(uint32_t nId, Entries* pEntries)
{
    IdEntry* pEntry = &(*pEntries)[nId];
    pEntry->id = "#" + std::to_string(nId);
    return pEntry;
}

} // namespace

Words IdEntry::Takes(const char* pszColors) const
{
    Words takes;
    if (bValue) takes.emplace_back("value");
    if (bPins) takes.emplace_back("pins");
    if (nSelectors) takes.emplace_back("selectors");
    if (bText) takes.emplace_back("text");
    if (bColors) takes.emplace_back(pszColors);
    return takes;
}

Words IdEntry::Selectors() const
{
    Words names;
    for (uint32_t n = 0; n < QEL_SEL_COUNT; ++n)
        if (nSelectors >> n & 1) names.emplace_back(FindSelector(n)->pszName);
    return names;
}

std::vector<IdEntry> ListIds(const HostElements& elements)
{
    std::vector<IdEntry> entries;
    std::map<std::string, std::size_t> places;
    for (const HostBearer& bearer : elements.bearers) {
        const auto [at, bNew] = places.emplace(bearer.id, entries.size());
        if (bNew) entries.push_back({bearer.id, {}});
        AddBearer(bearer, &entries[at->second]);
    }
    for (const HostMeter& meter : elements.meters)
        if (!meter.id.empty()) AddMeter(meter, &entries[places.at(meter.id)]);
    for (const HostScale& scale : elements.scales)
        if (!scale.id.empty()) AddScale(scale, &entries[places.at(scale.id)]);
    return entries;
}

// By number a meter takes a value when its own is 0.
std::vector<IdEntry> ListNumbers(const HostElements& elements)
{
    Entries entries;
    for (const HostMeter& meter : elements.meters) {
        if (!meter.id.empty() || meter.reach != HostReach::Reached) continue;
        IdEntry* pEntry = EntryAt(meter.attr.nId, &entries);
        AddMeter(meter, pEntry);
        if (meter.attr.nId != 0) pEntry->bValue = pEntry->bPins = false;
    }
    for (const HostScale& scale : elements.scales)
        if (scale.id.empty() && scale.reach == HostReach::Reached)
            AddScale(scale, EntryAt(scale.attr.nId, &entries));
    std::vector<IdEntry> list;
    for (const auto& [nId, entry] : entries) list.push_back(entry);
    return list;
}

} // namespace qel
