// The panel at the right, from which a drawing is played with: a row for all that can be set, the
// properties of the one that is selected, signals, and what live data does.
#pragma once

#include "tools/studio/PropertyList.h"
#include "tools/studio/RowList.h"
#include "tools/studio/Window.h"
#include "tools/studio/model/LiveRows.h"
#include "tools/studio/model/Signals.h"

#include <map>
#include <string>
#include <vector>

namespace studio {

class CDrawingFile;
class CPlay;

class CRunPanel final : public CWindow {
public:
    bool Create(HWND hParent, UINT nId);
    // Nulls: none; again after each reading of the file.
    void Show(CDrawingFile* pFile, CPlay* pPlay);
    void Tick(DWORD nPassed); // milliseconds; before the picture is brought up to date
    void SetFont(HFONT hFont);
    void Refresh();                            // values were set by others
    void SetMessage(const std::wstring& text); // about live data; the panel's own come first
    bool Translate(const MSG& message) { return m_properties.Translate(message); }

private:
    // What a line of the property list is.
    struct Item {
        enum class What { Value, Signal, Low, High, Period, Column, Setting } what;
        const LiveProperty* pProperty = nullptr; // of a value or a setting
    };

    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(UINT nId, UINT nWhat);
    int MakeControls();
    void Layout();
    void Paint();
    void Enable() const;

    void MakeRows();
    void MakeProperties();
    void AddSignal(std::vector<Property>* pProperties);
    void AddItem(Item item, Property property, std::vector<Property>* pProperties);
    [[nodiscard]] CRowList::Row RowOf(const LiveRow& row) const;
    [[nodiscard]] const LiveRow* Current() const; // null: none is selected
    [[nodiscard]] const SignalSetting* CurrentSignal() const;
    [[nodiscard]] std::wstring TextOfItem(const Item& item) const;

    void Slide(int nRow, double fAt);
    void Change(std::size_t nItem, const std::wstring& text);
    void ChangeSignal(const Item& item, const std::wstring& text);
    void ChooseSignal(int nKind);
    void ChooseTable(SignalSetting setting);
    void SetValue(const std::string& name, const std::string& text);
    void TogglePlay();
    void SetSpeed();
    void Keep();
    void Fault(const std::string& why);
    void ShowMessage() const;

    CDrawingFile* m_pFile = nullptr;
    CPlay* m_pPlay = nullptr;
    HFONT m_hFont = nullptr;
    int m_nLine = 16;
    CRowList m_list;
    CPropertyList m_properties;
    CLiveRows m_rows;
    std::vector<Item> m_items;
    std::string m_selected;                                    // the name of the row
    std::map<std::string, std::vector<SignalColumn>> m_tables; // that rows were given
    std::map<std::string, std::wstring> m_columns;             // and the column of each
    std::wstring m_fault;
    std::wstring m_message;
};

} // namespace studio
