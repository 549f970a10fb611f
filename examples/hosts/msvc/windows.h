/* A stand-in for the Windows SDK's header, with no more than the hosts in this folder and
 * QELEngine.h use: it lets a compiler with the Microsoft ABI build them where no SDK is installed.
 * With an SDK leave this folder out of the include path. */
#ifndef QEL_FREESTANDING_WINDOWS_H
#define QEL_FREESTANDING_WINDOWS_H

#define WINAPI __stdcall
#define FALSE 0
#define TRUE 1

typedef int BOOL;
typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef unsigned int UINT;
typedef unsigned long DWORD;
typedef long LONG;
typedef DWORD COLORREF;
typedef void* HANDLE;
typedef void* HGDIOBJ;
#if defined(_WIN64)
typedef unsigned long long SIZE_T;
#else
typedef unsigned int SIZE_T;
#endif

#define DECLARE_HANDLE(name)                                                                       \
    struct name##__ {                                                                              \
        int unused;                                                                                \
    };                                                                                             \
    typedef struct name##__* name
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HBITMAP);

typedef struct tagRECT {
    LONG left, top, right, bottom;
} RECT;
typedef struct tagPOINT {
    LONG x, y;
} POINT;
typedef struct tagSIZE {
    LONG cx, cy;
} SIZE;
typedef struct tagBITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth, biHeight;
    WORD biPlanes, biBitCount;
    DWORD biCompression, biSizeImage;
    LONG biXPelsPerMeter, biYPelsPerMeter;
    DWORD biClrUsed, biClrImportant;
} BITMAPINFOHEADER;
typedef struct tagBITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    DWORD bmiColors[1];
} BITMAPINFO;

#define RGB(r, g, b) ((COLORREF)((BYTE)(r) | (WORD)((BYTE)(g)) << 8 | (DWORD)((BYTE)(b)) << 16))
#define STD_OUTPUT_HANDLE ((DWORD)-11)
#define GENERIC_WRITE 0x40000000UL
#define CREATE_ALWAYS 2
#define INVALID_HANDLE_VALUE ((HANDLE)(-1LL))
#define DIB_RGB_COLORS 0
#define OBJ_BRUSH 2

#if defined(__cplusplus)
extern "C" {
#endif
HANDLE WINAPI GetProcessHeap(void);
void* WINAPI HeapAlloc(HANDLE, DWORD, SIZE_T);
BOOL WINAPI HeapFree(HANDLE, DWORD, void*);
BOOL WINAPI HeapValidate(HANDLE, DWORD, const void*);
SIZE_T WINAPI HeapSize(HANDLE, DWORD, const void*);
HANDLE WINAPI GetStdHandle(DWORD);
HANDLE WINAPI CreateFileA(const char*, DWORD, DWORD, void*, DWORD, DWORD, HANDLE);
BOOL WINAPI WriteFile(HANDLE, const void*, DWORD, DWORD*, void*);
BOOL WINAPI CloseHandle(HANDLE);
BOOL WINAPI DeleteFileA(const char*);
__declspec(noreturn) void WINAPI ExitProcess(UINT);
HDC WINAPI CreateCompatibleDC(HDC);
BOOL WINAPI DeleteDC(HDC);
HBITMAP WINAPI CreateDIBSection(HDC, const BITMAPINFO*, UINT, void**, HANDLE, DWORD);
HGDIOBJ WINAPI SelectObject(HDC, HGDIOBJ);
BOOL WINAPI DeleteObject(HGDIOBJ);
HBRUSH WINAPI CreateSolidBrush(COLORREF);
DWORD WINAPI GetObjectType(HGDIOBJ);
COLORREF WINAPI SetTextColor(HDC, COLORREF);
COLORREF WINAPI SetBkColor(HDC, COLORREF);
BOOL WINAPI GdiFlush(void);
int WINAPI FillRect(HDC, const RECT*, HBRUSH);
#if defined(__cplusplus)
}
#endif

#endif
