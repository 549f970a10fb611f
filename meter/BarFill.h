// What bars are filled with: a hatch or gradient over one segment, clipped to the meter's region.
#pragma once

#include "brush/ShownDraft.h"

#include <cstdint>

class CBarFill {
public:
    CBarFill(const RECT& rcSegment, int32_t nStyle, COLORREF clrBack, COLORREF clrFore,
             CPixelScale px = {}) noexcept;
    virtual ~CBarFill();
    CBarFill(const CBarFill&) = delete;
    CBarFill& operator=(const CBarFill&) = delete;

    // 0 without a brush and for an empty segment.
    int Draw(HDC hdc, HRGN hMeterRegion);

protected:
    HBRUSH Brush(HDC hdc); // null when there is none; the object owns it
    [[nodiscard]] COLORREF BackColor() const { return m_clrBack; }
    [[nodiscard]] COLORREF ForeColor() const { return m_clrFore; }
    [[nodiscard]] CPixelScale Px() const { return m_px; }

private:
    CShownDraft m_draft;
    RECT m_rcSegment;
    HRGN m_hSegment; // null for an empty segment
    COLORREF m_clrBack;
    COLORREF m_clrFore;
    CPixelScale m_px;
};

// The same for cylinders, with ellipses as caps.
class C3DBarFill final : public CBarFill {
public:
    using CBarFill::CBarFill;

    int DrawCap(HDC hdc, const RECT& rcBox); // 0 without a brush
};
