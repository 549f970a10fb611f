// The panel at the right, from which a drawing is played with.
#pragma once

#include "tools/studio/Window.h"

namespace studio {

class CDrawingFile;

class CRunPanel final : public CWindow {
public:
    bool Create(HWND hParent, UINT nId);
    void Show(CDrawingFile* pFile); // null: none; again after each reading of the file
    void Tick(DWORD nPassed);       // milliseconds; before the picture is brought up to date
    void SetFont(HFONT hFont);

private:
    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;

    CDrawingFile* m_pFile = nullptr;
    HFONT m_hFont = nullptr;
};

} // namespace studio
