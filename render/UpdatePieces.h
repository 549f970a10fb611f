// A dirty area as rectangles that lie apart, which a smooth update paints one after the other: what
// is between them is neither taken from the surface nor drawn.
#pragma once

#include "render/DirtyArea.h"

class CUpdatePieces {
public:
    // Of the part of the area that is in rcShown. Rectangles that meet become one, since a pixel is
    // painted once, and so do those that cost less together.
    CUpdatePieces(const CDirtyArea& area, const RECT& rcShown) noexcept;

    [[nodiscard]] int Count() const { return m_nCount; }
    [[nodiscard]] const RECT& At(int n) const { return m_rects[n]; }

private:
    void Add(RECT rc);

    int m_nCount = 0;
    RECT m_rects[CDirtyArea::MOST_RECTS];
};
