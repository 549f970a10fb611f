// The preview of a printed page: shows the page as it will be, and from there prints it. It has a
// copy of the drawing with its values, so that what it shows is what is printed.
#pragma once

#include "tools/studio/Picture.h"
#include "tools/studio/PrintDialogs.h"
#include "tools/studio/Window.h"

namespace studio {

class CPreviewWindow final : public CWindow {
public:
    // path: of the drawing.
    CPreviewWindow(const CPagePainter& painter, PageSetup* pSetup, CPrintDialogs* pDialogs,
                   std::wstring path);
    ~CPreviewWindow() override;
    CPreviewWindow(const CPreviewWindow&) = delete;
    CPreviewWindow& operator=(const CPreviewWindow&) = delete;

    void Show(HWND hOwner); // until the user closes it; the owner waits

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    int MakeControls();
    void SetFont();
    void Layout();
    void OnCommand(UINT nId);
    void OnDpi(const RECT& rc);
    void Renew(); // the page is another one
    void PrintMetafile();
    void Wait();
    void Paint();
    void PaintPage(HDC hdc);
    void PaintPaper(HDC hdc, const PageDevice& device);
    void ShowInfo() const;
    [[nodiscard]] RECT PageArea() const;
    [[nodiscard]] PageDevice Device() const; // in which the paper fits into the area
    [[nodiscard]] HWND Control(UINT nId) const;

    const CPagePainter& m_painter;
    PageSetup* m_pSetup;
    CPrintDialogs* m_pDialogs;
    std::wstring m_path;
    CPicture m_frame; // all that the page's area shows
    bool m_bStale = true;
    bool m_bOpen = false;
    HFONT m_hFont = nullptr;
    HWND m_hOwner = nullptr;
    HWND m_hFocus = nullptr; // where it was when the window was left
};

} // namespace studio
