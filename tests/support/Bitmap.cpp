#include "tests/support/Bitmap.h"

#include <algorithm>
#include <cstdio>

CTestBitmap::CTestBitmap(int nWidth, int nHeight, COLORREF clrBackground)
    : m_hdc(::CreateCompatibleDC(nullptr)), m_hBitmap(nullptr), m_hPrev(nullptr),
      m_pPixels(nullptr), m_nWidth(nWidth), m_nHeight(nHeight)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = nWidth;
    info.bmiHeader.biHeight = -nHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pBits = nullptr;
    m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0);
    m_pPixels = static_cast<uint32_t*>(pBits);
    m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    Fill(clrBackground);
}

CTestBitmap::~CTestBitmap()
{
    ::SelectObject(m_hdc, m_hPrev);
    ::DeleteObject(m_hBitmap);
    ::DeleteDC(m_hdc);
}

COLORREF CTestBitmap::At(int nX, int nY) const
{
    ::GdiFlush();
    const uint32_t n = m_pPixels[nY * m_nWidth + nX];
    return RGB((n >> 16) & 0xFF, (n >> 8) & 0xFF, n & 0xFF);
}

// But for the alpha, which is no colour.
bool CTestBitmap::HasPixelsOf(const CTestBitmap& other) const
{
    return std::equal(m_pPixels, m_pPixels + m_nWidth * m_nHeight, other.m_pPixels,
                      [](uint32_t a, uint32_t b) { return ((a ^ b) & 0xFFFFFF) == 0; });
}

void CTestBitmap::Fill(COLORREF clr)
{
    ::GdiFlush();
    const uint32_t n =
        static_cast<uint32_t>(GetRValue(clr) << 16 | GetGValue(clr) << 8 | GetBValue(clr));
    for (int i = 0; i < m_nWidth * m_nHeight; ++i) m_pPixels[i] = n;
}

std::string FirstDifference(const CTestBitmap& expected, const CTestBitmap& actual)
{
    if (expected.Width() != actual.Width() || expected.Height() != actual.Height())
        return "sizes differ";
    ::GdiFlush();
    if (actual.HasPixelsOf(expected)) return "";
    for (int y = 0; y < expected.Height(); ++y) {
        for (int x = 0; x < expected.Width(); ++x) {
            if (expected.At(x, y) == actual.At(x, y)) continue;
            char sz[100];
            std::snprintf(sz, sizeof sz, "pixel %d,%d: %08lx, expected %08lx", x, y,
                          static_cast<unsigned long>(actual.At(x, y)),
                          static_cast<unsigned long>(expected.At(x, y)));
            return sz;
        }
    }
    return "";
}

bool IsBlank(const CTestBitmap& bitmap)
{
    return CountPixels(bitmap, bitmap.At(0, 0)) == bitmap.Width() * bitmap.Height();
}

int CountPixels(const CTestBitmap& bitmap, COLORREF clr)
{
    int nCount = 0;
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x) nCount += bitmap.At(x, y) == clr;
    return nCount;
}

std::string DcState(HDC hdc)
{
    POINT pt{};
    ::GetCurrentPositionEx(hdc, &pt);
    POINT ptOrigin{};
    ::GetBrushOrgEx(hdc, &ptOrigin);
    RECT rcClip{};
    const int nClip = ::GetClipBox(hdc, &rcClip);
    char sz[512];
    std::snprintf(sz, sizeof sz,
                  "pen %p brush %p font %p bitmap %p mode %d back %06lx text %06lx rop %d poly %d "
                  "arc %d at %ld,%ld align %u origin %ld,%ld clip %d %ld,%ld,%ld,%ld map %d "
                  "stretch %d",
                  static_cast<void*>(::GetCurrentObject(hdc, OBJ_PEN)),
                  static_cast<void*>(::GetCurrentObject(hdc, OBJ_BRUSH)),
                  static_cast<void*>(::GetCurrentObject(hdc, OBJ_FONT)),
                  static_cast<void*>(::GetCurrentObject(hdc, OBJ_BITMAP)), ::GetBkMode(hdc),
                  static_cast<unsigned long>(::GetBkColor(hdc)),
                  static_cast<unsigned long>(::GetTextColor(hdc)), ::GetROP2(hdc),
                  ::GetPolyFillMode(hdc), ::GetArcDirection(hdc), static_cast<long>(pt.x),
                  static_cast<long>(pt.y), ::GetTextAlign(hdc), static_cast<long>(ptOrigin.x),
                  static_cast<long>(ptOrigin.y), nClip, static_cast<long>(rcClip.left),
                  static_cast<long>(rcClip.top), static_cast<long>(rcClip.right),
                  static_cast<long>(rcClip.bottom), ::GetMapMode(hdc), ::GetStretchBltMode(hdc));
    return sz;
}
