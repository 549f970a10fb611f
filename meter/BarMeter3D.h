// The meter types "vert3d" and "horz3d": the bars with a three-dimensional body.
#pragma once

#include "meter/BarMeter.h"

constexpr int32_t FRAME_CYLINDER = 1; // the frame option; any other one is a box

// The three-dimensional body of a bar: a box or a cylinder that stands on the filled segment, the
// outline that makes it look solid, and the read-out in its column. No colour is computed for
// shading: the faces have the bar's colour, and the outline gives the depth. Body and outline stay
// inside of the meter's face, as the fill of a flat bar does.
class CBarBody {
public:
    // The body of a meter as the meter is now set.
    CBarBody(const CBarMeter& meter, bool bVertical) noexcept
        : m_meter(meter), m_column(meter.Column(), bVertical, meter.Px())
    {
    }

    int Paint(HDC hdc, const RECT& rcSegment) const; // 0 for an empty segment
    // The whole column's outline and, when the segment is not empty, the body's upper edge.
    int Outline(HDC hdc, const RECT& rcSegment) const;
    // The value in the middle of the column, near its lower end; 0 when it finds no room there.
    // What is written there goes with the next paint of the column.
    int ReadOut(HDC hdc, float fValue) const;

private:
    int PaintBox(HDC hdc, int32_t nFrom, int32_t nTo) const;
    int PaintCylinder(HDC hdc, int32_t nFrom, int32_t nTo) const;
    int DrawReadOut(HDC hdc, const RECT& rc, const char* pszText, FontCell cell) const;
    void OutlineBox(HDC hdc, int32_t nFrom, int32_t nTo, bool bBody) const;
    void OutlineCylinder(HDC hdc, int32_t nFrom, int32_t nTo, bool bBody) const;
    void Ring(HDC hdc, const BarCylinder& cylinder, int32_t nLow) const;
    void LowerArc(HDC hdc, const BarCylinder& cylinder, int32_t nLow) const;

    [[nodiscard]] CPixelScale Px() const { return m_meter.Px(); }

    const CBarMeter& m_meter;
    CBarColumn m_column;
};

// What the two 3D bars add to the flat ones.
template <class Flat, bool VERTICAL>
class CBarMeter3D : public Flat {
public:
    using Flat::Flat;

    int DrawFrame(HDC hdc) noexcept override
    {
        const RECT rcColumn = this->Column();
        if (!this->HasBar() || ::IsRectEmpty(&rcColumn)) return 0;
        return CBarBody(*this, VERTICAL).Outline(hdc, m_rcFilled);
    }

    int DrawValueText(HDC hdc, float fValue) override { return ReadOut(hdc, fValue); }
    int DrawValueText(HDC hdc, int32_t nValue) override
    {
        return ReadOut(hdc, static_cast<float>(nValue));
    }

protected:
    // The whole column is emptied first: the body's slanted edges leave corners of its segment
    // free.
    int PaintParts(HDC hdc, const BarParts& parts) noexcept override
    {
        this->PaintEmpty(hdc, parts.emptyAtBase);
        this->PaintEmpty(hdc, parts.emptyAtValue);
        if (!this->GetFillOnly()) this->PaintEmpty(hdc, parts.filled);
        m_rcFilled = parts.filled.bThere ? this->Segment(parts.filled.fFrom, parts.filled.fTo)
                                         : RECT{0, 0, 0, 0};
        CBarBody(*this, VERTICAL).Paint(hdc, m_rcFilled);
        return 1;
    }

private:
    int ReadOut(HDC hdc, float fValue) const noexcept
    {
        const RECT rcColumn = this->Column();
        if (!this->HasBar() || ::IsRectEmpty(&rcColumn)) return 0;
        return CBarBody(*this, VERTICAL).ReadOut(hdc, fValue);
    }

    RECT m_rcFilled{0, 0, 0, 0}; // the segment last painted, for the outline
};

class CUpBarMeter3D final : public CBarMeter3D<CUpBarMeter, true> {
public:
    using CBarMeter3D::CBarMeter3D;
};

// Like the vertical one it has a column of its own, the extent of the face across the bar, so that
// ticks and numbers stand clear of the body.
class CLongBarMeter3D final : public CBarMeter3D<CLongBarMeter, false> {
public:
    using CBarMeter3D::CBarMeter3D;

    [[nodiscard]] RECT Column() const override;
    [[nodiscard]] RECT ColumnIn(const RECT& rcFace) const override;
};
