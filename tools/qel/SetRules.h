// What the checker knows of the attributes "set" and "value" of scales and meters: names, numbers,
// and what an element of its type does not follow.
#pragma once

#include "document/QELDocElm.h"

#include <string>
#include <vector>

namespace qel {

struct SetFinding {
    const char* pszAt; // in the attribute's text
    bool bError;
    std::string text;
};

// How a part of the drawing is shown in a message.
using QuotingFunction = std::string (*)(const std::string& text);

// bFigure: there are figures in the element, which take its face colour.
std::vector<SetFinding> SetFindings(const char* pszSet, const CQELDocElm& elm, bool bFigure,
                                    QuotingFunction pfnQuote);
std::vector<SetFinding> ValueFindings(const char* pszValue, const CQELDocElm& elm,
                                      QuotingFunction pfnQuote);

} // namespace qel
