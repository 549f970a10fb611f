// What the checker found in a drawing; a row leads to its element.
#pragma once

#include "tools/studio/Report.h"
#include "tools/studio/model/Source.h"

#include <functional>

namespace studio {

class CFindingList final : public CReport {
public:
    int Create(HWND hParent, UINT nId, std::function<void(std::size_t)> chosen);
    void Show(const std::vector<SourceFinding>& findings);
    void Next(); // chooses the next one, after the last the first
    void OnNotify(const NMHDR& header);

private:
    std::function<void(std::size_t)> m_chosen; // gets the number of the finding
};

} // namespace studio
