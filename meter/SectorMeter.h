// The meter type "sector": a share chart of up to 32 values, each a sector of a disc in a colour of
// its own. Every draw paints all of it.
#pragma once

#include "meter/ArcMeter.h"

constexpr uint32_t MAX_SECTORS = 32;

class CSectorMeter final : public CArcMeter {
public:
    CSectorMeter(int32_t nRadius, bool bFullCircle) noexcept
        : CArcMeter(nRadius, DialStart(bFullCircle), DialEnd(bFullCircle), 0)
    {
    }

    // Nothing of the plain dial's scale is drawn over the chart.
    int DrawScale(HDC hdc) override;
    int DrawAxis(HDC hdc) override;
    int DrawLabels(HDC hdc) override;
    int DrawFill(HDC hdc, float fValue, uint32_t nFlags) override;
    int DrawFill(HDC hdc, int32_t nValue, uint32_t nFlags) override;
    // Each value at two thirds of the radius in the middle of its sector.
    int DrawValueText(HDC hdc, float fValue) override;
    int DrawValueText(HDC hdc, int32_t nValue) override;

    void SetSectorCount(uint32_t n) { m_nSectors = n < MAX_SECTORS ? n : MAX_SECTORS; }
    void SetSectorRect(const RECT& rc) { m_rcSectors = rc; }
    void SetSectorValues(const int32_t (&nValues)[MAX_SECTORS]);
    void SetSectorValues(const float (&fValues)[MAX_SECTORS]);
    [[nodiscard]] uint32_t SectorCount() const { return m_nSectors; }
    [[nodiscard]] const RECT& SectorRect() const { return m_rcSectors; }
    [[nodiscard]] double Share(uint32_t n) const { return m_fShares[n]; } // as last drawn
    [[nodiscard]] int32_t ChartRadius() const;

private:
    // One sector as it lies on the disc. fTotal: the sum of all values.
    struct Sector {
        double fStart; // as parts of the full turn
        double fShare;
        bool bVisible; // else it has no width, and would come out as a full disc
        POINT ptStart;
        POINT ptEnd;
    };
    template <class Value>
    double TakeShares(const Value (&values)[MAX_SECTORS]);
    [[nodiscard]] Sector SectorAt(uint32_t n, double fStart, double fTotal) const;
    int Fill(HDC hdc, double fTotal) const;
    template <class Value>
    int PrintValues(HDC hdc, const Value (&values)[MAX_SECTORS]);

    uint32_t m_nSectors = 0;
    RECT m_rcSectors{0, 0, 0, 0};
    int32_t m_nValues[MAX_SECTORS] = {};
    float m_fValues[MAX_SECTORS] = {};
    double m_fShares[MAX_SECTORS] = {};
};
