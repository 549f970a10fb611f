/*
 * A host in C without a window: draws a drawing into a bitmap in memory and writes it as a file.
 *
 *     host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]
 *
 * A setting is one of these; values with a point are real numbers:
 *     ID=VALUE            the current value of the meter or scale with that id
 *     ID.SELECTOR=VALUE   another of its properties, by the number of QEL_SEL_...
 *     gradient=KIND       a gradient (0 to 13) behind the drawing instead of plain grey
 *
 * Built with MinGW, in this folder:
 *     i686-w64-mingw32-gcc host.c -I../../../include -L../../../build/i686/lib -lQELEngine -lgdi32 -o host.exe
 */
#include "QELEngine.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define GREY RGB(0xC0, 0xC0, 0xC0)
#define WHITE RGB(0xFF, 0xFF, 0xFF)
#define FONT_HEIGHT 16        /* texts take the face of this font and choose their own size */
#define PIXELS_PER_METRE 3780 /* 96 dots per inch, for programs that print the picture */

/* A bitmap that can be drawn on. Its rows run from the bottom up, as in a file. */
typedef struct {
    HDC hdc;
    HBITMAP hBitmap;
    HGDIOBJ hPrev;
    BITMAPINFOHEADER info;
    void* pBits;
} CANVAS;

static int MakeCanvas(CANVAS* pCanvas, int nWidth, int nHeight)
{
    memset(pCanvas, 0, sizeof *pCanvas);
    pCanvas->info.biSize = sizeof pCanvas->info;
    pCanvas->info.biWidth = nWidth;
    pCanvas->info.biHeight = nHeight;
    pCanvas->info.biPlanes = 1;
    pCanvas->info.biBitCount = 32;
    pCanvas->info.biSizeImage = (DWORD)nWidth * (DWORD)nHeight * 4;
    pCanvas->info.biXPelsPerMeter = PIXELS_PER_METRE;
    pCanvas->info.biYPelsPerMeter = PIXELS_PER_METRE;
    pCanvas->hdc = CreateCompatibleDC(NULL);
    pCanvas->hBitmap = CreateDIBSection(pCanvas->hdc, (BITMAPINFO*)&pCanvas->info, DIB_RGB_COLORS,
                                        &pCanvas->pBits, NULL, 0);
    if (pCanvas->hBitmap) pCanvas->hPrev = SelectObject(pCanvas->hdc, pCanvas->hBitmap);
    return pCanvas->hBitmap != NULL;
}

static void FreeCanvas(CANVAS* pCanvas)
{
    if (pCanvas->hPrev) SelectObject(pCanvas->hdc, pCanvas->hPrev);
    if (pCanvas->hBitmap) DeleteObject(pCanvas->hBitmap);
    DeleteDC(pCanvas->hdc);
}

static int WriteCanvas(const CANVAS* pCanvas, const char* pszPath)
{
    BITMAPFILEHEADER header = {0};
    FILE* pFile = fopen(pszPath, "wb");
    int bWritten = 0;
    if (!pFile) return 0;
    header.bfType = 0x4D42; /* "BM" */
    header.bfOffBits = sizeof header + sizeof pCanvas->info;
    header.bfSize = header.bfOffBits + pCanvas->info.biSizeImage;
    GdiFlush(); /* GDI may still hold calls back; the bits are read directly */
    bWritten = fwrite(&header, sizeof header, 1, pFile) == 1 &&
               fwrite(&pCanvas->info, sizeof pCanvas->info, 1, pFile) == 1 &&
               fwrite(pCanvas->pBits, pCanvas->info.biSizeImage, 1, pFile) == 1;
    return fclose(pFile) == 0 && bWritten;
}

/* The engine paints onto whatever stands there, so the background comes first. */
static int PaintBackground(HDC hdc, const RECT* prc, int nGradient)
{
    if (nGradient >= 0) {
        HQELGRADIENT hGradient = QELCreateGradientDescriptor(prc, nGradient, WHITE, GREY);
        HBRUSH hBrush = QELGetGradientBrush(hGradient); /* owned by the descriptor */
        if (hBrush) FillRect(hdc, prc, hBrush);
        QELCloseGradientDescriptor(hGradient);
        return hBrush != NULL;
    } else {
        HBRUSH hBrush = CreateSolidBrush(GREY);
        FillRect(hdc, prc, hBrush);
        return DeleteObject(hBrush);
    }
}

/* 0 for a setting that is not understood, or that no meter or scale of the drawing takes. */
static int Apply(HQELENGINE hEngine, const char* pszSetting)
{
    char* pszAt = NULL;
    DWORD nId = strtoul(pszSetting, &pszAt, 10);
    DWORD nSelector = QEL_SEL_VALUE;
    if (pszAt == pszSetting) return 0;
    if (*pszAt == '.') nSelector = strtoul(pszAt + 1, &pszAt, 10);
    if (*pszAt != '=') return 0;
    if (strchr(pszAt + 1, '.'))
        return QELSetScaleParamf(hEngine, nId, nSelector, (float)atof(pszAt + 1));
    return QELSetScaleParam(hEngine, nId, nSelector, (DWORD)strtol(pszAt + 1, NULL, 0));
}

static int Draw(HQELENGINE hEngine, const CANVAS* pCanvas, const RECT* prc, const char* pszFont)
{
    HFONT hFont = /* smoothed: two colours lose strokes in small sizes */
        CreateFontA(FONT_HEIGHT, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0,
                    pszFont);
    HGDIOBJ hPrev = SelectObject(pCanvas->hdc, hFont);
    int bDrawn = QELDraw(hEngine, pCanvas->hdc, prc, QEL_DRAW_FULL);
    SelectObject(pCanvas->hdc, hPrev);
    DeleteObject(hFont);
    return bDrawn;
}

int main(int argc, char** argv)
{
    const char* pszTrouble = NULL;
    HQELENGINE hEngine = NULL;
    CANVAS canvas;
    RECT rc = {0, 0, 0, 0};
    int nGradient = -1;
    int n = 0;

    if (argc < 6 || (rc.right = atoi(argv[3])) < 1 || (rc.bottom = atoi(argv[4])) < 1) {
        fprintf(stderr, "host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]\n");
        return 2;
    }
    hEngine = CreateQELEngine();
    if (!MakeCanvas(&canvas, rc.right, rc.bottom)) pszTrouble = "no memory for the picture";
    if (!pszTrouble && !QELOpenFile(hEngine, argv[1])) pszTrouble = "the drawing cannot be opened";
    for (n = 6; n < argc && !pszTrouble; ++n) {
        if (strncmp(argv[n], "gradient=", 9) == 0)
            nGradient = atoi(argv[n] + 9);
        else if (!Apply(hEngine, argv[n]))
            pszTrouble = argv[n]; /* the drawing has nothing that takes it */
    }
    if (!pszTrouble) {
        QELSetQELRect(hEngine, &rc);
        if (!PaintBackground(canvas.hdc, &rc, nGradient))
            pszTrouble = "there is no such gradient";
        else if (!Draw(hEngine, &canvas, &rc, argv[5]))
            pszTrouble = "the drawing cannot be drawn";
        else if (!WriteCanvas(&canvas, argv[2]))
            pszTrouble = "the picture cannot be written";
    }
    FreeCanvas(&canvas);
    DestroyQELEngine(hEngine);
    if (pszTrouble) fprintf(stderr, "host: %s\n", pszTrouble);
    return pszTrouble ? 1 : 0;
}
