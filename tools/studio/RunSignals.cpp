// Signals in the panel at the right: which property each drives, and how it is set. See RunPanel.h.
#include "tools/studio/FileDialogs.h"
#include "tools/studio/Resource.h"
#include "tools/studio/RunPanel.h"
#include "tools/studio/Strings.h"
#include "tools/studio/model/Convert.h"
#include "tools/studio/model/DrawingFile.h"
#include "tools/studio/model/Play.h"
#include "tools/studio/model/SignalChoice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace studio {

namespace {

// In the order of their kinds.
constexpr unsigned g_signals[] = {IDS_SIGNAL_CONSTANT, IDS_SIGNAL_RAMP, IDS_SIGNAL_SINE,
                                  IDS_SIGNAL_SQUARE,   IDS_SIGNAL_WALK, IDS_SIGNAL_COLUMN};

std::wstring NameOf(SignalKind kind)
{
    return Text(g_signals[static_cast<std::size_t>(kind)]);
}

// Of a kind in the list of those that a property takes; none is 0.
std::wstring ChoiceText(const SignalSetting* pSetting)
{
    return std::to_wstring(pSetting ? static_cast<int>(pSetting->kind) + 1 : 0);
}

std::wstring PlainNumber(double fValue)
{
    char szText[32];
    std::snprintf(szText, sizeof szText, "%.10g", fValue);
    return FromUtf8(szText);
}

// The whole text as a number; a comma counts as a point.
int ReadReal(const std::wstring& text, double* pfValue)
{
    std::string digits = ToUtf8(text);
    std::replace(digits.begin(), digits.end(), ',', '.');
    char* pEnd = nullptr;
    const double fValue = std::strtod(digits.c_str(), &pEnd);
    if (digits.empty() || *pEnd || !std::isfinite(fValue)) return 0;
    *pfValue = fValue;
    return 1;
}

constexpr FileKind g_tables[] = {{IDS_FILTER_TABLES, L"*.csv"}, {IDS_FILTER_ALL, L"*.*"}};

} // namespace

// What was chosen last, else what a signal drives, else the value.
const LiveProperty* CRunPanel::Target() const
{
    const LiveRow* pRow = m_pPlay ? Current() : nullptr;
    if (!pRow) return nullptr;
    const std::vector<const LiveProperty*> all = AllOf(*pRow);
    for (const LiveProperty* pEach : all)
        if (pEach->name == m_target) return pEach;
    for (const LiveProperty* pEach : all)
        if (m_pPlay->Signals().Find(pEach->name)) return pEach;
    return all.empty() ? nullptr : all[0];
}

const SignalSetting* CRunPanel::CurrentSignal() const
{
    const LiveProperty* pTarget = Target();
    return pTarget ? m_pPlay->Signals().Find(pTarget->name) : nullptr;
}

// The first one that drives something of a row.
std::wstring CRunPanel::SignalOf(const LiveRow& row) const
{
    if (m_pPlay->Signals().IsEmpty()) return L"";
    for (const LiveProperty* pEach : AllOf(row))
        if (const SignalSetting* pSignal = m_pPlay->Signals().Find(pEach->name))
            return NameOf(pSignal->kind);
    return L"";
}

void CRunPanel::AddSignal(std::vector<Property>* pProperties)
{
    const LiveProperty* pTarget = Target();
    if (!pTarget) return;
    Property target{Text(IDS_RUN_TARGET), Property::Kind::Choice, L""};
    for (const LiveProperty* pEach : AllOf(*Current())) {
        target.choices.push_back(FromUtf8(pEach->name));
        const bool bValue = Current()->value && pEach == &*Current()->value;
        target.names.push_back(bValue ? Text(IDS_RUN_VALUE) : FromUtf8(pEach->label));
    }
    if (target.choices.size() > 1) AddItem({Item::What::Target}, std::move(target), pProperties);
    Property signal{
        Text(IDS_RUN_SIGNAL), Property::Kind::Choice, L"", {L"0"}, {Text(IDS_SIGNAL_NONE)}};
    for (const SignalKind kind : SignalsFor(pTarget->kind)) {
        signal.choices.push_back(std::to_wstring(static_cast<int>(kind) + 1));
        signal.names.push_back(NameOf(kind));
    }
    AddItem({Item::What::Signal}, std::move(signal), pProperties);
    AddSetting(pTarget->kind == LiveProperty::Kind::Switch, pProperties);
}

// What the signal of now is set by; of a switch the ends are known.
void CRunPanel::AddSetting(bool bSwitch, std::vector<Property>* pProperties)
{
    const SignalSetting* pSignal = CurrentSignal();
    if (!pSignal) return;
    const bool bColumn = pSignal->kind == SignalKind::Column;
    const bool bConstant = pSignal->kind == SignalKind::Constant;
    if (!bColumn && !bSwitch)
        AddItem({Item::What::Low}, {Text(bConstant ? IDS_RUN_LEVEL : IDS_RUN_LOW)}, pProperties);
    if (!bColumn && !bSwitch && !bConstant)
        AddItem({Item::What::High}, {Text(IDS_RUN_HIGH)}, pProperties);
    if (bColumn) {
        Property column{Text(IDS_SIGNAL_COLUMN), Property::Kind::Choice, L""};
        for (const SignalColumn& each : m_tables[Target()->name])
            column.choices.push_back(FromUtf8(each.name));
        AddItem({Item::What::Column}, std::move(column), pProperties);
    }
    if (!bConstant && pSignal->kind != SignalKind::Walk)
        AddItem({Item::What::Period}, {Text(bColumn ? IDS_RUN_ROW_TIME : IDS_RUN_PERIOD)},
                pProperties);
}

std::wstring CRunPanel::TextOfSignal(Item::What what) const
{
    const LiveProperty* pTarget = Target();
    const SignalSetting* pSignal = CurrentSignal();
    if (what == Item::What::Target) return pTarget ? FromUtf8(pTarget->name) : L"";
    if (what == Item::What::Signal) return ChoiceText(pSignal);
    if (!pSignal) return L"";
    switch (what) {
    case Item::What::Low:
        return PlainNumber(pSignal->fLow);
    case Item::What::High:
        return PlainNumber(pSignal->fHigh);
    case Item::What::Period:
        return PlainNumber(pSignal->fPeriod);
    default: {
        const auto at = m_columns.find(pTarget->name);
        return at == m_columns.end() ? L"" : at->second;
    }
    }
}

void CRunPanel::ChangeSignal(Item::What what, const std::wstring& text)
{
    if (what == Item::What::Signal) return ChooseSignal(_wtoi(text.c_str()));
    if (what == Item::What::Target) {
        m_target = ToUtf8(text);
        return MakeProperties();
    }
    if (!CurrentSignal()) return;
    const std::string name = Target()->name;
    SignalSetting setting = *CurrentSignal();
    if (what == Item::What::Column) {
        for (const SignalColumn& column : m_tables[name])
            if (FromUtf8(column.name) == text) setting.cells = column.cells;
        m_columns[name] = text;
    } else {
        double& fValue = what == Item::What::Low    ? setting.fLow
                         : what == Item::What::High ? setting.fHigh
                                                    : setting.fPeriod;
        if (!ReadReal(text, &fValue)) return Fault(ToUtf8(Text(IDS_RUN_NO_NUMBER, {text})));
    }
    Fault("");
    m_pPlay->Signals().Set(name, std::move(setting));
    MakeProperties();
}

// Another kind keeps the ends and the period, where they have a meaning for both.
void CRunPanel::ChooseSignal(int nChoice)
{
    const LiveProperty& target = *Target();
    m_target = target.name;
    const auto kind = static_cast<SignalKind>(nChoice - 1);
    SignalSetting setting =
        FirstSetting(kind, target, RangeFor(*Current(), target, m_pPlay->Values()));
    const SignalSetting* pOld = CurrentSignal();
    const bool bColumns = kind == SignalKind::Column || (pOld && !pOld->cells.empty());
    if (pOld && !bColumns) setting = *pOld;
    setting.kind = kind;
    if (nChoice && kind == SignalKind::Column) return ChooseTable(std::move(setting));
    if (nChoice)
        m_pPlay->Signals().Set(target.name, std::move(setting));
    else
        m_pPlay->Signals().Remove(target.name);
    SignalsChanged();
}

void CRunPanel::ChooseTable(SignalSetting setting)
{
    const std::string name = Target()->name;
    const std::wstring path = AskToOpen(::GetAncestor(Handle(), GA_ROOT), g_tables);
    std::vector<SignalColumn> columns;
    std::string why;
    if (path.empty()) return MakeProperties();
    if (!ReadColumns(path, &columns, &why)) return Fault(why);
    setting.cells = columns[0].cells;
    m_columns[name] = FromUtf8(columns[0].name);
    for (const SignalColumn& column : columns) {
        if (column.name != name) continue; // which is most likely the one that is meant
        setting.cells = column.cells;
        m_columns[name] = FromUtf8(name);
    }
    m_tables[name] = std::move(columns);
    m_pPlay->Signals().Set(name, std::move(setting));
    SignalsChanged();
}

void CRunPanel::SignalsChanged()
{
    Fault("");
    Refresh();
    MakeProperties();
}

void CRunPanel::TogglePlay()
{
    if (!m_pPlay) return;
    CSignals& signals = m_pPlay->Signals();
    signals.Play(!signals.IsPlaying());
    Enable();
}

void CRunPanel::DriveAll()
{
    if (!m_pPlay) return;
    DriveValues(m_rows, m_pPlay->Values(), &m_pPlay->Signals());
    SignalsChanged();
}

void CRunPanel::DriveNone()
{
    if (!m_pPlay) return;
    m_pPlay->Signals().Clear();
    SignalsChanged();
}

} // namespace studio
