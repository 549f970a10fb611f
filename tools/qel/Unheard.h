// What the command line sets and nothing in the drawing follows. The engine takes it, so that it is
// no error; but the picture is the same without it, and hardly the one that was meant.
#pragma once

#include "tools/qel/HostElements.h"
#include "tools/qel/LiveAction.h"

#include <set>
#include <string>
#include <vector>

namespace qel {

class CUnheard {
public:
    // A drawing with all options applied: some settings decide what shows a value.
    explicit CUnheard(HQELENGINE hEngine);

    // Texts may bring the run that shows a value, so they are told before all else.
    void NoteText(const LiveAction& action);
    void Add(const LiveAction& action);
    void AddTime(const std::string& option);

    // A line for each that reaches nothing, in the order in which they were added.
    [[nodiscard]] const std::vector<std::string>& Texts() const { return m_texts; }

private:
    void Tell(const std::string& option, const std::string& why);
    [[nodiscard]] std::string WhyStatus(const LiveAction& action) const;
    [[nodiscard]] std::string WhyParam(DWORD nIndex) const;
    [[nodiscard]] std::string WhySetting(const LiveAction& action) const;
    [[nodiscard]] std::string WhySettingById(const LiveAction& action) const;
    [[nodiscard]] std::string WhyValueById(const LiveAction& action) const;
    [[nodiscard]] std::string WhyBearerValue(const HostBearer& bearer) const;
    [[nodiscard]] std::string WhySelector(DWORD nId, const SelectorRow& row) const;
    [[nodiscard]] std::string WhyValue(DWORD nId) const;
    [[nodiscard]] std::string WhyMeterValue(DWORD nId, const HostMeter& meter) const;
    [[nodiscard]] std::string WhyShare(DWORD nId, const HostMeter& meter) const;
    [[nodiscard]] std::string WhyPointer(const HostMeter& meter) const;
    [[nodiscard]] DWORD Setting(const HostMeter& meter, DWORD nSelector) const;

    HQELENGINE m_hEngine;
    HostElements m_elements;
    std::set<std::string> m_idsWithRun; // of texts that were given one
    std::vector<std::string> m_texts;
};

// Some ids or numbers, in one line.
template <class Number>
std::string Listed(const std::set<Number>& numbers)
{
    constexpr std::size_t SHOWN = 12;
    std::string text;
    std::size_t nCount = 0;
    for (const Number nNumber : numbers) {
        if (nCount++ == SHOWN) return text + ", ...";
        text += (text.empty() ? "" : ", ") + std::to_string(nNumber);
    }
    return text;
}

} // namespace qel
