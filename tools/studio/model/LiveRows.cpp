// What the run panel shows of a drawing; see the header.
#include "tools/studio/model/LiveRows.h"

#include "tools/qel/IdEntries.h"
#include "tools/qel/NamedValue.h"
#include "tools/qel/Text.h"
#include "tools/studio/model/Values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

namespace studio {

namespace {

using Kind = LiveProperty::Kind;

constexpr double DEFAULT_SPAN = 100;
constexpr int MAX_DIGITS = 9; // of a text's run that make a range

// The last number that a selector of codes has a meaning for.
struct CodeRow {
    DWORD nSelector;
    int nLast;
};
constexpr CodeRow g_codes[] = {{QEL_SEL_START_CODE, 7},
                               {QEL_SEL_PIN_STYLE, 4},
                               {QEL_SEL_AXIS_STYLE, 3},
                               {QEL_SEL_FRAME_OPTION, 1},
                               {QEL_SEL_FONT_SIZE, 10}};

std::vector<std::string> NumbersTo(int nLast)
{
    std::vector<std::string> numbers;
    for (int n = 0; n <= nLast; ++n) numbers.push_back(std::to_string(n));
    return numbers;
}

std::string NumberText(double fValue)
{
    char szText[32];
    std::snprintf(szText, sizeof szText, "%.10g", fValue);
    return szText;
}

double NumberOf(const std::string& text)
{
    const double fValue = std::strtod(text.c_str(), nullptr);
    return std::isfinite(fValue) ? fValue : 0;
}

Kind KindOf(DWORD nSelector, SelectorForm form)
{
    if (nSelector == QEL_SEL_BASE_VALUE) return Kind::Number;
    switch (form) {
    case SelectorForm::Switch:
        return Kind::Switch;
    case SelectorForm::Color:
        return Kind::Color;
    case SelectorForm::Code:
        return Kind::Choice;
    default:
        return Kind::Whole;
    }
}

// The whole number that a real one is read as.
DWORD WholeOf(double fValue)
{
    return static_cast<DWORD>(static_cast<int64_t>(fValue));
}

// Makes the rows of one drawing.
class CMaker {
public:
    explicit CMaker(HQELENGINE hEngine)
        : m_hEngine(hEngine), m_elements(qel::FindHostElements(hEngine))
    {
        for (const qel::HostBearer& bearer : m_elements.bearers)
            m_first.emplace(bearer.id, &bearer);
    }

    [[nodiscard]] std::vector<LiveRow> Make() const;

private:
    [[nodiscard]] LiveRow MakeRow(const qel::IdEntry& entry, bool bById) const;
    void AddValue(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const;
    void AddSelectors(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const;
    void AddPins(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const;
    void AddText(const qel::IdEntry& entry, LiveRow* pRow) const;
    void AddColors(const qel::IdEntry& entry, LiveRow* pRow) const;
    void AddCommon(LiveRow* pRow) const;
    void AddStatus(std::vector<LiveRow>* pRows) const;
    void AddParams(std::vector<LiveRow>* pRows) const;

    [[nodiscard]] bool GetSelector(const std::string& name, bool bById, DWORD nSelector,
                                   double* pfValue) const;
    [[nodiscard]] double SelectorOr(const LiveRow& row, bool bById, DWORD nSelector,
                                    double fElse) const;
    [[nodiscard]] std::string ValueText(const std::string& name, bool bById) const;
    [[nodiscard]] std::string PinText(const std::string& name, bool bById, int nPin) const;
    [[nodiscard]] bool ShapeOf(const std::string& id, QELSHAPEATTR* pShape) const;
    [[nodiscard]] double TextSpan(const std::string& id) const;

    HQELENGINE m_hEngine;
    qel::HostElements m_elements;
    std::map<std::string, const qel::HostBearer*> m_first; // that bears an identifier
};

DWORD NumberOfName(const std::string& name)
{
    return static_cast<DWORD>(std::strtoul(name.c_str() + 1, nullptr, 10));
}

bool CMaker::GetSelector(const std::string& name, bool bById, DWORD nSelector,
                         double* pfValue) const
{
    std::string id;
    DWORD nValue = 0;
    float fValue = 0;
    if (bById)
        return qel::Utf8ToDrawing(name, &id) &&
               QELGetSelector(m_hEngine, id.c_str(), nSelector, pfValue);
    const DWORD nId = NumberOfName(name);
    if (!QELGetScaleParam(m_hEngine, nId, nSelector, &nValue)) return false;
    *pfValue = QELGetScaleParamf(m_hEngine, nId, nSelector, &fValue)
                   ? static_cast<double>(fValue)
                   : static_cast<double>(static_cast<LONG>(nValue));
    return true;
}

double CMaker::SelectorOr(const LiveRow& row, bool bById, DWORD nSelector, double fElse) const
{
    double fValue = 0;
    return GetSelector(row.name, bById, nSelector, &fValue) ? fValue : fElse;
}

std::string CMaker::ValueText(const std::string& name, bool bById) const
{
    std::string id;
    double fValue = 0;
    if (!bById) return GetSelector(name, false, QEL_SEL_VALUE, &fValue) ? NumberText(fValue) : "";
    return qel::Utf8ToDrawing(name, &id) && QELGetValue(m_hEngine, id.c_str(), &fValue)
               ? NumberText(fValue)
               : "";
}

std::string CMaker::PinText(const std::string& name, bool bById, int nPin) const
{
    std::string id;
    double fValue = 0;
    if (!bById) return ValueText("#" + std::to_string(nPin), false);
    return qel::Utf8ToDrawing(name, &id) && QELGetPin(m_hEngine, id.c_str(), nPin, &fValue)
               ? NumberText(fValue)
               : "";
}

bool CMaker::ShapeOf(const std::string& id, QELSHAPEATTR* pShape) const
{
    const auto at = m_first.find(id);
    *pShape = {};
    pShape->nSize = sizeof *pShape;
    return at != m_first.end() && at->second->nType >= QEL_TYPE_TEXT &&
           at->second->nType <= QEL_TYPE_POLYGON &&
           QELGetElemAttr(m_hEngine, at->second->hElem, pShape, nullptr);
}

// The numbers that fit the run of a text, in front of its point.
double CMaker::TextSpan(const std::string& id) const
{
    QELSHAPEATTR shape;
    if (!ShapeOf(id, &shape)) return DEFAULT_SPAN;
    const std::string text = shape.szText;
    const std::size_t nRun = std::min(text.find('#'), text.size());
    const std::size_t nEnd = std::min(text.find_first_not_of('#', nRun), text.size());
    return std::pow(10, std::clamp(static_cast<int>(nEnd - nRun), 1, MAX_DIGITS));
}

void CMaker::AddValue(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const
{
    if (!entry.bValue) return;
    pRow->value = LiveProperty{entry.id, "value", Kind::Number, ValueText(entry.id, bById), {}};
    const bool bStatus =
        std::find(entry.types.begin(), entry.types.end(), "status") != entry.types.end();
    pRow->fMax = DEFAULT_SPAN;
    if (entry.nSelectors) {
        pRow->fMin = SelectorOr(*pRow, bById, QEL_SEL_MIN, 0);
        pRow->fMax = SelectorOr(*pRow, bById, QEL_SEL_MAX, DEFAULT_SPAN);
    } else if (bStatus) {
        pRow->value->kind = Kind::Whole;
        pRow->fMax = m_elements.statuses.empty() ? 1 : *m_elements.statuses.rbegin() + 1.0;
    } else if (entry.bText) {
        pRow->fMax = TextSpan(entry.id);
    }
}

void CMaker::AddSelectors(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const
{
    for (DWORD n = 0; n < QEL_SEL_COUNT; ++n) {
        if (!(entry.nSelectors >> n & 1)) continue;
        const SelectorRow& selector = *FindSelector(n);
        LiveProperty property{
            entry.id + "." + selector.pszName, selector.pszName, KindOf(n, selector.form), "", {}};
        double fValue = 0;
        if (GetSelector(entry.id, bById, n, &fValue))
            property.text =
                property.kind == Kind::Color ? qel::ColorText(WholeOf(fValue)) : NumberText(fValue);
        for (const CodeRow& code : g_codes)
            if (code.nSelector == n) property.choices = NumbersTo(code.nLast);
        pRow->properties.push_back(std::move(property));
    }
}

// As many as the share chart has.
void CMaker::AddPins(const qel::IdEntry& entry, bool bById, LiveRow* pRow) const
{
    if (!entry.bPins) return;
    const double fCount = SelectorOr(*pRow, bById, QEL_SEL_SECTOR_COUNT, 0);
    const int nPins = static_cast<int>(std::clamp(fCount, 0.0, static_cast<double>(METER_PINS)));
    for (int n = 1; n <= nPins; ++n) {
        const std::string label = "sector-" + std::to_string(n);
        pRow->properties.push_back({bById ? entry.id + "." + label : "#" + std::to_string(n),
                                    label,
                                    Kind::Number,
                                    PinText(entry.id, bById, n),
                                    {}});
    }
}

void CMaker::AddText(const qel::IdEntry& entry, LiveRow* pRow) const
{
    QELSHAPEATTR shape;
    if (!entry.bText) return;
    const bool bShape = ShapeOf(entry.id, &shape);
    pRow->properties.push_back({entry.id + ".text",
                                "text",
                                Kind::Text,
                                bShape ? qel::DrawingToUtf8(shape.szText) : "",
                                {}});
}

void CMaker::AddColors(const qel::IdEntry& entry, LiveRow* pRow) const
{
    QELSHAPEATTR shape;
    if (!entry.bColors) return;
    const bool bShape = ShapeOf(entry.id, &shape);
    const std::pair<const char*, DWORD> colors[] = {
        {"clr", shape.clrPen}, {"fg", shape.clrA}, {"bg", shape.clrB}};
    for (const auto& [pszLabel, clr] : colors)
        pRow->properties.push_back({entry.id + "." + pszLabel,
                                    pszLabel,
                                    Kind::Color,
                                    bShape ? qel::ColorText(clr) : "",
                                    {}});
}

// What all take that bear an identifier.
void CMaker::AddCommon(LiveRow* pRow) const
{
    pRow->properties.push_back(
        {pRow->name + ".quality", "quality", Kind::Choice, "0", NumbersTo(2)});
    pRow->properties.push_back({pRow->name + ".visible", "visible", Kind::Switch, "1", {}});
}

LiveRow CMaker::MakeRow(const qel::IdEntry& entry, bool bById) const
{
    LiveRow row;
    row.name = entry.id;
    for (const std::string& type : entry.types) row.kind += (row.kind.empty() ? "" : ", ") + type;
    AddValue(entry, bById, &row);
    AddText(entry, &row);
    AddPins(entry, bById, &row);
    AddColors(entry, &row);
    if (bById) AddCommon(&row);
    AddSelectors(entry, bById, &row);
    return row;
}

void CMaker::AddStatus(std::vector<LiveRow>* pRows) const
{
    DWORD nStatus = 0;
    if (m_elements.statuses.empty()) return;
    LiveRow row;
    row.name = "#status";
    row.kind = "status";
    QELGetStatus(m_hEngine, &nStatus);
    row.fMin = -1; // shows all
    row.fMax = *m_elements.statuses.rbegin() + 1.0;
    row.value = LiveProperty{
        row.name, "value", Kind::Whole, std::to_string(static_cast<LONG>(nStatus)), {}};
    pRows->push_back(std::move(row));
}

void CMaker::AddParams(std::vector<LiveRow>* pRows) const
{
    constexpr int LAST_HATCH = DRAFT_COUNT - 1;
    for (int n = 0; n < QEL_PARAM_COUNT; ++n) {
        const bool bHatch = n == QEL_PARAM_DRAFT;
        if (!(n == QEL_PARAM_COLOR ? m_elements.bColorFollowed : m_elements.bDraftFollowed))
            continue;
        DWORD nValue = 0;
        QELGetParam(m_hEngine, n, &nValue);
        LiveRow row;
        row.name = "#param." + std::to_string(n);
        row.kind = "parameter";
        row.value = LiveProperty{row.name, "value", bHatch ? Kind::Choice : Kind::Color,
                                 bHatch ? std::to_string(nValue) : qel::ColorText(nValue),
                                 bHatch ? NumbersTo(LAST_HATCH) : std::vector<std::string>()};
        pRows->push_back(std::move(row));
    }
}

std::vector<LiveRow> CMaker::Make() const
{
    std::vector<LiveRow> rows;
    for (const qel::IdEntry& entry : qel::ListIds(m_elements)) rows.push_back(MakeRow(entry, true));
    for (const qel::IdEntry& entry : qel::ListNumbers(m_elements))
        rows.push_back(MakeRow(entry, false));
    AddStatus(&rows);
    AddParams(&rows);
    return rows;
}

double EndOf(const LiveRow& row, const char* pszSelector, double fElse, const CValues& values)
{
    const std::string* pText = values.Find(row.name + pszSelector);
    return pText ? NumberOf(*pText) : fElse;
}

} // namespace

CLiveRows::CLiveRows(HQELENGINE hEngine)
{
    const qel::CPageScope page(qel::PageOf(hEngine));
    m_rows = CMaker(hEngine).Make();
}

const LiveRow* CLiveRows::Find(const std::string& name) const
{
    const auto at = std::find_if(m_rows.begin(), m_rows.end(),
                                 [&name](const LiveRow& row) { return row.name == name; });
    return at == m_rows.end() ? nullptr : &*at;
}

const std::string& TextOf(const LiveProperty& property, const CValues& values)
{
    const std::string* pText = values.Find(property.name);
    return pText ? *pText : property.text;
}

LiveRange RangeOf(const LiveRow& row, const CValues& values)
{
    const double fMin = EndOf(row, ".min", row.fMin, values);
    const double fMax = EndOf(row, ".max", row.fMax, values);
    if (fMin == fMax) return {fMin, fMin + DEFAULT_SPAN};
    return {std::min(fMin, fMax), std::max(fMin, fMax)};
}

} // namespace studio
