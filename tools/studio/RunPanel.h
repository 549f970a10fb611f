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
    void TogglePlay();
    void DriveAll(); // each value that has no signal gets one
    void DriveNone();
    void FocusFilter() const;
    bool Translate(const MSG& message) { return m_properties.Translate(message); }

private:
    // What a line of the property list is.
    struct Item {
        enum class What { Value, Target, Signal, Low, High, Period, Column, Setting } what;
        const LiveProperty* pProperty = nullptr; // of a value or a setting
    };

    LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(UINT nId, UINT nWhat);
    int MakeControls();
    void Layout();
    void Paint();
    void Enable() const;

    void MakeRows();
    void FilterRows();
    void TakeFilter();
    [[nodiscard]] bool IsFiltered() const; // there are rows enough for a filter
    [[nodiscard]] const LiveRow& RowAt(std::size_t nShown) const
    {
        return m_rows.Rows()[m_shown[nShown]];
    }
    void MakeProperties();
    void AddItem(Item item, Property property, std::vector<Property>* pProperties);
    [[nodiscard]] CRowList::Row RowOf(const LiveRow& row) const;
    [[nodiscard]] const LiveRow* Current() const; // null: none is selected
    [[nodiscard]] std::wstring TextOfItem(const Item& item) const;

    void Slide(int nRow, double fAt);
    void Change(std::size_t nItem, const std::wstring& text);
    void SetValue(const std::string& name, const std::string& text);
    void SetSpeed();
    void Keep();
    void Fault(const std::string& why);
    void ShowMessage() const;

    // RunSignals.cpp
    [[nodiscard]] const LiveProperty* Target() const; // that the signal of now is about
    [[nodiscard]] const SignalSetting* CurrentSignal() const;
    [[nodiscard]] std::wstring SignalOf(const LiveRow& row) const;
    [[nodiscard]] std::wstring TextOfSignal(Item::What what) const;
    void AddSignal(std::vector<Property>* pProperties);
    void AddSetting(bool bSwitch, std::vector<Property>* pProperties);
    void ChangeSignal(Item::What what, const std::wstring& text);
    void ChooseSignal(int nChoice);
    void ChooseTable(SignalSetting setting);
    void SignalsChanged();

    CDrawingFile* m_pFile = nullptr;
    CPlay* m_pPlay = nullptr;
    HFONT m_hFont = nullptr;
    int m_nLine = 16;
    CRowList m_list;
    CPropertyList m_properties;
    CLiveRows m_rows;
    std::vector<std::size_t> m_shown; // the rows that the filter takes
    std::wstring m_filter;
    std::vector<Item> m_items;
    std::string m_selected;                                    // the name of the row
    std::string m_target;                                      // what a signal was chosen for last
    std::map<std::string, std::vector<SignalColumn>> m_tables; // that properties were given
    std::map<std::string, std::wstring> m_columns;             // and the column of each
    std::wstring m_fault;
    std::wstring m_message;
};

} // namespace studio
