// Files for the tests of the native build: what tests/support/Files.h promises, on the disk in
// memory of the stand-in for kernel32.
#include "tests/support/Files.h"

#include "tests/native/KernelDouble.h"

#include <windows.h>

#include <atomic>

namespace {

std::vector<std::string> FilesBelow(const std::string& folder)
{
    std::vector<std::string> names;
    for (const std::string& name : kernel::FileNames())
        if (name.rfind(folder + "\\", 0) == 0) names.push_back(name);
    return names;
}

} // namespace

CTestFolder::CTestFolder()
{
    static std::atomic<int> s_nCount = 0; // of all threads: engines may share what has one path
    do {
        m_path = "C:\\temp\\qeltest-" + std::to_string(++s_nCount);
    } while (!::CreateDirectoryA(m_path.c_str(), nullptr));
}

CTestFolder::~CTestFolder()
{
    for (const std::string& name : FilesBelow(m_path)) {
        ::SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileA(name.c_str());
    }
    ::RemoveDirectoryA(m_path.c_str());
}

std::string CTestFolder::Path(const std::string& name) const
{
    return m_path + "\\" + name;
}

int CTestFolder::CountFiles() const
{
    return static_cast<int>(FilesBelow(m_path).size());
}

bool WriteBytes(const std::string& path, const std::string& bytes)
{
    return kernel::PutFile(path, bytes);
}

std::string ReadBytes(const std::string& path)
{
    std::string bytes;
    return kernel::GetFile(path, &bytes) ? bytes : "";
}

bool Exists(const std::string& path)
{
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
