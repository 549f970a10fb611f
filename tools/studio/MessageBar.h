// The bar above the picture that tells why a file cannot be shown.
#pragma once

#include "tools/studio/Window.h"

#include <string>

namespace studio {

class CMessageBar final : public CWindow {
public:
    int Create(HWND hParent, UINT nId);
    void SetFont(HFONT hFont) { m_hFont = hFont; }
    void SetText(const std::wstring& text);       // empty: there is nothing to tell
    [[nodiscard]] int HeightAt(int nWidth) const; // 0 without a text

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void Paint();
    [[nodiscard]] RECT TextRect(int nWidth) const;

    HFONT m_hFont = nullptr;
    std::wstring m_text;
};

} // namespace studio
