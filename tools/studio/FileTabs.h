// The tabs of the open drawings.
#pragma once

#include "tools/studio/Window.h"

#include <commctrl.h>

#include <string>

namespace studio {

class CFileTabs final : public CControl {
public:
    int Create(HWND hParent, UINT nId);
    void Add(const std::wstring& name) const;
    void Remove(int nTab) const;
    void Choose(int nTab) const;
    [[nodiscard]] int Chosen() const;           // -1: there is none
    [[nodiscard]] int At(POINT ptScreen) const; // -1: no tab is there
    void SetLook(HFONT hFont);                  // by the font and the monitor that it is on
    [[nodiscard]] int Height() const;

private:
    int m_nHeight = 0; // of a tab
};

} // namespace studio
