// Arc, pie and chord; see the header.
#include "render/QELViewRadial.h"

#include "base/Block.h"
#include "base/GdiScopes.h"
#include "render/Mapping.h"
#include "render/QELRotate.h"

namespace {

constexpr int32_t BOX_WORDS = 4;
constexpr int32_t ALL_WORDS = 8;   // the box and the two points, x and y by turns
constexpr LONG MAX_CANVAS = 16384; // pixels a side: 32 MB in black and white

// A black-and-white bitmap to draw one figure on, all white.
class CMonoCanvas {
public:
    CMonoCanvas(LONG nWidth, LONG nHeight) noexcept
        : m_nWidth(nWidth), m_nHeight(nHeight), m_hdc(::CreateCompatibleDC(nullptr)),
          m_hBitmap(::CreateBitmap(nWidth, nHeight, 1, 1, nullptr))
    {
        if (m_hdc && m_hBitmap) m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
        if (m_hPrev) ::PatBlt(m_hdc, 0, 0, nWidth, nHeight, WHITENESS);
    }
    ~CMonoCanvas()
    {
        if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
        if (m_hBitmap) ::DeleteObject(m_hBitmap);
        if (m_hdc) ::DeleteDC(m_hdc);
    }
    CMonoCanvas(const CMonoCanvas&) = delete;
    CMonoCanvas& operator=(const CMonoCanvas&) = delete;

    // Null when it could not be made.
    [[nodiscard]] HDC Dc() const { return m_hPrev ? m_hdc : nullptr; }
    [[nodiscard]] HRGN BlackRegion(LONG nLeft, LONG nTop) const;

private:
    [[nodiscard]] LONG Stride() const { return (m_nWidth + 15) / 16 * 2; } // rows end at a word
    static DWORD FindRuns(const unsigned char* pBits, LONG nStride, SIZE size, RECT* pOut);

    LONG m_nWidth;
    LONG m_nHeight;
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev = nullptr;
};

// The black runs of all rows, counted, and written where pOut is given.
DWORD CMonoCanvas::FindRuns(const unsigned char* pBits, LONG nStride, SIZE size, RECT* pOut)
{
    DWORD nCount = 0;
    for (LONG y = 0; y < size.cy; ++y, pBits += nStride) {
        const auto isBlack = [&](LONG x) {
            return x < size.cx && !(pBits[x / 8] & (0x80 >> x % 8));
        };
        for (LONG x = 0; x < size.cx; ++x) {
            if (!isBlack(x)) continue;
            const LONG nStart = x;
            while (isBlack(x)) ++x;
            if (pOut) pOut[nCount] = {nStart, y, x, y + 1};
            ++nCount;
        }
    }
    return nCount;
}

HRGN CMonoCanvas::BlackRegion(LONG nLeft, LONG nTop) const
{
    const LONG nSize = Stride() * m_nHeight;
    const CBlock bits(static_cast<uint64_t>(nSize));
    if (!bits.As<void>() || ::GetBitmapBits(m_hBitmap, nSize, bits.As<void>()) != nSize)
        return nullptr;
    const SIZE size{m_nWidth, m_nHeight};
    const DWORD nRuns = FindRuns(bits.As<unsigned char>(), Stride(), size, nullptr);
    const auto nBytes = static_cast<DWORD>(sizeof(RGNDATAHEADER) + nRuns * sizeof(RECT));
    const CBlock block(nBytes);
    if (!block.As<void>()) return nullptr;
    auto* pData = block.As<RGNDATA>();
    pData->rdh = {sizeof(RGNDATAHEADER),
                  RDH_RECTANGLES,
                  nRuns,
                  static_cast<DWORD>(nRuns * sizeof(RECT)),
                  {0, 0, m_nWidth, m_nHeight}};
    FindRuns(bits.As<unsigned char>(), Stride(), size, reinterpret_cast<RECT*>(pData->Buffer));
    const HRGN hRegion = ::ExtCreateRegion(nullptr, nBytes, pData);
    if (hRegion) ::OffsetRgn(hRegion, nLeft, nTop);
    return hRegion;
}

} // namespace

int CQELViewRadial::MapFigure(const RECT& rcQel, uint32_t nFlags, DeviceFigure* pOut) const
{
    const auto stretch = [&](int32_t nWord) -> LONG {
        const bool bAcross = nWord % 2 == 0;
        const int32_t nRef = bAcross ? RefW() : RefH();
        const int32_t nExtent = bAcross ? WidthOf(rcQel) : HeightOf(rcQel);
        const int32_t nOrigin = bAcross ? rcQel.left : rcQel.top;
        if (nRef < 1 && CollapsesToEdge()) return nOrigin;
        if (nRef < 1 && nWord < BOX_WORDS) return 0;
        return Stretch(Words()[nWord], nExtent, nRef, nOrigin);
    };
    pOut->rcBox = {stretch(0), stretch(1), stretch(2), stretch(3)};
    pOut->pts[0] = {stretch(4), stretch(5)};
    pOut->pts[1] = {stretch(6), stretch(7)};
    pOut->nPoints = 2;
    if (IsPressed(nFlags)) {
        ShiftPressed(&pOut->rcBox, rcQel);
        for (int n = 0; n < 2; ++n) { // the points always move
            pOut->pts[n].x = WrapAdd(pOut->pts[n].x, PRESSED_SHIFT);
            pOut->pts[n].y = WrapAdd(pOut->pts[n].y, PRESSED_SHIFT);
        }
    }
    return 1;
}

int CQELViewRadial::Rotate(POINT ptCentre, int32_t nAngle)
{
    const int32_t nTurn = QuarterTurn(nAngle);
    const CQELRotate turn(ptCentre, WrapSub(nTurn, Rotation()));
    int32_t* n = Words();
    RECT rc{n[0], n[1], n[2], n[3]};
    POINT pt1{n[4], n[5]};
    POINT pt2{n[6], n[7]};
    if (!turn.RotateRect(&rc) || !turn.RotateTwo(&pt1, &pt2)) return 0;
    const LONG turned[ALL_WORDS] = {rc.left, rc.top, rc.right, rc.bottom,
                                    pt1.x,   pt1.y,  pt2.x,    pt2.y};
    for (int32_t i = 0; i < ALL_WORDS; ++i) n[i] = turned[i];
    KeepInside();
    SetRotation(nTurn);
    return 1;
}

int CQELViewRadial::MoveX(int32_t nDx)
{
    Shift(nDx, 0);
    KeepInside();
    return 1;
}

int CQELViewRadial::MoveY(int32_t nDy)
{
    Shift(0, nDy);
    KeepInside();
    return 1;
}

void CQELViewRadial::Shift(int32_t nDx, int32_t nDy)
{
    for (int32_t i = 0; i < ALL_WORDS; ++i)
        Words()[i] = WrapAdd(Words()[i], i % 2 == 0 ? nDx : nDy);
}

// The figure slides as one, by what its box and points together need.
void CQELViewRadial::KeepInside()
{
    if (!StaysInside()) return;
    RECT rc{Words()[0], Words()[1], Words()[0], Words()[1]};
    for (int32_t i = 2; i < ALL_WORDS; i += 2) {
        const int32_t nX = Words()[i];
        const int32_t nY = Words()[i + 1];
        rc = {nX < rc.left ? nX : rc.left, nY < rc.top ? nY : rc.top, nX > rc.right ? nX : rc.right,
              nY > rc.bottom ? nY : rc.bottom};
    }
    Shift(SlideInside(rc.left, rc.right, RefW()), SlideInside(rc.top, rc.bottom, RefH()));
}

// GDI itself fills the figure, and its black pixels are the region: where GDI lets a ray meet a
// flat ellipse is its own affair, and no polygon cut from outside agrees with it everywhere.
HRGN CQELViewRadial::MakeFilledRegion(const RECT& rcQel) const
{
    DeviceFigure figure{};
    MapFigure(rcQel, 0, &figure);
    const RECT rc = NormalizedRect(figure.rcBox);
    const LONG nWidth = WidthOf(rc);
    const LONG nHeight = HeightOf(rc);
    if (nWidth < 1 || nHeight < 1 || nWidth > MAX_CANVAS || nHeight > MAX_CANVAS) return nullptr;
    const CMonoCanvas canvas(nWidth, nHeight);
    if (!canvas.Dc()) return nullptr;
    figure.rcBox = {0, 0, nWidth, nHeight};
    for (POINT& pt : figure.pts) pt = {WrapSub(pt.x, rc.left), WrapSub(pt.y, rc.top)};
    const CSelectScope pen(canvas.Dc(), ::GetStockObject(NULL_PEN));
    const CSelectScope brush(canvas.Dc(), ::GetStockObject(BLACK_BRUSH));
    Paint(canvas.Dc(), figure, nullptr, rcQel);
    return canvas.BlackRegion(rc.left, rc.top);
}
