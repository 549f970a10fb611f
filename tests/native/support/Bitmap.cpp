// Pictures for the tests of the native build: what tests/support/Bitmap.h promises, on the stand-in for
// GDI. A picture is the list of what was painted, so that two that were painted alike are equal.
// Single pixels there are none: a test that asks for one fails, and is left out by name
// (tests/native/LeftOut.cmake).
#include "tests/support/Bitmap.h"

#include "tests/native/GdiDouble.h"

#include <gtest/gtest.h>

#include <algorithm>

CTestBitmap::CTestBitmap(int nWidth, int nHeight, COLORREF clrBackground)
    : m_hdc(::CreateCompatibleDC(nullptr)), m_hBitmap(::CreateBitmap(nWidth, nHeight, 1, 32, nullptr)),
      m_hPrev(::SelectObject(m_hdc, m_hBitmap)), m_pPixels(nullptr), m_nWidth(nWidth), m_nHeight(nHeight)
{
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
    ADD_FAILURE() << "there are no pixels here, neither at " << nX << "," << nY;
    return CLR_INVALID;
}

void CTestBitmap::Fill(COLORREF clr)
{
    gdi::LogPaintings(m_hdc);
    if (clr == RGB(255, 255, 255)) return;
    RECT rc = Box();
    const gdi::CNoFaults noFaults;
    const HBRUSH hBrush = ::CreateSolidBrush(clr);
    ::FillRect(m_hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
}

std::string FirstDifference(const CTestBitmap& expected, const CTestBitmap& actual)
{
    if (expected.Width() != actual.Width() || expected.Height() != actual.Height())
        return "sizes differ";
    const auto& wanted = gdi::Paintings(expected.Dc());
    const auto& painted = gdi::Paintings(actual.Dc());
    for (std::size_t n = 0; n < std::max(wanted.size(), painted.size()); ++n) {
        const std::string a = n < wanted.size() ? wanted[n] : "nothing";
        const std::string b = n < painted.size() ? painted[n] : "nothing";
        if (a != b) return "painting " + std::to_string(n) + ": " + b + ", expected " + a;
    }
    return "";
}

bool IsBlank(const CTestBitmap& bitmap)
{
    return gdi::Paintings(bitmap.Dc()).empty();
}

int CountPixels(const CTestBitmap&, COLORREF)
{
    ADD_FAILURE() << "there are no pixels here to count";
    return -1;
}

void PaintRegion(const CTestBitmap& bitmap, HRGN hRegion)
{
    ::FillRgn(bitmap.Dc(), hRegion, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
}

CTestSelect::CTestSelect(HDC hdc, HGDIOBJ hObject, bool bOwn)
    : m_hdc(hdc), m_hObject(hObject), m_hPrev(::SelectObject(hdc, hObject)), m_bOwn(bOwn)
{
}

CTestSelect::~CTestSelect()
{
    ::SelectObject(m_hdc, m_hPrev);
    if (m_bOwn) ::DeleteObject(m_hObject);
}

std::string DcState(HDC hdc)
{
    return gdi::State(hdc);
}
