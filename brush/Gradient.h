// Gradient descriptors: a two-colour gradient over one device rectangle with the GDI pattern brush
// that paints it. The exported functions hand them out as handles; CQELDraft makes one for every
// gradient style.
#pragma once

#include "base/Block.h"
#include "base/Handles.h"
#include "include/QELEngine.h"

#include <cstdint>

constexpr int GRADIENT_KINDS = 14;

// Of a brush's bitmap: a quarter of a gigabyte, many times the largest screen. Beyond it a drawing
// with numbers that make no sense would take the host's memory.
constexpr uint64_t MAX_GRADIENT_PIXELS = uint64_t{1} << 26;

// Of a brush's bitmap in one direction: the pixels of the whole period that it holds. A bitmap of
// fewer has them at their places only within nCount device pixels from nFirst on, which is enough
// for what lies there; the others are nobody's business.
struct GradientPart {
    int64_t nFirst; // from the origin of the brush
    int32_t nCount; // as many as the period for all of it
};

// What a gradient has in a part of its place, row by row: pixels of four bytes, as bitmaps have
// them.
class CGradientRows {
public:
    CGradientRows(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2,
                  const GradientPart& across, const GradientPart& down) noexcept;

    [[nodiscard]] bool AreThere() const; // false without memory
    // The row so many below the first, until the next one is asked for.
    [[nodiscard]] const uint32_t* At(int32_t nRow) const;

private:
    int m_nKind;
    COLORREF m_clr1;
    COLORREF m_clr2;
    int32_t m_nWidth;
    CBlock m_across; // terms
    CBlock m_down;
    CBlock m_row;
};

class CGradient {
public:
    // Null for a null or empty rectangle, a kind outside 0 to 13, or no memory. When the bitmap or
    // the brush cannot be made, the descriptor comes without a brush.
    static CGradient* Create(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2);
    ~CGradient();
    CGradient(const CGradient&) = delete;
    CGradient& operator=(const CGradient&) = delete;

    [[nodiscard]] HBRUSH Brush() const { return m_hBrush; }
    [[nodiscard]] CHandleEntry& Handle() { return m_handle; }

    // Fills a rectangle without an outline. 1 also when there is nothing to fill; 0 without a
    // brush.
    int Fill(HDC hdc, int32_t nX, int32_t nY, int32_t nWidth, int32_t nHeight) const;

private:
    CGradient() noexcept = default;

    HBRUSH m_hBrush = nullptr;
    CHandleEntry m_handle{HandleKind::Gradient, this};
};

// One channel of a gradient pixel's ramp: the value at p of a ramp from a to b over nLength steps
// that begins at nOrigin and repeats in both directions.
int32_t GradientRamp(int32_t p, int32_t nOrigin, int32_t nLength, int32_t a, int32_t b);

// The same from a to b in the middle and back.
int32_t GradientThereAndBack(int32_t p, int32_t nOrigin, int32_t nLength, int32_t a, int32_t b);

// How large the bitmap of a gradient over rc is: a single row or column where the other direction
// does not matter.
SIZE GradientSize(const RECT& rc, int nKind);

// The brush of a gradient over rc, for device pixels in the two parts. Null for one that is larger
// than a gradient may be as a whole, and when there is no memory. nSamples: each of its pixels is
// so many of the device each way.
HBRUSH MakeGradientBrush(const RECT& rc, int nKind, COLORREF clr1, COLORREF clr2,
                         const GradientPart& across, const GradientPart& down,
                         int32_t nSamples = 1);

// A gradient that no host will see under its own handle, for the inside of a brush object.
HQELGRADIENT CreatePrivateGradient(const RECT* prc, int nKind, COLORREF clr1, COLORREF clr2);

// Marks that a second object holds the handle, so that its number is never used again.
void ShareGradient(HQELGRADIENT hGradient);
