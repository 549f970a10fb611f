// Keeps what a bar's body paints inside of the meter's face, over and above the host's own clip,
// until the end of the scope. The front is filled within the region anyway; faces, caps and
// outlines are plain figures, and what they painted beyond the face no later paint would take away.
#pragma once

#include <windows.h>

class CFaceClip {
public:
    // hFace counts the units of the drawing calls, as the meter's region does. rcPainted: what is
    // going to be painted lies in it; a face that covers it needs no clip.
    CFaceClip(HDC hdc, HRGN hFace, const RECT& rcPainted) noexcept;
    ~CFaceClip();
    CFaceClip(const CFaceClip&) = delete;
    CFaceClip& operator=(const CFaceClip&) = delete;

    // False: nothing of it would be seen, or the clip could not be set.
    [[nodiscard]] bool MayPaint() const { return m_bMayPaint; }

private:
    [[nodiscard]] bool Narrow(HRGN hFace, const RECT& rcBox, const POINT* pptOffset) const;
    [[nodiscard]] bool CutOut(HRGN hFace, const RECT& rcBox) const;

    HDC m_hdc;
    int m_nSaved = 0; // 0: the clip is as it was
    bool m_bMayPaint = true;
};
