// The system's colours; see the header.
#include "tools/studio/SystemLook.h"

#include "tools/studio/Window.h"

namespace studio {

bool IsHighContrast()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 || IsFaceDark();
}

bool IsFaceDark()
{
    constexpr int MIDDLE = 3 * 128;
    const COLORREF clr = ::GetSysColor(COLOR_3DFACE);
    return GetRValue(clr) + GetGValue(clr) + GetBValue(clr) < MIDDLE;
}

HBRUSH ClassBrush(int nColor)
{
    return Passed<HBRUSH>(static_cast<INT_PTR>(nColor) + 1);
}

COLORREF PlainOr(COLORREF clrPlain, int nContrast)
{
    return IsHighContrast() ? ::GetSysColor(nContrast) : clrPlain;
}

} // namespace studio
