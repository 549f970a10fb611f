// The "pattern" element: a group whose shapes follow the host's hatch. Drawn by
// dynamic/QELViewPattern.h.
#pragma once

#include "document/QELDocContainer.h"

class CQELDocPattern final : public CQELDocContainer {
public:
    explicit CQELDocPattern(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
};
