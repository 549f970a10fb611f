// The attributes "set" and "value"; see the header.
#include "tools/qel/SetRules.h"

#include "dynamic/QELDocScale.h"
#include "dynamic/Selectors.h"
#include "dynamic/SetWords.h"
#include "engine/ElementTypes.h"
#include "render/HostDriven.h"
#include "render/LiveElement.h"
#include "render/QELView.h"
#include "tools/qel/Hint.h"

#include <cmath>
#include <new>

namespace qel {

namespace {

// What an author may mean by a number; a double holds all of them.
struct Limits {
    double fMin;
    double fMax;
};

constexpr Limits g_signed = {INT32_MIN, INT32_MAX};
constexpr Limits g_unsigned = {0, UINT32_MAX};

struct LimitRow {
    int32_t nSelector;
    Limits limits;
};

constexpr LimitRow g_limits[] = {
    {QEL_SEL_START_CODE, {0, 7}}, {QEL_SEL_DECIMAL_SHIFT, {0, 9}}, {QEL_SEL_PIN_STYLE, {0, 4}},
    {QEL_SEL_AXIS_STYLE, {0, 3}}, {QEL_SEL_FRAME_OPTION, {0, 1}},  {QEL_SEL_SECTOR_COUNT, {0, 32}},
    {QEL_SEL_FONT_SIZE, {0, 10}},
};

Limits LimitsOf(const SelectorRow& row, bool bMeter)
{
    for (const LimitRow& limit : g_limits)
        if (limit.nSelector == row.nId) return limit.limits;
    switch (row.form) {
    case SelectorForm::Switch:
        return {0, 1};
    case SelectorForm::Number:
        return bMeter ? g_signed : g_unsigned;
    default:
        return g_unsigned;
    }
}

bool IsColor(double fNumber)
{
    constexpr double WHITE = 0xFFFFFF;
    const double fBlinking = fNumber - static_cast<double>(QEL_COLOR_BLINK);
    return (fNumber >= 0 && fNumber <= WHITE) || (fBlinking >= 0 && fBlinking <= WHITE);
}

template <class Block>
Block BlockOf(const CQELDocElm& elm)
{
    Block block{};
    elm.GetAttr(&block);
    return block;
}

// An element of a picture with the record of one of the drawing, as far as the picture takes it.
class CTried {
public:
    explicit CTried(const CQELDocElm& elm)
        : m_view(g_elementTypes), m_bMeter(elm.Type() == QEL_TYPE_METER)
    {
        CQELViewElm* pRoot = nullptr;
        CQELViewElm* pElm = nullptr;
        if (!m_view.CreateElement(nullptr, nullptr, QEL_TYPE_ROOT, &pRoot) ||
            !m_view.CreateElement(pRoot, nullptr, elm.Type(), &pElm))
            throw std::bad_alloc();
        alignas(8) unsigned char block[QEL_MAX_ATTR_SIZE] = {};
        elm.GetAttr(block);
        pElm->SetAttrBlock(block);
        m_pHost = pElm->HostSide();
        if (m_bMeter) {
            QELMETERATTR attr{};
            pElm->GetAttrBlock(&attr);
            m_nType = attr.nType;
            m_bPin = attr.bUsePin != 0;
        } else {
            m_nType = BlockOf<QELSCALEATTR>(elm).nType;
        }
    }
    [[nodiscard]] CHostDriven& Host() { return *m_pHost; }
    [[nodiscard]] bool IsMeter() const { return m_bMeter; }
    [[nodiscard]] bool HasPin() const { return m_bPin; } // of a meter
    [[nodiscard]] const MeterTypeRow* MeterType() const
    {
        return m_bMeter ? MeterTypeOf(m_nType) : nullptr;
    }
    [[nodiscard]] bool Knows(const SelectorRow& row) const
    {
        return m_pHost->KnowsSelector(static_cast<uint32_t>(row.nId));
    }
    [[nodiscard]] bool Follows(const SelectorRow& row) const
    {
        if (m_bMeter) return (row.nMeterTypes & MeterTypeBit(m_nType)) != 0;
        return row.nId != QEL_SEL_START_CODE || m_nType >= SCALE_ROUND;
    }
    [[nodiscard]] std::string Name() const
    {
        return m_bMeter ? std::string("a meter of type ") + NameOf(g_meterTypeRows, m_nType)
                        : std::string("a scale of type ") + NameOf(g_scaleTypeRows, m_nType);
    }
    // Whether it takes the setting, or has it already.
    bool Takes(const SelectorRow& row, double fNumber)
    {
        const auto nSelector = static_cast<uint32_t>(row.nId);
        if (SetHostSelector(*m_pHost, nSelector, fNumber)) return true;
        uint32_t nNow = 0;
        return m_pHost->GetProperty(nSelector, &nNow) && static_cast<double>(nNow) == fNumber;
    }

private:
    CQELView m_view;
    CHostDriven* m_pHost = nullptr;
    bool m_bMeter;
    bool m_bPin = false;
    int32_t m_nType = 0;
};

// What the words of a "set" are found to be, one after the other.
class CSetReader {
public:
    CSetReader(const CQELDocElm& elm, bool bFigure, QuotingFunction pfnQuote)
        : m_element(elm), m_bFigure(bFigure), m_pfnQuote(pfnQuote)
    {
    }
    std::vector<SetFinding> Read(const char* pszSet);

private:
    void Error(const std::string& text) { m_findings.push_back({m_pszAt, true, "set: " + text}); }
    void Warn(const std::string& text) { m_findings.push_back({m_pszAt, false, "set: " + text}); }
    void Word(const SetWordText& word);
    void Named(const SelectorRow& row, const std::string& number);
    void Number(const SelectorRow& row, const std::string& number, double fNumber);
    [[nodiscard]] std::string WhyNoNumber(const SelectorRow& row, const std::string& number) const;
    [[nodiscard]] static std::string WhyRefused(const SelectorRow& row);

    CTried m_element;
    bool m_bFigure;
    QuotingFunction m_pfnQuote;
    const char* m_pszAt = nullptr;
    bool m_bSeen[QEL_SEL_COUNT] = {};
    std::vector<SetFinding> m_findings;
};

std::vector<SetFinding> CSetReader::Read(const char* pszSet)
{
    SetWordText word{};
    while (NextSetWord(&pszSet, &word)) {
        m_pszAt = word.name.data();
        Word(word);
    }
    return std::move(m_findings);
}

void CSetReader::Word(const SetWordText& word)
{
    const std::string name(word.name);
    const int32_t nSelector = SelectorOfName(word.name);
    if (nSelector == KEYWORD_NONE && !word.bHasNumber)
        return Error("a word is NAME=NUMBER without blanks; " + m_pfnQuote(name) + " is skipped");
    if (nSelector == KEYWORD_NONE)
        return Error("unknown setting " + m_pfnQuote(name) + ": it is skipped" +
                     MeantWord(name, WordsOf(g_selectorRows)));
    if (nSelector == QEL_SEL_VALUE)
        return Error("the value is an attribute of its own, value=\"...\"; here it is skipped");
    if (m_bSeen[nSelector]) return Warn(name + " stands here a second time: the first counts");
    m_bSeen[nSelector] = true;
    Named(*FindSelector(static_cast<uint32_t>(nSelector)), std::string(word.number));
}

void CSetReader::Named(const SelectorRow& row, const std::string& number)
{
    double fNumber = 0;
    if (!m_element.Knows(row))
        return Error(std::string(m_element.IsMeter() ? "a meter" : "a scale") + " does not know '" +
                     row.pszName + "': it is skipped");
    if (!ReadSetNumber(number, &fNumber)) return Error(WhyNoNumber(row, number));
    Number(row, number, fNumber);
}

std::string CSetReader::WhyNoNumber(const SelectorRow& row, const std::string& number) const
{
    const char* pszForm = "a whole number, decimal or 0x hexadecimal";
    if (row.nId == QEL_SEL_BASE_VALUE) pszForm = "a number";
    if (row.form == SelectorForm::Color) pszForm = "a colour, 0xBBGGRR";
    return std::string(row.pszName) + " wants " + pszForm + ", not " + m_pfnQuote(number) +
           ": it is skipped";
}

void CSetReader::Number(const SelectorRow& row, const std::string& number, double fNumber)
{
    const std::string name = row.pszName;
    if (row.nId != QEL_SEL_BASE_VALUE) {
        const double fWhole = std::trunc(fNumber);
        if (fWhole < INT32_MIN || fWhole > UINT32_MAX)
            return Error(name + ": the number " + m_pfnQuote(number) +
                         " does not fit 32 bits: it is skipped");
        if (fWhole != fNumber)
            Warn(name + " takes whole numbers: what stands behind the point is dropped");
        fNumber = fWhole;
    }
    if (!m_element.Takes(row, fNumber)) return Error(WhyRefused(row) + ": it is skipped");
    const Limits limits = LimitsOf(row, m_element.IsMeter());
    if (row.form == SelectorForm::Color && !IsColor(fNumber))
        Error(name + " wants a colour, 0xBBGGRR, not " + m_pfnQuote(number));
    else if (fNumber < limits.fMin || fNumber > limits.fMax)
        Error(name + " is out of range, " + std::to_string(static_cast<int64_t>(limits.fMin)) +
              " to " + std::to_string(static_cast<int64_t>(limits.fMax)) + ": " +
              m_pfnQuote(number));
    const bool bDresses = row.nId == QEL_SEL_FACE_COLOR && m_bFigure;
    if (!m_element.Follows(row) && !bDresses)
        Warn(m_element.Name() + " does not follow '" + name + "'");
}

std::string CSetReader::WhyRefused(const SelectorRow& row)
{
    switch (row.nId) {
    case QEL_SEL_TICKS:
        return "ticks takes 1 or more";
    case QEL_SEL_SHOW_SCALE:
        return "the meter has no scale to show (usc is 0)";
    case QEL_SEL_SHOW_PIN:
        return "the meter has no pointer to show (upin is not 1)";
    case QEL_SEL_FULL_CIRCLE:
        return "full-circle takes 0 or 1";
    default:
        return std::string(row.pszName) + " is refused";
    }
}

std::string WhyScaleShowsNoValue(const CQELDocElm& elm)
{
    const auto attr = BlockOf<QELSCALEATTR>(elm);
    const bool bFill =
        attr.nType < SCALE_ROUND || (attr.nStyle & QEL_STYLE_FILL_MASK) == QEL_STYLE_FILL;
    return bFill || attr.bPin ? ""
                              : "the scale has neither a fill (style) nor a pointer (pin) that "
                                "shows it";
}

std::string WhyMeterShowsNoValue(const CQELDocElm& elm)
{
    CTried element(elm);
    const MeterTypeRow* pType = element.MeterType();
    if (!pType) return "";
    uint32_t nReadOut = 0;
    element.Host().TakeSet(elm.Set());
    element.Host().GetProperty(QEL_SEL_SHOW_VALUE, &nReadOut);
    switch (pType->shows) {
    case MeterShows::Time:
        return "a clock shows the time and no value";
    case MeterShows::Pins:
        return element.HasPin() ? "" : element.Name() + " shows the values of its sectors alone";
    case MeterShows::Pointer:
        return element.HasPin() ? "" : "no pointer (upin is 0) shows it";
    case MeterShows::PointerOrReadOut:
        return element.HasPin() || nReadOut
                   ? ""
                   : "neither a pointer (upin is 0) nor a read-out (set) shows it";
    default:
        return "";
    }
}

} // namespace

std::vector<SetFinding> SetFindings(const char* pszSet, const CQELDocElm& elm, bool bFigure,
                                    QuotingFunction pfnQuote)
{
    return CSetReader(elm, bFigure, pfnQuote).Read(pszSet);
}

std::vector<SetFinding> ValueFindings(const char* pszValue, const CQELDocElm& elm,
                                      QuotingFunction pfnQuote)
{
    double fValue = 0;
    if (!ReadValueText(pszValue, &fValue))
        return {{pszValue, true,
                 "value wants a number, not " + pfnQuote(pszValue) + ": it is ignored"}};
    const std::string why =
        elm.Type() == QEL_TYPE_METER ? WhyMeterShowsNoValue(elm) : WhyScaleShowsNoValue(elm);
    if (why.empty()) return {};
    return {{pszValue, false, "value: " + why}};
}

} // namespace qel
