// The "frame" element: a group whose shapes follow the frame colour. Drawn by
// dynamic/QELViewFrame.h.
#pragma once

#include "document/QELDocContainer.h"

class CQELDocFrame final : public CQELDocContainer {
public:
    explicit CQELDocFrame(XmlContext** ppXml) noexcept;

    int Clone(CQELDocElm** ppOut) const override;
};
