// A gradient on a tile of samples, without a brush as large as what shows of it: the figure is
// painted in a colour that nothing in its place has, and what has it then gets the gradient's. The
// samples are those that the brush would have painted.
#pragma once

#include "base/GdiScopes.h"
#include "base/PixelScale.h"
#include "brush/Gradient.h"

#include <cstdint>

class CSampleGradient {
public:
    CSampleGradient() = default;
    ~CSampleGradient();
    CSampleGradient(const CSampleGradient&) = delete;
    CSampleGradient& operator=(const CSampleGradient&) = delete;

    // The brush that the figure is to be painted with, or null where it takes that of the gradient:
    // on a surface without samples, under a raster operation, when it is no gradient in both
    // directions. rcGradient, rcFilled and the colours as for CShownDraft::Brush; clrPen: what the
    // figure is painted in beside its brush.
    HBRUSH Begin(HDC hdc, int32_t nStyle, CPixelScale px, const RECT& rcGradient,
                 const RECT& rcFilled, COLORREF clr1, COLORREF clr2, COLORREF clrPen);
    // After the figure is painted, and nothing else. Without a brush it does nothing.
    void End();

private:
    bool FindSamples(HDC hdc, CPixelScale px, const RECT& rcFilled);
    bool ChooseKey(COLORREF clrNear, COLORREF clrPen);
    [[nodiscard]] bool HasKey() const;
    [[nodiscard]] uint32_t* SampleRow(int32_t y) const { return m_pFirst + y * m_nStride; }

    int32_t m_nSamples = 1;
    int32_t m_nGradient = 0;
    RECT m_rcWhole{0, 0, 0, 0}; // what the gradient runs over, pixels of the picture
    COLORREF m_clr1 = 0;
    COLORREF m_clr2 = 0;
    GradientPart m_across{0, 0}; // the pixels that are looked at
    GradientPart m_down{0, 0};
    uint32_t* m_pFirst = nullptr; // the first sample of them
    int32_t m_nStride = 0;        // samples
    uint32_t m_nKey = 0;          // as a sample has it
    HBRUSH m_hKey = nullptr;
};
