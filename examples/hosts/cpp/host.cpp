// A host in C++ without a window: a live meter drawn into a bitmap in memory, value after value,
// and written as a file. It is called like c/host.c and gives the same pictures, but draws as a
// display does: once fully, and then for each further value only what moves. What stands behind the
// drawing is painted with the exported hatch-brush class.
//
//     host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [ID=VALUE | ID.SELECTOR=VALUE | gradient=KIND]...
//
// Built with MinGW, in this folder:
//     i686-w64-mingw32-g++ -std=c++17 host.cpp -I../../../include -L../../../build/i686/lib -lQELEngine -lgdi32 -static -o host.exe
#include "QELEngine.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

constexpr COLORREF GREY = RGB(0xC0, 0xC0, 0xC0);
constexpr COLORREF WHITE = RGB(0xFF, 0xFF, 0xFF);
constexpr int FONT_HEIGHT = 16;         // texts take the face of this font, and choose their size
constexpr LONG PIXELS_PER_METRE = 3780; // 96 dots per inch

// The engine with one drawing, for as long as the object lives.
class CDrawing {
public:
    explicit CDrawing(const char* pszPath) : m_hEngine(CreateQELEngine())
    {
        if (QELOpenFile(m_hEngine, pszPath)) return;
        DestroyQELEngine(m_hEngine);
        throw std::runtime_error("the drawing cannot be opened");
    }
    ~CDrawing() { DestroyQELEngine(m_hEngine); }
    CDrawing(const CDrawing&) = delete;
    CDrawing& operator=(const CDrawing&) = delete;

    [[nodiscard]] HQELENGINE Engine() const { return m_hEngine; }

private:
    HQELENGINE m_hEngine;
};

// A bitmap that can be drawn on, with a font selected. Its rows run from the bottom up, as in a
// file.
class CCanvas {
public:
    CCanvas(int nWidth, int nHeight, const char* pszFont) : m_hdc(::CreateCompatibleDC(nullptr))
    {
        m_info.biSize = sizeof m_info;
        m_info.biWidth = nWidth;
        m_info.biHeight = nHeight;
        m_info.biPlanes = 1;
        m_info.biBitCount = 32;
        m_info.biSizeImage = static_cast<DWORD>(nWidth) * static_cast<DWORD>(nHeight) * 4;
        m_info.biXPelsPerMeter = PIXELS_PER_METRE;
        m_info.biYPelsPerMeter = PIXELS_PER_METRE;
        m_hBitmap = ::CreateDIBSection(m_hdc, reinterpret_cast<const BITMAPINFO*>(&m_info),
                                       DIB_RGB_COLORS, &m_pBits, nullptr, 0);
        m_hFont = // smoothed: two colours lose strokes in small sizes
            ::CreateFontA(FONT_HEIGHT, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0,
                          CLEARTYPE_QUALITY, 0, pszFont);
        m_hPrevBitmap = ::SelectObject(m_hdc, m_hBitmap);
        m_hPrevFont = ::SelectObject(m_hdc, m_hFont);
    }
    ~CCanvas()
    {
        ::SelectObject(m_hdc, m_hPrevFont);
        ::SelectObject(m_hdc, m_hPrevBitmap);
        ::DeleteObject(m_hFont);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;

    [[nodiscard]] HDC Dc() const { return m_hdc; }
    [[nodiscard]] bool IsMade() const { return m_pBits != nullptr; }
    [[nodiscard]] RECT Rect() const { return {0, 0, m_info.biWidth, m_info.biHeight}; }

    [[nodiscard]] bool Write(const char* pszPath) const
    {
        BITMAPFILEHEADER header{};
        header.bfType = 0x4D42; // "BM"
        header.bfOffBits = sizeof header + sizeof m_info;
        header.bfSize = header.bfOffBits + m_info.biSizeImage;
        ::GdiFlush(); // GDI may still hold calls back; the bits are read directly
        std::ofstream file(pszPath, std::ios::binary);
        file.write(reinterpret_cast<const char*>(&header), sizeof header);
        file.write(reinterpret_cast<const char*>(&m_info), sizeof m_info);
        file.write(static_cast<const char*>(m_pBits), m_info.biSizeImage);
        file.close();
        return file.good();
    }

private:
    HDC m_hdc;
    BITMAPINFOHEADER m_info{};
    void* m_pBits = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HFONT m_hFont = nullptr;
    HGDIOBJ m_hPrevBitmap = nullptr;
    HGDIOBJ m_hPrevFont = nullptr;
};

// Fills a rectangle in a fill style. The style's object owns the brush, so it lives until the
// painting is done; hatches take their two colours from the device context.
bool Fill(HDC hdc, RECT rc, tagDRAFTSTYLE nStyle, COLORREF clr1, COLORREF clr2)
{
    CQELDraft draft(nStyle);
    HBRUSH hBrush = nullptr;
    if (!draft.GetDraftBrush(hBrush, &rc, clr1, clr2)) return false;
    const COLORREF clrText = ::SetTextColor(hdc, clr1);
    const COLORREF clrBack = ::SetBkColor(hdc, clr2);
    ::FillRect(hdc, &rc, hBrush);
    ::SetBkColor(hdc, clrBack);
    ::SetTextColor(hdc, clrText);
    return true;
}

// One display: it knows what has to be drawn.
class CDisplay {
public:
    CDisplay(const CDrawing& drawing, const CCanvas& canvas)
        : m_hEngine(drawing.Engine()), m_canvas(canvas)
    {
        const RECT rc = canvas.Rect();
        QELSetQELRect(m_hEngine, &rc);
    }

    void SetBackground(tagDRAFTSTYLE nStyle)
    {
        m_nBackground = nStyle;
        m_bWhole = true;
    }

    // "ID=VALUE" moves something, so what moves is drawn anew; "ID.SELECTOR=VALUE" changes how
    // things look, which the next drawing shows, and that is a full one.
    void Apply(const std::string& setting)
    {
        const std::string value = setting.substr(setting.find('=') + 1);
        char* pszAt = nullptr;
        const DWORD nId = std::strtoul(setting.c_str(), &pszAt, 10);
        DWORD nSelector = QEL_SEL_VALUE;
        if (*pszAt == '.') nSelector = std::strtoul(pszAt + 1, &pszAt, 10);
        if (*pszAt != '=') throw std::runtime_error(setting + ": not a setting");
        const bool bReal = value.find('.') != std::string::npos;
        const int bTaken =
            bReal
                ? QELSetScaleParamf(m_hEngine, nId, nSelector, std::strtof(value.c_str(), nullptr))
                : QELSetScaleParam(m_hEngine, nId, nSelector,
                                   static_cast<DWORD>(std::strtol(value.c_str(), nullptr, 0)));
        if (!bTaken) throw std::runtime_error(setting + ": nothing in the drawing takes this");
        if (nSelector == QEL_SEL_VALUE)
            Draw();
        else
            m_bWhole = true;
    }

    // Without QEL_DRAW_FULL the engine paints over the picture of last time, which is why the
    // canvas is kept and the background painted for full drawings alone.
    void Draw()
    {
        const RECT rc = m_canvas.Rect();
        if (m_bWhole && !Fill(m_canvas.Dc(), rc, m_nBackground, WHITE, GREY))
            throw std::runtime_error("there is no such gradient");
        if (!QELDraw(m_hEngine, m_canvas.Dc(), &rc, m_bWhole ? QEL_DRAW_FULL : 0))
            throw std::runtime_error("the drawing cannot be drawn");
        m_bWhole = false;
    }

    void Finish()
    {
        if (m_bWhole) Draw();
    }

private:
    HQELENGINE m_hEngine;
    const CCanvas& m_canvas;
    tagDRAFTSTYLE m_nBackground = DRAFT_SOLID_BACK;
    bool m_bWhole = true;
};

void Run(int nArguments, char** ppszArguments)
{
    const CDrawing drawing(ppszArguments[1]);
    const CCanvas canvas(std::atoi(ppszArguments[3]), std::atoi(ppszArguments[4]),
                         ppszArguments[5]);
    if (!canvas.IsMade()) throw std::runtime_error("there is no picture of this size");
    CDisplay display(drawing, canvas);
    for (int n = 6; n < nArguments; ++n) {
        const std::string setting = ppszArguments[n];
        if (setting.rfind("gradient=", 0) == 0)
            display.SetBackground(
                static_cast<tagDRAFTSTYLE>(DRAFT_GRADIENT + 2 * std::stoi(setting.substr(9))));
        else
            display.Apply(setting);
    }
    display.Finish();
    if (!canvas.Write(ppszArguments[2])) throw std::runtime_error("the picture cannot be written");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 6) {
        std::fprintf(stderr, "host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]\n");
        return 2;
    }
    try {
        Run(argc, argv);
    } catch (const std::exception& trouble) {
        std::fprintf(stderr, "host: %s\n", trouble.what());
        return 1;
    }
    return 0;
}
