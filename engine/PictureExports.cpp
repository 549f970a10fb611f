// The exported functions that say how the picture is made, gates like those in engine/Exports.cpp.
#include "engine/Errors.h"
#include "engine/Gates.h"

namespace {

constexpr int MOST_SAMPLES = 4;
constexpr int MOST_SIDE = 1 << 20; // pixels
constexpr int BYTES_A_PIXEL = 4;

} // namespace

int QELAPI QELSetPixelScale(HQELENGINE hEngine, DWORD nPercent)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (nPercent < MIN_PIXEL_PERCENT || nPercent > MAX_PIXEL_PERCENT)
        return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return pEngine->SetPixelScale(nPercent);
}

int QELAPI QELGetPixelScale(HQELENGINE hEngine, DWORD* pnPercent)
{
    const CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pnPercent) return Fail(hEngine, QEL_ERROR_ARGUMENT);
    *pnPercent = pEngine->PixelScale();
    return 1;
}

int QELAPI QELSetSmooth(HQELENGINE hEngine, int nSamples)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (nSamples < 0 || nSamples == 1 || nSamples > MOST_SAMPLES)
        return Fail(hEngine, QEL_ERROR_ARGUMENT);
    return pEngine->SetSmooth(nSamples);
}

int QELAPI QELGetSmooth(HQELENGINE hEngine)
{
    const CQELEngine* pEngine = FindEngine(hEngine);
    return pEngine ? pEngine->Smooth() : 0;
}

int QELAPI QELRenderBitmap(HQELENGINE hEngine, void* pBits, int nWidth, int nHeight, int nStride,
                           DWORD nFlags)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    if (!pBits || nWidth < 1 || nHeight < 1 || nWidth > MOST_SIDE || nHeight > MOST_SIDE ||
        nStride < BYTES_A_PIXEL * nWidth || (nFlags & ~DWORD{QEL_DRAW_PRESSED}))
        return Fail(hEngine, QEL_ERROR_ARGUMENT);
    if (!pEngine->HasDrawing()) return Fail(hEngine, QEL_ERROR_NO_DRAWING);
    return pEngine->RenderBitmap(pBits, {nWidth, nHeight}, nStride, nFlags)
               ? 1
               : Fail(hEngine, QEL_ERROR_MEMORY);
}

int QELAPI QELSetFontFace(HQELENGINE hEngine, const wchar_t* pszFace)
{
    CQELEngine* pEngine = FindEngine(hEngine);
    if (!pEngine) return 0;
    return pEngine->SetFontFace(pszFace) ? 1 : Fail(hEngine, QEL_ERROR_ARGUMENT);
}
