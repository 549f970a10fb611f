// Where a drawing is drawn, in pixels of its picture, and how large the constants' pixels are
// there.
#pragma once

#include "base/PixelScale.h"

#include <windows.h>

// The pixels of the picture that a rectangle of samples is in.
constexpr RECT PixelsOf(const RECT& rc, CPixelScale px)
{
    return {px.PixelOf(rc.left), px.PixelOf(rc.top), px.PixelUpTo(rc.right),
            px.PixelUpTo(rc.bottom)};
}

struct QelRect : RECT {
    constexpr QelRect() noexcept : RECT{0, 0, 0, 0} {}
    // A plain rectangle is one of pixels as they are.
    constexpr QelRect(const RECT& rc, CPixelScale scale = {}) noexcept : RECT(rc), px(scale) {}
    constexpr QelRect(LONG nLeft, LONG nTop, LONG nRight, LONG nBottom) noexcept
        : RECT{nLeft, nTop, nRight, nBottom}
    {
    }

    // The same place in device units.
    [[nodiscard]] constexpr RECT OnDevice() const
    {
        return {px.Sampled(left), px.Sampled(top), px.Sampled(right), px.Sampled(bottom)};
    }
    // The same place without samples.
    [[nodiscard]] constexpr QelRect InPicture() const
    {
        return {static_cast<const RECT&>(*this), px.InPicture()};
    }
    constexpr bool operator==(const QelRect& other) const
    {
        return left == other.left && top == other.top && right == other.right &&
               bottom == other.bottom && px == other.px;
    }

    CPixelScale px;
};
