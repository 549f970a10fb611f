// The surround; see the header.
#include "tools/studio/Surround.h"

#include "tools/studio/Picture.h"
#include "tools/studio/SystemLook.h"

namespace studio {

namespace {

constexpr COLORREF LIGHT = RGB(0xF0, 0xF0, 0xF0);
constexpr COLORREF DARK = RGB(0x26, 0x28, 0x2B);
constexpr COLORREF CHESS_A = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF CHESS_B = RGB(0xDD, 0xDD, 0xDD);

void FillSquare(HDC hdc, int nX, int nY, int nSide, COLORREF clr)
{
    const RECT rc{nX, nY, nX + nSide, nY + nSide};
    HBRUSH hBrush = ::CreateSolidBrush(clr);
    ::FillRect(hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
}

HBRUSH MakeChessboard(int nSquare)
{
    CPicture picture;
    if (!picture.SetSize({2 * nSquare, 2 * nSquare})) return ::CreateSolidBrush(CHESS_A);
    FillSquare(picture.Dc(), 0, 0, 2 * nSquare, CHESS_A);
    FillSquare(picture.Dc(), 0, 0, nSquare, CHESS_B);
    FillSquare(picture.Dc(), nSquare, nSquare, nSquare, CHESS_B);
    return ::CreatePatternBrush(picture.Bitmap());
}

} // namespace

CSurround::~CSurround()
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
}

void CSurround::Set(Ground ground, int nSquare)
{
    if (m_hBrush) ::DeleteObject(m_hBrush);
    const bool bDark = ground == Ground::Dark;
    m_clrText = bDark ? RGB(0xB8, 0xBC, 0xC0) : RGB(0x50, 0x54, 0x58);
    m_clrFrame = bDark ? RGB(0x48, 0x4C, 0x50) : RGB(0xC8, 0xCA, 0xCC);
    if (IsHighContrast()) m_clrText = m_clrFrame = bDark ? RGB(0xFF, 0xFF, 0xFF) : RGB(0, 0, 0);
    m_hBrush = ground == Ground::Chess ? MakeChessboard(nSquare)
                                       : ::CreateSolidBrush(bDark ? DARK : LIGHT);
}

} // namespace studio
