// Files that replace others; see the header.
#include "xml/XmlFile.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t BUFFER = 0x10000;
constexpr int MAX_IDLE_WRITES = 16;    // writes in a row without progress before a save is given up
constexpr std::size_t TEMP_ENDING = 4; // ".00~"
constexpr int MAX_TEMP_NAMES = 100;    // names beside the target that are tried

bool WriteAll(HANDLE hFile, const char* pData, std::size_t nSize)
{
    constexpr std::size_t CHUNK = 0x40000000;
    int nIdle = 0;
    for (std::size_t nDone = 0; nDone < nSize;) {
        const std::size_t nLeft = nSize - nDone;
        const auto nWanted = static_cast<DWORD>(nLeft < CHUNK ? nLeft : CHUNK);
        DWORD nWritten = 0;
        if (!::WriteFile(hFile, pData + nDone, nWanted, &nWritten, nullptr)) nWritten = 0;
        nIdle = nWritten ? 0 : nIdle + 1;
        if (nIdle == MAX_IDLE_WRITES) return false;
        nDone += nWritten;
    }
    return true;
}

// Whether the target can be replaced: it is missing, or a plain file that nobody has open and that
// is not read-only. Replacing by name would pass over all of that silently on some systems.
bool IsReplaceable(const char* pszPath)
{
    const DWORD nAttributes = ::GetFileAttributesA(pszPath);
    if (nAttributes != INVALID_FILE_ATTRIBUTES &&
        (nAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)))
        return false;
    const HANDLE hFile = ::CreateFileA(pszPath, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile != INVALID_HANDLE_VALUE) {
        const bool bIsDiskFile = ::GetFileType(hFile) == FILE_TYPE_DISK;
        ::CloseHandle(hFile);
        return bIsDiskFile;
    }
    return ::GetLastError() == ERROR_FILE_NOT_FOUND;
}

// How much of a path stands before the name of the file. A separator may be the second byte of a
// character and is none then.
std::size_t FolderLength(const char* pszPath)
{
    std::size_t nFolder = 0;
    for (std::size_t n = 0; pszPath[n]; ++n) {
        if (::IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(pszPath[n])) && pszPath[n + 1])
            ++n;
        else if (pszPath[n] == '\\' || pszPath[n] == '/' || pszPath[n] == ':')
            nFolder = n + 1;
    }
    return nFolder;
}

// Creates a file beside the target under a name that nothing has, and leaves the name in pszTemp.
// It is the target's with an ending or, where the system would not take so long a path, one of its
// own that is not longer than the target's.
HANDLE CreateBeside(const char* pszPath, char* pszTemp, std::size_t nTempSize)
{
    const std::size_t nLength = std::strlen(pszPath);
    const bool bFits = nLength + TEMP_ENDING < MAX_PATH;
    const auto nKept = static_cast<int>(bFits ? nLength : FolderLength(pszPath));
    for (int n = 0; n < MAX_TEMP_NAMES; ++n) {
        if (std::snprintf(pszTemp, nTempSize, "%.*s.%02d~", nKept, pszPath, n) < 0) break;
        const HANDLE hFile = ::CreateFileA(pszTemp, GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE) return hFile;
        if (::GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return INVALID_HANDLE_VALUE;
}

} // namespace

CXmlFile::~CXmlFile()
{
    if (m_hFile != INVALID_HANDLE_VALUE) {
        ::CloseHandle(m_hFile);
        ::DeleteFileA(m_pszTemp);
    }
    std::free(m_pBuffer);
}

XmlError CXmlFile::Open(const char* pszPath)
{
    const std::size_t nTempSize = std::strlen(pszPath) + 8;
    m_pBuffer = static_cast<char*>(std::malloc(BUFFER + nTempSize));
    if (!m_pBuffer) return XML_ERR_MEMORY;
    m_pszPath = pszPath;
    m_pszTemp = m_pBuffer + BUFFER;
    if (IsReplaceable(pszPath)) m_hFile = CreateBeside(pszPath, m_pszTemp, nTempSize);
    if (m_hFile == INVALID_HANDLE_VALUE) return XML_ERR_CREATE;
    UseRoom(m_pBuffer, m_pBuffer + BUFFER);
    return XML_OK;
}

void CXmlFile::Write(const char* pData, std::size_t nSize)
{
    if (!m_bFailed) m_bFailed = !WriteAll(m_hFile, pData, nSize);
}

void CXmlFile::Flush()
{
    Write(m_pBuffer, static_cast<std::size_t>(Place() - m_pBuffer));
    UseRoom(m_pBuffer, m_pBuffer + BUFFER);
}

void CXmlFile::PutMore(const char* pText, std::size_t nLen)
{
    Flush();
    if (nLen < BUFFER)
        Put(pText, nLen);
    else
        Write(pText, nLen);
}

bool CXmlFile::Commit()
{
    Flush();
    bool bDone = !m_bFailed && ::FlushFileBuffers(m_hFile);
    bDone = ::CloseHandle(m_hFile) && bDone;
    m_hFile = INVALID_HANDLE_VALUE;
    bDone = bDone &&
            ::MoveFileExA(m_pszTemp, m_pszPath, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!bDone) ::DeleteFileA(m_pszTemp);
    return bDone;
}
