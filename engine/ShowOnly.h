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

    // These leave the reason in LastFailure when they fail.
    int Open(const char* pszPath);
    int Open(const XmlSource& source);
    int Close();

    // What the engine has that this one makes; of one that is shared already its own counts.
    void SetTextPage(uint32_t nPage) { m_nTextPage = nPage; }
    [[nodiscard]] uint32_t TextPage() const { return m_nTextPage; }

    [[nodiscard]] CQELEngine* Engine() const { return m_pEngine; }
    [[nodiscard]] CHandleEntry& Handle() { return m_handle; }
    // Of the last failed call on this handle; the engine is others' as well.
    [[nodiscard]] Failure& LastFailure() { return m_failure; }

    // The switch that decides what CreateQELEngine makes.
    static bool IsOn();
    static void Switch(bool bOn);

private:
    int Fail(const Failure& failure);
    int OpenOwn(const XmlSource& source);
    bool JoinSharedOr(CQELEngine* pOwn);
    [[nodiscard]] CQELEngine* Leave();
    // Under the lock.
    [[nodiscard]] CQELEngine* FindShared() const;
    void Join(CQELEngine* pEngine);

    CQELEngine* m_pEngine = nullptr;
    CShowOnlyRecord* m_pNext = nullptr; // in the list of records that hold a drawing
    CShowOnlyRecord* m_pPrev = nullptr;
    wchar_t* m_pszPath = nullptr; // null for a drawing from memory, which nobody shares
    uint32_t m_nTextPage = PAGE_ANSI;
    Failure m_failure;
    CHandleEntry m_handle{HandleKind::Record, this};
};
