// Counts the calls of the system that a module makes, through its import table.
#pragma once

#include "tools/ImportTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

// While one lives, lines, patterns and bitmaps of the module go by way of these counters.
class CCountedCalls {
public:
    struct Counts {
        std::size_t nLines;        // LineTo
        std::size_t nPatternBytes; // of bitmaps for brushes
        std::size_t nMonoBytes;    // of black-and-white bitmaps
        std::size_t nTexts;
        int nWidestPen;
    };

    explicit CCountedCalls(HMODULE hModule)
    {
        s_counts = {};
        Put(hModule, "LineTo", &Line, &s_pfnLine);
        Put(hModule, "CreateDIBPatternBrushPt", &Pattern, &s_pfnPattern);
        Put(hModule, "CreateBitmap", &Bitmap, &s_pfnBitmap);
        Put(hModule, "DrawTextA", &Text, &s_pfnText);
        Put(hModule, "CreatePen", &Pen, &s_pfnPen);
    }
    ~CCountedCalls()
    {
        while (m_nPlaces)
            SetImport(m_places[m_nPlaces - 1].pEntry, m_places[m_nPlaces - 1].nWas), --m_nPlaces;
    }
    CCountedCalls(const CCountedCalls&) = delete;
    CCountedCalls& operator=(const CCountedCalls&) = delete;

    static const Counts& Seen() { return s_counts; }
    static void Restart() { s_counts = {}; }

private:
    template <class Function>
    void Put(HMODULE hModule, const char* pszName, Function pfnMine, Function* ppfnReal)
    {
        ULONG_PTR* pEntry = FindImport(hModule, pszName);
        ASSERT_NE(nullptr, pEntry) << pszName;
        *ppfnReal = reinterpret_cast<Function>(*pEntry);
        m_places[m_nPlaces++] = {pEntry, *pEntry};
        ASSERT_TRUE(SetImport(pEntry, reinterpret_cast<ULONG_PTR>(pfnMine)));
    }

    static BOOL WINAPI Line(HDC hdc, int x, int y)
    {
        ++s_counts.nLines;
        return s_pfnLine(hdc, x, y);
    }
    static HBRUSH WINAPI Pattern(const void* pPacked, UINT nUsage)
    {
        const auto* p = static_cast<const BITMAPINFOHEADER*>(pPacked);
        s_counts.nPatternBytes += static_cast<std::size_t>(p->biWidth) *
                                  static_cast<std::size_t>(std::abs(p->biHeight)) * 4;
        return s_pfnPattern(pPacked, nUsage);
    }
    static HBITMAP WINAPI Bitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBits, const void* p)
    {
        s_counts.nMonoBytes +=
            static_cast<std::size_t>(nWidth) * static_cast<std::size_t>(nHeight) / 8;
        return s_pfnBitmap(nWidth, nHeight, nPlanes, nBits, p);
    }
    static int WINAPI Text(HDC hdc, LPCSTR psz, int nLength, LPRECT prc, UINT nFormat)
    {
        ++s_counts.nTexts;
        return s_pfnText(hdc, psz, nLength, prc, nFormat);
    }
    static HPEN WINAPI Pen(int nStyle, int nWidth, COLORREF clr)
    {
        if (nWidth > s_counts.nWidestPen) s_counts.nWidestPen = nWidth;
        return s_pfnPen(nStyle, nWidth, clr);
    }

    struct Place {
        ULONG_PTR* pEntry;
        ULONG_PTR nWas;
    };
    Place m_places[5]{};
    int m_nPlaces = 0;

    inline static Counts s_counts{};
    inline static decltype(&Line) s_pfnLine = nullptr;
    inline static decltype(&Pattern) s_pfnPattern = nullptr;
    inline static decltype(&Bitmap) s_pfnBitmap = nullptr;
    inline static decltype(&Text) s_pfnText = nullptr;
    inline static decltype(&Pen) s_pfnPen = nullptr;
};
