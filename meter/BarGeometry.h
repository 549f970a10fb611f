// The numbers of a bar: where values and ticks stand, into which segments a value cuts the bar, and
// the shape of the three-dimensional body. Plain functions, so that the layers have nothing left
// but painting.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

#include <cstdint>

// A straight scale: the value range, and the rectangle that it runs along.
struct BarScale {
    int32_t nMin;
    int32_t nMax;
    RECT rc;
    CPixelScale px = {};
};

// Where a value stands; values outside stand at the nearer end. The horizontal scale ends one pixel
// inside of its right edge, the vertical one runs to its bottom edge itself.
int32_t VerticalPosition(const BarScale& scale, double fValue);
int32_t HorizontalPosition(const BarScale& scale, double fValue);
int32_t VerticalTick(const RECT& rc, uint32_t nTick, uint32_t nCount, CPixelScale px = {});
int32_t HorizontalTick(const RECT& rc, uint32_t nTick, uint32_t nCount, CPixelScale px = {});

// A part of the bar between two values.
struct BarPart {
    double fFrom;
    double fTo;
    bool bThere;
};

// The parts in the order in which a flat bar paints them.
struct BarParts {
    BarPart emptyAtBase;
    BarPart filled;
    BarPart emptyAtValue;
};

// How the value is to be read. fBase: where bars grow from when bUseBase is set.
struct BarRule {
    double fMin;
    double fMax;
    double fBase;
    bool bUseBase;
    bool bReverse;  // the value has been mirrored already
    bool bFillOnly; // no empty parts
};
BarParts SplitBar(const BarRule& rule, double fValue);

// The column of a bar, seen so that vertical and horizontal bars are one thing: "across" runs from
// its front edge, "along" from the end where values begin. Horizontal bars are vertical ones
// mirrored at the diagonal through the bottom left corner.
class CBarColumn {
public:
    CBarColumn(const RECT& rc, bool bVertical, CPixelScale px = {}) noexcept
        : m_rc(rc), m_bVertical(bVertical), m_px(px)
    {
    }

    [[nodiscard]] bool IsVertical() const { return m_bVertical; }
    [[nodiscard]] int32_t Across() const;
    [[nodiscard]] int32_t Along() const;
    [[nodiscard]] POINT At(int32_t nAcross, int32_t nAlong) const;      // between pixels
    [[nodiscard]] POINT PixelAt(int32_t nAcross, int32_t nAlong) const; // on the pixels inside
    [[nodiscard]] RECT Box(int32_t nAcross1, int32_t nAlong1, int32_t nAcross2,
                           int32_t nAlong2) const;
    [[nodiscard]] int32_t AlongFrom(const RECT& rcSegment) const; // the segment's lower end
    [[nodiscard]] int32_t AlongTo(const RECT& rcSegment) const;

private:
    RECT m_rc;
    bool m_bVertical;
    CPixelScale m_px;
};

// The box that stands on a segment: a front of four fifths of the column, a side and a top that are
// slanted by one fifteenth of the bar's length. Nothing reaches out of the column, so the slants
// shrink at its ends.
struct BarBox {
    int32_t nFrom; // along
    int32_t nTo;
    int32_t nFront;     // across, where the front ends
    int32_t nBack;      // across, where the side ends
    int32_t nFromSlant; // of the side's lower end
    int32_t nToSlant;   // of the top
};
BarBox MakeBarBox(const CBarColumn& column, int32_t nFrom, int32_t nTo);

// The cylinder that stands on a segment: the lower ends of its two caps and their height.
struct BarCylinder {
    int32_t nCap;  // the height of a cap, half of the column's width
    int32_t nLow;  // along, the lower end of the lower cap
    int32_t nHigh; // and of the upper one
};
BarCylinder MakeBarCylinder(const CBarColumn& column, int32_t nFrom, int32_t nTo);
