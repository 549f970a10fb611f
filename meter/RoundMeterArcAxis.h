// A band along the scale of the "roundUpgrade" gauge: its axis and its alarm zones.
#pragma once

#include <windows.h>

#include <cstdint>

class CRoundMeterArcAxis {
public:
    // The ends of the band are cut straight: a round end would lap over the next zone.
    CRoundMeterArcAxis(int32_t nBandWidth, COLORREF clr) noexcept;
    virtual ~CRoundMeterArcAxis();
    CRoundMeterArcAxis(const CRoundMeterArcAxis&) = delete;
    CRoundMeterArcAxis& operator=(const CRoundMeterArcAxis&) = delete;

    // The band's middle lies at nRadius. 0 without a pen, for a radius of 0, and for
    // a band too short to have two ends.
    int Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep) const;

private:
    HPEN m_hPen;
};
