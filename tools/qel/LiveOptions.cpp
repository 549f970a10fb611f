// The options that play the host; see the header.
#include "tools/qel/LiveOptions.h"

#include "dynamic/Selectors.h"
#include "tools/qel/FixedTime.h"
#include "tools/qel/Hint.h"
#include "tools/qel/Text.h"
#include "tools/qel/Unheard.h"
#include "tools/qel/ValuesFile.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace qel {

namespace {

// The option in full, for messages, and its two sides.
struct Assignment {
    std::string option;
    std::string target;
    std::string value;
};

Assignment Split(const char* pszOption, const char* pszForm, const std::wstring& text,
                 bool bMayBeEmpty = false)
{
    const std::string utf8 = ToUtf8(text);
    const std::size_t nEquals = utf8.find('=');
    if (nEquals == std::string::npos || nEquals == 0 ||
        (!bMayBeEmpty && nEquals + 1 == utf8.size()))
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
    LiveAction action{LiveAction::Kind::Param, parts.option};
    action.nId = ReadId(parts.option, parts.target);
    if (action.nId >= QEL_PARAM_COUNT)
        throw CTrouble(parts.option + ": there is no such parameter; they are 0 to " +
                       std::to_string(QEL_PARAM_COUNT - 1));
    action.value = action.nId == QEL_PARAM_DRAFT ? ReadWholeNumber(parts.option, parts.value)
                                                 : ReadColorOr(ReadWholeNumber, parts);
    return action;
}

LiveAction ReadSet(const std::wstring& text)
{
    const Assignment parts = Split("--set", "ID.SELECTOR=VALUE", text);
    const std::size_t nPoint = parts.target.rfind('.'); // identifiers have points, selectors none
    if (nPoint == std::string::npos || nPoint == 0)
        throw CTrouble("--set wants ID.SELECTOR=VALUE, not " + QuotedWord(ToUtf8(text)));
    LiveAction action{LiveAction::Kind::Selector, parts.option};
    ReadTarget(parts.target.substr(0, nPoint), &action);
    const SelectorRow& row = ReadSelector(parts.option, parts.target.substr(nPoint + 1));
    action.nSelector = static_cast<DWORD>(row.nId);
    action.value = row.form == SelectorForm::Color ? ReadColorOr(ReadLiveNumber, parts)
                                                   : ReadLiveNumber(parts.option, parts.value);
    if (action.value.bReal && row.nId != QEL_SEL_VALUE && row.nId != QEL_SEL_BASE_VALUE)
        throw CTrouble(parts.option + ": " + QuotedWord(row.pszName) +
                       " takes whole numbers only; a point is for value and base");
    return action;
}

LiveAction ReadText(const std::wstring& text)
{
    const Assignment parts = Split("--text", "ID=TEXT", text, true);
    LiveAction action{LiveAction::Kind::Text, parts.option, parts.target};
    action.text = parts.value;
    return action;
}

LiveAction ReadQuality(const std::wstring& text)
{
    constexpr int64_t WORST = 2;
    const Assignment parts = Split("--quality", "ID=0, ID=1 or ID=2", text);
    LiveAction action{LiveAction::Kind::Quality, parts.option, parts.target};
    int64_t& nQuality = action.value.nWhole;
    if (!ReadWhole(parts.value, &nQuality) || nQuality < 0 || nQuality > WORST)
        throw CTrouble(parts.option + ": a quality is 0 (good), 1 (stale) or 2 (bad)");
    return action;
}

using NumberReader = LiveNumber (*)(const std::string&, const std::string&);

// A number, or two with ".." between them.
void ReadNumbers(const std::string& text, NumberReader pfnRead, bool bRanges, LiveAction* pAction)
{
    const std::size_t nDots = text.find("..");
    pAction->bRange = nDots != std::string::npos;
    if (pAction->bRange && !bRanges)
        throw CTrouble(pAction->option +
                       ": a picture shows one value; a range is for 'qel animate'");
    pAction->value = pfnRead(pAction->option, text.substr(0, nDots));
    if (pAction->bRange) pAction->last = pfnRead(pAction->option, text.substr(nDots + 2));
}

constexpr char HOST_GROUP[] =
    "What the host of the drawing would set, any number of times, in the order given";
constexpr auto MANY = OptionRow::Takes::ManyValues;

constexpr SettingRow<CLiveOptions> g_rows[] = {
    {{MANY, "--set", "ID.SELECTOR=V", HOST_GROUP,
      "a setting of the scale or meter with that id; 'qel info' lists ids and selectors, which go "
      "by name or by number: max, ticks, alarm, 20. The last point divides: "
      "boiler.temperature.max=120"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadSet(given.value)); }},
    {{MANY, "--value", "ID=V", HOST_GROUP,
      "the value of the scale or meter with that id; the ids 1 to 32 are the sectors of the meter "
      "with id 0. An identifier reaches every scale, meter, status element and text that bears it. "
      "With 'qel animate' V may be FROM..TO: the value goes from one number to the "
      "other, and several ids may move. With a point in one of the numbers real values are set, "
      "else rounded whole ones"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->AddValue(given.value); }},
    {{MANY, "--text", "ID=TEXT", HOST_GROUP,
      "what the texts with that identifier show; a run of # in it (##.#) takes their value"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadText(given.value)); }},
    {{MANY, "--quality", "ID=N", HOST_GROUP,
      "how far the elements with that identifier can be trusted: 0 good, 1 stale (hatched), 2 bad "
      "(and crossed out)"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadQuality(given.value)); }},
    {{MANY, "--param", "I=V", HOST_GROUP,
      "host parameter 0 (colour), 1 (hatch, 0 to 37), 2 or 3 (its colours)"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->Add(ReadParam(given.value)); }},
    {{MANY, "--status", "N", HOST_GROUP,
      "the status number; -1 shows all status elements. With 'qel animate' N may be FROM..TO"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->AddStatus(given.value); }},
    {{OptionRow::Takes::Value, "--time", "HH:MM:SS", HOST_GROUP,
      "the time that clocks show, instead of the present one; once. With 'qel animate' the time of "
      "the first frame, from which clocks go on as long as each frame shows, or FROM..TO, over "
      "midnight when TO is the earlier one"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->SetTime(given.value); }},
    {{OptionRow::Takes::Value, "--values", "FILE.json", HOST_GROUP,
      "values from a file, before all other settings: one JSON object of names, as "
      "{\"pump.speed\": 1480, \"pump.speed.max\": 3000, \"state.text\": \"on\", "
      "\"lamp.visible\": false, \"#0\": 62.5, \"#status\": 1}. A name is an identifier; or one "
      "with a selector, text, quality, visible, clr, fg, bg or sector-1 to sector-32 behind a "
      "point; or # with the number of a scale or meter, #status, or #param.0 to #param.3"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->SetValues(given.value); }},
    {{OptionRow::Takes::Value, "--data", "FILE.csv", HOST_GROUP,
      "values from a table: a column a value, a row a frame of 'qel animate'; 'qel render' shows "
      "one --row. The first row names what stands before = in --value; an empty cell leaves the "
      "value as it was"},
     [](const GivenOption& given, CLiveOptions* pLive) { pLive->SetTable(given.value); }}};

} // namespace

void CLiveOptions::Add(LiveAction action)
{
    (action.bRange ? m_ranges : m_actions).push_back(std::move(action));
}

void CLiveOptions::AddValue(const std::wstring& text)
{
    const Assignment parts =
        Split("--value", m_bRanges ? "ID=FROM..TO or ID=VALUE" : "ID=VALUE", text);
    LiveAction action{LiveAction::Kind::Value, parts.option};
    ReadTarget(parts.target, &action);
    ReadNumbers(parts.value, ReadLiveNumber, m_bRanges, &action);
    Add(std::move(action));
}

void CLiveOptions::AddStatus(const std::wstring& text)
{
    LiveAction action{LiveAction::Kind::Status, "--status " + ToUtf8(text)};
    ReadNumbers(ToUtf8(text), ReadWholeNumber, m_bRanges, &action);
    Add(std::move(action));
}

void CLiveOptions::SetTime(const std::wstring& text)
{
    if (m_time) throw CTrouble("--time is given twice");
    const std::size_t nDots = text.find(L"..");
    const bool bRange = m_bRanges && nDots != std::wstring::npos;
    m_time = ReadTime(bRange ? text.substr(0, nDots) : text);
    if (bRange) m_lastTime = ReadTime(text.substr(nDots + 2));
    m_timeOption = "--time " + ToUtf8(text);
}

void CLiveOptions::SetTable(const std::wstring& path)
{
    if (m_table) throw CTrouble("--data is given twice");
    m_table.emplace(path);
}

void CLiveOptions::SetValues(const std::wstring& path)
{
    if (!m_valuesPath.empty()) throw CTrouble("--values is given twice");
    m_valuesPath = path;
    m_values = ReadValuesFile(path);
}

std::vector<LiveAction> CLiveOptions::ReadNamed(HQELENGINE hEngine) const
{
    std::vector<LiveAction> actions;
    if (m_values.empty()) return actions;
    const CNamedValues names(hEngine);
    for (const NamedValue& value : m_values)
        actions.push_back(names.Read("'" + ToUtf8(m_valuesPath) + "', " + value.name, value));
    return actions;
}

void CLiveOptions::AddRows(OptionRows* pRows)
{
    AddOptions(g_rows, pRows);
}

bool CLiveOptions::Take(const GivenOption& given)
{
    return TakeOption(g_rows, given, this);
}

std::vector<std::string> CLiveOptions::Unheard(HQELENGINE hEngine) const
{
    if (m_values.empty() && m_actions.empty() && m_ranges.empty() && !m_time && !m_table) return {};
    CUnheard unheard(hEngine);
    const std::vector<LiveAction> named = ReadNamed(hEngine);
    for (const LiveAction& action : named) unheard.NoteText(action);
    for (const LiveAction& action : m_actions) unheard.NoteText(action);
    for (const LiveAction& action : named) unheard.Add(action);
    for (const LiveAction& action : m_actions) unheard.Add(action);
    for (const LiveAction& action : m_ranges) unheard.Add(action);
    if (m_table)
        for (const LiveAction& action : m_table->Columns()) unheard.Add(action);
    if (m_time) unheard.AddTime(m_timeOption);
    return unheard.Texts();
}

bool CLiveOptions::MovesNumbersAlone() const
{
    return !m_table && std::none_of(m_ranges.begin(), m_ranges.end(), [](const LiveAction& a) {
        return a.IsById() || a.kind == LiveAction::Kind::Status;
    });
}

void CLiveOptions::Apply(HQELENGINE hEngine) const
{
    if (!m_values.empty()) {
        const CNamedValues names(hEngine);
        for (const LiveAction& action : ReadNamed(hEngine)) names.Set(action);
    }
    for (const LiveAction& action : m_actions) SetLive(hEngine, action, action.value);
    if (m_table) m_table->RequireTargets(hEngine);
    for (int n = 0; n < m_nRow; ++n) m_table->SetRow(hEngine, n);
}

void CLiveOptions::ApplyFrame(HQELENGINE hEngine, int nFrame, int nFrames) const
{
    for (const LiveAction& action : m_ranges)
        SetLive(hEngine, action, action.InFrame(nFrame, nFrames));
    if (m_table) m_table->SetRow(hEngine, nFrame);
}

} // namespace qel
