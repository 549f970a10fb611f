// Hatches whose pixels are larger than the surface's.
#pragma once

#include "base/Refusals.h"

#include <windows.h>

#include <cstdint>

constexpr int32_t HATCH_SIDE = 8; // cells
constexpr int32_t MAX_HATCH_CELL = 64;

// A monochrome bitmap of the eight rows, a bit a cell in the low byte of each, with cells of nCell
// units a side; more than MAX_HATCH_CELL count as that. Null when there is none to be had.
HBITMAP MakeHatchBitmap(const unsigned short (&rows)[HATCH_SIDE], int32_t nCell);

// The brush of such a bitmap, which goes with the object.
class CHatchBrush {
public:
    CHatchBrush(const unsigned short (&rows)[HATCH_SIDE], int32_t nCell) noexcept
        : m_hBitmap(MakeHatchBitmap(rows, nCell)),
          m_hBrush(m_hBitmap ? Made(::CreatePatternBrush(m_hBitmap)) : nullptr)
    {
    }
    ~CHatchBrush()
    {
        if (m_hBrush) ::DeleteObject(m_hBrush);
        if (m_hBitmap) ::DeleteObject(m_hBitmap);
    }
    CHatchBrush(const CHatchBrush&) = delete;
    CHatchBrush& operator=(const CHatchBrush&) = delete;

    [[nodiscard]] HBRUSH Get() const { return m_hBrush; }

private:
    HBITMAP m_hBitmap;
    HBRUSH m_hBrush;
};
