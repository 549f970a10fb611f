// The system's dialogs of printing, and what the user chose in them: printer, paper, orientation,
// margins.
#pragma once

#include "tools/studio/model/PrintPage.h"

#include <windows.h>

#include <string>

namespace studio {

class CPrintDialogs {
public:
    CPrintDialogs() = default;
    ~CPrintDialogs();
    CPrintDialogs(const CPrintDialogs&) = delete;
    CPrintDialogs& operator=(const CPrintDialogs&) = delete;

    // The paper of the printer that the system prints on; without one that of the country.
    void TakeDefaults(PageSetup* pSetup);
    // What the printer's own dialog shows next.
    void TakeOrientation(const PageSetup& setup) const;

    // 0: the user left it, or has been told what is wrong.
    int AskPage(HWND hOwner, PageSetup* pSetup);
    // Asks where, and prints there. The printer may have another paper, which is taken.
    int Print(HWND hOwner, const CPagePainter& painter, PageSetup* pSetup,
              const std::wstring& title);

    [[nodiscard]] std::wstring Printer() const; // its name; empty: there is none

private:
    void Note(HGLOBAL hMode, HGLOBAL hNames);

    HGLOBAL m_hMode = nullptr;
    HGLOBAL m_hNames = nullptr;
};

// A sentence in a message.
void TellTrouble(HWND hOwner, const std::wstring& sentence);

} // namespace studio
