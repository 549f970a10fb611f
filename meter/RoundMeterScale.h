// The ticks of the "roundUpgrade" gauge: strokes or wedges that hang from the band of the axis.
#pragma once

#include <windows.h>

#include <cstdint>

class CRoundMeterScale {
public:
    static constexpr int32_t MAJOR = 1;
    static constexpr int32_t MINOR = 2;

    CRoundMeterScale(int32_t nKind, COLORREF clr) noexcept : m_nKind(nKind), m_clr(clr) {}
    virtual ~CRoundMeterScale() = default;
    CRoundMeterScale(const CRoundMeterScale&) = delete;
    CRoundMeterScale& operator=(const CRoundMeterScale&) = delete;

    // Axis style 0: strokes from the single band inwards. 1: wedges there. 2: strokes from the
    // outer band across the inner one. 3: wedges there. Another style, which has no band: as 0.
    int Draw(HDC hdc, POINT ptCentre, int32_t nRadius, float fAngle, int32_t nAxisStyle) const;

private:
    int32_t m_nKind;
    COLORREF m_clr;
};
