// The fill style of a figure made into a brush for one drawing call. Of a gradient it makes what
// shows on the device context, where that is less than the whole: the pixels are the same.
#pragma once

#include "base/PixelScale.h"
#include "brush/Hatch.h"
#include "include/QELEngine.h"

#include <cstdint>
#include <optional>

class CShownDraft {
public:
    explicit CShownDraft(int32_t nStyle, CPixelScale px = {}) noexcept
        : m_nStyle(nStyle), m_px(px), m_draft(static_cast<tagDRAFTSTYLE>(nStyle))
    {
    }
    ~CShownDraft() { DropPart(); }
    CShownDraft(const CShownDraft&) = delete;
    CShownDraft& operator=(const CShownDraft&) = delete;

    // The brush of CQELDraft::GetDraftBrush, or null; it stays the object's own, until one for
    // other rectangles is asked for. rcGradient: what a gradient runs over. rcFilled: where it is
    // used.
    HBRUSH Brush(HDC hdc, const RECT& rcGradient, const RECT& rcFilled, COLORREF clr1,
                 COLORREF clr2);

private:
    [[nodiscard]] bool IsHatch() const { return m_nStyle >= 0 && m_nStyle < DRAFT_GRADIENT; }
    [[nodiscard]] bool IsLarge(const RECT& rcGradient) const;
    [[nodiscard]] HBRUSH MakePart(HDC hdc, const RECT& rcGradient, const RECT& rcFilled,
                                  COLORREF clr1, COLORREF clr2) const;
    void DropPart();

    int32_t m_nStyle;
    CPixelScale m_px;
    CQELDraft m_draft;
    std::optional<CHatchBrush> m_hatch; // of cells that are larger than a unit
    HBRUSH m_hPart = nullptr;
    RECT m_rcGradient{0, 0, 0, 0}; // of the part
    RECT m_rcFilled{0, 0, 0, 0};
};
