// A bitmap in memory to draw on.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>

class CCanvas {
public:
    explicit CCanvas(SIZE size) : m_size(size), m_hdc(::CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
        m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    }
    ~CCanvas()
    {
        ::SelectObject(m_hdc, m_hPrev);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;

    [[nodiscard]] HDC Dc() const { return m_hdc; }
    void Clear() const
    {
        ::GdiFlush();
        std::memset(m_pBits, 0xFF, Bytes());
    }
    [[nodiscard]] const DWORD* Pixels() const
    {
        ::GdiFlush();
        return static_cast<const DWORD*>(m_pBits);
    }
    [[nodiscard]] std::size_t Bytes() const
    {
        return static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy) * 4;
    }

private:
    SIZE m_size;
    HDC m_hdc;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
    void* m_pBits = nullptr;
};
