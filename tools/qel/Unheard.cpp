#include "tools/qel/Unheard.h"

#include "dynamic/QELViewStatus.h"
#include "tools/qel/Text.h"

#include <algorithm>

namespace qel {

namespace {

const char* ScaleTypeName(const HostScale& scale)
{
    return NameOf(g_scaleTypeRows, scale.attr.nType);
}

// The figures in a meter have its colour, also where nothing that the meter itself paints has it.
bool DressesFace(const HostMeter& meter, const SelectorRow& row)
{
    return row.nId == QEL_SEL_FACE_COLOR && meter.bFace;
}

std::string WhyMeterDoesNot(const HostMeter& meter, const SelectorRow& row)
{
    return std::string("a meter of type ") + NameOf(g_meterTypeRows, meter.attr.nType) +
           " does not follow '" + row.pszName + "'";
}

std::string WhyScaleDoesNot(const HostScale& scale, const SelectorRow& row)
{
    return std::string("a scale of type ") + ScaleTypeName(scale) + " does not follow '" +
           row.pszName + "'";
}

// What takes a value besides meters and scales; a setting of that name is for these two.
bool TakesValueAlone(int nType, const LiveAction& action)
{
    return action.kind == LiveAction::Kind::Value &&
           (nType == QEL_TYPE_STATUS || nType == QEL_TYPE_TEXT);
}

std::string WhyScaleValue(const HostScale& scale)
{
    return HasFill(scale.attr) || scale.attr.bPin
               ? ""
               : "the scale has neither a fill (style) nor a pointer (pin) that shows it";
}

// A status number is the same with and without a sign.
bool IsGiven(const LiveAction& action, LONG nStatus)
{
    const LiveNumber& last = action.bRange ? action.last : action.value;
    const auto [nLeast, nMost] = std::minmax(action.value.nWhole, last.nWhole);
    const int64_t nUnsigned = static_cast<DWORD>(nStatus);
    return (nStatus >= nLeast && nStatus <= nMost) || (nUnsigned >= nLeast && nUnsigned <= nMost);
}

} // namespace

CUnheard::CUnheard(HQELENGINE hEngine) : m_hEngine(hEngine), m_elements(FindHostElements(hEngine))
{
}

void CUnheard::Tell(const std::string& option, const std::string& why)
{
    const std::string text = option + ": " + why;
    const bool bTold = std::find(m_texts.begin(), m_texts.end(), text) != m_texts.end();
    if (!why.empty() && !bTold) m_texts.push_back(text);
}

void CUnheard::Add(const LiveAction& action)
{
    switch (action.kind) {
    case LiveAction::Kind::Status:
        return Tell(action.option, WhyStatus(action));
    case LiveAction::Kind::Param:
        return Tell(action.option, WhyParam(action.nId));
    case LiveAction::Kind::Value:
    case LiveAction::Kind::Selector:
        return Tell(action.option, WhySetting(action));
    default: // a text, a quality and the like show wherever they are taken
        return;
    }
}

void CUnheard::NoteText(const LiveAction& action)
{
    if (action.kind == LiveAction::Kind::Text && HasNumberRun(action.text))
        m_idsWithRun.insert(action.id);
}

void CUnheard::AddTime(const std::string& option)
{
    if (!m_elements.HasClock()) Tell(option, "the drawing has no clock with hands");
}

// The engine refuses a status where there is no status element.
std::string CUnheard::WhyStatus(const LiveAction& action) const
{
    const std::set<LONG>& statuses = m_elements.statuses;
    const auto isGiven = [&action](LONG nStatus) { return IsGiven(action, nStatus); };
    if (isGiven(static_cast<LONG>(STATUS_SHOW_ALL)) ||
        std::any_of(statuses.begin(), statuses.end(), isGiven))
        return "";
    return std::string("no status element of the drawing has ") +
           (action.bRange ? "one of these numbers" : "this number") +
           "; they have: " + Listed(statuses);
}

std::string CUnheard::WhyParam(DWORD nIndex) const
{
    const bool bFollowed =
        nIndex == QEL_PARAM_COLOR ? m_elements.bColorFollowed : m_elements.bDraftFollowed;
    return bFollowed ? "" : "nothing in the drawing follows this parameter";
}

std::string CUnheard::WhySetting(const LiveAction& action) const
{
    if (!action.IsById()) return WhySelector(action.nId, *FindSelector(action.nSelector));
    return action.nSelector == QEL_SEL_VALUE ? WhyValueById(action) : WhySettingById(action);
}

// Of all that bear the identifier, one that follows is enough.
std::string CUnheard::WhySettingById(const LiveAction& action) const
{
    const SelectorRow& row = *FindSelector(action.nSelector);
    std::string why;
    for (const HostMeter& meter : m_elements.meters) {
        if (meter.id != action.id) continue;
        if (MeterFollows(meter.attr.nType, row) || DressesFace(meter, row)) return "";
        if (row.pszMeaning) why = WhyMeterDoesNot(meter, row);
    }
    for (const HostScale& scale : m_elements.scales) {
        if (scale.id != action.id) continue;
        if (ScaleFollows(scale.attr.nType, row)) return "";
        if (why.empty()) why = WhyScaleDoesNot(scale, row);
    }
    return why;
}

std::string CUnheard::WhyValueById(const LiveAction& action) const
{
    std::vector<std::string> reasons;
    for (const HostMeter& meter : m_elements.meters)
        if (meter.id == action.id) reasons.push_back(WhyMeterValue(0, meter));
    for (const HostScale& scale : m_elements.scales)
        if (scale.id == action.id) reasons.push_back(WhyScaleValue(scale));
    for (const HostBearer& bearer : m_elements.bearers)
        if (bearer.id == action.id && TakesValueAlone(bearer.nType, action))
            reasons.push_back(WhyBearerValue(bearer));
    const bool bShown = std::find(reasons.begin(), reasons.end(), "") != reasons.end();
    return bShown || reasons.empty() ? "" : reasons[0];
}

std::string CUnheard::WhyBearerValue(const HostBearer& bearer) const
{
    return bearer.nType != QEL_TYPE_TEXT || bearer.bRun || m_idsWithRun.contains(bearer.id)
               ? ""
               : "the text has no run of # (##.#) that shows it";
}

std::string CUnheard::WhySelector(DWORD nId, const SelectorRow& row) const
{
    if (row.nId == QEL_SEL_VALUE) return WhyValue(nId);
    const HostMeter* pMeter = m_elements.MeterAt(nId);
    const HostScale* pScale = m_elements.ScaleAt(nId);
    if (pMeter && (MeterFollows(pMeter->attr.nType, row) || DressesFace(*pMeter, row))) return "";
    if (pScale && ScaleFollows(pScale->attr.nType, row)) return "";
    if (pMeter && row.pszMeaning) return WhyMeterDoesNot(*pMeter, row);
    return pScale ? WhyScaleDoesNot(*pScale, row) : "";
}

// It may reach a scale and a meter, and one that shows it is enough.
std::string CUnheard::WhyValue(DWORD nId) const
{
    const HostMeter* pMeter = nId <= METER_PINS ? m_elements.MeterAt(nId) : nullptr;
    const HostScale* pScale = m_elements.ScaleAt(nId);
    const std::string whyMeter = pMeter ? WhyMeterValue(nId, *pMeter) : "";
    const std::string whyScale = pScale ? WhyScaleValue(*pScale) : "";
    if ((pMeter && whyMeter.empty()) || (pScale && whyScale.empty())) return "";
    return pScale ? whyScale : whyMeter;
}

std::string CUnheard::WhyMeterValue(DWORD nId, const HostMeter& meter) const
{
    const MeterTypeRow* pType = MeterTypeOf(meter.attr.nType);
    if (!pType) return "";
    if (pType->shows == MeterShows::Pins) return WhyShare(nId, meter);
    if (nId != 0)
        return std::string("a meter of type ") + pType->pszName +
               " has one value, that of the id 0";
    switch (pType->shows) {
    case MeterShows::Time:
        return "a clock shows the time and no value";
    case MeterShows::Bar:
        return meter.bFace ? "" : "there is no figure in the meter for the bar that shows it";
    case MeterShows::Pointer:
    case MeterShows::PointerOrReadOut:
        return WhyPointer(meter);
    default:
        return "";
    }
}

// A pointer on shares shows the value 0.
std::string CUnheard::WhyShare(DWORD nId, const HostMeter& meter) const
{
    const DWORD nSectors = std::min<DWORD>(Setting(meter, QEL_SEL_SECTOR_COUNT), METER_PINS);
    if (nId == 0)
        return meter.attr.bUsePin ? ""
                                  : "the values of a meter of type sector have the ids 1 to 32";
    return nId <= nSectors ? ""
                           : "the meter has " + std::to_string(nSectors) + " sectors ('sectors')";
}

std::string CUnheard::WhyPointer(const HostMeter& meter) const
{
    const bool bReadOut = MeterFollows(meter.attr.nType, *FindSelector(QEL_SEL_SHOW_VALUE)) &&
                          Setting(meter, QEL_SEL_SHOW_VALUE) != 0;
    return meter.attr.bUsePin || bReadOut ? ""
                                          : "the meter has no pointer that shows it (upin is 0)";
}

// A setting of a meter, as it is now.
DWORD CUnheard::Setting(const HostMeter& meter, DWORD nSelector) const
{
    DWORD nValue = 0;
    if (meter.reach == HostReach::Reached)
        return QELGetScaleParam(m_hEngine, meter.attr.nId, nSelector, &nValue) ? nValue : 0;
    std::string id;
    double fValue = 0;
    return Utf8ToDrawing(meter.id, &id) && QELGetSelector(m_hEngine, id.c_str(), nSelector, &fValue)
               ? static_cast<DWORD>(static_cast<int64_t>(fValue))
               : 0;
}

} // namespace qel
