// What the host can set of the elements of a drawing, by identifier and by number.
#pragma once

#include "tools/qel/HostElements.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qel {

// All elements that bear one identifier together: each call reaches those that take it.
struct IdEntry {
    std::string id;
    std::vector<std::string> types; // each once
    bool bValue = false;
    bool bPins = false;
    bool bText = false;
    bool bColors = false;
    uint64_t nSelectors = 0; // one bit each

    [[nodiscard]] std::vector<std::string> Takes(const char* pszColors) const;
    [[nodiscard]] std::vector<std::string> Selectors() const;
};

// In the order in which the drawing has them first.
std::vector<IdEntry> ListIds(const HostElements& elements);

// The scales and meters that go by number and have no identifier, as "#0".
std::vector<IdEntry> ListNumbers(const HostElements& elements);

} // namespace qel
