// What stands around and behind a drawing: light, dark, or the chessboard of what is transparent.
#pragma once

#include "tools/studio/model/Settings.h"

#include <windows.h>

namespace studio {

class CSurround {
public:
    CSurround() = default;
    ~CSurround();
    CSurround(const CSurround&) = delete;
    CSurround& operator=(const CSurround&) = delete;

    void Set(Ground ground, int nSquare); // the side of a square of the chessboard, in pixels
    [[nodiscard]] HBRUSH Brush() const { return m_hBrush; }
    [[nodiscard]] COLORREF TextColor() const { return m_clrText; }
    [[nodiscard]] COLORREF FrameColor() const { return m_clrFrame; }

private:
    HBRUSH m_hBrush = nullptr;
    COLORREF m_clrText = 0;
    COLORREF m_clrFrame = 0;
};

} // namespace studio
