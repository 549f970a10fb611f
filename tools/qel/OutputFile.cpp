// Files that appear when they are complete; see the header.
#include "tools/qel/OutputFile.h"

#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <windows.h>

#include <utility>

namespace {

// A name beside the file's that no file has yet; the empty file of that name is there afterwards.
// Empty: none can be made.
std::wstring MakeUnfinished(const std::wstring& path)
{
    constexpr int MAX_TRIES = 100;
    for (int n = 0; n < MAX_TRIES; ++n) {
        std::wstring name = path + L"." + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(n) + L".part";
        const HANDLE hFile = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE) {
            ::CloseHandle(hFile);
            return name;
        }
        if (::GetLastError() != ERROR_FILE_EXISTS) break;
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

} // namespace

void WriteComplete(const std::wstring& path,
                   const std::function<bool(const std::wstring& name)>& write)
{
    CUnfinishedFile unfinished(MakeUnfinished(path));
    const std::wstring& name = unfinished.Name();
    if (!name.empty() && write(name) && unfinished.RenameTo(path)) return;
    throw CTrouble("cannot write '" + ToUtf8(path) + "'");
}
