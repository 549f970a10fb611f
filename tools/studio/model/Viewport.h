// Where a drawing stands in its window, and how large: fitted, filling it, or at a zoom.
#pragma once

#include <windows.h>

namespace studio {

class CViewport {
public:
    enum class Mode {
        Fit,  // all of it shows, in its own proportions
        Fill, // it takes the whole window, as in a host's; its pixels keep their size
        Free  // at a zoom, moved about
    };

    // Of the window, the drawing (its reference size) and the monitor.
    void SetClient(SIZE size);
    void SetDrawing(SIZE size);
    void SetDpi(unsigned nDpi);

    void Fit();
    void Fill();
    void ShowActual();                           // 100 %, in the middle
    void ZoomAt(POINT ptClient, double fFactor); // what is under the point stays there
    void ZoomMiddle(double fFactor);
    void MoveBy(int nX, int nY);

    [[nodiscard]] Mode Now() const { return m_mode; }
    [[nodiscard]] RECT Rect() const;           // of the drawing, in the window
    [[nodiscard]] double Zoom() const;         // 1: a unit is a pixel at 96 dots an inch
    [[nodiscard]] unsigned PixelScale() const; // in percent, as the engine takes it
    [[nodiscard]] bool IsEmpty() const;        // there is nothing to show

private:
    [[nodiscard]] double Dots() const; // pixels of the monitor a pixel at 96 dots an inch
    [[nodiscard]] double FitZoom() const;
    [[nodiscard]] SIZE SizeAt(double fZoom) const;
    [[nodiscard]] POINT Middle(SIZE size) const;
    void SetFree(double fZoom, double fX, double fY);
    void KeepInSight();

    SIZE m_client{0, 0};
    SIZE m_drawing{0, 0};
    unsigned m_nDpi = 96;
    Mode m_mode = Mode::Fit;
    double m_fZoom = 1; // of Mode::Free, as the left and top edge
    double m_fX = 0;
    double m_fY = 0;
};

} // namespace studio
