// Signals that drive values; see the header.
#include "tools/studio/model/Signals.h"

#include "tools/qel/Command.h"
#include "tools/qel/Csv.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <utility>

namespace studio {

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr double MILLISECONDS = 1000;
constexpr double SHORTEST_PERIOD = 0.01; // seconds
constexpr double WALK_STEP = 0.1;        // seconds between the steps of a walk
constexpr double WALK_REACH = 0.1;       // of the range: how far one goes at most
constexpr double MOST_STEPS = 10000;     // of a walk at once; who has slept as long has seen none
constexpr double LEAST_SPEED = 0.1;
constexpr double MOST_SPEED = 10;
constexpr uint32_t SEED = 0x9E3779B9;

// Four digits of the range: more change nothing that is seen.
int DecimalsOf(double fRange)
{
    constexpr int SHOWN = 4;
    constexpr int MOST = 9;
    if (!(fRange > 0) || !std::isfinite(fRange)) return 1;
    const int nBefore = static_cast<int>(std::floor(std::log10(fRange))) + 1;
    return std::clamp(SHOWN - nBefore, 1, MOST);
}

std::string FixedText(double fValue, int nDecimals)
{
    char szText[400]; // of the largest number, too
    std::snprintf(szText, sizeof szText, "%.*f", nDecimals, fValue);
    const std::string text = szText;
    return text.find_first_not_of("-0.") == std::string::npos && text[0] == '-' ? text.substr(1)
                                                                                : text;
}

} // namespace

std::string RangeText(double fValue, double fLow, double fHigh, bool bWhole)
{
    return FixedText(fValue, bWhole ? 0 : DecimalsOf(std::fabs(fHigh - fLow)));
}

CSignal::CSignal(SignalSetting setting) : m_setting(std::move(setting)), m_nRandom(SEED)
{
    if (!(m_setting.fPeriod >= SHORTEST_PERIOD) || !std::isfinite(m_setting.fPeriod))
        m_setting.fPeriod = SHORTEST_PERIOD;
    m_fWalk = 0.5;
}

void CSignal::Advance(double fMilliseconds)
{
    if (!(fMilliseconds > 0) || !std::isfinite(fMilliseconds)) return;
    m_fTime += fMilliseconds / MILLISECONDS;
    if (m_setting.kind == SignalKind::Walk) Walk();
}

// One step each tenth of a second, however the time passes. At an end it turns back.
void CSignal::Walk()
{
    const double fSteps = std::floor(m_fTime / WALK_STEP);
    m_fStepsDone = std::max(m_fStepsDone, fSteps - MOST_STEPS);
    const auto nSteps = static_cast<int64_t>(fSteps - m_fStepsDone);
    m_fStepsDone = fSteps;
    for (int64_t n = 0; n < nSteps; ++n) {
        m_nRandom ^= m_nRandom << 13;
        m_nRandom ^= m_nRandom >> 17;
        m_nRandom ^= m_nRandom << 5;
        const double fRandom = static_cast<double>(m_nRandom) / UINT32_MAX * 2 - 1;
        m_fWalk = std::fabs(m_fWalk + fRandom * WALK_REACH);
        if (m_fWalk > 1) m_fWalk = 2 - m_fWalk;
    }
}

double CSignal::Phase() const
{
    const double fWaves = m_fTime / m_setting.fPeriod;
    return fWaves - std::floor(fWaves);
}

// Of the range, 0 at its low end to 1 at its high one.
double CSignal::Value() const
{
    switch (m_setting.kind) {
    case SignalKind::Ramp:
        return Phase();
    case SignalKind::Sine:
        return (1 - std::cos(2 * PI * Phase())) / 2;
    case SignalKind::Square:
        return Phase() < 0.5 ? 0 : 1;
    case SignalKind::Walk:
        return m_fWalk;
    default:
        return 0;
    }
}

// Rows without a value have the one before; at the end it begins anew.
std::string CSignal::Cell() const
{
    const std::vector<std::string>& cells = m_setting.cells;
    if (cells.empty()) return "";
    const double fRow = std::floor(m_fTime / m_setting.fPeriod);
    const auto nRow = static_cast<std::size_t>(std::fmod(fRow, static_cast<double>(cells.size())));
    for (std::size_t n = nRow + 1; n > 0; --n)
        if (!cells[n - 1].empty()) return cells[n - 1];
    return "";
}

std::string CSignal::Text() const
{
    if (m_setting.kind == SignalKind::Column) return Cell();
    const double fPart = Value();
    const bool bConstant = m_setting.kind == SignalKind::Constant;
    return RangeText(m_setting.fLow * (1 - fPart) + m_setting.fHigh * fPart, m_setting.fLow,
                     bConstant ? 0 : m_setting.fHigh, m_setting.bWhole);
}

void CSignals::Set(const std::string& name, SignalSetting setting)
{
    const auto [at, bNew] = m_places.emplace(name, m_driven.size());
    if (bNew)
        m_driven.push_back({name, CSignal(std::move(setting)), ""});
    else
        m_driven[at->second] = {name, CSignal(std::move(setting)), ""};
}

void CSignals::Remove(const std::string& name)
{
    std::erase_if(m_driven, [&name](const Driven& driven) { return driven.name == name; });
    m_places.clear();
    for (const Driven& driven : m_driven) m_places.emplace(driven.name, m_places.size());
}

void CSignals::Clear()
{
    m_driven.clear();
    m_places.clear();
}

const SignalSetting* CSignals::Find(const std::string& name) const
{
    const auto at = m_places.find(name);
    return at == m_places.end() ? nullptr : &m_driven[at->second].signal.Setting();
}

void CSignals::SetSpeed(double fSpeed)
{
    m_fSpeed = fSpeed >= LEAST_SPEED ? std::min(fSpeed, MOST_SPEED) : LEAST_SPEED;
}

std::vector<qel::NamedValue> CSignals::Advance(double fMilliseconds)
{
    std::vector<qel::NamedValue> changed;
    if (!m_bPlays) return changed;
    for (Driven& driven : m_driven) {
        driven.signal.Advance(fMilliseconds * m_fSpeed);
        const std::string text = driven.signal.Text();
        if (text == driven.text) continue;
        driven.text = text;
        changed.push_back({driven.name, text});
    }
    return changed;
}

double CSignals::LongestPeriod() const
{
    double fLongest = 0;
    for (const Driven& driven : m_driven) {
        const SignalSetting& setting = driven.signal.Setting();
        const auto fRows = static_cast<double>(setting.cells.size());
        if (setting.kind == SignalKind::Constant) continue;
        const bool bColumn = setting.kind == SignalKind::Column;
        fLongest = std::max(fLongest, setting.fPeriod * (bColumn ? fRows : 1));
    }
    return fLongest;
}

void CSignals::Rewind()
{
    for (Driven& driven : m_driven) {
        driven.signal = CSignal(driven.signal.Setting());
        driven.text.clear();
    }
}

int ReadColumns(const std::wstring& path, std::vector<SignalColumn>* pColumns, std::string* pWhy)
{
    try {
        const std::string file = qel::ToUtf8(path);
        std::string bytes;
        if (!qel::ReadBytes(path, &bytes))
            throw qel::CTrouble("cannot read '" + file + "': " + qel::WhyNotRead(path));
        const std::vector<qel::CsvRow> table = qel::ReadCsv(file, bytes);
        if (table.size() < 2)
            throw qel::CTrouble("'" + file + "' wants a row of names, and rows of values");
        std::vector<SignalColumn> columns;
        for (const std::string& name : table[0].cells) columns.push_back({name, {}});
        for (std::size_t n = 1; n < table.size(); ++n)
            for (std::size_t m = 0; m < columns.size(); ++m)
                columns[m].cells.push_back(table[n].cells[m]);
        *pColumns = std::move(columns);
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

} // namespace studio
