// The identifiers of a drawing; see the header.
#include "tools/qel/IdListing.h"

#include "engine/ElementTypes.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>

namespace qel {

using nlohmann::ordered_json;

namespace {

using Words = std::vector<std::string>;

// All elements that bear one identifier together: each call reaches those that take it.
struct IdEntry {
    std::string id;
    Words types; // each once
    bool bValue = false;
    bool bPins = false;
    bool bText = false;
    bool bColors = false;
    uint64_t nSelectors = 0; // one bit each

    [[nodiscard]] Words Takes(const char* pszColors) const;
    [[nodiscard]] Words Selectors() const;
};

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

// In the order in which the drawing has them first.
std::vector<IdEntry> List(const HostElements& elements)
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

} // namespace

void PrintIds(const HostElements& elements)
{
    for (const IdEntry& entry : List(elements)) {
        Words takes = entry.Takes("colours");
        takes.emplace_back("quality");
        Print(fmt::format("identifier {}, {}: {}\n", Quoted(entry.id), fmt::join(entry.types, ", "),
                          fmt::join(takes, ", ")));
        PrintIndented(entry.Selectors());
    }
}

ordered_json IdsJson(const HostElements& elements)
{
    ordered_json list = ordered_json::array();
    for (const IdEntry& entry : List(elements)) {
        Words takes = entry.Takes("colors");
        takes.insert(takes.end(), {"visibility", "quality"});
        list.push_back({{"id", entry.id},
                        {"types", entry.types},
                        {"takes", takes},
                        {"selectors", entry.Selectors()}});
    }
    return list;
}

void PrintIndented(const Words& words)
{
    constexpr std::size_t LINE_WIDTH = 100;
    constexpr char INDENT[] = "    ";
    std::string line = INDENT;
    for (std::size_t n = 0; n < words.size(); ++n) {
        const std::string text = words[n] + (n + 1 < words.size() ? "," : "");
        if (line.size() + text.size() > LINE_WIDTH) {
            line.pop_back();
            Print(line + "\n");
            line = INDENT;
        }
        line += text + " ";
    }
    line.pop_back();
    if (!words.empty()) Print(line + "\n");
}

std::string Quoted(const std::string& utf8)
{
    constexpr unsigned char FIRST_PRINTED = 0x20;
    std::string text = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') text += '\\';
        if (static_cast<unsigned char>(c) < FIRST_PRINTED)
            text += fmt::format("\\u{:04x}", static_cast<unsigned>(c));
        else
            text += c;
    }
    return text + '"';
}

} // namespace qel
