// The life of a drawing in memory and in files of wide paths: each way gives what a file gives, and
// whatever fails tells why.
#include "fuzz/Life.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr wchar_t SAVED_WIDE[] = L"fuzz-life-saved.qel";

DWORD Size(const std::string& bytes)
{
    return static_cast<DWORD>(bytes.size());
}

// What the handle tells of its last failure, which has the form that is promised.
DWORD ErrorOf(HQELENGINE h)
{
    QELERROR error{};
    FUZZ_CHECK(!QELGetError(h, &error) && !QELGetError(h, nullptr));
    error.nSize = sizeof error;
    const int nResult = QELGetError(h, &error);
    FUZZ_CHECK((nResult == 1) == (error.nCode != QEL_ERROR_NONE));
    FUZZ_CHECK(std::memchr(error.szText, 0, sizeof error.szText) && *error.szText);
    FUZZ_CHECK((error.nLine == 0) == (error.nColumn == 0));
    if (error.nLine) FUZZ_CHECK(error.nCode > QEL_ERROR_XML);
    return error.nCode;
}

} // namespace

// The text of the file that was opened with that result, from memory: the same comes of it.
void CLife::OpenInMemory(int nResult) const
{
    const std::string text = ReadHostFile(PATH);
    const DWORD nCode = ErrorOf(m_hEngine);
    const HQELENGINE h = CreateQELEngine();
    TakeTextPage(h);
    FUZZ_CHECK(QELNewFile(h) && !QELOpenMemory(h, nullptr, 1) && QELGetRootElem(h));
    FUZZ_CHECK(QELOpenMemory(h, text.data(), Size(text)) == nResult);
    FUZZ_CHECK((QELGetRootElem(h) != nullptr) == (nResult == 1) && !QELIsModified(h));
    if (!nResult) FUZZ_CHECK(ErrorOf(h) == nCode && nCode != QEL_ERROR_NONE);
    FUZZ_CHECK(DestroyQELEngine(h));
}

// What was saved, into memory and by a wide path, and opened from there.
void CLife::CompareWithMemory(const std::string& saved)
{
    FUZZ_CHECK(!QELIsModified(m_hEngine));
    DWORD nSize = 0;
    FUZZ_CHECK(QELSaveMemory(m_hEngine, nullptr, &nSize) && nSize == Size(saved));
    std::string bytes(saved.size(), 'x');
    nSize = Size(saved) - 1;
    FUZZ_CHECK(!QELSaveMemory(m_hEngine, bytes.data(), &nSize) && nSize == Size(saved));
    FUZZ_CHECK(ErrorOf(m_hEngine) == QEL_ERROR_BUFFER && bytes == std::string(saved.size(), 'x'));
    FUZZ_CHECK(QELSaveMemory(m_hEngine, bytes.data(), &nSize) && bytes == saved);
    FUZZ_CHECK(QELSaveFileW(m_hEngine, SAVED_WIDE) && ReadHostFile(SAVED) == saved);

    const HostTree expected = Reopened(ReadAll());
    const HQELENGINE h = CreateQELEngine();
    TakeTextPage(h);
    FUZZ_CHECK(QELOpenMemory(h, saved.data(), Size(saved)));
    FUZZ_CHECK(IsSameTree(expected, ReadHostTree(h, QELGetRootElem(h))));
    FUZZ_CHECK(QELOpenFileW(h, SAVED_WIDE));
    FUZZ_CHECK(IsSameTree(expected, ReadHostTree(h, QELGetRootElem(h))));
    // Cut somewhere: a drawing or none, and then for a reason.
    const auto nCut = static_cast<DWORD>(m_nRead * 7 % saved.size());
    const int nResult = QELOpenMemory(h, saved.data(), nCut);
    FUZZ_CHECK((QELGetRootElem(h) != nullptr) == (nResult == 1));
    if (!nResult) FUZZ_CHECK(ErrorOf(h) > QEL_ERROR_NONE);
    FUZZ_CHECK(DestroyQELEngine(h));
}

void CLife::CallFilesWithoutEngine(HQELENGINE h)
{
    DWORD nSize = 0;
    FUZZ_CHECK(!QELOpenFileW(h, SAVED_WIDE) && !QELSaveFileW(h, SAVED_WIDE));
    FUZZ_CHECK(!QELOpenMemory(h, "<qel/>", 6) && !QELSaveMemory(h, nullptr, &nSize));
    FUZZ_CHECK(!QELSetTextCodePage(h, 1) && !QELGetTextCodePage(h, &nSize));
    FUZZ_CHECK(!QELNewFileEx(h, 0) && !QELSetTextW(h, "a", L"b"));
    FUZZ_CHECK(!QELSetPixelScale(h, 100) && !QELGetPixelScale(h, &nSize));
    FUZZ_CHECK(!QELSetSmooth(h, 2) && !QELGetSmooth(h) && !QELSetFontFace(h, L""));
    FUZZ_CHECK(!QELRenderBitmap(h, &nSize, 1, 1, 4, 0));
    FUZZ_CHECK(!QELIsModified(h) && ErrorOf(h) == QEL_ERROR_HANDLE);
    FUZZ_CHECK(ErrorOf(nullptr) == QEL_ERROR_HANDLE);
}
