// The numbers of the "roundUpgrade" gauge, each centred on its anchor.
#pragma once

#include "meter/Meter.h"

class CRoundMeterMark {
public:
    // The meter tells the character cell, by its font size code.
    CRoundMeterMark(const CMeter& meter, int32_t nRadius, COLORREF clr) noexcept;
    virtual ~CRoundMeterMark() = default;
    CRoundMeterMark(const CRoundMeterMark&) = delete;
    CRoundMeterMark& operator=(const CRoundMeterMark&) = delete;

    int Draw(HDC hdc, POINT ptAnchor, const char* pszText) const; // 0 without text or font

private:
    FontCell m_cell{};
    COLORREF m_clr;
};
