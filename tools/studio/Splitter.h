// The bar between two panes, which the mouse moves, or while it has the focus the arrow keys.
#pragma once

#include "tools/studio/Window.h"

#include <functional>

namespace studio {

class CSplitter final : public CWindow {
public:
    enum class Key { Next, Keep, Back }; // to the next one; done; as it was, and done
    struct Events {
        std::function<void(int)> moved; // by how many pixels
        std::function<void(Key)> key;   // while it has the focus
    };
    // bUpright: it stands between left and right.
    int Create(HWND hParent, UINT nId, bool bUpright, Events events);

    static constexpr int WIDTH = 6; // at 96 dots an inch

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnKey(WPARAM nKey);
    void Paint();
    [[nodiscard]] int Along(LPARAM lParam) const;

    bool m_bUpright = true;
    int m_nGrip = 0; // where it was taken hold of
    Events m_events;
};

} // namespace studio
