// What the checker knows of styles that cost more than they can show: they hold up the host at each
// draw, or the engine leaves a part of them out.
#pragma once

#include "document/QELDocElm.h"

#include <windows.h>

#include <string>
#include <vector>

namespace qel {

struct CostFinding {
    int32_t nAttr; // whose value it is
    std::string text;
};

// refSize: that of the drawing.
std::vector<CostFinding> CostFindings(const CQELDocElm& elm, SIZE refSize);

} // namespace qel
