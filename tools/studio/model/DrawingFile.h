// An open drawing: the engine that shows it, the bytes that it was read from, and what came of the
// last reading. While a newer file cannot be read, the last good picture stays.
#pragma once

#include "include/QELEngine.h"
#include "tools/studio/model/Source.h"

#include <functional>
#include <string>
#include <vector>

namespace studio {

struct OpenFault {
    DWORD nCode = QEL_ERROR_NONE; // none: the last reading went well
    DWORD nLine = 0;              // 0: the fault has no place in the text
    DWORD nColumn = 0;
    std::wstring sentence;
};

class CDrawingFile {
public:
    explicit CDrawingFile(const std::wstring& path);
    ~CDrawingFile();
    CDrawingFile(const CDrawingFile&) = delete;
    CDrawingFile& operator=(const CDrawingFile&) = delete;

    // Reads the file. 1: the engine is another one, with the new drawing; its elements have other
    // handles. 0: Fault() tells why, and engine and elements are as they were.
    int Load();
    // Whether the file is another one than was read, and has been for two looks: who writes it may
    // not be done at the first.
    bool HasChanged();

    [[nodiscard]] HQELENGINE Engine() const { return m_hEngine; }     // null: it never opened
    [[nodiscard]] const std::wstring& Path() const { return m_path; } // the full one
    [[nodiscard]] std::wstring Name() const;
    [[nodiscard]] const OpenFault& Fault() const { return m_fault; }
    [[nodiscard]] const std::vector<SourceFinding>& Findings() const { return m_findings; }
    // What the file says of an element; null when it says nothing.
    [[nodiscard]] const SourceElement* SourceOf(HQELELEM hElem) const;
    // The element that a finding is about; null while the file is not the one that is shown.
    [[nodiscard]] HQELELEM ElementOf(const SourceFinding& finding) const;
    // An element's place in the tree, from the root down, and the element at such a place.
    [[nodiscard]] std::vector<int> PathOf(HQELELEM hElem) const;
    [[nodiscard]] HQELELEM ElementAt(const std::vector<int>& path) const;

    // Called with each engine that a reading has made, before it is shown: to set its values anew.
    void SetAfterOpen(std::function<void(HQELENGINE)> call) { m_afterOpen = std::move(call); }

private:
    struct Stamp {
        FILETIME time{0, 0};
        DWORD nSize = 0;
        bool bThere = false;

        bool operator==(const Stamp& other) const;
    };
    static Stamp StampOf(const std::wstring& path);

    int ReadBytes(std::string* pBytes);
    int Open(const std::string& bytes);
    void TakeSource(const std::string& bytes, bool bShown);
    void NoteFault(HQELENGINE hEngine);

    std::wstring m_path;
    HQELENGINE m_hEngine = nullptr;
    OpenFault m_fault;
    std::vector<SourceElement> m_elements;
    std::vector<HQELELEM> m_handles; // of the same elements
    std::vector<SourceFinding> m_findings;
    bool m_bCurrent = false; // what is shown is what was read last
    Stamp m_read;
    Stamp m_seen;
    std::function<void(HQELENGINE)> m_afterOpen;
};

} // namespace studio
