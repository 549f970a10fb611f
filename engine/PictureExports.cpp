// The exported functions that say how the picture is made, gates like those in engine/Exports.cpp.
#include "engine/Errors.h"
#include "engine/Gates.h"

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
