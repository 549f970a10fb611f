// The simple components that the layers of dials and bars draw with: each makes its GDI object,
// draws with it as often as the layer asks, and deletes it at the end of the layer. Draw returns 1
// when it drew, 0 when it could not. What it selects or changes is put back.
#pragma once

#include "meter/Meter.h"

// Straight lines: ticks, the axis of a bar, the needle of the plain dial.
class CScaleLine {
public:
    CScaleLine(int32_t nPixels, COLORREF clr, CPixelScale px = {}) noexcept
        : CScaleLine(nPixels, px(nPixels), clr, px)
    {
    }
    // One of so many device units, and of a pixel at least.
    static CScaleLine OfWidth(int32_t nWidth, COLORREF clr, CPixelScale px) noexcept;
    virtual ~CScaleLine();
    CScaleLine(const CScaleLine&) = delete;
    CScaleLine& operator=(const CScaleLine&) = delete;

    int Draw(HDC hdc, POINT pt1, POINT pt2) const; // the current position is kept

private:
    CScaleLine(int32_t nPixels, int32_t nWidth, COLORREF clr, CPixelScale px) noexcept;

    int32_t m_nPixels;
    CPixelScale m_px;
    HPEN m_hPen;
};

// Arcs around the centre of a dial.
class CArcAxis {
public:
    CArcAxis(int32_t nPixels, COLORREF clr, CPixelScale px = {}) noexcept;
    virtual ~CArcAxis();
    CArcAxis(const CArcAxis&) = delete;
    CArcAxis& operator=(const CArcAxis&) = delete;

    // From fStart over fSweep degrees. Nothing is drawn for a radius of 0, and of an arc too short
    // to have two ends.
    int Draw(HDC hdc, int32_t nRadius, POINT ptCentre, float fStart, float fSweep) const;

private:
    int32_t m_nPixels;
    CPixelScale m_px;
    HPEN m_hPen;
};

// The arc that the classes with a pen of their own draw; 0 without a pen, for a radius of 0, and
// for an arc too short to have two ends, which GDI would draw as a whole ring.
// nPixels: how wide the pen is.
int DrawDialArc(HDC hdc, HPEN hPen, int32_t nRadius, POINT ptCentre, float fStart, float fSweep,
                int32_t nPixels = 1, CPixelScale px = {});

// The disc in the middle of a plain dial.
class CScaleCentre {
public:
    // Both in pixels.
    CScaleCentre(int32_t nRadius, int32_t nWidth, COLORREF clrPen, COLORREF clrFill,
                 CPixelScale px = {}) noexcept;
    virtual ~CScaleCentre();
    CScaleCentre(const CScaleCentre&) = delete;
    CScaleCentre& operator=(const CScaleCentre&) = delete;

    int Draw(HDC hdc, POINT ptCentre) const;

private:
    int32_t m_nRadius;
    int32_t m_nPixels;
    CPixelScale m_px;
    HPEN m_hPen;
    HBRUSH m_hBrush;
};

// Labels in one font.
class CScaleMark {
public:
    CScaleMark(FontCell cell, COLORREF clr, CPixelScale px = {}) noexcept;
    CScaleMark(int32_t nCharWidth, int32_t nCharHeight, COLORREF clr) noexcept
        : CScaleMark(FontCell{nCharWidth, nCharHeight}, clr)
    {
    }
    virtual ~CScaleMark();
    CScaleMark(const CScaleMark&) = delete;
    CScaleMark& operator=(const CScaleMark&) = delete;

    int Draw(HDC hdc, int32_t nX, int32_t nY, const char* pszText) const;
    // The text's width in this font; 0 when it cannot be measured.
    int32_t WidthOf(HDC hdc, const char* pszText) const;

private:
    HFONT m_hFont;
    COLORREF m_clr;
    bool m_bWide;
};

// One text in hFont, background transparent. The font stays the caller's. Result: 0 when there was
// no font. bWide: of the cell that the font was made for.
int DrawMeterText(HDC hdc, POINT ptTopLeft, const char* pszText, HFONT hFont, COLORREF clr,
                  bool bWide = false);
// Its size in hFont. False, and nothing is written, when it cannot be measured.
bool MeasureMeterText(HDC hdc, const char* pszText, HFONT hFont, bool bWide, SIZE* pSize);
