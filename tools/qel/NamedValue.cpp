// Values by one name each; see the header.
#include "tools/qel/NamedValue.h"

#include "tools/qel/Command.h"
#include "tools/qel/Encoding.h"
#include "tools/qel/Hint.h"
#include "tools/qel/Text.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace qel {

namespace {

using Kind = LiveAction::Kind;

constexpr char STATUS[] = "#status";
constexpr char PARAM[] = "#param";
constexpr char SECTOR[] = "sector-";
constexpr char BLINK_WORD[] = " glt";
constexpr std::size_t MAX_NUMBER = 64; // letters of one; more than any needs
constexpr int64_t WORST_QUALITY = 2;

// What stands behind the last point of a name, besides selectors and sectors.
struct SuffixRow {
    const char* pszName;
    Kind kind;
    int nPlace;
};
constexpr SuffixRow g_suffixes[] = {{"text", Kind::Text, 0},       {"quality", Kind::Quality, 0},
                                    {"visible", Kind::Visible, 0}, {"clr", Kind::Color, 0},
                                    {"fg", Kind::Color, 1},        {"bg", Kind::Color, 2}};

[[noreturn]] void Fail(const std::string& option, const std::string& why)
{
    throw CTrouble(option + ": " + why);
}

std::string Trimmed(const std::string& text)
{
    const std::size_t nFirst = text.find_first_not_of(" \t");
    if (nFirst == std::string::npos) return "";
    return text.substr(nFirst, text.find_last_not_of(" \t") - nFirst + 1);
}

// A selector by name; by number it would be taken for what an identifier ends with.
const SelectorRow* SelectorNamed(const std::string& name)
{
    const int32_t nId = LookupKeyword(g_selectorRows, name.c_str());
    return nId == KEYWORD_NONE ? nullptr : FindSelector(static_cast<uint32_t>(nId));
}

// The number of a sector, 0 for what is none.
int SectorOf(const std::string& suffix)
{
    int64_t nPin = 0;
    if (!suffix.starts_with(SECTOR) || !ReadWhole(suffix.substr(sizeof SECTOR - 1), &nPin))
        return 0;
    return nPin >= 1 && nPin <= METER_PINS ? static_cast<int>(nPin) : 0;
}

bool TakeSuffix(const std::string& suffix, LiveAction* pAction)
{
    for (const SuffixRow& row : g_suffixes) {
        if (suffix != row.pszName) continue;
        pAction->kind = row.kind;
        pAction->nPlace = row.nPlace;
        return true;
    }
    pAction->nPlace = SectorOf(suffix);
    if (pAction->nPlace) {
        pAction->kind = Kind::Pin;
        return true;
    }
    const SelectorRow* pRow = SelectorNamed(suffix);
    if (!pRow) return false;
    pAction->kind = Kind::Selector;
    pAction->nSelector = static_cast<DWORD>(pRow->nId);
    return true;
}

std::vector<std::string> Suffixes()
{
    std::vector<std::string> words = WordsOf(g_selectorRows);
    for (const SuffixRow& row : g_suffixes) words.emplace_back(row.pszName);
    return words;
}

// Without its sign and its last point with what follows: the two sides of a name.
struct Divided {
    std::string target;
    std::optional<std::string> suffix;
};

Divided Divide(const std::string& name)
{
    const std::size_t nPoint = name.rfind('.');
    if (nPoint == std::string::npos) return {name, {}};
    return {name.substr(0, nPoint), name.substr(nPoint + 1)};
}

LiveAction ReadParamName(const std::string& option, const std::string& index)
{
    LiveAction action{Kind::Param, option};
    action.nId = ReadId(option, index);
    if (action.nId >= QEL_PARAM_COUNT) Fail(option, "there is no such parameter; they are 0 to 3");
    return action;
}

// A name that begins with '#' and is no identifier.
LiveAction ReadNumberName(const std::string& option, const std::string& name)
{
    if (name == STATUS) return {Kind::Status, option};
    const Divided parts = Divide(name);
    if (parts.target == PARAM) return ReadParamName(option, parts.suffix.value_or(""));
    LiveAction action{Kind::Value, option};
    action.nId = ReadId(option, parts.target.substr(1));
    if (!parts.suffix) return action;
    const SelectorRow* pRow = SelectorNamed(*parts.suffix);
    if (!pRow)
        Fail(option, "unknown selector " + QuotedWord(*parts.suffix) +
                         MeantWord(*parts.suffix, WordsOf(g_selectorRows)));
    action.kind = Kind::Selector;
    action.nSelector = static_cast<DWORD>(pRow->nId);
    return action;
}

bool TakesRealNumbers(const LiveAction& action)
{
    return action.kind == Kind::Value || action.kind == Kind::Pin ||
           (action.kind == Kind::Selector &&
            (action.nSelector == QEL_SEL_VALUE || action.nSelector == QEL_SEL_BASE_VALUE));
}

bool IsColor(const LiveAction& action)
{
    if (action.kind == Kind::Param) return action.nId != QEL_PARAM_DRAFT;
    return action.kind == Kind::Color ||
           (action.kind == Kind::Selector &&
            FindSelector(action.nSelector)->form == SelectorForm::Color);
}

bool ReadColorText(const std::string& text, LiveNumber* pNumber)
{
    const bool bBlinks = text.ends_with(BLINK_WORD);
    COLORREF clr = 0;
    if (!ReadColor(text.substr(0, text.size() - (bBlinks ? sizeof BLINK_WORD - 1 : 0)), &clr))
        return false;
    pNumber->nWhole = bBlinks ? clr | QEL_COLOR_BLINK : clr;
    return true;
}

// A real number with a point or a power of ten, and a whole one of more than 32 bits. What is too
// large for one is none.
bool ReadReal(const std::string& text, double* pfValue)
{
    char* pEnd = nullptr;
    if (text.size() > MAX_NUMBER || !IsAll(text, "0123456789+-.eE")) return false;
    *pfValue = std::strtod(text.c_str(), &pEnd);
    return *pEnd == 0 && std::isfinite(*pfValue);
}

// What is no number or has no end, which is news of its own: the quality becomes bad.
bool ReadNoNumber(const std::string& text, double* pfValue)
{
    std::string word = text;
    for (char& c : word)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (word == "nan")
        *pfValue = std::nan("");
    else if (word == "inf" || word == "-inf")
        *pfValue = word == "inf" ? HUGE_VAL : -HUGE_VAL;
    else
        return false;
    return true;
}

LiveNumber ReadNumberText(const LiveAction& action, const std::string& text)
{
    LiveNumber number;
    if (text == "true" || text == "false") number.nWhole = text == "true";
    if (text == "true" || text == "false" || ReadWhole(text, &number.nWhole)) return number;
    number.bReal = true;
    if (ReadReal(text, &number.fReal)) return number;
    const bool bNews = action.IsById() && action.kind == Kind::Value;
    if (bNews && ReadNoNumber(text, &number.fReal)) return number;
    Fail(action.option, QuotedWord(text) + " is no number");
}

void RequireFit(const LiveAction& action)
{
    const LiveNumber& number = action.value;
    if (number.bReal && !TakesRealNumbers(action))
        Fail(action.option, "it takes whole numbers of 32 bits only");
    if (number.bReal && !action.IsById() && std::fabs(number.fReal) > FLT_MAX)
        Fail(action.option, "the number is too large for a value by number");
    const bool bQuality = action.kind == Kind::Quality;
    if (bQuality && (number.nWhole < 0 || number.nWhole > WORST_QUALITY))
        Fail(action.option, "a quality is 0 (good), 1 (stale) or 2 (bad)");
}

void ReadText(const std::string& text, LiveAction* pAction)
{
    if (pAction->kind == Kind::Text) {
        pAction->text = text;
        return;
    }
    const std::string word = Trimmed(text);
    if (IsColor(*pAction) && ReadColorText(word, &pAction->value)) return;
    pAction->value = ReadNumberText(*pAction, word);
    RequireFit(*pAction);
}

} // namespace

CPageScope::CPageScope(unsigned nPage) : m_nPrevious(DrawingPage())
{
    SetDrawingPage(nPage);
}

CPageScope::~CPageScope()
{
    SetDrawingPage(m_nPrevious);
}

unsigned PageOf(HQELENGINE hEngine)
{
    constexpr DWORD AS_DECLARED = 1;
    DWORD nPage = 0;
    if (!QELGetTextCodePage(hEngine, &nPage) || nPage == 0) return ::GetACP();
    if (nPage != AS_DECLARED) return nPage;
    DWORD nSize = 0;
    QELSaveMemory(hEngine, nullptr, &nSize);
    std::string bytes(nSize, '\0'); // which declares what the file has declared
    return DeclaredPage(QELSaveMemory(hEngine, bytes.data(), &nSize) ? bytes : std::string());
}

CNamedValues::CNamedValues(HQELENGINE hEngine) : CNamedValues(hEngine, FindHostElements(hEngine)) {}

CNamedValues::CNamedValues(HQELENGINE hEngine, HostElements elements)
    : m_hEngine(hEngine), m_elements(std::move(elements))
{
    for (const HostBearer& bearer : m_elements.bearers) m_ids.insert(bearer.id);
}

LiveAction CNamedValues::ReadName(const std::string& option, const std::string& name) const
{
    if (IsBorne(name)) return {Kind::Value, option, name};
    if (name.starts_with('#')) return ReadNumberName(option, name);
    const Divided parts = Divide(name);
    LiveAction action{Kind::Value, option, parts.target};
    if (parts.suffix && IsBorne(parts.target) && TakeSuffix(*parts.suffix, &action)) return action;
    if (parts.suffix && IsBorne(parts.target))
        Fail(option, "there is no " + QuotedWord(*parts.suffix) + " of " +
                         QuotedWord(parts.target) + MeantWord(*parts.suffix, Suffixes()));
    std::vector<std::string> known(m_ids.begin(), m_ids.end());
    std::sort(known.begin(), known.end());
    Fail(option, "no element of the drawing has the identifier " + QuotedWord(name) +
                     MeantWord(name, known));
}

bool CNamedValues::Knows(const std::string& name) const
{
    if (IsBorne(name) || name == STATUS) return true;
    const Divided parts = Divide(name);
    LiveAction action{Kind::Value, ""};
    if (parts.suffix && IsBorne(parts.target)) return TakeSuffix(*parts.suffix, &action);
    return name.starts_with('#') && name.find('=') == std::string::npos;
}

LiveAction CNamedValues::Read(const std::string& option, const NamedValue& value) const
{
    LiveAction action = ReadName(option, value.name);
    ReadText(value.text, &action);
    return action;
}

bool CNamedValues::HasAlready(const LiveAction& action) const
{
    if (action.kind != Kind::Selector || action.nSelector != QEL_SEL_FULL_CIRCLE) return false;
    std::string id;
    double fValue = 0;
    DWORD nValue = 0;
    if (!action.IsById())
        return QELGetScaleParam(m_hEngine, action.nId, action.nSelector, &nValue) &&
               nValue == static_cast<DWORD>(action.value.nWhole);
    return Utf8ToDrawing(action.id, &id) &&
           QELGetSelector(m_hEngine, id.c_str(), action.nSelector, &fValue) &&
           fValue == action.value.AsReal();
}

// The engine refuses a full circle that is there; who has values wants them to be as they are told.
void CNamedValues::Set(const LiveAction& action) const
{
    if (!HasAlready(action)) SetLive(m_hEngine, action, action.value, &m_elements);
}

std::string ColorText(COLORREF clr)
{
    char szText[8];
    std::snprintf(szText, sizeof szText, "#%02X%02X%02X", GetRValue(clr), GetGValue(clr),
                  GetBValue(clr));
    return clr & QEL_COLOR_BLINK ? std::string(szText) + BLINK_WORD : szText;
}

} // namespace qel
