// The bar at the bottom: what is selected or pointed at, where the pointer is, size, zoom,
// findings.
#pragma once

#include "tools/studio/Window.h"

#include <array>
#include <string>

namespace studio {

class CStatusBar final : public CControl {
public:
    enum Part { Element, Pointer, Size, Zoom, Findings, PARTS };

    int Create(HWND hParent, UINT nId);
    void SetText(Part part, const std::wstring& text);
    void Resize() const;
    [[nodiscard]] int Height() const;

private:
    std::array<std::wstring, PARTS> m_texts;
};

} // namespace studio
