// What the host can set; see the header.
#include "tools/qel/HostListing.h"

#include "dynamic/QELDocScale.h"
#include "dynamic/Selectors.h"
#include "tools/qel/HostElements.h"
#include "tools/qel/Text.h"

#include <utility>

namespace {

constexpr std::size_t LINE_WIDTH = 100;
constexpr char SETTING_INDENT[] = "    ";

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
    if (pRow->form == SelectorForm::Colour) return Format("0x%06lx", nValue);
    const std::string whole =
        bSigned ? Format("%ld", static_cast<long>(nValue)) : Format("%lu", nValue);
    const double fWhole = bSigned ? static_cast<double>(static_cast<LONG>(nValue)) : nValue;
    return bReal && static_cast<double>(fValue) != fWhole
               ? whole + Format(" (%g as a real number)", static_cast<double>(fValue))
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
    const bool bColour = row.nId == QEL_SEL_PIN_COLOR || row.nId == QEL_SEL_SCALE_COLOR;
    if (listed.bMeter) return ids.HasScale(listed.nId) && row.pszForScale && !bColour;
    const bool bPin = row.nId == QEL_SEL_VALUE && listed.nId >= 1 && listed.nId <= METER_PINS;
    return ids.HasMeter(listed.nId) && row.pszMeaning && (bColour || bPin);
}

bool Follows(const Listed& listed, const SelectorRow& row)
{
    if (!listed.bMeter)
        return row.pszForScale && (row.nId != QEL_SEL_START_CODE || listed.nType >= SCALE_ROUND);
    if (!row.pszMeaning || !(row.nMeterTypes & MeterTypeBit(listed.nType))) return false;
    return row.nId != QEL_SEL_VALUE || listed.nId == 0;
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
    const bool bFill =
        pListed->nType < SCALE_ROUND || (scale.attr.nStyle & QEL_STYLE_FILL_MASK) == 1;
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
        AddNote(pListed, pListed->bMeter
                             ? "the scale of this id takes the same sets"
                             : Format("the meter with mtid %lu takes the same sets",
                                      static_cast<DWORD>(CHostIds::MeterOf(pListed->nId))));
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
    std::string line = SETTING_INDENT;
    for (std::size_t n = 0; n < listed.settings.size(); ++n) {
        const Setting& setting = listed.settings[n];
        std::string text = std::string(setting.pRow->pszName) + " " + setting.Text();
        if (setting.bOther) text += listed.bMeter ? " (the scale's)" : " (the meter's)";
        if (n + 1 < listed.settings.size()) text += ",";
        if (line.size() + text.size() > LINE_WIDTH) {
            line.pop_back();
            Print(line + "\n");
            line = SETTING_INDENT;
        }
        line += text + " ";
    }
    line.pop_back();
    if (!listed.settings.empty()) Print(line + "\n");
}

std::string StatusList(const HostElements& elements)
{
    std::string text;
    for (const LONG nStatus : elements.statuses)
        text += (text.empty() ? "" : ", ") + std::to_string(nStatus);
    return text;
}

void PrintListedJson(const Listed& listed)
{
    Print(Format("{\"id\": %lu, \"type\": %d, \"typeName\": \"%s\", \"reached\": %s, "
                 "\"valueShown\": %s, \"note\": ",
                 listed.nId, listed.nType, listed.pszType,
                 listed.reach == HostReach::Reached ? "true" : "false",
                 listed.bShown ? "true" : "false") +
          JsonString(listed.note) + ", \"settings\": [");
    for (std::size_t n = 0; n < listed.settings.size(); ++n) {
        const Setting& setting = listed.settings[n];
        Print(Format("%s{\"selector\": %d, \"name\": \"%s\", \"value\": ", n ? ", " : "",
                     setting.pRow->nId, setting.pRow->pszName));
        Print(setting.bSigned ? Format("%ld", static_cast<long>(setting.nValue))
                              : Format("%lu", setting.nValue));
        if (setting.bReal) Print(Format(", \"real\": %.9g", static_cast<double>(setting.fValue)));
        Print(setting.bOther ? ", \"ofOther\": true}" : "}");
    }
    Print("]}");
}

void PrintListJson(const char* pszName, const std::vector<Listed>& list, bool bMeters)
{
    Print(Format("\"%s\": [", pszName));
    bool bAny = false;
    for (const Listed& listed : list) {
        if (listed.bMeter != bMeters) continue;
        Print(bAny ? ",\n" : "\n");
        PrintListedJson(listed);
        bAny = true;
    }
    Print(bAny ? "\n],\n" : "],\n");
}

} // namespace

void PrintHostText(const CDrawing& drawing)
{
    const HostElements elements = FindHostElements(drawing);
    if (!elements.statuses.empty()) Print("status numbers: " + StatusList(elements) + "\n");
    for (const Listed& listed : List(drawing, elements)) {
        Print(Format("%s %lu, %s: ", listed.Kind(), listed.nId, listed.pszType) + listed.note +
              "\n");
        PrintSettings(listed);
    }
}

void PrintHostJson(const CDrawing& drawing)
{
    const HostElements elements = FindHostElements(drawing);
    Print("\"statusNumbers\": [" + StatusList(elements) + "],\n");
    const std::vector<Listed> list = List(drawing, elements);
    PrintListJson("meters", list, true);
    PrintListJson("scales", list, false);
}
