// The one toolbar: icons with hints that name the keys.
#pragma once

#include "tools/studio/Window.h"

#include <commctrl.h>

namespace studio {

class CToolbar final : public CControl {
public:
    CToolbar() = default;
    ~CToolbar();
    CToolbar(const CToolbar&) = delete;
    CToolbar& operator=(const CToolbar&) = delete;

    int Create(HWND hParent, UINT nId);
    void DrawIcons(); // anew, at the resolution of the monitor
    void Enable(UINT nCommand, bool bEnabled) const;
    void Check(UINT nCommand, bool bChecked) const;
    [[nodiscard]] int Height() const;
    static void OnNotify(NMHDR* pHeader);

private:
    HIMAGELIST m_hIcons = nullptr;
};

} // namespace studio
