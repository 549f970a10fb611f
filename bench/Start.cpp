// What a person waits for who starts the Studio, and what it takes of a processor while it plays.
// On a display; bench/studio.py gives it one.
//   qel_bench_start turns TURNS BAR PROGRAM DRAWING COLOR FLOOR
// How long the program takes from its start to its first picture on the screen, against one with an
// empty window, by turns: BAR milliseconds more. The picture is there when the middle of the canvas
// has the COLOR (RRGGBB) of the drawing.
//   qel_bench_start play SECONDS - PROGRAM DRAWING COLOR -
// Starts it once, gives all values signals and lets them play for so long; says when they do.
#include "bench/Colors.h"
#include "bench/Turns.h"
#include "tools/studio/Resource.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr wchar_t CANVAS[] = L"QELStudioCanvas";
constexpr double PATIENCE = 60e9; // nanoseconds
constexpr double MILLISECOND = 1e6;

struct Search {
    DWORD nProcess;
    HWND hFound;
};

BOOL CALLBACK FindWindowOf(HWND hWnd, LPARAM lParam)
{
    auto* pSearch = reinterpret_cast<Search*>(lParam); // NOLINT(performance-no-int-to-ptr)
    DWORD nProcess = 0;
    ::GetWindowThreadProcessId(hWnd, &nProcess);
    if (nProcess == pSearch->nProcess && ::IsWindowVisible(hWnd)) pSearch->hFound = hWnd;
    return !pSearch->hFound;
}

HWND WindowOf(DWORD nProcess)
{
    Search search{nProcess, nullptr};
    ::EnumWindows(FindWindowOf, reinterpret_cast<LPARAM>(&search));
    return search.hFound;
}

// What the screen itself shows in the middle of a window.
COLORREF MiddleOf(HWND hWnd)
{
    RECT rc{};
    ::GetClientRect(hWnd, &rc);
    POINT pt{rc.right / 2, rc.bottom / 2};
    ::ClientToScreen(hWnd, &pt);
    HDC hdc = ::GetDC(nullptr);
    const COLORREF clr = ::GetPixel(hdc, pt.x, pt.y);
    ::ReleaseDC(nullptr, hdc);
    return clr;
}

class CProgram {
public:
    explicit CProgram(std::wstring line)
    {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &start, &m_process))
            Fail("a program cannot be started");
    }
    ~CProgram()
    {
        ::PostMessageW(m_hWnd, WM_CLOSE, 0, 0);
        if (::WaitForSingleObject(m_process.hProcess, 20000) != WAIT_OBJECT_0)
            Fail("a program does not end");
        ::CloseHandle(m_process.hThread);
        ::CloseHandle(m_process.hProcess);
    }
    CProgram(const CProgram&) = delete;
    CProgram& operator=(const CProgram&) = delete;

    // Waits until the screen shows the colour in the middle of its window, or of one in it.
    HWND AwaitPicture(const wchar_t* pszChild, COLORREF clr)
    {
        const double fEnd = Now() + PATIENCE;
        while (Now() < fEnd) {
            m_hWnd = WindowOf(m_process.dwProcessId);
            HWND hShown =
                m_hWnd && pszChild ? ::FindWindowExW(m_hWnd, nullptr, pszChild, nullptr) : m_hWnd;
            if (hShown && MiddleOf(hShown) == clr) return m_hWnd;
            ::Sleep(1);
        }
        Fail("no picture comes");
    }

private:
    [[noreturn]] static void Fail(const char* pszWhy)
    {
        std::printf("%s\n", pszWhy);
        std::exit(2);
    }

    PROCESS_INFORMATION m_process{};
    HWND m_hWnd = nullptr;
};

COLORREF ColorOf(const wchar_t* pszText)
{
    const auto n = static_cast<DWORD>(std::wcstoul(pszText, nullptr, 16));
    return RGB(n >> 16 & 0xFF, n >> 8 & 0xFF, n & 0xFF);
}

double TimeToPicture(const std::wstring& line, const wchar_t* pszChild, COLORREF clr)
{
    const double fStart = Now();
    CProgram program(line);
    program.AwaitPicture(pszChild, clr);
    return Now() - fStart;
}

int MeasureStart(int nTurns, double fBar, const std::wstring& line, COLORREF clr,
                 const std::wstring& floor)
{
    const Measured measured = Compare(
        nTurns, [&] { return TimeToPicture(line, CANVAS, clr); },
        [&] { return TimeToPicture(floor, nullptr, EMPTY_COLOR); });
    CTable table;
    table.Difference("start of the Studio to its picture / an empty window (ms)", measured,
                     MILLISECOND, fBar);
    return table.Missed();
}

int Play(int nSeconds, const std::wstring& line, COLORREF clr)
{
    constexpr DWORD SECOND = 1000;
    CProgram program(line);
    HWND hWnd = program.AwaitPicture(CANVAS, clr);
    ::SendMessageW(hWnd, WM_COMMAND, IDM_SIGNALS_ALL, 0);
    ::SendMessageW(hWnd, WM_COMMAND, IDM_PLAY, 0);
    std::printf("plays\n");
    std::fflush(stdout);
    ::Sleep(static_cast<DWORD>(nSeconds) * SECOND);
    return 0;
}

} // namespace

int wmain(int nArgs, wchar_t** ppszArgs)
{
    constexpr int ARGS = 8;
    if (nArgs != ARGS) return 2;
    const std::wstring line = std::wstring(ppszArgs[4]) + L" " + ppszArgs[5];
    const COLORREF clr = ColorOf(ppszArgs[6]);
    const int nCount = _wtoi(ppszArgs[2]);
    if (std::wstring(ppszArgs[1]) == L"play") return Play(nCount, line, clr);
    return MeasureStart(nCount, std::wcstod(ppszArgs[3], nullptr), line, clr, ppszArgs[7]);
}
