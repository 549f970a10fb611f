// A drawing opened through the engine's exported interface, as a host opens it.
#pragma once

#include "include/QELEngine.h"

#include <string>

namespace qel {

class CDrawing {
public:
    explicit CDrawing(const std::wstring& path); // CTrouble when it cannot be opened
    ~CDrawing();
    CDrawing(const CDrawing&) = delete;
    CDrawing& operator=(const CDrawing&) = delete;

    [[nodiscard]] HQELENGINE Engine() const { return m_hEngine; }
    [[nodiscard]] SIZE RefSize() const;

private:
    HQELENGINE m_hEngine;
};

} // namespace qel
