// The drawing in its window: painted without flicker, zoomed, moved about, pointed at.
#pragma once

#include "tools/studio/Backing.h"
#include "tools/studio/Surround.h"
#include "tools/studio/UpdateMarks.h"
#include "tools/studio/Window.h"

#include <functional>
#include <string>

namespace studio {

class CCanvas final : public CWindow {
public:
    struct Events {
        std::function<void(HQELELEM)> select; // an element was clicked on; null: none is there
        std::function<void()> pointer;        // it is somewhere else, or over another element
        std::function<void()> view;           // zoomed or moved by mouse or keys
    };

    int Create(HWND hParent, UINT nId, Events events);
    // The drawing to show and where it stands; nulls for none.
    void Show(HQELENGINE hEngine, CViewport* pView);
    // Paints what is dirty, in the drawing and of the marks.
    void Refresh(DWORD nPassed = 0);

    void SetSmooth(bool bSmooth);
    void SetGround(Ground ground);
    void SetUpdates(bool bShown);
    void SetFont(HFONT hFont) { m_hFont = hFont; }
    void SetHint(std::wstring text); // where there is no drawing
    void Select(HQELELEM hElem);     // outlined from now on
    void BringIntoView(HQELELEM hElem);
    void ViewChanged(); // by others
    void ShowFocus();   // it came by a key: the edge shows it until a button is pressed

    [[nodiscard]] HQELELEM Hovered() const { return m_hHovered; }
    [[nodiscard]] bool HasPointer(POINT* ptUnits) const; // in drawing units

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnMouse(UINT nMessage, WPARAM wParam, LPARAM lParam);
    bool OnKey(UINT nMessage, WPARAM wParam);
    void OnButton(POINT pt);
    void OnMove(POINT pt);
    void OnLeave();
    void OnWheel(int nDelta, POINT ptScreen);
    void BeginMove(POINT pt);
    void EndMove();
    void SetPressed(bool bPressed);
    void SetCursorShape() const;
    void MoveByKeys(int nX, int nY);
    void Moved();
    void Hover(HQELELEM hElem);
    void Paint();
    void Compose(HDC hdc);
    void DrawOutline(HDC hdc, HQELELEM hElem, COLORREF clr, int nWidth);
    void DrawHint(HDC hdc);
    void DrawFocus(HDC hdc);
    void Redraw() const;
    void RedrawElement(HQELELEM hElem) const;
    [[nodiscard]] RECT OutlineOf(HQELELEM hElem) const;
    void PlaceDrawing();
    void ApplyGround();

    Events m_events;
    HQELENGINE m_hEngine = nullptr;
    CViewport* m_pView = nullptr;
    CBacking m_backing;
    CPicture m_frame; // all that the window shows, put together
    CSurround m_surround;
    CUpdateMarks m_marks;
    Ground m_ground = Ground::Light;
    bool m_bSmooth = true;
    bool m_bUpdates = false;
    HFONT m_hFont = nullptr;
    std::wstring m_hint;
    HQELELEM m_hHovered = nullptr;
    HQELELEM m_hSelected = nullptr;
    bool m_bPointer = false;
    POINT m_ptPointer{0, 0};
    bool m_bSpace = false;  // held: the left button moves the drawing
    bool m_bMoving = false; // a button moves it
    bool m_bPressed = false;
    bool m_bFocusShown = false;
};

} // namespace studio
