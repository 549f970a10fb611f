// What the host sets, and why a drawing refuses it; see the header.
#include "tools/qel/LiveAction.h"

#include "tools/qel/Command.h"
#include "tools/qel/Hint.h"
#include "tools/qel/Text.h"
#include "tools/qel/Unheard.h"

#include <algorithm>

namespace qel {

namespace {

bool IsNumber(const std::string& text)
{
    const bool bHex = text.starts_with("0x") || text.starts_with("0X");
    return bHex ? IsAll(text.substr(2), "0123456789abcdefABCDEF") : IsAll(text, "0123456789");
}

// What the drawing has instead of an id that nothing answers to.
std::string WhyNobodyAnswers(const HostElements& elements, DWORD nId)
{
    for (const HostMeter& meter : elements.meters)
        if (meter.attr.nId == nId && meter.reach == HostReach::Pin)
            return "the meter with mtid " + std::to_string(nId) +
                   " cannot be reached: the ids 1 to 32 are the values of a meter with mtid 0";
    std::string text = "no scale or meter of the drawing has this id";
    if (!elements.ids.Scales().empty()) text += "; scales: " + Listed(elements.ids.Scales());
    if (!elements.ids.Meters().empty()) text += "; meters: " + Listed(elements.ids.Meters());
    return text;
}

std::string WhyValueRefused(const HostMeter* pMeter, const SelectorRow& row)
{
    const std::string name = QuotedWord(row.pszName);
    if (row.nId == QEL_SEL_TICKS) return name + " takes 1 or more";
    if (pMeter && row.nId == QEL_SEL_SHOW_SCALE && !pMeter->attr.bUseScale)
        return "the meter has no scale to show (usc is 0)";
    if (pMeter && row.nId == QEL_SEL_SHOW_PIN && !pMeter->attr.bUsePin)
        return "the meter has no pointer to show (upin is not 1)";
    if (row.nId == QEL_SEL_FULL_CIRCLE) return name + " takes 0 or 1, and not what it is already";
    return "the value is refused";
}

std::string WhySelectorRefused(const HostElements& elements, const LiveAction& action)
{
    const SelectorRow& row = *FindSelector(action.nSelector);
    const std::string name = QuotedWord(row.pszName);
    const bool bScale = elements.ids.HasScale(action.nId);
    const HostMeter* pMeter = elements.MeterAt(action.nId);
    if (!bScale && !pMeter) return WhyNobodyAnswers(elements, action.nId);
    const bool bScaleKnows = bScale && row.pszForScale;
    const bool bMeterKnows = pMeter && row.pszMeaning;
    if (bMeterKnows && row.nId == QEL_SEL_VALUE)
        return "the value of a meter is set by the ids 0 to 32 alone, so this one takes settings "
               "but no value";
    if (!bScaleKnows && !bMeterKnows)
        return std::string(pMeter ? "a meter" : "a scale") + " does not know the selector " + name;
    return WhyValueRefused(pMeter, row);
}

std::string WhyNobodyBears(const HostElements& elements, const std::string& id)
{
    std::vector<std::string> known;
    for (const HostBearer& bearer : elements.bearers) known.push_back(bearer.id);
    const std::string meant = MeantWord(id, known);
    return "no element of the drawing has the identifier " + QuotedWord(id) +
           (meant.empty() && !known.empty() ? "; 'qel info' lists them" : meant);
}

std::string WhySettingRefused(const HostElements& elements, const LiveAction& action)
{
    const SelectorRow& row = *FindSelector(action.nSelector);
    const HostMeter* pMeter = elements.MeterNamed(action.id);
    const bool bScale = elements.ScaleNamed(action.id) != nullptr;
    if (!bScale && !pMeter) return "no scale or meter has this identifier";
    if (!(bScale && row.pszForScale) && !(pMeter && row.pszMeaning))
        return std::string(pMeter ? "a meter" : "a scale") + " does not know the selector " +
               QuotedWord(row.pszName);
    return WhyValueRefused(pMeter, row);
}

std::string WhyIdRefused(const HostElements& elements, const LiveAction& action)
{
    if (!elements.IsBorne(action.id)) return WhyNobodyBears(elements, action.id);
    switch (action.kind) {
    case LiveAction::Kind::Value:
        return "no meter, scale, status element or text has this identifier";
    case LiveAction::Kind::Text:
        return "no text has this identifier";
    case LiveAction::Kind::Selector:
        return WhySettingRefused(elements, action);
    case LiveAction::Kind::Color:
        return "no shape has this identifier, and none is in what has it";
    case LiveAction::Kind::Pin:
        return "no meter of the type sector has this identifier, or it takes no such value";
    default:
        return "the value is refused";
    }
}

[[noreturn]] void Refuse(const HostElements& elements, const LiveAction& action)
{
    if (action.kind == LiveAction::Kind::Param)
        throw CTrouble(action.option + ": a hatch style is 0 to 37");
    if (action.kind == LiveAction::Kind::Status)
        throw CTrouble(action.option + ": the drawing has no status element");
    throw CTrouble(
        action.option + ": " +
        (action.IsById() ? WhyIdRefused(elements, action) : WhySelectorRefused(elements, action)));
}

// The engine's answer tells whether a frame, a pattern or a draw region took the parameter. It is
// kept all the same, for the shapes that follow it; only a hatch that there is not is refused.
bool SetParam(HQELENGINE hEngine, DWORD nIndex, DWORD nValue)
{
    DWORD nKept = 0;
    return QELSetParam(hEngine, static_cast<int>(nIndex), nValue) ||
           (QELGetParam(hEngine, static_cast<int>(nIndex), &nKept) && nKept == nValue);
}

bool SetByNumber(HQELENGINE hEngine, const LiveAction& action, const LiveNumber& value)
{
    const auto nValue = static_cast<DWORD>(value.nWhole);
    if (action.kind == LiveAction::Kind::Param) return SetParam(hEngine, action.nId, nValue);
    if (action.kind == LiveAction::Kind::Status) return QELSetStatus(hEngine, nValue) != 0;
    return value.bReal ? QELSetScaleParamf(hEngine, action.nId, action.nSelector,
                                           static_cast<float>(value.fReal)) != 0
                       : QELSetScaleParam(hEngine, action.nId, action.nSelector, nValue) != 0;
}

bool SetText(HQELENGINE hEngine, const std::string& id, const LiveAction& action)
{
    std::string text;
    if (!Utf8ToDrawing(action.text, &text))
        throw CTrouble(action.option + ": the text has a character that the drawing's encoding "
                                       "does not have");
    if (text.size() >= QEL_TEXT_SIZE)
        throw CTrouble(action.option + ": a text has at most " + std::to_string(QEL_TEXT_SIZE - 1) +
                       " bytes");
    return QELSetText(hEngine, id.c_str(), text.c_str()) != 0;
}

bool SetById(HQELENGINE hEngine, const LiveAction& action, const LiveNumber& value)
{
    std::string id;
    if (!Utf8ToDrawing(action.id, &id)) return false; // no drawing has it
    switch (action.kind) {
    case LiveAction::Kind::Value:
        return QELSetValue(hEngine, id.c_str(), value.AsReal()) != 0;
    case LiveAction::Kind::Selector:
        return QELSetSelector(hEngine, id.c_str(), action.nSelector, value.AsReal()) != 0;
    case LiveAction::Kind::Text:
        return SetText(hEngine, id, action);
    case LiveAction::Kind::Quality:
        return QELSetQuality(hEngine, id.c_str(), static_cast<int>(value.nWhole)) != 0;
    case LiveAction::Kind::Visible:
        return QELSetVisible(hEngine, id.c_str(), value.nWhole != 0) != 0;
    case LiveAction::Kind::Color:
        return QELSetColor(hEngine, id.c_str(), action.nPlace,
                           static_cast<COLORREF>(value.nWhole)) != 0;
    case LiveAction::Kind::Pin:
        return QELSetPin(hEngine, id.c_str(), action.nPlace, value.AsReal()) != 0;
    default:
        return false;
    }
}

} // namespace

void ReadTarget(const std::string& text, LiveAction* pAction)
{
    if (IsNumber(text))
        pAction->nId = ReadId(pAction->option, text);
    else
        pAction->id = text;
}

void SetLive(HQELENGINE hEngine, const LiveAction& action, const LiveNumber& value,
             const HostElements* pElements)
{
    const auto pfnSet = action.IsById() ? SetById : SetByNumber;
    if (pfnSet(hEngine, action, value)) return;
    if (pElements) Refuse(*pElements, action);
    Refuse(FindHostElements(hEngine), action);
}

void RequireTarget(const HostElements& elements, const LiveAction& action)
{
    const bool bThere =
        action.IsById() ? elements.IsBorne(action.id)
                        : elements.ids.HasScale(action.nId) || elements.ids.HasMeter(action.nId);
    if (!bThere) Refuse(elements, action);
}

} // namespace qel
