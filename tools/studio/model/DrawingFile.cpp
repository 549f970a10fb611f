// An open drawing; see the header.
#include "tools/studio/model/DrawingFile.h"

#include "tools/studio/model/Convert.h"

#include <algorithm>
#include <array>

namespace studio {

namespace {

constexpr DWORD MAX_FILE = 256U << 20; // no drawing is as large

std::wstring FullPath(const std::wstring& path)
{
    const DWORD nSize = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(nSize, L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), nSize, full.data(), nullptr));
    return full.empty() ? path : full;
}

class CFile {
public:
    explicit CFile(const std::wstring& path)
        : m_hFile(::CreateFileW(path.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr))
    {
    }
    ~CFile()
    {
        if (m_hFile != INVALID_HANDLE_VALUE) ::CloseHandle(m_hFile);
    }
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_hFile != INVALID_HANDLE_VALUE; }
    [[nodiscard]] bool Read(std::string* pBytes) const
    {
        const DWORD nSize = ::GetFileSize(m_hFile, nullptr);
        if (nSize > MAX_FILE) return false;
        pBytes->resize(nSize);
        DWORD nRead = 0;
        const BOOL bDone = ::ReadFile(m_hFile, pBytes->data(), nSize, &nRead, nullptr);
        pBytes->resize(nRead);
        return bDone != 0;
    }

private:
    HANDLE m_hFile;
};

// All elements in the order of the file.
std::vector<HQELELEM> HandlesOf(HQELENGINE hEngine)
{
    std::vector<HQELELEM> handles;
    HQELELEM hElem = QELGetRootElem(hEngine);
    while (hElem) {
        handles.push_back(hElem);
        HQELELEM hNext = QELGetFirstChild(hEngine, hElem);
        while (!hNext && hElem) {
            hNext = QELGetNextElem(hEngine, hElem);
            if (!hNext) hElem = QELGetParentElem(hEngine, hElem);
        }
        hElem = hNext;
    }
    return handles;
}

bool AreOfOneKind(HQELENGINE hEngine, const std::vector<HQELELEM>& handles,
                  const std::vector<SourceElement>& elements)
{
    return std::equal(handles.begin(), handles.end(), elements.begin(), elements.end(),
                      [hEngine](HQELELEM hElem, const SourceElement& element) {
                          return QELGetElemType(hEngine, hElem) == element.nType;
                      });
}

} // namespace

CDrawingFile::CDrawingFile(const std::wstring& path) : m_path(FullPath(path)) {}

CDrawingFile::~CDrawingFile()
{
    if (m_hEngine) DestroyQELEngine(m_hEngine);
}

std::wstring CDrawingFile::Name() const
{
    return m_path.substr(m_path.find_last_of(L"\\/") + 1);
}

bool CDrawingFile::Stamp::operator==(const Stamp& other) const
{
    return bThere == other.bThere && nSize == other.nSize &&
           ::CompareFileTime(&time, &other.time) == 0;
}

CDrawingFile::Stamp CDrawingFile::StampOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return {};
    return {data.ftLastWriteTime, data.nFileSizeLow, true};
}

bool CDrawingFile::HasChanged()
{
    const Stamp now = StampOf(m_path);
    const bool bSettled = now == m_seen;
    m_seen = now;
    return bSettled && !(now == m_read);
}

int CDrawingFile::Load()
{
    m_read = m_seen = StampOf(m_path);
    m_fault = {};
    m_bCurrent = false;
    std::string bytes;
    if (!ReadBytes(&bytes)) return 0;
    const int nOpened = Open(bytes);
    TakeSource(bytes, nOpened != 0);
    return nOpened;
}

int CDrawingFile::ReadBytes(std::string* pBytes)
{
    const CFile file(m_path);
    if (file.IsOpen() && file.Read(pBytes)) return 1;
    const DWORD nSystem = ::GetLastError();
    m_fault.nCode = file.IsOpen() ? QEL_ERROR_READ : QEL_ERROR_OPEN;
    if (nSystem == ERROR_FILE_NOT_FOUND || nSystem == ERROR_PATH_NOT_FOUND)
        m_fault.nCode = QEL_ERROR_NO_FILE;
    std::array<wchar_t, 512> text{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, nSystem,
                     0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    m_fault.sentence = text.data();
    while (!m_fault.sentence.empty() && m_fault.sentence.back() <= L' ')
        m_fault.sentence.pop_back();
    return 0;
}

// Texts and identifiers are those of the encoding that the drawing declares.
int CDrawingFile::Open(const std::string& bytes)
{
    constexpr DWORD AS_DECLARED = 1;
    HQELENGINE hEngine = CreateQELEngine();
    QELSetTextCodePage(hEngine, AS_DECLARED);
    if (!QELOpenMemory(hEngine, bytes.data(), static_cast<DWORD>(bytes.size()))) {
        NoteFault(hEngine);
        DestroyQELEngine(hEngine);
        return 0;
    }
    if (m_afterOpen) m_afterOpen(hEngine);
    if (m_hEngine) DestroyQELEngine(m_hEngine);
    m_hEngine = hEngine;
    return 1;
}

void CDrawingFile::NoteFault(HQELENGINE hEngine)
{
    QELERROR error{};
    error.nSize = sizeof error;
    QELGetError(hEngine, &error);
    m_fault = {error.nCode, error.nLine, error.nColumn, FromUtf8(error.szText)};
}

void CDrawingFile::TakeSource(const std::string& bytes, bool bShown)
{
    Source source = ReadSource(bytes);
    m_findings = std::move(source.findings);
    m_bCurrent = bShown;
    if (!bShown) return;
    m_handles = HandlesOf(m_hEngine);
    m_elements = std::move(source.elements);
    if (AreOfOneKind(m_hEngine, m_handles, m_elements)) return;
    m_elements.clear(); // nothing is said of a drawing that the two see in different ways
    m_bCurrent = false;
}

const SourceElement* CDrawingFile::SourceOf(HQELELEM hElem) const
{
    const auto at = std::find(m_handles.begin(), m_handles.end(), hElem);
    const auto n = static_cast<std::size_t>(at - m_handles.begin());
    return n < m_elements.size() ? &m_elements[n] : nullptr;
}

HQELELEM CDrawingFile::ElementOf(const SourceFinding& finding) const
{
    const auto n = static_cast<std::size_t>(finding.nElement);
    return m_bCurrent && finding.nElement >= 0 && n < m_handles.size() ? m_handles[n] : nullptr;
}

std::vector<int> CDrawingFile::PathOf(HQELELEM hElem) const
{
    std::vector<int> path;
    for (HQELELEM h = hElem; h; h = QELGetParentElem(m_hEngine, h)) {
        int nBefore = 0;
        for (HQELELEM hPrev = QELGetPrevElem(m_hEngine, h); hPrev;
             hPrev = QELGetPrevElem(m_hEngine, hPrev))
            ++nBefore;
        path.push_back(nBefore);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

HQELELEM CDrawingFile::ElementAt(const std::vector<int>& path) const
{
    HQELELEM hElem = path.empty() ? nullptr : QELGetRootElem(m_hEngine);
    for (std::size_t n = 1; n < path.size() && hElem; ++n) {
        hElem = QELGetFirstChild(m_hEngine, hElem);
        for (int nStep = path[n]; nStep > 0 && hElem; --nStep)
            hElem = QELGetNextElem(m_hEngine, hElem);
    }
    return hElem;
}

} // namespace studio
