#include "tests/endurance/Measure.h"

#include <windows.h>

#include <psapi.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr DWORD MAX_HEAPS = 64;
constexpr uint32_t MAX_PENS = 100000; // more than a process may hold

// Every block in use. The C library's own heap is among the heaps, so this is exact: a block that
// is lost is one block more for ever.
void WalkHeaps(Figures* pFigures)
{
    HANDLE heaps[MAX_HEAPS];
    const DWORD nHeaps = ::GetProcessHeaps(MAX_HEAPS, heaps);
    for (DWORD n = 0; n < nHeaps && n < MAX_HEAPS; ++n) {
        PROCESS_HEAP_ENTRY entry{};
        ::HeapLock(heaps[n]);
        while (::HeapWalk(heaps[n], &entry)) {
            if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
            ++pFigures->nHeapBlocks;
            pFigures->nHeapBytes += entry.cbData;
        }
        ::HeapUnlock(heaps[n]);
    }
}

// Wine answers 0 for PrivateUsage; PagefileUsage is the same figure under both systems. What Wine
// gives there are the pages in memory and swap that are the process's own.
uint64_t PrivateBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

// GetGuiResources always answers 0 under Wine, so the room is counted that is left below the limit
// of a process.
uint32_t PensThatCanBeMade()
{
    // Static: the counting itself is not to be seen in the other figures.
    static HPEN s_pens[MAX_PENS];
    uint32_t nPens = 0;
    while (nPens < MAX_PENS) {
        s_pens[nPens] = ::CreatePen(PS_SOLID, 1, RGB(nPens & 255, nPens >> 8 & 255, 7));
        if (!s_pens[nPens]) break;
        ++nPens;
    }
    for (uint32_t n = 0; n < nPens; ++n) ::DeleteObject(s_pens[n]);
    return nPens;
}

// GetProcessHandleCount answers 0 under Wine; but the lowest free number is the one that is given
// out.
uint64_t NextHandle()
{
    const HANDLE hEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ::CloseHandle(hEvent);
    return reinterpret_cast<uintptr_t>(hEvent);
}

void Exceeds(std::string* pText, const char* pszWhat, uint64_t nBefore, uint64_t nAfter,
             uint64_t nTolerance)
{
    if (nAfter <= nBefore + nTolerance) return;
    char szLine[160];
    std::snprintf(szLine, sizeof szLine, "%s%s grew by %llu, from %llu (tolerated: %llu)",
                  pText->empty() ? "" : "; ", pszWhat, nAfter - nBefore, nBefore, nTolerance);
    *pText += szLine;
}

} // namespace

Figures TakeFigures()
{
    Figures figures;
    figures.nPens = PensThatCanBeMade();
    figures.nHandle = NextHandle();
    figures.nPrivateBytes = PrivateBytes();
    WalkHeaps(&figures);
    return figures;
}

std::string BlindSpot()
{
    constexpr std::size_t SMALL = 24;
    constexpr std::size_t LARGE = 16 << 20;
    TakeFigures(); // what the system makes on first use
    const Figures before = TakeFigures();
    if (before.nPens == MAX_PENS) return "there is no limit to GDI objects";
    // Volatile, else the compiler sees that nobody uses the memory and asks for none.
    void* volatile pSmall = std::malloc(SMALL);
    char* volatile pLarge = static_cast<char*>(std::malloc(LARGE));
    const HPEN hPen = ::CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
    const HANDLE hEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    if (pLarge) std::memset(pLarge, 1, LARGE);
    const Figures with = TakeFigures();
    ::CloseHandle(hEvent);
    ::DeleteObject(hPen);
    std::free(pLarge);
    std::free(pSmall);
    const Figures after = TakeFigures();
    if (with.nHeapBlocks != before.nHeapBlocks + 2) return "a lost block is not seen";
    if (with.nHeapBytes < before.nHeapBytes + SMALL + LARGE) return "lost bytes are not seen";
    if (with.nPrivateBytes < before.nPrivateBytes + LARGE) return "private bytes are not seen";
    if (with.nPens + 1 != before.nPens) return "a lost pen is not seen";
    if (with.nHandle <= before.nHandle) return "a lost handle is not seen";
    const bool bBack = after.nHeapBlocks == before.nHeapBlocks &&
                       after.nHeapBytes == before.nHeapBytes && after.nPens == before.nPens &&
                       after.nHandle == before.nHandle;
    return bBack ? "" : "what was given back is still counted";
}

std::string Growth(const Figures& before, const Figures& after, const Tolerance& tolerance)
{
    std::string text;
    Exceeds(&text, "heap blocks", before.nHeapBlocks, after.nHeapBlocks, tolerance.nHeapBlocks);
    Exceeds(&text, "heap bytes", before.nHeapBytes, after.nHeapBytes, tolerance.nHeapBytes);
    Exceeds(&text, "private bytes", before.nPrivateBytes, after.nPrivateBytes,
            tolerance.nPrivateBytes);
    Exceeds(&text, "GDI objects", after.nPens, before.nPens, 0); // as many pens fewer
    Exceeds(&text, "the next handle", before.nHandle, after.nHandle, 0);
    return text;
}

std::string FiguresText(const Figures& figures)
{
    char szLine[160];
    std::snprintf(szLine, sizeof szLine,
                  "%6llu blocks %9llu bytes on the heaps, %10llu private bytes, room for %u "
                  "pens, next handle %llu",
                  figures.nHeapBlocks, figures.nHeapBytes, figures.nPrivateBytes, figures.nPens,
                  figures.nHandle);
    return szLine;
}
