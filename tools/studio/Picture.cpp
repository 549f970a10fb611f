// The bitmap; see the header.
#include "tools/studio/Picture.h"

namespace studio {

CPicture::~CPicture()
{
    Drop();
}

int CPicture::SetSize(SIZE size)
{
    if (m_hdc && size.cx == m_size.cx && size.cy == m_size.cy) return 1;
    Drop();
    if (size.cx <= 0 || size.cy <= 0) return 0;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    m_hdc = ::CreateCompatibleDC(nullptr);
    m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
    if (!m_hBitmap) {
        Drop();
        return 0;
    }
    m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    m_size = size;
    return 1;
}

void CPicture::Drop()
{
    if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
    if (m_hBitmap) ::DeleteObject(m_hBitmap);
    if (m_hdc) ::DeleteDC(m_hdc);
    m_hPrev = nullptr;
    m_hBitmap = nullptr;
    m_hdc = nullptr;
    m_pBits = nullptr;
    m_size = {0, 0};
}

} // namespace studio
