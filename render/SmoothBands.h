// Pictures that are painted finer than they are shown: tile by tile, so many samples each way, and
// each pixel the mean of its own.
#pragma once

#include <windows.h>

#include <cstdint>

// What paints a tile. The device context counts samples, from where the picture counts pixels.
class CTilePainter {
public:
    virtual void Paint(HDC hdc, const RECT& rcTile, bool bLast) = 0; // the tile in pixels

protected:
    ~CTilePainter() = default;
};

// A bitmap of four bytes a pixel, rows from the top, on a device context of its own.
class CTileCanvas {
public:
    CTileCanvas() = default;
    ~CTileCanvas() { Drop(); }
    CTileCanvas(const CTileCanvas&) = delete;
    CTileCanvas& operator=(const CTileCanvas&) = delete;

    int Make(SIZE size); // keeps one of that size; 0 without memory
    void Drop();
    [[nodiscard]] HDC Dc() const { return m_hdc; }
    [[nodiscard]] uint32_t* Bits() const { return m_pBits; }
    [[nodiscard]] int32_t Stride() const { return m_size.cx; } // in pixels

private:
    HDC m_hdc = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
    uint32_t* m_pBits = nullptr;
    SIZE m_size{0, 0};
};

class CSmoothBands {
public:
    CSmoothBands() = default;
    CSmoothBands(const CSmoothBands&) = delete;
    CSmoothBands& operator=(const CSmoothBands&) = delete;

    // Paints rc, in the units of hdc, over what stands there. picture: how large all of it is;
    // tiles are kept for as long as that and the samples stay. 0 without memory: then nothing is
    // painted.
    int Paint(HDC hdc, const RECT& rc, SIZE picture, int32_t nSamples, CTilePainter* pPainter);
    // Paints a picture of that size into rows of nStride bytes from the top: colours that are
    // multiplied by the last byte of four, which is how much of the pixel is painted. hFont: what
    // texts go by.
    int Render(void* pBits, SIZE size, int32_t nStride, int32_t nSamples, HFONT hFont,
               CTilePainter* pPainter);
    void Drop();

private:
    int Prepare(SIZE picture, int32_t nSamples);
    [[nodiscard]] uint32_t* FineRow(int32_t y) const;
    void TakeSurface(HDC hdc, const RECT& rcTile);
    void Expand(SIZE size);
    void Average(SIZE size);
    void FillGround(SIZE size, uint32_t nPixel);
    void PaintOnGround(const RECT& rcTile, uint32_t nGround, HFONT hFont, bool bLast,
                       CTilePainter* pPainter);

    CTileCanvas m_fine;  // samples
    CTileCanvas m_plain; // pixels
    SIZE m_tile{0, 0};   // at most, in pixels
    int32_t m_nSamples = 0;
};
