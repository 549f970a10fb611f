// A picture that a host keeps right by updates, beside the full draw that it has to equal.
#pragma once

#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"

#include <gtest/gtest.h>

#include <string>

constexpr COLORREF SCREEN_GROUND = 0x204060;

class CTestBrush { // of one colour
public:
    explicit CTestBrush(COLORREF clr) : m_hBrush(::CreateSolidBrush(clr)) {}
    ~CTestBrush() { ::DeleteObject(m_hBrush); }
    CTestBrush(const CTestBrush&) = delete;
    CTestBrush& operator=(const CTestBrush&) = delete;
    operator HBRUSH() const { return m_hBrush; }

private:
    HBRUSH m_hBrush;
};

class CTestRegion { // empty at first
public:
    CTestRegion() : m_hRegion(::CreateRectRgn(0, 0, 0, 0)) {}
    ~CTestRegion() { ::DeleteObject(m_hRegion); }
    CTestRegion(const CTestRegion&) = delete;
    CTestRegion& operator=(const CTestRegion&) = delete;
    operator HRGN() const { return m_hRegion; }

private:
    HRGN m_hRegion;
};

class CScreen {
public:
    CScreen(HQELENGINE h, int nSide)
        : m_h(h), m_screen(nSide, nSide, SCREEN_GROUND), m_full(nSide, nSide, SCREEN_GROUND),
          m_brush(SCREEN_GROUND)
    {
    }
    HDC Dc() const { return m_screen.Dc(); }
    int Update() const { return QELUpdate(m_h, m_screen.Dc(), m_brush); }
    // "" when the picture is that of a full draw now.
    std::string Wrong()
    {
        RECT rc{};
        EXPECT_EQ(1, QELGetQELRect(m_h, &rc));
        // Twice: the colour of a read-out is that of the value of the draw before.
        for (int n = 0; n < 2; ++n) {
            m_full.Fill(SCREEN_GROUND);
            QELDraw(m_h, m_full.Dc(), &rc, QEL_DRAW_FULL);
        }
        return FirstDifference(m_full, m_screen);
    }
    std::string WrongAfterUpdate()
    {
        Update();
        return Wrong();
    }

private:
    HQELENGINE m_h;
    CTestBitmap m_screen, m_full;
    CTestBrush m_brush;
};
