#include "tests/support/Files.h"

#include <windows.h>

#include <cstdio>

namespace {

template <class Visit>
void ForEachFile(const std::string& folder, Visit visit)
{
    WIN32_FIND_DATAA data{};
    const HANDLE hFind = ::FindFirstFileA((folder + "\\*").c_str(), &data);
    if (hFind == INVALID_HANDLE_VALUE) return;
    do {
        if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            visit(folder + "\\" + data.cFileName);
    } while (::FindNextFileA(hFind, &data));
    ::FindClose(hFind);
}

} // namespace

CTestFolder::CTestFolder()
{
    static int s_nCount = 0;
    char szTemp[MAX_PATH];
    ::GetTempPathA(sizeof szTemp, szTemp);
    do {
        char szName[64];
        std::snprintf(szName, sizeof szName, "qeltest-%lu-%d", ::GetCurrentProcessId(), ++s_nCount);
        m_path = std::string(szTemp) + szName;
    } while (!::CreateDirectoryA(m_path.c_str(), nullptr) &&
             ::GetLastError() == ERROR_ALREADY_EXISTS);
}

CTestFolder::~CTestFolder()
{
    ForEachFile(m_path, [](const std::string& path) {
        ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileA(path.c_str());
    });
    ::RemoveDirectoryA(m_path.c_str());
}

std::string CTestFolder::Path(const std::string& name) const
{
    return m_path + "\\" + name;
}

int CTestFolder::CountFiles() const
{
    int nCount = 0;
    ForEachFile(m_path, [&](const std::string&) { ++nCount; });
    return nCount;
}

bool WriteBytes(const std::string& path, const std::string& bytes)
{
    std::FILE* pFile = std::fopen(path.c_str(), "wb");
    if (!pFile) return false;
    const bool bDone = std::fwrite(bytes.data(), 1, bytes.size(), pFile) == bytes.size();
    return std::fclose(pFile) == 0 && bDone;
}

std::string ReadBytes(const std::string& path)
{
    std::string bytes;
    std::FILE* pFile = std::fopen(path.c_str(), "rb");
    if (!pFile) return bytes;
    char buffer[65536];
    for (std::size_t n = 0; (n = std::fread(buffer, 1, sizeof buffer, pFile)) > 0;)
        bytes.append(buffer, n);
    std::fclose(pFile);
    return bytes;
}

bool Exists(const std::string& path)
{
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
