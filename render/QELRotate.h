// Turns points about a centre by whole degrees, counter-clockwise as seen on a screen: exactly, in
// integers, for quarter turns; through polar coordinates for any other angle.
#pragma once

#include <windows.h>

#include <cstdint>

class CQELRotate {
public:
    CQELRotate(POINT ptCentre, int32_t nAngle);
    virtual ~CQELRotate() = default;
    CQELRotate(const CQELRotate&) = default;
    CQELRotate& operator=(const CQELRotate&) = default;

    int RotatePoint(POINT* ppt) const;             // always 1
    int RotateTwo(POINT* ppt1, POINT* ppt2) const; // always 1
    int RotateRect(RECT* prc) const;               // always 1; the result is normalised

private:
    [[nodiscard]] POINT RotateFreely(POINT pt) const;

    int32_t m_nAngle; // 0 to 359
    int32_t m_nCentreX;
    int32_t m_nCentreY;
};

// The whole quarter turns of an angle, in degrees: 100 gives 90, -100 gives -90, 450 gives 90.
int32_t QuarterTurn(int32_t nAngle);
