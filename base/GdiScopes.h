// Guards for one drawing call: each puts the device context's state back, and deletes what it made,
// when it goes out of scope. Guards undo in the reverse order of their declaration.
#pragma once

#include "base/Refusals.h"

#include <windows.h>

// Selects an object that somebody else owns; null selects nothing.
class CSelectScope {
public:
    CSelectScope(HDC hdc, HGDIOBJ hObject) noexcept
        : m_hdc(hdc), m_hPrev(hObject ? ::SelectObject(hdc, hObject) : nullptr)
    {
    }
    ~CSelectScope() { Restore(); }
    CSelectScope(const CSelectScope&) = delete;
    CSelectScope& operator=(const CSelectScope&) = delete;

    void Restore() noexcept
    {
        if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
        m_hPrev = nullptr;
    }

private:
    HDC m_hdc;
    HGDIOBJ m_hPrev;
};

class CBkModeScope {
public:
    CBkModeScope(HDC hdc, int nMode) noexcept : m_hdc(hdc), m_nPrev(::SetBkMode(hdc, nMode)) {}
    ~CBkModeScope() { ::SetBkMode(m_hdc, m_nPrev); }
    CBkModeScope(const CBkModeScope&) = delete;
    CBkModeScope& operator=(const CBkModeScope&) = delete;

private:
    HDC m_hdc;
    int m_nPrev;
};

class CBkColorScope {
public:
    CBkColorScope(HDC hdc, COLORREF clr) noexcept : m_hdc(hdc), m_clrPrev(::SetBkColor(hdc, clr)) {}
    ~CBkColorScope() { ::SetBkColor(m_hdc, m_clrPrev); }
    CBkColorScope(const CBkColorScope&) = delete;
    CBkColorScope& operator=(const CBkColorScope&) = delete;

private:
    HDC m_hdc;
    COLORREF m_clrPrev;
};

class CTextColorScope {
public:
    CTextColorScope(HDC hdc, COLORREF clr) noexcept
        : m_hdc(hdc), m_clrPrev(::SetTextColor(hdc, clr))
    {
    }
    ~CTextColorScope() { ::SetTextColor(m_hdc, m_clrPrev); }
    CTextColorScope(const CTextColorScope&) = delete;
    CTextColorScope& operator=(const CTextColorScope&) = delete;

private:
    HDC m_hdc;
    COLORREF m_clrPrev;
};

class CArcDirectionScope {
public:
    CArcDirectionScope(HDC hdc, int nDirection) noexcept
        : m_hdc(hdc), m_nPrev(::SetArcDirection(hdc, nDirection))
    {
    }
    ~CArcDirectionScope() { ::SetArcDirection(m_hdc, m_nPrev); }
    CArcDirectionScope(const CArcDirectionScope&) = delete;
    CArcDirectionScope& operator=(const CArcDirectionScope&) = delete;

private:
    HDC m_hdc;
    int m_nPrev;
};

// Moves to a point and back to where the current position was.
class CPositionScope {
public:
    CPositionScope(HDC hdc, POINT pt) noexcept
        : m_hdc(hdc), m_bMoved(::MoveToEx(hdc, pt.x, pt.y, &m_ptPrev) != FALSE)
    {
    }
    ~CPositionScope()
    {
        if (m_bMoved) ::MoveToEx(m_hdc, m_ptPrev.x, m_ptPrev.y, nullptr);
    }
    CPositionScope(const CPositionScope&) = delete;
    CPositionScope& operator=(const CPositionScope&) = delete;

private:
    HDC m_hdc;
    POINT m_ptPrev{0, 0};
    bool m_bMoved;
};

// Texts stand where they are put: the host may have them follow the current position, and move it.
class CTextPlaceScope {
public:
    explicit CTextPlaceScope(HDC hdc) noexcept : m_hdc(hdc), m_nAlign(::GetTextAlign(hdc))
    {
        if (IsFollowing()) ::SetTextAlign(hdc, m_nAlign & ~static_cast<UINT>(TA_UPDATECP));
    }
    ~CTextPlaceScope()
    {
        if (IsFollowing()) ::SetTextAlign(m_hdc, m_nAlign);
    }
    CTextPlaceScope(const CTextPlaceScope&) = delete;
    CTextPlaceScope& operator=(const CTextPlaceScope&) = delete;

private:
    [[nodiscard]] bool IsFollowing() const
    {
        return m_nAlign != GDI_ERROR && (m_nAlign & TA_UPDATECP);
    }

    HDC m_hdc;
    UINT m_nAlign;
};

// Goes back to the current position when something has moved it, and makes no call else.
class CPositionBackScope {
public:
    explicit CPositionBackScope(HDC hdc) noexcept
        : m_hdc(hdc), m_bKnown(::GetCurrentPositionEx(hdc, &m_ptBefore) != FALSE)
    {
    }
    ~CPositionBackScope()
    {
        POINT pt{};
        if (!m_bKnown || !::GetCurrentPositionEx(m_hdc, &pt)) return;
        if (pt.x != m_ptBefore.x || pt.y != m_ptBefore.y)
            ::MoveToEx(m_hdc, m_ptBefore.x, m_ptBefore.y, nullptr);
    }
    CPositionBackScope(const CPositionBackScope&) = delete;
    CPositionBackScope& operator=(const CPositionBackScope&) = delete;

private:
    HDC m_hdc;
    POINT m_ptBefore{0, 0};
    bool m_bKnown;
};

// A region that is deleted unless it is taken out.
class CRegion {
public:
    explicit CRegion(HRGN hRegion) noexcept : m_hRegion(hRegion) {}
    ~CRegion()
    {
        if (m_hRegion) ::DeleteObject(m_hRegion);
    }
    CRegion(const CRegion&) = delete;
    CRegion& operator=(const CRegion&) = delete;

    [[nodiscard]] HRGN Get() const noexcept { return m_hRegion; }
    HRGN Take() noexcept
    {
        const HRGN hRegion = m_hRegion;
        m_hRegion = nullptr;
        return hRegion;
    }

private:
    HRGN m_hRegion;
};

// A font that is deleted at the end of the scope; it must not be selected any more then.
class CFont {
public:
    explicit CFont(HFONT hFont) noexcept : m_hFont(hFont) {}
    ~CFont()
    {
        if (m_hFont) ::DeleteObject(m_hFont);
    }
    CFont(const CFont&) = delete;
    CFont& operator=(const CFont&) = delete;

    [[nodiscard]] HFONT Get() const noexcept { return m_hFont; }

private:
    HFONT m_hFont;
};

// A brush that is deleted at the end of the scope; it must not be selected any more then.
class CBrush {
public:
    explicit CBrush(HBRUSH hBrush) noexcept : m_hBrush(hBrush) {}
    ~CBrush()
    {
        if (m_hBrush) ::DeleteObject(m_hBrush);
    }
    CBrush(const CBrush&) = delete;
    CBrush& operator=(const CBrush&) = delete;

    [[nodiscard]] HBRUSH Get() const noexcept { return m_hBrush; }

private:
    HBRUSH m_hBrush;
};
