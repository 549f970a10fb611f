// Files that appear when they are complete; see the header.
#include "tools/qel/OutputFile.h"

#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <windows.h>

#include <utility>

namespace qel {

namespace {

// Why the file cannot be replaced, as an engine that saves does not replace it; empty: it can, or
// there is none.
std::string WhyNotReplaced(const std::wstring& path)
{
    const DWORD nAttributes = ::GetFileAttributesW(path.c_str());
    if (nAttributes == INVALID_FILE_ATTRIBUTES) return {};
    if (nAttributes & FILE_ATTRIBUTE_DIRECTORY) return ": it is a folder";
    if (nAttributes & FILE_ATTRIBUTE_READONLY) return ": it is read-only";
    const HANDLE hFile = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_SHARING_VIOLATION ? ": another program has it open"
                                                           : ": it is not to be written";
    const bool bIsDiskFile = ::GetFileType(hFile) == FILE_TYPE_DISK;
    ::CloseHandle(hFile);
    return bIsDiskFile ? "" : ": it is no file";
}

// A name beside the file's; the empty file of that name is there afterwards. The name has the
// process's number, so that what is found under it was left by one that is gone, and is replaced.
// Empty: none can be made.
std::wstring MakeUnfinished(const std::wstring& path)
{
    constexpr int MAX_TRIES = 100;
    for (int n = 0; n < MAX_TRIES; ++n) {
        std::wstring name = path + L"." + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(n) + L".part";
        const HANDLE hFile = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE) {
            ::CloseHandle(hFile);
            return name;
        }
        if (::GetLastError() != ERROR_SHARING_VIOLATION) break;
    }
    return {};
}

// Removes the unfinished file, however its making ends; nothing is left of one that was renamed.
class CUnfinishedFile {
public:
    explicit CUnfinishedFile(std::wstring name) : m_name(std::move(name)) {}
    ~CUnfinishedFile()
    {
        if (!m_name.empty()) ::DeleteFileW(m_name.c_str());
    }
    CUnfinishedFile(const CUnfinishedFile&) = delete;
    CUnfinishedFile& operator=(const CUnfinishedFile&) = delete;

    [[nodiscard]] const std::wstring& Name() const { return m_name; }
    bool RenameTo(const std::wstring& path)
    {
        if (!::MoveFileExW(m_name.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) return false;
        m_name.clear();
        return true;
    }

private:
    std::wstring m_name;
};

// What is not written is found when the output is finished.
void WriteToStandardOutput(const std::function<bool(const std::wstring& name)>& write)
{
    const CTemporaryFile file;
    std::string bytes;
    if (!write(file.Name()) || !ReadBytes(file.Name(), &bytes))
        throw CTrouble("cannot write the temporary file '" + ToUtf8(file.Name()) + "'");
    Print(bytes);
}

} // namespace

void WriteComplete(const std::wstring& path,
                   const std::function<bool(const std::wstring& name)>& write)
{
    if (IsStandardOutput(path)) {
        WriteToStandardOutput(write);
        return;
    }
    const std::string why = WhyNotReplaced(path);
    if (!why.empty()) throw CTrouble("cannot write '" + ToUtf8(path) + "'" + why);
    CUnfinishedFile unfinished(MakeUnfinished(path));
    const std::wstring& name = unfinished.Name();
    if (!name.empty() && write(name) && unfinished.RenameTo(path)) return;
    throw CTrouble("cannot write '" + ToUtf8(path) + "'");
}

} // namespace qel
