// Pictures for the tests: 32-bit top-down bitmaps with exact pixels, and their comparison.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

class CTestBitmap {
public:
    CTestBitmap(int nWidth, int nHeight, COLORREF clrBackground = RGB(255, 255, 255));
    ~CTestBitmap();
    CTestBitmap(const CTestBitmap&) = delete;
    CTestBitmap& operator=(const CTestBitmap&) = delete;

    HDC Dc() const { return m_hdc; }
    int Width() const { return m_nWidth; }
    int Height() const { return m_nHeight; }
    RECT Box() const { return {0, 0, m_nWidth, m_nHeight}; }
    COLORREF At(int nX, int nY) const; // as a COLORREF
    void Fill(COLORREF clr);
    bool HasPixelsOf(const CTestBitmap& other) const; // of the same size; after GdiFlush

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev;
    uint32_t* m_pPixels;
    int m_nWidth;
    int m_nHeight;
};

// "" when the pictures agree; else the first pixel that differs.
std::string FirstDifference(const CTestBitmap& expected, const CTestBitmap& actual);
// Whether all pixels are of one colour: two empty pictures would agree.
bool IsBlank(const CTestBitmap& bitmap);
int CountPixels(const CTestBitmap& bitmap, COLORREF clr);

// A region's pixels as a picture: black inside, white outside.
void PaintRegion(const CTestBitmap& bitmap, HRGN hRegion);

// The tests' own guards: the engine's are what is on trial.
class CTestSelect { // selects an object and puts the previous one back; deletes it if it is to own
                    // it
public:
    CTestSelect(HDC hdc, HGDIOBJ hObject, bool bOwn);
    ~CTestSelect();
    CTestSelect(const CTestSelect&) = delete;
    CTestSelect& operator=(const CTestSelect&) = delete;

private:
    HDC m_hdc;
    HGDIOBJ m_hObject;
    HGDIOBJ m_hPrev;
    bool m_bOwn;
};

// All state of a device context that a drawing call could leave changed, as text to compare.
std::string DcState(HDC hdc);
// A state to find again after drawing: nothing draws with this position and these colours.
inline void MarkState(HDC hdc)
{
    ::SetBkMode(hdc, OPAQUE);
    ::MoveToEx(hdc, 3, 4, nullptr);
    ::SetBkColor(hdc, RGB(1, 2, 3));
    ::SetTextColor(hdc, RGB(4, 5, 6));
}

// How many GDI objects can still be made. The system tells no counts, but a process has a fixed
// number of places: what was not given back is missing here.
constexpr std::size_t MORE_OBJECTS_THAN_ALL = 200000; // than a process may hold
std::size_t SpareObjects(std::size_t nMost = MORE_OBJECTS_THAN_ALL);
