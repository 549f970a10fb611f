// The meter type "round", the plain dial, and the blade that is its needle.
#pragma once

#include "meter/ArcMeter.h"

#include <windows.h>

#include <cstdint>

// A blade with a short tail.
class CAnglePin {
public:
    CAnglePin(int32_t nPenWidth, int32_t nInner, int32_t nTip, COLORREF clr, COLORREF clrBack,
              CPixelScale px = {}) noexcept
        : m_nPenWidth(nPenWidth), m_nInner(nInner), m_nTip(nTip), m_clr(clr), m_clrBack(clrBack),
          m_px(px)
    {
    }
    virtual ~CAnglePin() = default;
    CAnglePin(const CAnglePin&) = delete;
    CAnglePin& operator=(const CAnglePin&) = delete;

    int Draw(HDC hdc, POINT ptCentre, float fAngle) const; // 0 without pen and brush

private:
    int32_t m_nPenWidth;
    int32_t m_nInner;
    int32_t m_nTip;
    COLORREF m_clr;
    COLORREF m_clrBack;
    CPixelScale m_px;
};

class CCircleMeter final : public CArcMeter {
public:
    CCircleMeter(int32_t nRadius, bool bFullCircle, double fOffset) noexcept
        : CArcMeter(nRadius, DialStart(bFullCircle), DialEnd(bFullCircle), fOffset)
    {
    }

protected:
    int PaintNeedle(HDC hdc, float fAngle, bool bErase) const override;
};
