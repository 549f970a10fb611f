// The attributes of an element as the file spells them, with their lines.
#pragma once

#include "tools/studio/Report.h"
#include "tools/studio/model/Source.h"

namespace studio {

class CAttributeList final : public CReport {
public:
    int Create(HWND hParent, UINT nId);
    void Show(const SourceElement* pElement); // null: none
};

} // namespace studio
