#include "base/PixelScale.h"

int32_t CPixelScale::Scaled(int32_t n) const
{
    const int64_t nHundredfold = int64_t{n} * m_nPercent + PLAIN_PERCENT / 2;
    int64_t nScaled = nHundredfold / PLAIN_PERCENT;
    if (nHundredfold % PLAIN_PERCENT < 0) --nScaled;
    if (n > 0 && nScaled < 1) nScaled = 1;
    return Held(nScaled * m_nSamples);
}
