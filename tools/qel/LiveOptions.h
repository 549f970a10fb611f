// The options by which the command line plays the host: parameters, status, settings and values of
// scales and meters, the time of clocks.
#pragma once

#include "tools/qel/Command.h"
#include "tools/qel/Drawing.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace qel {

// A value as the host passes it: a whole number of 32 bits, or a real one.
struct LiveNumber {
    bool bReal = false;
    int64_t nWhole = 0; // -2147483648 to 4294967295: a negative one goes as its two's complement
    double fReal = 0;
};

// One option that sets something.
struct LiveAction {
    enum class Kind { Param, Status, Selector } kind;
    std::string option; // as it was given, for messages
    DWORD nId = 0;      // of the parameter, of the scale or meter
    DWORD nSelector = 0;
    LiveNumber value;
    LiveNumber last; // of a range; value is its first
};

// "#RRGGBB"; false: it is none.
bool ReadColor(const std::string& text, COLORREF* pClr);

class CLiveOptions {
public:
    static void AddRows(OptionRows* pRows);

    // Whether --value takes ranges, too.
    explicit CLiveOptions(bool bRanges) : m_bRanges(bRanges) {}

    // The option, when it is one of these. CTrouble for a wrong value.
    bool Take(const GivenOption& given);
    void Add(LiveAction action) { m_actions.push_back(std::move(action)); }
    void AddValue(const std::wstring& text);
    void SetTime(const std::wstring& text);

    // The following throw CTrouble when the drawing refuses something, telling why.
    void Apply(const CDrawing& drawing) const; // in the order of the options
    void ApplyRanges(const CDrawing& drawing, int nFrame, int nFrames) const;

    // What is wrong with the options that reach nothing in the drawing, when all have been applied.
    [[nodiscard]] std::vector<std::string> Unheard(const CDrawing& drawing) const;

    [[nodiscard]] bool HasRanges() const { return !m_ranges.empty(); }
    [[nodiscard]] const SYSTEMTIME* Time() const { return m_time ? &*m_time : nullptr; }

private:
    bool m_bRanges;
    std::vector<LiveAction> m_actions;
    std::vector<LiveAction> m_ranges;
    std::optional<SYSTEMTIME> m_time;
    std::string m_timeOption;
};

} // namespace qel
