// What the tests of what shows share: chance, clips and the rings of a border by the rule.
#pragma once

#include "dynamic/QELViewMeter.h"
#include "tests/support/ViewSupport.h"

#include <random>

namespace showntest {

using namespace viewtest;

constexpr COLORREF LIGHT = RGB(255, 0, 0);
constexpr COLORREF DARK = RGB(0, 0, 255);
constexpr int SIDE = 90;
constexpr RECT EVERYWHERE{-100000, -100000, 100000, 100000};

class CRandom {
public:
    explicit CRandom(unsigned nSeed) : m_engine(nSeed) {}
    LONG Between(LONG nLow, LONG nHigh)
    {
        return nLow + static_cast<LONG>(m_engine() % static_cast<unsigned>(nHigh - nLow + 1));
    }
    // A rectangle that is not empty.
    RECT Box(LONG nLow, LONG nHigh)
    {
        const LONG nX = Between(nLow, nHigh - 1);
        const LONG nY = Between(nLow, nHigh - 1);
        return {nX, nY, Between(nX + 1, nHigh), Between(nY + 1, nHigh)};
    }

private:
    std::mt19937 m_engine;
};

inline void ClipTo(HDC hdc, const RECT& rc) // in device units
{
    const HRGN hRegion = ::CreateRectRgnIndirect(&rc);
    ::SelectClipRgn(hdc, hRegion);
    ::DeleteObject(hRegion);
}

// Every ring, by the rule.
inline void StrokeAll(HDC hdc, RECT r, int nWidth)
{
    const CTestSelect restore(hdc, ::GetStockObject(BLACK_PEN), false);
    const HPEN hLight = ::CreatePen(PS_SOLID, 1, LIGHT);
    const HPEN hDark = ::CreatePen(PS_SOLID, 1, DARK);
    for (int n = 0; n < nWidth; ++n) {
        ::SelectObject(hdc, hLight);
        ::MoveToEx(hdc, r.left, r.bottom - 1, nullptr);
        ::LineTo(hdc, r.left, r.top);
        ::LineTo(hdc, r.right, r.top);
        ::SelectObject(hdc, hDark);
        ::MoveToEx(hdc, r.right - 1, r.top, nullptr);
        ::LineTo(hdc, r.right - 1, r.bottom - 1);
        ::LineTo(hdc, r.left - 1, r.bottom - 1);
        ::InflateRect(&r, -1, -1);
    }
    ::SelectObject(hdc, ::GetStockObject(BLACK_PEN));
    ::DeleteObject(hLight);
    ::DeleteObject(hDark);
}

constexpr int SCREEN_SIDE = 300;
constexpr RECT FACE_QEL{-2000, -2000, 2100, 2100}; // 41 pixels a unit

// A meter with one shape as its face, half full.
class CFaced : public CTestPicture {
public:
    CFaced(int nMeterType, int nShapeType, const QELSHAPEATTR& attr) : CTestPicture({100, 100})
    {
        m_pMeter = static_cast<CQELViewMeter*>(Make(QEL_TYPE_METER));
        CQELViewElm* pFace = Make(nShapeType, m_pMeter);
        EXPECT_EQ(1, pFace->SetAttrBlock(&attr));
        QELMETERATTR meter{};
        meter.nSize = sizeof meter;
        meter.nType = nMeterType;
        meter.nMin = 1;
        meter.nMax = 100;
        const LONG geometry[] = {45, 45, 60, 60, 0, 0, 0};
        const LONG dial[] = {50, 50, 3, 45, 45, 60, 60};
        std::memcpy(meter.nGeometry, nMeterType == 10 ? dial : geometry, sizeof geometry);
        EXPECT_EQ(1, m_pMeter->SetAttrBlock(&meter));
        m_pMeter->SetProperty(QEL_SEL_VALUE, 5);
        m_pMeter->SetValue(0, 5U);
        m_pMeter->SetProperty(0, LIGHT);
        m_pMeter->SetDraftForeParam(LIGHT);
    }
    void Draw(HDC hdc, uint32_t nFlags = QEL_DRAW_FULL)
    {
        EXPECT_EQ(1, m_view.Draw(nullptr, hdc, FACE_QEL, nFlags));
    }

private:
    CQELViewMeter* m_pMeter;
};

inline QELSHAPEATTR LargePie()
{
    QELSHAPEATTR attr = FilledAttr({1, 1, 99, 99, 99, 70, 20, 0});
    attr.nPenWidth = 0;
    return attr;
}

} // namespace showntest
