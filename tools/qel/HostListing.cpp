// What the host can set; see the header.
#include "tools/qel/HostListing.h"

#include "tools/qel/HostElements.h"
#include "tools/qel/IdListing.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace qel {

using nlohmann::ordered_json;

namespace {

// A setting that an element follows, as the host reads it.
struct Setting {
    const SelectorRow* pRow;
    DWORD nValue;
    float fValue; // of value and base
    bool bReal;   // there is one
    bool bOther;  // it is the other kind of element with this id that answers
    bool bSigned;

    [[nodiscard]] std::string Text() const; // as --set takes it
};

// A meter or a scale.
struct Listed {
    bool bMeter;
    DWORD nId;
    int32_t nType;
    const char* pszType;
    HostReach reach;
    bool bShown;      // its value shows
    std::string note; // about the value, the pointer and the rest
    std::vector<Setting> settings;

    [[nodiscard]] const char* Kind() const { return bMeter ? "meter" : "scale"; }
};

std::string Setting::Text() const
{
    if (pRow->form == SelectorForm::Color) return fmt::format("{:#08x}", nValue);
    const std::string whole =
        bSigned ? std::to_string(static_cast<LONG>(nValue)) : std::to_string(nValue);
    const double fWhole = bSigned ? static_cast<double>(static_cast<LONG>(nValue)) : nValue;
    return bReal && static_cast<double>(fValue) != fWhole
               ? whole + fmt::format(" ({:g} as a real number)", fValue)
               : whole;
}

std::string Unreached(const Listed& listed)
{
    if (listed.reach == HostReach::Pin)
        return "not reached: the ids 1 to 32 are the values of a meter with mtid 0";
    return std::string("not reached: a ") + listed.Kind() + " before it has the same id";
}

// Which of the two elements of an id answers when a setting is read.
bool OtherAnswers(const Listed& listed, const SelectorRow& row, const CHostIds& ids)
{
    const bool bColor = row.nId == QEL_SEL_PIN_COLOR || row.nId == QEL_SEL_SCALE_COLOR;
    if (listed.bMeter) return ids.HasScale(listed.nId) && row.pszForScale && !bColor;
    const bool bPin = row.nId == QEL_SEL_VALUE && listed.nId >= 1 && listed.nId <= METER_PINS;
    return ids.HasMeter(listed.nId) && row.pszMeaning && (bColor || bPin);
}

bool Follows(const Listed& listed, const SelectorRow& row)
{
    if (!listed.bMeter) return ScaleFollows(listed.nType, row);
    return MeterFollows(listed.nType, row) && (row.nId != QEL_SEL_VALUE || listed.nId == 0);
}

void ReadSettings(HQELENGINE hEngine, const CHostIds& ids, Listed* pListed)
{
    if (pListed->reach != HostReach::Reached) return;
    for (DWORD n = 0; n < QEL_SEL_COUNT; ++n) {
        const SelectorRow& row = *FindSelector(n);
        Setting setting{&row, 0, 0, false, OtherAnswers(*pListed, row, ids), false};
        if (!Follows(*pListed, row) || !QELGetScaleParam(hEngine, pListed->nId, n, &setting.nValue))
            continue;
        setting.bReal = QELGetScaleParamf(hEngine, pListed->nId, n, &setting.fValue) != 0;
        setting.bSigned = pListed->bMeter && row.form == SelectorForm::Number;
        pListed->settings.push_back(setting);
    }
}

void AddNote(Listed* pListed, const std::string& text)
{
    pListed->note += (pListed->note.empty() ? "" : "; ") + text;
}

// How a meter that takes a value shows it.
void NoteMeterValue(const HostMeter& meter, MeterShows shows, Listed* pListed)
{
    const bool bPin = meter.attr.bUsePin != 0;
    pListed->bShown = true;
    switch (shows) {
    case MeterShows::Bar:
        pListed->bShown = meter.bFace;
        return AddNote(pListed, meter.bFace ? "value shown by the bar"
                                            : "value not shown: no figure in it for the bar");
    case MeterShows::Fill:
        return AddNote(pListed, "value shown by the filled sector");
    case MeterShows::Pins:
        return AddNote(pListed,
                       "the values of the ids 1 to 32 shown as sectors, as many as 'sectors' "
                       "says");
    default:
        break;
    }
    if (bPin) return AddNote(pListed, "value shown by the pointer");
    pListed->bShown = false;
    AddNote(pListed, shows == MeterShows::PointerOrReadOut
                         ? "value not shown until 'read-out' is 1: no pointer (upin is 0)"
                         : "value not shown: no pointer (upin is 0)");
}

void NoteMeter(const HostMeter& meter, Listed* pListed)
{
    if (meter.bRefused) AddNote(pListed, "imin and imax are no range: drawn with the defaults");
    const MeterTypeRow* pType = MeterTypeOf(pListed->nType);
    const MeterShows shows = pType ? pType->shows : MeterShows::Pointer;
    if (pListed->reach != HostReach::Reached) AddNote(pListed, Unreached(*pListed));
    if (shows == MeterShows::Time) {
        pListed->bShown = meter.attr.bUsePin != 0;
        AddNote(pListed, pListed->bShown ? "shows the time" : "no hands (upin is 0)");
    } else if (pListed->reach == HostReach::Reached && pListed->nId == 0) {
        NoteMeterValue(meter, shows, pListed);
    } else if (pListed->reach == HostReach::Reached) {
        AddNote(pListed, "takes settings but no value");
    }
    if (!meter.attr.bUseScale) AddNote(pListed, "no axis and ticks (usc is 0)");
}

void NoteScale(const HostScale& scale, Listed* pListed)
{
    const bool bFill = HasFill(scale.attr);
    const bool bPin = scale.attr.bPin != 0;
    if (pListed->reach != HostReach::Reached) AddNote(pListed, Unreached(*pListed));
    pListed->bShown = pListed->reach == HostReach::Reached && (bFill || bPin);
    if (pListed->bShown)
        AddNote(pListed, std::string("value shown by ") +
                             (bFill && bPin ? "fill and pointer"
                                            : (bFill ? "fill; no pointer" : "pointer; no fill")));
    else if (pListed->reach == HostReach::Reached)
        AddNote(pListed, "value not shown: neither fill (style) nor pointer (pin)");
    if (scale.attr.bHide) AddNote(pListed, "marks hidden");
}

void NoteSharing(const CHostIds& ids, Listed* pListed)
{
    if (pListed->reach != HostReach::Reached) return;
    if (pListed->bMeter ? ids.HasScale(pListed->nId) : ids.HasMeter(pListed->nId))
        AddNote(pListed, pListed->bMeter ? "the scale of this id takes the same sets"
                                         : fmt::format("the meter with mtid {} takes the same sets",
                                                       CHostIds::MeterOf(pListed->nId)));
}

std::vector<Listed> List(const CDrawing& drawing, const HostElements& elements)
{
    std::vector<Listed> list;
    for (const HostMeter& meter : elements.meters) {
        const QELMETERATTR& attr = meter.attr;
        Listed listed{true,        attr.nId, attr.nType, NameOf(g_meterTypeRows, attr.nType),
                      meter.reach, false,    "",         {}};
        NoteMeter(meter, &listed);
        list.push_back(std::move(listed));
    }
    for (const HostScale& scale : elements.scales) {
        const QELSCALEATTR& attr = scale.attr;
        Listed listed{false,       attr.nId, attr.nType, NameOf(g_scaleTypeRows, attr.nType),
                      scale.reach, false,    "",         {}};
        NoteScale(scale, &listed);
        list.push_back(std::move(listed));
    }
    for (Listed& listed : list) {
        NoteSharing(elements.ids, &listed);
        ReadSettings(drawing.Engine(), elements.ids, &listed);
    }
    return list;
}

void PrintSettings(const Listed& listed)
{
    std::vector<std::string> words;
    for (const Setting& setting : listed.settings) {
        std::string text = std::string(setting.pRow->pszName) + " " + setting.Text();
        if (setting.bOther) text += listed.bMeter ? " (the scale's)" : " (the meter's)";
        words.push_back(std::move(text));
    }
    PrintIndented(words);
}

ordered_json SettingJson(const Setting& setting)
{
    ordered_json json{{"selector", setting.pRow->nId}, {"name", setting.pRow->pszName}};
    if (setting.bSigned)
        json["value"] = static_cast<LONG>(setting.nValue);
    else
        json["value"] = setting.nValue;
    // So many digits tell one number of 32 bits from the next.
    if (setting.bReal) json["real"] = std::stod(fmt::format("{:.9g}", setting.fValue));
    if (setting.bOther) json["ofOther"] = true;
    return json;
}

ordered_json ListedJson(const Listed& listed)
{
    ordered_json settings = ordered_json::array();
    for (const Setting& setting : listed.settings) settings.push_back(SettingJson(setting));
    return {{"id", listed.nId},
            {"type", listed.nType},
            {"typeName", listed.pszType},
            {"reached", listed.reach == HostReach::Reached},
            {"valueShown", listed.bShown},
            {"note", listed.note},
            {"settings", std::move(settings)}};
}

} // namespace

void PrintHostText(const CDrawing& drawing)
{
    const HostElements elements = FindHostElements(drawing.Engine());
    if (!elements.statuses.empty())
        Print(fmt::format("status numbers: {}\n", fmt::join(elements.statuses, ", ")));
    for (const Listed& listed : List(drawing, elements)) {
        Print(
            fmt::format("{} {}, {}: {}\n", listed.Kind(), listed.nId, listed.pszType, listed.note));
        PrintSettings(listed);
    }
    PrintIds(elements);
}

ordered_json HostJson(const CDrawing& drawing)
{
    const HostElements elements = FindHostElements(drawing.Engine());
    ordered_json meters = ordered_json::array();
    ordered_json scales = ordered_json::array();
    for (const Listed& listed : List(drawing, elements))
        (listed.bMeter ? meters : scales).push_back(ListedJson(listed));
    return {{"statusNumbers", elements.statuses},
            {"meters", std::move(meters)},
            {"scales", std::move(scales)},
            {"identifiers", IdsJson(elements)}};
}

} // namespace qel
