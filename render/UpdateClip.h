// Clips a device context to a dirty area for the time of one update, and tells afterwards what of
// the area the context's own clip did not let through. All of the context is restored.
#pragma once

#include "base/GdiScopes.h"
#include "render/DirtyArea.h"

class CUpdateClip {
public:
    CUpdateClip(HDC hdc, const CDirtyArea& dirty) noexcept;
    ~CUpdateClip();
    CUpdateClip(const CUpdateClip&) = delete;
    CUpdateClip& operator=(const CUpdateClip&) = delete;

    // Something of the area can be painted on; false also without what it takes.
    [[nodiscard]] bool IsOpen() const { return m_bOpen; }
    // What is painted on, as rectangles of the context's units: somewhat more than the dirty ones
    // where a unit is no pixel.
    [[nodiscard]] const CDirtyArea& Painted() const { return m_painted; }
    // Takes what was let through out of the area. 0, and the area stays, when that fails.
    int TakeBack(CDirtyArea* pDirty) const;

private:
    [[nodiscard]] RECT ToDevice(const RECT& rc) const;
    [[nodiscard]] RECT ToUnits(const RECT& rc) const;
    [[nodiscard]] bool TakeArea(const CDirtyArea& dirty);
    [[nodiscard]] bool LeaveWhatIsClipped() const;
    [[nodiscard]] bool Subtract(HRGN hRegion) const;
    [[nodiscard]] bool OpenBeyond(const RECT& rcSurface) const;
    void AddRest(CDirtyArea* pDirty) const;

    HDC m_hdc;
    int m_nSaved = 0;
    bool m_bPlain = true; // a unit is a pixel
    bool m_bOpen = false;
    CRegion m_area;   // device
    CRegion m_closed; // what of it is not let through, device
    CDirtyArea m_painted;
};
