// The bar between two panes, which the mouse moves.
#pragma once

#include "tools/studio/Window.h"

#include <functional>

namespace studio {

class CSplitter final : public CWindow {
public:
    // bUpright: it stands between left and right. The call gets by how many pixels it was moved.
    int Create(HWND hParent, UINT nId, bool bUpright, std::function<void(int)> moved);

    static constexpr int WIDTH = 6; // at 96 dots an inch

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int Along(LPARAM lParam) const;

    bool m_bUpright = true;
    int m_nGrip = 0; // where it was taken hold of
    std::function<void(int)> m_moved;
};

} // namespace studio
