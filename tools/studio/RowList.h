// The rows of the run panel: for each its name, its kind, a slider and its value. Painted in one
// window, so that a drawing of thousands of rows is as quick as one of ten.
#pragma once

#include "tools/studio/Picture.h"
#include "tools/studio/Window.h"

#include <functional>
#include <string>
#include <vector>

namespace studio {

class CRowList final : public CWindow {
public:
    struct Row {
        std::wstring name;
        std::wstring kind;
        std::wstring text;    // of its value
        bool bSlider = false; // else it has no number to slide
        double fAt = 0;       // where its knob stands, 0 to 1
        bool bColor = false;  // its value is one: shown as such
        COLORREF clr = 0;
    };
    struct Events {
        std::function<void(int)> select;        // another row is selected
        std::function<void(int, double)> slide; // a knob was moved there, 0 to 1
        std::function<void(int)> open;          // Enter or a double click
    };

    int Create(HWND hParent, UINT nId, Events events);
    void SetFont(HFONT hFont);
    void SetRows(std::vector<Row> rows); // the selection stays where it was, if it can
    void SetRow(int nRow, const Row& row);
    void Select(int nRow); // and brings it into view; without an event
    [[nodiscard]] int Selected() const { return m_nSelected; }
    [[nodiscard]] int Count() const { return static_cast<int>(m_rows.size()); }
    // The rows that show, from the first to before the last.
    [[nodiscard]] int FirstShown() const;
    [[nodiscard]] int EndShown() const;

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    bool OnMouse(UINT nMessage, WPARAM wParam, LPARAM lParam);
    bool OnKey(WPARAM nKey);
    void OnScroll(UINT nHow);
    void OnButton(POINT pt);
    void Choose(int nRow);
    void SlideTo(int nX);
    void SlideBy(double fPart);
    void ScrollTo(int nTop);
    void ShowScroll() const;
    void Paint();
    void PaintRow(HDC hdc, int nRow, HRGN hRegion) const;
    void PaintTitle(HDC hdc, int nRow, bool bFocus) const;
    void PaintValue(HDC hdc, int nRow, bool bFocus) const;
    void PaintSlider(HDC hdc, const Row& row, const RECT& rc, bool bSelected) const;
    [[nodiscard]] int RowHeight() const;
    [[nodiscard]] RECT RowRect(int nRow) const;
    [[nodiscard]] RECT SliderRect(int nRow) const;
    [[nodiscard]] int RowAt(POINT pt) const;

    Events m_events;
    CPicture m_picture; // what is painted, before it shows
    HFONT m_hFont = nullptr;
    std::vector<Row> m_rows;
    int m_nSelected = -1;
    int m_nTop = 0; // pixels that are scrolled away
    int m_nLine = 16;
    bool m_bSliding = false;
};

} // namespace studio
