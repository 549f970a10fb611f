// The meter type "pie": the plain dial whose value is a filled sector.
#pragma once

#include "meter/ArcMeter.h"

class CPieMeter : public CArcMeter {
public:
    CPieMeter(int32_t nRadius, float fStart, float fEnd) noexcept
        : CArcMeter(nRadius, fStart, fEnd, 0)
    {
    }

    int DrawFill(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    int DrawAlarmZones(HDC hdc) override; // nothing

    void SetSectorColor(COLORREF clr) { m_clrSector = clr; }
    void SetEraseColor(COLORREF clr) { m_clrErase = clr; }
    void SetSectorStyle(int32_t nStyle) { m_nSectorStyle = nStyle; }
    [[nodiscard]] COLORREF SectorColor() const { return m_clrSector; }
    [[nodiscard]] COLORREF EraseColor() const { return m_clrErase; }
    [[nodiscard]] int32_t SectorStyle() const { return m_nSectorStyle; }

private:
    int FillTo(HDC hdc, double fValue, uint32_t nFlags) const;

    COLORREF m_clrSector = 0xFFFFFF;
    COLORREF m_clrErase = 0;
    int32_t m_nSectorStyle = 0;
};
