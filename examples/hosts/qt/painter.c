/*
 * Paints a drawing for a program that has no Windows: under Wine it reads what to do as lines, and
 * writes pictures. window.cpp beside it is such a program.
 *
 *     painter DRAWING FACE
 *
 * FACE is the font of texts. What it writes are numbers of four bytes, lowest first, and pictures.
 * First the width and height that the drawing is made for, 0 and 0 when it cannot be opened. Then
 * for each line that it reads: set ID VALUE                        nothing ease ID TIME nothing; in
 * milliseconds, the time of needles on the way paint WIDTH HEIGHT PERCENT TIME     how many bytes
 * follow, and these: the picture when so many milliseconds have passed, with pixels of so many
 * percent; 0 without memory It ends with what it reads. Built with MinGW, in this folder:
 *     i686-w64-mingw32-gcc -std=c99 -municode painter.c -I../../../include -L../../../build/i686/lib -lQELEngine -o painter.exe
 */
#include "QELEngine.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <stdlib.h>

#define BYTES_A_PIXEL 4
#define MOST_SIDE 16384
#define SAMPLES 4
#define AS_DECLARED 1 /* the code page of texts */

static HQELENGINE g_hEngine;
static unsigned char* g_pBits; /* kept from picture to picture */
static size_t g_nRoom;

static void WriteNumber(unsigned n)
{
    unsigned char bytes[4];
    int i;
    for (i = 0; i < 4; ++i) bytes[i] = (unsigned char)(n >> 8 * i);
    fwrite(bytes, 1, sizeof bytes, stdout);
}

static int MakeRoom(size_t nBytes)
{
    unsigned char* pBits;
    if (nBytes <= g_nRoom) return 1;
    pBits = realloc(g_pBits, nBytes);
    if (!pBits) return 0;
    g_pBits = pBits;
    g_nRoom = nBytes;
    return 1;
}

static void Paint(int nWidth, int nHeight, unsigned nPercent, unsigned nTime)
{
    size_t nBytes = 0;
    QELSetPixelScale(g_hEngine, nPercent);
    QELAdvance(g_hEngine, nTime);
    if (nWidth > 0 && nHeight > 0 && nWidth <= MOST_SIDE && nHeight <= MOST_SIDE)
        nBytes = (size_t)nWidth * (size_t)nHeight * BYTES_A_PIXEL;
    if (!nBytes || !MakeRoom(nBytes) ||
        !QELRenderBitmap(g_hEngine, g_pBits, nWidth, nHeight, nWidth * BYTES_A_PIXEL, 0))
        nBytes = 0;
    WriteNumber((unsigned)nBytes);
    fwrite(g_pBits, 1, nBytes, stdout);
    fflush(stdout);
}

static void Follow(const char* pszLine)
{
    char szId[QEL_TEXT_SIZE];
    double fValue;
    unsigned nPercent;
    unsigned nTime;
    int nWidth;
    int nHeight;
    if (sscanf(pszLine, "set %255s %lf", szId, &fValue) == 2)
        QELSetValue(g_hEngine, szId, fValue);
    else if (sscanf(pszLine, "ease %255s %u", szId, &nTime) == 2)
        QELSetEasing(g_hEngine, szId, nTime);
    else if (sscanf(pszLine, "paint %d %d %u %u", &nWidth, &nHeight, &nPercent, &nTime) == 4)
        Paint(nWidth, nHeight, nPercent, nTime);
}

static int Open(const wchar_t* pszPath, const wchar_t* pszFace)
{
    g_hEngine = CreateQELEngine();
    QELSetTextCodePage(g_hEngine, AS_DECLARED);
    QELSetSmooth(g_hEngine, SAMPLES);
    return QELSetFontFace(g_hEngine, pszFace) && QELOpenFileW(g_hEngine, pszPath);
}

int wmain(int argc, wchar_t** argv)
{
    char szLine[512];
    SIZE size = {0, 0};
    if (argc < 3) return 2;
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    if (Open(argv[1], argv[2])) QELGetRefSize(g_hEngine, &size);
    WriteNumber((unsigned)size.cx);
    WriteNumber((unsigned)size.cy);
    fflush(stdout);
    while (size.cx && fgets(szLine, sizeof szLine, stdin)) Follow(szLine);
    DestroyQELEngine(g_hEngine);
    free(g_pBits);
    return size.cx ? 0 : 1;
}
