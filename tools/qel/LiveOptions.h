// The options by which the command line plays the host: parameters, status, settings and values of
// scales and meters, the time of clocks.
#pragma once

#include "tools/qel/Command.h"
#include "tools/qel/LiveAction.h"
#include "tools/qel/NamedValue.h"
#include "tools/qel/ValueTable.h"

#include <optional>
#include <utility>
#include <vector>

namespace qel {

class CLiveOptions {
public:
    static void AddRows(OptionRows* pRows);

    // Whether --value, --status and --time take ranges, too.
    explicit CLiveOptions(bool bRanges) : m_bRanges(bRanges) {}

    // The option, when it is one of these. CTrouble for a wrong value.
    bool Take(const GivenOption& given);
    void Add(LiveAction action);
    void AddValue(const std::wstring& text);
    void AddStatus(const std::wstring& text);
    void SetTime(const std::wstring& text);

    void SetTable(const std::wstring& path);
    void SetValues(const std::wstring& path); // of a file of values
    void ShowRow(int nRow) { m_nRow = nRow; } // of the table, from 1 on

    // The following throw CTrouble when the drawing refuses something, telling why.
    // What holds all the time: a file of values, the options in their order, then the rows of a
    // table up to the one to show.
    void Apply(HQELENGINE hEngine) const;
    void ApplyFrame(HQELENGINE hEngine, int nFrame, int nFrames) const;

    // What is wrong with the options that reach nothing in the drawing, when all have been applied.
    [[nodiscard]] std::vector<std::string> Unheard(HQELENGINE hEngine) const;

    [[nodiscard]] const CValueTable* Table() const { return m_table ? &*m_table : nullptr; }
    [[nodiscard]] bool HasRanges() const { return !m_ranges.empty(); }
    // Whether all that moves are values by number, which partial draws show.
    [[nodiscard]] bool MovesNumbersAlone() const;
    [[nodiscard]] const SYSTEMTIME* Time() const { return m_time ? &*m_time : nullptr; }
    [[nodiscard]] const SYSTEMTIME* LastTime() const { return m_lastTime ? &*m_lastTime : nullptr; }

private:
    bool m_bRanges;
    // What a file of values sets, which depends on the identifiers of the drawing.
    [[nodiscard]] std::vector<LiveAction> ReadNamed(HQELENGINE hEngine) const;

    std::wstring m_valuesPath; // empty: there is none
    std::vector<NamedValue> m_values;
    std::vector<LiveAction> m_actions;
    std::vector<LiveAction> m_ranges;
    std::optional<CValueTable> m_table;
    int m_nRow = 0;
    std::optional<SYSTEMTIME> m_time;
    std::optional<SYSTEMTIME> m_lastTime;
    std::string m_timeOption;
};

} // namespace qel
