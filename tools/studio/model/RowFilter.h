// Which rows of the run panel a text finds: those that have all of its words, in the name or the
// kind, whichever case they are in.
#pragma once

#include "tools/studio/model/LiveRows.h"

#include <string>
#include <vector>

namespace studio {

class CRowFilter {
public:
    explicit CRowFilter(const std::string& text); // empty: all rows
    [[nodiscard]] bool Takes(const LiveRow& row) const;

private:
    std::vector<std::string> m_words;
};

} // namespace studio
