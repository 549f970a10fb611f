// The needle of the "round" dial: a blade with a short tail.
#pragma once

#include <windows.h>

#include <cstdint>

class CAnglePin {
public:
    CAnglePin(int32_t nPenWidth, int32_t nInner, int32_t nTip, COLORREF clr,
              COLORREF clrBack) noexcept
        : m_nPenWidth(nPenWidth), m_nInner(nInner), m_nTip(nTip), m_clr(clr), m_clrBack(clrBack)
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
};
