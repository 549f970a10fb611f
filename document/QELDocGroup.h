// The "g" element: gathers children and has no data of its own. Drawn by render/QELViewGroup.h.
#pragma once

#include "document/QELDocContainer.h"

class CQELDocGroup final : public CQELDocContainer {
public:
    explicit CQELDocGroup(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
};
