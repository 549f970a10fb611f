// A bitmap to draw on, whose pixels the program reads: rows from the top, four bytes a pixel.
#pragma once

#include <windows.h>

namespace qel {

class CCanvas {
public:
    explicit CCanvas(SIZE size) : m_hdc(::CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
        m_hPrev = m_hBitmap ? ::SelectObject(m_hdc, m_hBitmap) : nullptr;
    }
    ~CCanvas()
    {
        if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
        if (m_hBitmap) ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;

    [[nodiscard]] HDC Dc() const { return m_hdc; }
    // Null without memory.
    [[nodiscard]] BYTE* Bits() const { return static_cast<BYTE*>(m_pBits); }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
    void* m_pBits = nullptr;
};

} // namespace qel
