// What some tests call and a native program cannot have: metafiles of the system's own form, and
// the tables of a Windows program. The calls fail; the tests that need them are left out by name
// (tests/native/LeftOut.cmake). Clocks run: some tests end when something takes too long.
#include "tests/native/KernelDouble.h"

#include <windows.h>

#include <string>

DWORD WINAPI GetTickCount()
{
    return static_cast<DWORD>(GetTickCount64());
}

HDC WINAPI CreateEnhMetaFileA(HDC, const char*, const RECT*, const char*)
{
    return nullptr;
}

HENHMETAFILE WINAPI CloseEnhMetaFile(HDC)
{
    return nullptr;
}

BOOL WINAPI EnumEnhMetaFile(HDC, HENHMETAFILE, ENHMFENUMPROC, void*, const RECT*)
{
    return FALSE;
}

BOOL WINAPI DeleteEnhMetaFile(HENHMETAFILE)
{
    return FALSE;
}

HMODULE WINAPI GetModuleHandleA(const char*)
{
    return nullptr;
}

BOOL WINAPI SetPixelV(HDC hdc, int x, int y, COLORREF clr)
{
    return SetPixel(hdc, x, y, clr) != CLR_INVALID;
}

BOOL WINAPI CopyFileA(const char* pszFrom, const char* pszTo, BOOL bFailIfThere)
{
    std::string bytes;
    if (!kernel::GetFile(pszFrom, &bytes)) return FALSE;
    if (bFailIfThere && kernel::GetFile(pszTo, nullptr)) return FALSE;
    return kernel::PutFile(pszTo, bytes);
}
