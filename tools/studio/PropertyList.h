// A list of properties: names, and values that are edited in their places, each in the way that
// fits it.
#pragma once

#include "tools/studio/Window.h"

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace studio {

struct Property {
    enum class Kind { Text, Switch, Color, Choice };

    std::wstring label;
    Kind kind = Kind::Text;              // numbers are texts, too
    std::wstring text;                   // of a switch "0" or "1", of a colour "#RRGGBB"
    std::vector<std::wstring> choices{}; // of a choice: what its text may be
    std::vector<std::wstring> names{};   // and how each is shown; none: as it is
};

class CPropertyList final : public CControl {
public:
    // A property is to have another text. What it has then is told by SetText.
    using Change = std::function<void(std::size_t, const std::wstring&)>;

    CPropertyList() = default;
    ~CPropertyList();
    CPropertyList(const CPropertyList&) = delete;
    CPropertyList& operator=(const CPropertyList&) = delete;

    int Create(HWND hParent, UINT nId, unsigned nNameTitle, unsigned nValueTitle, Change change);
    void SetProperties(std::vector<Property> properties);
    void SetText(std::size_t nProperty, const std::wstring& text);
    void SetFont(HFONT hFont);
    void FitColumns() const;

    void Edit(int nProperty); // as if it had been clicked on
    void EndEdit(bool bKeep);
    [[nodiscard]] bool IsEditing() const { return m_nEdited >= 0; }
    [[nodiscard]] int Selected() const;

    // A message of the system's to the parent window. 1: it was of this list, and *pResult is
    // what the parent answers.
    int OnNotify(NMHDR* pHeader, LRESULT* pResult);
    // A key, before it becomes a message of a window: Enter and Escape end an editor. Whether that
    // is all that it does.
    bool Translate(const MSG& message);

private:
    // The editors stand within the list, so that their messages go there.
    static LRESULT CALLBACK ListProcedure(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR nId, DWORD_PTR nThis);
    void OnEditor(UINT nWhat);
    void EditText(int nProperty);
    void EditChoice(int nProperty);
    void AskColor(int nProperty);
    void BeginEdit(const wchar_t* pszClass, DWORD nStyle, int nProperty, int nHeight);
    void Tell(int nProperty, const std::wstring& text);
    [[nodiscard]] RECT ValueRect(int nProperty) const;
    [[nodiscard]] std::wstring Shown(const Property& property) const;
    LRESULT OnDraw(NMLVCUSTOMDRAW* pDraw);
    void DrawValue(HDC hdc, int nProperty, RECT rc) const;
    void OnKey(WORD nKey);

    Change m_change;
    std::vector<Property> m_properties;
    HFONT m_hFont = nullptr;
    int m_nLine = 16; // height of its letters
    HWND m_hEditor = nullptr;
    int m_nEdited = -1;
    bool m_bEnding = false;
    HIMAGELIST m_hHeight = nullptr; // of nothing, as tall as a row is to be
    COLORREF m_custom[16] = {};     // colours that the dialog keeps
};

// "#RRGGBB", with or without the word for blinking behind it. 0: it is none.
int ParseColor(const std::wstring& text, COLORREF* pClr);

} // namespace studio
