// The codes with their sentences, and where failures are kept. The handle's own are kept in the
// objects behind it (engine/QELEngine.h, engine/ShowOnly.h).
#include "engine/Errors.h"

#include "engine/Gates.h"
#include "xml/XmlTree.h"

#include <string_view>

namespace {

constexpr ErrorRow g_rows[] = {
    {QEL_ERROR_NONE, "QEL_ERROR_NONE", "No call has failed."},
    {QEL_ERROR_HANDLE, "QEL_ERROR_HANDLE",
     "The engine handle is null or not live: use one that CreateQELEngine gave and that is not "
     "destroyed."},
    {QEL_ERROR_ARGUMENT, "QEL_ERROR_ARGUMENT",
     "A pointer that the call needs is null, or an argument is none that it takes."},
    {QEL_ERROR_SHOW_ONLY, "QEL_ERROR_SHOW_ONLY",
     "In show-only mode a drawing has no elements and is not edited or saved: open it with "
     "QELShowOnly switched off."},
    {QEL_ERROR_NO_DRAWING, "QEL_ERROR_NO_DRAWING",
     "No drawing is open: open a file, or begin a new drawing with QELNewFile."},
    {QEL_ERROR_ELEMENT, "QEL_ERROR_ELEMENT",
     "The element handle is null, deleted, or of another drawing."},
    {QEL_ERROR_TYPE, "QEL_ERROR_TYPE",
     "There are no elements of this type: the types are QEL_TYPE_..., without path, defs and use."},
    {QEL_ERROR_PLACE, "QEL_ERROR_PLACE",
     "The element cannot stand there: the root stays alone, nothing goes into itself, the one "
     "before it is a child of the same parent, and at most 512 levels nest."},
    {QEL_ERROR_RECORD_SIZE, "QEL_ERROR_RECORD_SIZE",
     "The record has the wrong size: set its size word, and give a buffer of its whole size."},
    {QEL_ERROR_VALUE, "QEL_ERROR_VALUE",
     "The value, or the number of what it is for, is out of its range or not taken by this "
     "element."},
    {QEL_ERROR_NO_RECT, "QEL_ERROR_NO_RECT",
     "The element has no rectangle: it has no points, or nothing is in it."},
    {QEL_ERROR_BUFFER, "QEL_ERROR_BUFFER",
     "The buffer is too small: give one of the size that the call has told."},
    {QEL_ERROR_MEMORY, "QEL_ERROR_MEMORY", "Memory ran out."},
    {QEL_ERROR_PATH, "QEL_ERROR_PATH",
     "The path cannot be spelled in the ANSI code page, or is too long in it: use QELOpenFileW."},
    {QEL_ERROR_NO_FILE, "QEL_ERROR_NO_FILE",
     "There is no such file: check the path, and for a relative one the current folder."},
    {QEL_ERROR_IN_USE, "QEL_ERROR_IN_USE",
     "Another program has the file open: close it there, or open it with QELOpenFileW, which "
     "shares it with others that read it."},
    {QEL_ERROR_OPEN, "QEL_ERROR_OPEN",
     "The file cannot be opened: it may be a folder, or its rights do not allow it."},
    {QEL_ERROR_READ, "QEL_ERROR_READ",
     "The file cannot be read to its end: its disk or network has failed."},
    {QEL_ERROR_WRITE, "QEL_ERROR_WRITE",
     "The file cannot be written: the folder is missing or may not be written to, or the disk is "
     "full."},
    {QEL_ERROR_REPLACE, "QEL_ERROR_REPLACE",
     "The file that is there cannot be replaced: it is read-only, a folder, a device, or open in "
     "another program."},
    {QEL_ERROR_NOT_QEL, "QEL_ERROR_NOT_QEL",
     "The file is no drawing: its first element has to be <qel>."},
    {QEL_ERROR_GDI, "QEL_ERROR_GDI",
     "The device context is none, or the system has no more drawing objects."},
    {QEL_ERROR_XML_DEPTH, "QEL_ERROR_XML_DEPTH", "Elements are nested more than 512 levels deep."},
    {QEL_ERROR_XML_EMPTY, "QEL_ERROR_XML_EMPTY", "The drawing is empty."},
    {QEL_ERROR_XML_ATTR, "QEL_ERROR_XML_ATTR",
     "An attribute's value is not closed by its quote, or an attribute of the XML declaration "
     "cannot be read."},
    {QEL_ERROR_XML_START_TAG, "QEL_ERROR_XML_START_TAG",
     "A start tag cannot be read here: NAME=\"VALUE\", '/>' or '>' is expected."},
    {QEL_ERROR_XML_END_NAME, "QEL_ERROR_XML_END_NAME",
     "The drawing ends right after an element's name."},
    {QEL_ERROR_XML_END_TAG, "QEL_ERROR_XML_END_TAG", "The drawing ends inside a start tag."},
    {QEL_ERROR_XML_SLASH, "QEL_ERROR_XML_SLASH", "'/' is not followed by '>'."},
    {QEL_ERROR_XML_MISMATCH, "QEL_ERROR_XML_MISMATCH",
     "The end tag does not match the element that is open."},
    {QEL_ERROR_XML_END_CONTENT, "QEL_ERROR_XML_END_CONTENT",
     "The drawing ends inside an element's content."},
};

constexpr bool AreSound()
{
    uint32_t nLast = 0;
    for (const ErrorRow& row : g_rows) {
        const std::string_view sentence = row.pszSentence;
        if (row.nCode < nLast || (row.nCode == nLast && nLast)) return false;
        if (sentence.size() >= sizeof QELERROR{}.szText || !sentence.ends_with('.')) return false;
        nLast = row.nCode;
    }
    return true;
}
static_assert(AreSound(), "codes ascend, and the sentences fit into the record");
constexpr int CodeOfText(XmlError nError)
{
    return static_cast<int>(QEL_ERROR_XML) + static_cast<int>(nError);
}
static_assert(QEL_ERROR_XML_DEPTH == CodeOfText(XML_ERR_MEMORY) &&
                  QEL_ERROR_XML_EMPTY == CodeOfText(XML_ERR_EMPTY) &&
                  QEL_ERROR_XML_ATTR == CodeOfText(XML_ERR_ATTR) &&
                  QEL_ERROR_XML_START_TAG == CodeOfText(XML_ERR_START_TAG) &&
                  QEL_ERROR_XML_END_NAME == CodeOfText(XML_ERR_END_NAME) &&
                  QEL_ERROR_XML_END_TAG == CodeOfText(XML_ERR_END_TAG) &&
                  QEL_ERROR_XML_SLASH == CodeOfText(XML_ERR_SLASH) &&
                  QEL_ERROR_XML_MISMATCH == CodeOfText(XML_ERR_MISMATCH) &&
                  QEL_ERROR_XML_END_CONTENT == CodeOfText(XML_ERR_END_CONTENT),
              "those of a text have the parser's numbers");

// The code of this thread's last failure without a live handle, in a place that the system keeps
// for each thread. Without such a place it is not kept.
class CThreadCode {
public:
    CThreadCode() = default;
    ~CThreadCode()
    {
        if (m_nPlace) ::TlsFree(m_nPlace - 1);
    }
    CThreadCode(const CThreadCode&) = delete;
    CThreadCode& operator=(const CThreadCode&) = delete;

    void Set(uint32_t nCode) const
    {
        if (m_nPlace) ::TlsSetValue(m_nPlace - 1, ToHandle<void*>(nCode));
    }
    // The system's own last error, which a read of the place clears, stays.
    [[nodiscard]] uint32_t Get() const
    {
        if (!m_nPlace) return QEL_ERROR_NONE;
        const DWORD nSystem = ::GetLastError();
        const uintptr_t nCode = ToNumber(::TlsGetValue(m_nPlace - 1));
        ::SetLastError(nSystem);
        return static_cast<uint32_t>(nCode);
    }

private:
    static_assert(TLS_OUT_OF_INDEXES + 1 == 0);
    const DWORD m_nPlace = ::TlsAlloc() + 1; // 0: none, also before the constructor has run
};

const CThreadCode g_threadCode;

} // namespace

int Fail(HQELENGINE hEngine, const Failure& failure)
{
    if (Failure* pKept = FailureOf(hEngine))
        *pKept = failure;
    else
        g_threadCode.Set(failure.nCode);
    return 0;
}

int Fail(HQELENGINE hEngine, uint32_t nCode)
{
    return nCode == QEL_ERROR_NONE ? 0 : Fail(hEngine, Failure{nCode});
}

Failure LastFailure(HQELENGINE hEngine)
{
    const Failure* pKept = FailureOf(hEngine);
    return pKept ? *pKept : Failure{g_threadCode.Get()};
}

std::span<const ErrorRow> ErrorRows()
{
    return g_rows;
}

const char* ErrorSentence(uint32_t nCode)
{
    for (const ErrorRow& row : g_rows)
        if (row.nCode == nCode) return row.pszSentence;
    return "The drawing cannot be read.";
}
