// A drawing that is drawn plainly, and at other pixel scales as many times as large.
#pragma once

#include "tests/support/Enlarged.h"
#include "tests/support/Host.h"

class CScaled {
public:
    // The drawing is nSide by nSide units; its plain picture has a size of its own.
    CScaled(const std::string& body, int nSide, SIZE plain) : m_host(body, nSide), m_plain(plain) {}
    CScaled(const std::string& body, int nSide) : CScaled(body, nSide, {nSide, nSide}) {}
    HQELENGINE Engine() const { return m_host; }

    CPixels Draw(int nTimes, DWORD nFlags = QEL_DRAW_FULL)
    {
        const SIZE size = Scale(nTimes);
        m_host.Place({0, 0, size.cx, size.cy});
        const CTestBitmap picture(size.cx, size.cy);
        m_host.Draw(picture.Dc(), nFlags);
        return CPixels(picture);
    }
    // All of the draws have the time of the open.
    CPixels Render(int nTimes)
    {
        const SIZE size = Scale(nTimes);
        std::vector<uint32_t> pixels(static_cast<std::size_t>(size.cx) *
                                     static_cast<std::size_t>(size.cy));
        EXPECT_EQ(1, QELRenderBitmap(m_host, pixels.data(), size.cx, size.cy, size.cx * 4, 0));
        for (uint32_t& n : pixels)
            if (n >> 24 == 0) n = 0xFFFFFF;
        return {pixels, size};
    }

private:
    SIZE Scale(int nTimes)
    {
        EXPECT_EQ(1, QELSetPixelScale(m_host, static_cast<DWORD>(100 * nTimes)));
        return {m_plain.cx * nTimes, m_plain.cy * nTimes};
    }

    CTextHost m_host;
    SIZE m_plain;
};

// "" when the drawing is like the plain one at all of the scales.
inline std::string UnlikePlain(const std::string& body, Near nNear, int nSide, SIZE size,
                               DWORD nFlags = QEL_DRAW_FULL)
{
    CScaled scaled(body, nSide, size);
    const CPixels plain = scaled.Draw(1, nFlags);
    EXPECT_GT(plain.Counts().size(), 1U) << body; // two empty pictures would agree
    for (const int nTimes : SCALES) {
        const std::string unlike =
            Unlike(plain, scaled.Draw(nTimes, nFlags), ReachOf(nNear, nTimes));
        if (!unlike.empty()) return unlike + ": " + body;
    }
    return "";
}
