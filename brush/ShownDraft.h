// The fill style of a figure made into a brush for one drawing call. Of a gradient it makes what
// shows on the device context, where that is less than the whole: the pixels are the same.
#pragma once

#include "include/QELEngine.h"

#include <cstdint>

class CShownDraft {
public:
    explicit CShownDraft(int32_t nStyle) noexcept
        : m_nStyle(nStyle), m_draft(static_cast<tagDRAFTSTYLE>(nStyle))
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
    [[nodiscard]] bool IsLarge(const RECT& rcGradient) const;
    [[nodiscard]] HBRUSH MakePart(HDC hdc, const RECT& rcGradient, const RECT& rcFilled,
                                  COLORREF clr1, COLORREF clr2) const;
    void DropPart();

    int32_t m_nStyle;
    CQELDraft m_draft;
    HBRUSH m_hPart = nullptr;
    RECT m_rcGradient{0, 0, 0, 0}; // of the part
    RECT m_rcFilled{0, 0, 0, 0};
};
