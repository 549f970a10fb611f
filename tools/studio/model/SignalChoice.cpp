// Which signals fit; see the header.
#include "tools/studio/model/SignalChoice.h"

#include <cmath>
#include <cstdlib>

namespace studio {

namespace {

using Kind = LiveProperty::Kind;

constexpr double DEFAULT_END = 100;
constexpr double TABLE_ROW = 1; // second

bool IsWhole(Kind kind)
{
    return kind == Kind::Whole || kind == Kind::Choice || kind == Kind::Switch;
}

double NumberOf(const std::string& text)
{
    const double fValue = std::strtod(text.c_str(), nullptr);
    return std::isfinite(fValue) ? fValue : 0;
}

// So that not all turn back at the same time.
double PeriodOf(int nRow)
{
    constexpr double SHORTEST = 4;
    constexpr double STEP = 1.5;
    constexpr int STEPS = 5;
    return SHORTEST + STEP * (nRow % STEPS);
}

} // namespace

std::vector<const LiveProperty*> AllOf(const LiveRow& row)
{
    std::vector<const LiveProperty*> all;
    if (row.value) all.push_back(&*row.value);
    for (const LiveProperty& each : row.properties) all.push_back(&each);
    return all;
}

std::vector<SignalKind> SignalsFor(LiveProperty::Kind kind)
{
    if (kind == Kind::Color || kind == Kind::Text) return {SignalKind::Column};
    if (kind == Kind::Switch) return {SignalKind::Square, SignalKind::Column};
    return {SignalKind::Constant, SignalKind::Ramp, SignalKind::Sine,
            SignalKind::Square,   SignalKind::Walk, SignalKind::Column};
}

LiveRange RangeFor(const LiveRow& row, const LiveProperty& property, const CValues& values)
{
    if (property.kind == Kind::Switch) return {0, 1};
    if (property.kind == Kind::Choice) return {0, static_cast<double>(property.choices.size()) - 1};
    if (row.value && property.name == row.value->name) return RangeOf(row, values);
    const double fNow = NumberOf(TextOf(property, values));
    return {0, fNow > 0 ? fNow : DEFAULT_END};
}

SignalSetting FirstSetting(SignalKind kind, const LiveProperty& property, const LiveRange& range)
{
    SignalSetting setting;
    setting.kind = kind;
    setting.fLow = range.fMin;
    setting.fHigh = range.fMax;
    setting.bWhole = IsWhole(property.kind);
    if (kind == SignalKind::Column) setting.fPeriod = TABLE_ROW;
    return setting;
}

int DriveValues(const CLiveRows& rows, const CValues& values, CSignals* pSignals)
{
    int nDriven = 0;
    for (const LiveRow& row : rows.Rows()) {
        if (!row.HasSlider() || pSignals->Find(row.name)) continue;
        const SignalKind kind =
            row.value->kind == Kind::Whole ? SignalKind::Ramp : SignalKind::Sine;
        SignalSetting setting = FirstSetting(kind, *row.value, RangeOf(row, values));
        setting.fPeriod = PeriodOf(nDriven++);
        pSignals->Set(row.name, std::move(setting));
    }
    return nDriven;
}

} // namespace studio
