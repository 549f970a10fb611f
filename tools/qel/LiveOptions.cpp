// The options that play the host; see the header.
#include "tools/qel/LiveOptions.h"

#include "dynamic/Selectors.h"
#include "tools/qel/FixedTime.h"
#include "tools/qel/Hint.h"
#include "tools/qel/HostElements.h"
#include "tools/qel/Text.h"
#include "tools/qel/Unheard.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace qel {

namespace {

constexpr char WHOLE_FORM[] = "a whole number, decimal or 0x hexadecimal";
constexpr std::size_t MAX_DIGITS = 40; // more than any number needs

std::string QuotedWord(const std::string& word)
{
    return "'" + word + "'";
}

bool IsAll(const std::string& text, const char* pszOf)
{
    return !text.empty() && text.find_first_not_of(pszOf) == std::string::npos;
}

// A whole number of 32 bits, with or without sign. False: it is none, or does not fit.
bool ReadWhole(const std::string& text, int64_t* pnValue)
{
    const bool bHex = text.starts_with("0x") || text.starts_with("0X");
    const bool bMinus = text.starts_with("-");
    const std::string digits = text.substr(bHex ? 2 : (bMinus ? 1 : 0));
    if (digits.size() > MAX_DIGITS ||
        !IsAll(digits, bHex ? "0123456789abcdefABCDEF" : "0123456789"))
        return false;
    const unsigned long long nDigits = std::strtoull(digits.c_str(), nullptr, bHex ? 16 : 10);
    if (nDigits > (bMinus ? 0x80000000ULL : 0xFFFFFFFFULL)) return false;
    *pnValue = bMinus ? -static_cast<int64_t>(nDigits) : static_cast<int64_t>(nDigits);
    return true;
}

// Digits with a point among or beside them.
bool ReadReal(const std::string& text, double* pfValue)
{
    std::string digits = text.substr(text.starts_with("-") ? 1 : 0);
    const std::size_t nPoint = digits.find('.');
    if (nPoint == std::string::npos || digits.size() > MAX_DIGITS) return false;
    digits.erase(nPoint, 1);
    if (!IsAll(digits, "0123456789")) return false;
    *pfValue = std::strtod(text.c_str(), nullptr);
    return std::fabs(*pfValue) <= FLT_MAX;
}

LiveNumber ReadLiveNumber(const std::string& option, const std::string& text)
{
    LiveNumber number;
    if (ReadWhole(text, &number.nWhole)) return number;
    number.bReal = ReadReal(text, &number.fReal);
    if (number.bReal) return number;
    throw CTrouble(option + ": " + QuotedWord(text) + " is no number of 32 bits; wanted is " +
                   WHOLE_FORM + ", or one with a point");
}

// Where a number with a point has no meaning.
LiveNumber ReadWholeNumber(const std::string& option, const std::string& text)
{
    LiveNumber number;
    if (ReadWhole(text, &number.nWhole)) return number;
    throw CTrouble(option + ": wanted is " + WHOLE_FORM + " of 32 bits, not " + QuotedWord(text));
}

DWORD ReadId(const std::string& option, const std::string& text)
{
    int64_t nValue = 0;
    if (ReadWhole(text, &nValue) && nValue >= 0) return static_cast<DWORD>(nValue);
    throw CTrouble(option + ": an id is " + WHOLE_FORM + " from 0 on, not " + QuotedWord(text));
}

// The option in full, for messages, and its two sides.
struct Assignment {
    std::string option;
    std::string target;
    std::string value;
};

Assignment Split(const char* pszOption, const char* pszForm, const std::wstring& text)
{
    const std::string utf8 = ToUtf8(text);
    const std::size_t nEquals = utf8.find('=');
    if (nEquals == std::string::npos || nEquals == 0 || nEquals + 1 == utf8.size())
        throw CTrouble(std::string(pszOption) + " wants " + pszForm + ", not " + QuotedWord(utf8));
    return {std::string(pszOption) + " " + utf8, utf8.substr(0, nEquals), utf8.substr(nEquals + 1)};
}

LiveNumber ReadColorOr(LiveNumber (*pfnRead)(const std::string&, const std::string&),
                       const Assignment& parts)
{
    COLORREF clr = 0;
    if (!ReadColor(parts.value, &clr)) return pfnRead(parts.option, parts.value);
    LiveNumber number;
    number.nWhole = clr;
    return number;
}

const SelectorRow& ReadSelector(const std::string& option, const std::string& text)
{
    int64_t nSelector = LookupKeyword(g_selectorRows, text.c_str());
    if (nSelector == KEYWORD_NONE) ReadWhole(text, &nSelector);
    if (nSelector >= 0 && nSelector < QEL_SEL_COUNT)
        return *FindSelector(static_cast<uint32_t>(nSelector));
    const std::vector<std::string> known = WordsOf(g_selectorRows);
    std::string names;
    for (const std::string& name : known) names += (names.empty() ? "" : ", ") + name;
    throw CTrouble(option + ": unknown selector " + QuotedWord(text) + MeantWord(text, known) +
                   " (known are 0 to " + std::to_string(QEL_SEL_COUNT - 1) + ": " + names + ")");
}

LiveAction ReadParam(const std::wstring& text)
{
    const Assignment parts = Split("--param", "INDEX=VALUE", text);
    LiveAction action{LiveAction::Kind::Param, parts.option, 0, 0, {}, {}};
    action.nId = ReadId(parts.option, parts.target);
    if (action.nId >= QEL_PARAM_COUNT)
        throw CTrouble(parts.option + ": there is no such parameter; they are 0 to " +
                       std::to_string(QEL_PARAM_COUNT - 1));
    action.value = action.nId == QEL_PARAM_DRAFT ? ReadWholeNumber(parts.option, parts.value)
                                                 : ReadColorOr(ReadWholeNumber, parts);
    return action;
}

LiveAction ReadStatus(const std::wstring& text)
{
    const std::string option = "--status " + ToUtf8(text);
    return {LiveAction::Kind::Status, option, 0, 0, ReadWholeNumber(option, ToUtf8(text)), {}};
}

LiveAction ReadSet(const std::wstring& text)
{
    const Assignment parts = Split("--set", "ID.SELECTOR=VALUE", text);
    const std::size_t nPoint = parts.target.find('.');
    if (nPoint == std::string::npos)
        throw CTrouble("--set wants ID.SELECTOR=VALUE, not " + QuotedWord(ToUtf8(text)));
    LiveAction action{LiveAction::Kind::Selector, parts.option, 0, 0, {}, {}};
    action.nId = ReadId(parts.option, parts.target.substr(0, nPoint));
    const SelectorRow& row = ReadSelector(parts.option, parts.target.substr(nPoint + 1));
    action.nSelector = static_cast<DWORD>(row.nId);
    action.value = row.form == SelectorForm::Color ? ReadColorOr(ReadLiveNumber, parts)
                                                   : ReadLiveNumber(parts.option, parts.value);
    if (action.value.bReal && row.nId != QEL_SEL_VALUE && row.nId != QEL_SEL_BASE_VALUE)
        throw CTrouble(parts.option + ": " + QuotedWord(row.pszName) +
                       " takes whole numbers only; a point is for value and base");
    return action;
}

// The value that goes from one end of a range in the first frame to the other in the last.
LiveNumber Between(const LiveNumber& first, const LiveNumber& last, int nFrame, int nFrames)
{
    const int64_t nDone = nFrame;
    const int64_t nAll = nFrames > 1 ? nFrames - 1 : 1;
    LiveNumber number;
    number.bReal = first.bReal || last.bReal;
    if (number.bReal) {
        const double fFirst = first.bReal ? first.fReal : static_cast<double>(first.nWhole);
        const double fLast = last.bReal ? last.fReal : static_cast<double>(last.nWhole);
        number.fReal =
            (fFirst * static_cast<double>(nAll - nDone) + fLast * static_cast<double>(nDone)) /
            static_cast<double>(nAll);
        return number;
    }
    // Rounded to the nearest, a half away from zero.
    const int64_t nSum = first.nWhole * (nAll - nDone) + last.nWhole * nDone;
    number.nWhole = (2 * nSum + (nSum < 0 ? -nAll : nAll)) / (2 * nAll);
    return number;
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

[[noreturn]] void Refuse(const CDrawing& drawing, const LiveAction& action)
{
    switch (action.kind) {
    case LiveAction::Kind::Param:
        throw CTrouble(action.option + ": a hatch style is 0 to 37");
    case LiveAction::Kind::Status:
        throw CTrouble(action.option + ": the drawing has no status element");
    case LiveAction::Kind::Selector:
        break;
    }
    throw CTrouble(action.option + ": " + WhySelectorRefused(FindHostElements(drawing), action));
}

// The engine's answer tells whether a frame, a pattern or a draw region took the parameter. It is
// kept all the same, for the shapes that follow it; only a hatch that there is not is refused.
bool SetParam(HQELENGINE hEngine, DWORD nIndex, DWORD nValue)
{
    DWORD nKept = 0;
    return QELSetParam(hEngine, static_cast<int>(nIndex), nValue) ||
           (QELGetParam(hEngine, static_cast<int>(nIndex), &nKept) && nKept == nValue);
}

bool Set(HQELENGINE hEngine, const LiveAction& action, const LiveNumber& value)
{
    const auto nValue = static_cast<DWORD>(value.nWhole);
    switch (action.kind) {
    case LiveAction::Kind::Param:
        return SetParam(hEngine, action.nId, nValue);
    case LiveAction::Kind::Status:
        return QELSetStatus(hEngine, nValue) != 0;
    case LiveAction::Kind::Selector:
        break;
    }
    return value.bReal ? QELSetScaleParamf(hEngine, action.nId, action.nSelector,
                                           static_cast<float>(value.fReal)) != 0
                       : QELSetScaleParam(hEngine, action.nId, action.nSelector, nValue) != 0;
}

constexpr char HOST_GROUP[] =
    "What the host of the drawing would set, any number of times, in the order given";
constexpr auto MANY = OptionRow::Takes::ManyValues;

constexpr SettingRow<CLiveOptions> g_rows[] = {
    {{MANY, "--set", "ID.SELECTOR=V", HOST_GROUP,
      "a setting of the scale or meter with that id; 'qel info' lists ids and selectors, which go "
      "by name or by number: max, ticks, alarm, 20"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadSet(given.value)); }},
    {{MANY, "--value", "ID=V", HOST_GROUP,
      "the value of the scale or meter with that id; the ids 1 to 32 are the sectors of the meter "
      "with id 0. With 'qel animate' V may be FROM..TO: the value goes from one number to the "
      "other, and several ids may move. With a point in one of the numbers real values are set, "
      "else rounded whole ones"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->AddValue(given.value); }},
    {{MANY, "--param", "I=V", HOST_GROUP,
      "host parameter 0 (colour), 1 (hatch, 0 to 37), 2 or 3 (its colours)"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadParam(given.value)); }},
    {{MANY, "--status", "N", HOST_GROUP, "the status number; -1 shows all status elements"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadStatus(given.value)); }},
    {{OptionRow::Takes::Value, "--time", "HH:MM:SS", HOST_GROUP,
      "the time that clocks show, instead of the present one; once"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->SetTime(given.value); }}};

} // namespace

void CLiveOptions::AddValue(const std::wstring& text)
{
    const Assignment parts =
        Split("--value", m_bRanges ? "ID=FROM..TO or ID=VALUE" : "ID=VALUE", text);
    LiveAction action{LiveAction::Kind::Selector, parts.option, 0, QEL_SEL_VALUE, {}, {}};
    action.nId = ReadId(parts.option, parts.target);
    const std::size_t nDots = parts.value.find("..");
    if (nDots == std::string::npos) {
        action.value = ReadLiveNumber(parts.option, parts.value);
        m_actions.push_back(std::move(action));
        return;
    }
    if (!m_bRanges)
        throw CTrouble(parts.option + ": a picture shows one value; a range is for 'qel animate'");
    action.value = ReadLiveNumber(parts.option, parts.value.substr(0, nDots));
    action.last = ReadLiveNumber(parts.option, parts.value.substr(nDots + 2));
    m_ranges.push_back(std::move(action));
}

bool ReadColor(const std::string& text, COLORREF* pClr)
{
    constexpr std::size_t LENGTH = 7;
    if (text.size() != LENGTH || text[0] != '#' || !IsAll(text.substr(1), "0123456789abcdefABCDEF"))
        return false;
    const unsigned long nValue = std::strtoul(text.c_str() + 1, nullptr, 16);
    *pClr = RGB((nValue >> 16) & 0xFF, (nValue >> 8) & 0xFF, nValue & 0xFF);
    return true;
}

void CLiveOptions::SetTime(const std::wstring& text)
{
    if (m_time) throw CTrouble("--time is given twice");
    m_time = ReadTime(text);
    m_timeOption = "--time " + ToUtf8(text);
}

void CLiveOptions::AddRows(OptionRows* pRows)
{
    AddOptions(g_rows, pRows);
}

bool CLiveOptions::Take(const GivenOption& given)
{
    return TakeOption(g_rows, given, this);
}

std::vector<std::string> CLiveOptions::Unheard(const CDrawing& drawing) const
{
    if (m_actions.empty() && m_ranges.empty() && !m_time) return {};
    CUnheard unheard(drawing);
    for (const LiveAction& action : m_actions) unheard.Add(action);
    for (const LiveAction& action : m_ranges) unheard.Add(action);
    if (m_time) unheard.AddTime(m_timeOption);
    return unheard.Texts();
}

void CLiveOptions::Apply(const CDrawing& drawing) const
{
    for (const LiveAction& action : m_actions)
        if (!Set(drawing.Engine(), action, action.value)) Refuse(drawing, action);
}

void CLiveOptions::ApplyRanges(const CDrawing& drawing, int nFrame, int nFrames) const
{
    for (const LiveAction& action : m_ranges)
        if (!Set(drawing.Engine(), action, Between(action.value, action.last, nFrame, nFrames)))
            Refuse(drawing, action);
}

} // namespace qel
