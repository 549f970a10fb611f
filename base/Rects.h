// Rectangles as plain numbers, in arithmetic that wraps.
#pragma once

#include "base/WrapMath.h"

#include <windows.h>

constexpr int32_t WidthOf(const RECT& rc)
{
    return WrapSub(rc.right, rc.left);
}

constexpr int32_t HeightOf(const RECT& rc)
{
    return WrapSub(rc.bottom, rc.top);
}

// The same rectangle with left <= right and top <= bottom.
constexpr RECT NormalizedRect(const RECT& rc)
{
    return {rc.left < rc.right ? rc.left : rc.right, rc.top < rc.bottom ? rc.top : rc.bottom,
            rc.left < rc.right ? rc.right : rc.left, rc.top < rc.bottom ? rc.bottom : rc.top};
}
