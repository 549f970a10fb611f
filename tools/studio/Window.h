// A window of our own, and one of the system's controls in an object.
#pragma once

#include <windows.h>

namespace studio {

// What all windows of this program derive from: the system's messages come to OnMessage.
class CWindow {
public:
    CWindow() = default;
    virtual ~CWindow();
    CWindow(const CWindow&) = delete;
    CWindow& operator=(const CWindow&) = delete;

    [[nodiscard]] HWND Handle() const { return m_hWnd; }
    void Place(const RECT& rc) const; // an empty rectangle hides the window
    [[nodiscard]] RECT Client() const;
    [[nodiscard]] int Scaled(int nAt96) const; // pixels that are so many at 96 dots an inch

protected:
    struct Looks {
        const wchar_t* pszClass;
        const wchar_t* pszTitle = L"";
        DWORD nStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
        DWORD nExtra = 0;
        HBRUSH hGround = nullptr;
        const wchar_t* pszCursor = nullptr; // IDC_..., null: the arrow
        RECT rc{0, 0, 0, 0};
    };
    int Make(const Looks& looks, HWND hParent, UINT nId = 0);
    virtual LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd = nullptr;
};

// A control of the system. It belongs to its parent window, which destroys it.
class CControl {
public:
    [[nodiscard]] HWND Handle() const { return m_hWnd; }
    void Place(const RECT& rc) const;
    void SetFont(HFONT hFont) const;
    // NOLINTNEXTLINE(modernize-use-nodiscard): many messages answer nothing
    LRESULT Send(UINT nMessage, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageW(m_hWnd, nMessage, wParam, lParam);
    }

protected:
    int Make(const wchar_t* pszClass, DWORD nStyle, HWND hParent, UINT nId, DWORD nExtra = 0);

private:
    HWND m_hWnd = nullptr;
};

template <typename T>
LPARAM Param(T* pData)
{
    return reinterpret_cast<LPARAM>(pData);
}

// A pointer or handle that the system passes on as a number.
template <typename T, typename N>
T Passed(N nNumber)
{
    return reinterpret_cast<T>(nNumber); // NOLINT(performance-no-int-to-ptr)
}

inline POINT PointOf(LPARAM lParam)
{
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}

} // namespace studio
