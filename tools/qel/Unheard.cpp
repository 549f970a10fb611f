#include "tools/qel/Unheard.h"

#include "dynamic/QELViewStatus.h"

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

std::string WhyScaleValue(const HostScale& scale)
{
    return HasFill(scale.attr) || scale.attr.bPin
               ? ""
               : "the scale has neither a fill (style) nor a pointer (pin) that shows it";
}

} // namespace

CUnheard::CUnheard(const CDrawing& drawing)
    : m_hEngine(drawing.Engine()), m_elements(FindHostElements(drawing))
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
        return Tell(action.option, WhyStatus(static_cast<DWORD>(action.value.nWhole)));
    case LiveAction::Kind::Param:
        return Tell(action.option, WhyParam(action.nId));
    case LiveAction::Kind::Selector:
        return Tell(action.option, WhySelector(action.nId, *FindSelector(action.nSelector)));
    }
}

void CUnheard::AddTime(const std::string& option)
{
    const auto shows = [](const HostMeter& meter) {
        const MeterTypeRow* pType = MeterTypeOf(meter.attr.nType);
        return pType && pType->shows == MeterShows::Time && meter.attr.bUsePin;
    };
    const auto& meters = m_elements.meters;
    if (std::none_of(meters.begin(), meters.end(), shows))
        Tell(option, "the drawing has no clock with hands");
}

// The engine refuses a status where there is no status element.
std::string CUnheard::WhyStatus(DWORD nStatus) const
{
    const std::set<LONG>& statuses = m_elements.statuses;
    if (nStatus == STATUS_SHOW_ALL || statuses.contains(static_cast<LONG>(nStatus))) return "";
    return "no status element of the drawing has this number; they have: " + Listed(statuses);
}

std::string CUnheard::WhyParam(DWORD nIndex) const
{
    const bool bFollowed =
        nIndex == QEL_PARAM_COLOR ? m_elements.bColorFollowed : m_elements.bDraftFollowed;
    return bFollowed ? "" : "nothing in the drawing follows this parameter";
}

std::string CUnheard::WhySelector(DWORD nId, const SelectorRow& row) const
{
    if (row.nId == QEL_SEL_VALUE) return WhyValue(nId);
    const HostMeter* pMeter = m_elements.MeterAt(nId);
    const HostScale* pScale = m_elements.ScaleAt(nId);
    if (pMeter && (MeterFollows(pMeter->attr.nType, row) || DressesFace(*pMeter, row))) return "";
    if (pScale && ScaleFollows(pScale->attr.nType, row)) return "";
    const std::string end = std::string(" does not follow '") + row.pszName + "'";
    if (pMeter && row.pszMeaning)
        return std::string("a meter of type ") + NameOf(g_meterTypeRows, pMeter->attr.nType) + end;
    return pScale ? std::string("a scale of type ") + ScaleTypeName(*pScale) + end : "";
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
    const DWORD nSectors = std::min<DWORD>(Setting(0, QEL_SEL_SECTOR_COUNT), METER_PINS);
    if (nId == 0)
        return meter.attr.bUsePin ? ""
                                  : "the values of a meter of type sector have the ids 1 to 32";
    return nId <= nSectors ? ""
                           : "the meter has " + std::to_string(nSectors) + " sectors ('sectors')";
}

std::string CUnheard::WhyPointer(const HostMeter& meter) const
{
    const bool bReadOut = MeterFollows(meter.attr.nType, *FindSelector(QEL_SEL_SHOW_VALUE)) &&
                          Setting(meter.attr.nId, QEL_SEL_SHOW_VALUE) != 0;
    return meter.attr.bUsePin || bReadOut ? ""
                                          : "the meter has no pointer that shows it (upin is 0)";
}

// A setting of meters, as it is now.
DWORD CUnheard::Setting(DWORD nId, DWORD nSelector) const
{
    DWORD nValue = 0;
    return QELGetScaleParam(m_hEngine, nId, nSelector, &nValue) ? nValue : 0;
}

} // namespace qel
