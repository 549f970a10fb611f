// A host built with the Microsoft C++ ABI: fills a bitmap with the 38 styles of the exported class
// and writes it as host_ms.bmp. Constructors, destructor and virtual table come from the same
// QELEngine.dll that MinGW hosts use. Built with Visual Studio, in this folder:
//     cl /EHsc /I../../../include host.cpp QELEngine.lib gdi32.lib user32.lib /link /LIBPATH:../../../build/i686/lib
#include <windows.h>

#include "QELEngine.h"
#ifdef QEL_FREESTANDING_WINDOWS_H // the windows.h beside this file, where there is no SDK
#include "tests/abi/Freestanding.h"
#endif

namespace {

const int CELL = 40;
const int COLUMNS = 10;
const int ROWS = 4;
const LONG WIDTH = CELL * COLUMNS;
const LONG HEIGHT = CELL * ROWS;

// A style that remembers its place: a class of the host's own, derived across the DLL's border.
class CSwatch : public CQELDraft {
public:
    explicit CSwatch(int nStyle) : CQELDraft(static_cast<tagDRAFTSTYLE>(nStyle)), m_nPlace(nStyle)
    {
    }

    bool Paint(HDC hdc)
    {
        RECT rc;
        rc.left = m_nPlace % COLUMNS * CELL;
        rc.top = m_nPlace / COLUMNS * CELL;
        rc.right = rc.left + CELL - 2;
        rc.bottom = rc.top + CELL - 2;
        HBRUSH hBrush = nullptr;
        // The engine owns the brush; it lives as long as this object.
        if (!GetDraftBrush(hBrush, &rc, RGB(32, 64, 160), RGB(255, 240, 200))) return false;
        ::SetTextColor(hdc, RGB(32, 64, 160)); // hatches are painted in these two
        ::SetBkColor(hdc, RGB(255, 240, 200));
        return ::FillRect(hdc, &rc, hBrush) != 0;
    }

private:
    int m_nPlace;
};

bool Write(HANDLE hFile, const void* pData, DWORD nSize)
{
    DWORD nWritten = 0;
    return ::WriteFile(hFile, pData, nSize, &nWritten, nullptr) && nWritten == nSize;
}

bool WriteBitmap(const BITMAPINFOHEADER& header, const void* pBits)
{
    const DWORD nBits = WIDTH * HEIGHT * 4;
    const DWORD nStart = 14 + sizeof header;
    const WORD file[] = {0x4D42,
                         static_cast<WORD>(nStart + nBits),
                         static_cast<WORD>((nStart + nBits) >> 16),
                         0,
                         0,
                         static_cast<WORD>(nStart),
                         0};
    const HANDLE hFile =
        ::CreateFileA("host_ms.bmp", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (hFile == INVALID_HANDLE_VALUE) return false;
    const bool bWritten = Write(hFile, file, sizeof file) && Write(hFile, &header, sizeof header) &&
                          Write(hFile, pBits, nBits);
    return ::CloseHandle(hFile) && bWritten;
}

} // namespace

extern "C" int main()
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = WIDTH;
    info.bmiHeader.biHeight = -HEIGHT;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    void* pBits = nullptr;
    const HBITMAP hBitmap = ::CreateDIBSection(hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hBitmap);

    int nPainted = 0;
    for (int nStyle = 0; nStyle < DRAFT_COUNT; ++nStyle) {
        CQELDraft* pDraft = new CSwatch(nStyle);
        nPainted += static_cast<CSwatch*>(pDraft)->Paint(hdc) ? 1 : 0;
        delete pDraft; // by the virtual destructor
    }
    ::GdiFlush();
    const bool bWritten = WriteBitmap(info.bmiHeader, pBits);

    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hBitmap);
    ::DeleteDC(hdc);
    const bool bGood = nPainted == DRAFT_COUNT && bWritten;
    const char* pszSays = bGood ? "38 styles painted\r\n" : "FAILED\r\n";
    Write(::GetStdHandle(STD_OUTPUT_HANDLE), pszSays, bGood ? 19 : 8);
    return bGood ? 0 : 1;
}
