#include "xml/XmlFile.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t BUFFER = 0x10000;
constexpr int MAX_IDLE_WRITES = 16;    // writes in a row without progress before a save is given up
constexpr std::size_t TEMP_ENDING = 4; // ".00~"
constexpr std::size_t TEMP_ROOM = 9;   // ".999999~" and its zero
constexpr unsigned long TEMP_NUMBERS = 1000000;
constexpr int MAX_REMOVED = 10000; // leftovers that one save tries to remove: about a second

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

// Names beside the target: its own, or that of its folder alone, with a number as the ending.
struct TempNames {
    const char* pszPath;
    int nKept; // bytes of the path
    char* pszName;
    std::size_t nSize;
};

// The bytes of the name by that number.
std::size_t WriteName(const TempNames& names, unsigned long nNumber)
{
    const int nLen = std::snprintf(names.pszName, names.nSize, "%.*s.%02lu~", names.nKept,
                                   names.pszPath, nNumber);
    return static_cast<std::size_t>(nLen);
}

// The number at the end of a file's name, or one that no name has. The name itself is written anew
// from it, so that nothing else is ever touched.
unsigned long NumberOf(const char* pszFile)
{
    const char* pszEnding = std::strrchr(pszFile, '.');
    return pszEnding ? std::strtoul(pszEnding + 1, nullptr, 10) : TEMP_NUMBERS;
}

// Removes the file unless somebody has it open, as one who writes it has until it is renamed.
void RemoveUnheld(const char* pszName)
{
    const HANDLE hFile = ::CreateFileA(pszName, DELETE, 0, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (hFile != INVALID_HANDLE_VALUE) ::CloseHandle(hFile);
}

// Removes what processes left that were ended in the middle of a save.
void RemoveLeftovers(const TempNames& names)
{
    std::snprintf(names.pszName, names.nSize, "%.*s.*~", names.nKept, names.pszPath);
    WIN32_FIND_DATAA found;
    const HANDLE hFind = ::FindFirstFileA(names.pszName, &found);
    if (hFind == INVALID_HANDLE_VALUE) return;
    int nLeft = MAX_REMOVED;
    do {
        const unsigned long nNumber = NumberOf(found.cFileName);
        if (nNumber >= TEMP_NUMBERS) continue;
        WriteName(names, nNumber);
        RemoveUnheld(names.pszName);
        --nLeft;
    } while (nLeft && ::FindNextFileA(hFind, &found));
    ::FindClose(hFind);
}

// Creates the file of the first number that is free. It can be renamed while it is open, so that
// no other save takes it for a leftover.
HANDLE CreateNumbered(const TempNames& names, std::size_t nMostBytes)
{
    for (unsigned long n = 0; n < TEMP_NUMBERS && WriteName(names, n) <= nMostBytes; ++n) {
        const HANDLE hFile = ::CreateFileA(names.pszName, GENERIC_WRITE, FILE_SHARE_DELETE, nullptr,
                                           CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return hFile;
    }
    return INVALID_HANDLE_VALUE;
}

// Creates a file beside the target under a name that nothing has, and leaves the name there. It is
// the target's with an ending or, where the system would not take so long a path, one of its own in
// the target's folder.
HANDLE CreateBeside(TempNames names)
{
    const std::size_t nLength = std::strlen(names.pszPath);
    HANDLE hFile = INVALID_HANDLE_VALUE;
    if (nLength + TEMP_ENDING < MAX_PATH) {
        names.nKept = static_cast<int>(nLength);
        RemoveLeftovers(names);
        hFile = CreateNumbered(names, MAX_PATH - 1);
    }
    if (hFile == INVALID_HANDLE_VALUE && nLength + TEMP_ROOM > MAX_PATH) {
        names.nKept = static_cast<int>(FolderLength(names.pszPath));
        RemoveLeftovers(names);
        hFile = CreateNumbered(names, names.nSize);
    }
    return hFile;
}

} // namespace

CXmlFile::~CXmlFile()
{
    if (m_hFile != INVALID_HANDLE_VALUE) {
        ::DeleteFileA(m_pszTemp); // while it is open: then it is ours
        ::CloseHandle(m_hFile);
    }
    std::free(m_pBuffer);
}

XmlError CXmlFile::Open(const char* pszPath)
{
    const std::size_t nTempSize = std::strlen(pszPath) + TEMP_ROOM;
    m_pBuffer = static_cast<char*>(std::malloc(BUFFER + nTempSize));
    if (!m_pBuffer) return XML_ERR_MEMORY;
    m_pszPath = pszPath;
    m_pszTemp = m_pBuffer + BUFFER;
    if (IsReplaceable(pszPath)) m_hFile = CreateBeside({pszPath, 0, m_pszTemp, nTempSize});
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
    bool bDone =
        !m_bFailed && ::FlushFileBuffers(m_hFile) &&
        ::MoveFileExA(m_pszTemp, m_pszPath, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!bDone) ::DeleteFileA(m_pszTemp);
    bDone = ::CloseHandle(m_hFile) && bDone;
    m_hFile = INVALID_HANDLE_VALUE;
    return bDone;
}
