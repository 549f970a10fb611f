// Show-only sharing: in show-only mode a handle is a small record, and all records that open the
// same path share one engine, which lives until the last of them is closed.
#pragma once

#include "base/Handles.h"
#include "engine/QELEngine.h"

class CShowOnlyRecord {
public:
    CShowOnlyRecord() = default;
    ~CShowOnlyRecord() { Close(); }
    CShowOnlyRecord(const CShowOnlyRecord&) = delete;
    CShowOnlyRecord& operator=(const CShowOnlyRecord&) = delete;

    int Open(const char* pszPath);
    int Close();

    [[nodiscard]] CQELEngine* Engine() const { return m_pEngine; }
    [[nodiscard]] CHandleEntry& Handle() { return m_handle; }

    // The switch that decides what CreateQELEngine makes.
    static bool IsOn();
    static void Switch(bool bOn);

private:
    void Join(CQELEngine* pEngine, const char* pszPath);

    CQELEngine* m_pEngine = nullptr;
    CShowOnlyRecord* m_pNext = nullptr; // in the list of records that hold a drawing
    CShowOnlyRecord* m_pPrev = nullptr;
    char* m_pszPath =
        nullptr; // null also when it could not be copied: the record is then not found
    CHandleEntry m_handle{HandleKind::Record, this};
};
