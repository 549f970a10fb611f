// The picture of a drawing, as far as it shows in the window, kept right by the engine's updates.
#pragma once

#include "include/QELEngine.h"
#include "tools/studio/Picture.h"
#include "tools/studio/model/Viewport.h"

namespace studio {

class CBacking {
public:
    CBacking();
    ~CBacking();
    CBacking(const CBacking&) = delete;
    CBacking& operator=(const CBacking&) = delete;

    // What stands behind the drawing.
    void SetGround(HBRUSH hGround);
    // The engine whose drawing is shown, null for none: all of it is to be painted.
    void SetEngine(HQELENGINE hEngine);
    // Places the drawing: the part of the view that is in a window of this size is kept.
    void SetView(const CViewport& view, SIZE client, bool bSmooth);
    // Draws what moves under the mouse pressed, or as it is.
    void SetPressed(bool bPressed);
    // Paints anew what is dirty, and adds that to a region, in the window. False: nothing was.
    bool Update(HRGN hPainted);
    // Onto a context of the window.
    void Show(HDC hdc) const;

    [[nodiscard]] RECT Rect() const { return m_rcShown; } // what it covers in the window
    [[nodiscard]] POINT ToEngine(POINT ptClient) const;   // into the units of the engine's device
    [[nodiscard]] RECT ToWindow(const RECT& rcDevice) const;

private:
    [[nodiscard]] RECT ShownUnits() const;
    bool Paint();

    HQELENGINE m_hEngine = nullptr;
    CPicture m_picture;
    HFONT m_hFont; // of texts, as the command-line program draws them
    HBRUSH m_hGround = nullptr;
    bool m_bPressed = false;
    RECT m_rcShown{0, 0, 0, 0};
    POINT m_ptOrigin{0, 0}; // of the drawing in the window
};

} // namespace studio
