#include "base/SolidPen.h"

#include <cstring>

bool FindSolidPen(HDC hdc, SolidPen* pOut)
{
    HGDIOBJ hPen = ::GetCurrentObject(hdc, OBJ_PEN);
    const DWORD nKind = hPen ? ::GetObjectType(hPen) : 0;
    alignas(EXTLOGPEN) unsigned char room[sizeof(EXTLOGPEN) + 16 * sizeof(DWORD)];
    if (nKind != OBJ_PEN && nKind != OBJ_EXTPEN) return false;
    if (!::GetObjectA(hPen, sizeof room, room)) return false;
    if (nKind == OBJ_PEN) {
        LOGPEN pen{};
        std::memcpy(&pen, room, sizeof pen);
        *pOut = {pen.lopnWidth.x, pen.lopnColor, true};
        return pen.lopnStyle == PS_SOLID;
    }
    EXTLOGPEN pen{};
    std::memcpy(&pen, room, sizeof pen);
    *pOut = {static_cast<int32_t>(pen.elpWidth), pen.elpColor, false};
    return (pen.elpPenStyle & PS_STYLE_MASK) == PS_SOLID;
}
