#include "xml/XmlFile.h"

#include "include/QELEngine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

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
        const auto nWanted = static_cast<DWORD>(std::min(nLeft, CHUNK));
        DWORD nWritten = 0;
        if (!::WriteFile(hFile, pData + nDone, nWanted, &nWritten, nullptr)) nWritten = 0;
        nIdle = nWritten ? 0 : nIdle + 1;
        if (nIdle == MAX_IDLE_WRITES) return false;
        nDone += nWritten;
    }
    return true;
}

// The system's calls for the two kinds of paths. The ANSI ones take no longer path than MAX_PATH; a
// wide one has been made such that the system takes it with an ending (xml/WidePath.h).
struct AnsiCalls {
    using Char = char;
    using Found = WIN32_FIND_DATAA;
    static constexpr std::size_t MOST_CHARS = MAX_PATH - 1; // of a path
    static constexpr std::size_t MOST_NAME = MAX_PATH - 1;  // of the name in it
    template <class... Given>
    static auto GetAttributes(Given... given)
    {
        return ::GetFileAttributesA(given...);
    }
    template <class... Given>
    static auto Create(Given... given)
    {
        return ::CreateFileA(given...);
    }
    template <class... Given>
    static auto FindFirst(Given... given)
    {
        return ::FindFirstFileA(given...);
    }
    template <class... Given>
    static auto FindNext(Given... given)
    {
        return ::FindNextFileA(given...);
    }
    template <class... Given>
    static auto Delete(Given... given)
    {
        return ::DeleteFileA(given...);
    }
    template <class... Given>
    static auto Move(Given... given)
    {
        return ::MoveFileExA(given...);
    }
    // A separator may be the second byte of a character and is none then.
    static std::size_t CharAt(const char* psz)
    {
        return ::IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(*psz)) && psz[1] ? 2 : 1;
    }
};

struct WideCalls {
    using Char = wchar_t;
    using Found = WIN32_FIND_DATAW;
    static constexpr std::size_t MOST_CHARS = 32760;
    static constexpr std::size_t MOST_NAME = 255;
    template <class... Given>
    static auto GetAttributes(Given... given)
    {
        return ::GetFileAttributesW(given...);
    }
    template <class... Given>
    static auto Create(Given... given)
    {
        return ::CreateFileW(given...);
    }
    template <class... Given>
    static auto FindFirst(Given... given)
    {
        return ::FindFirstFileW(given...);
    }
    template <class... Given>
    static auto FindNext(Given... given)
    {
        return ::FindNextFileW(given...);
    }
    template <class... Given>
    static auto Delete(Given... given)
    {
        return ::DeleteFileW(given...);
    }
    template <class... Given>
    static auto Move(Given... given)
    {
        return ::MoveFileExW(given...);
    }
    static std::size_t CharAt(const wchar_t*) { return 1; }
};

template <class TChar>
using CallsFor = std::conditional_t<std::is_same_v<TChar, char>, AnsiCalls, WideCalls>;

// Why the target cannot be replaced, QEL_ERROR_NONE when it can: it is missing, or a plain file
// that nobody has open and that is not read-only. Replacing by name would pass over all of that
// silently on some systems.
template <class TCalls>
Failure WhyNotReplaced(const typename TCalls::Char* pszPath)
{
    const DWORD nAttributes = TCalls::GetAttributes(pszPath);
    if (nAttributes != INVALID_FILE_ATTRIBUTES &&
        (nAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)))
        return {QEL_ERROR_REPLACE, 0, 0, ERROR_ACCESS_DENIED};
    const HANDLE hFile = TCalls::Create(pszPath, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile != INVALID_HANDLE_VALUE) {
        const bool bIsDiskFile = ::GetFileType(hFile) == FILE_TYPE_DISK;
        ::CloseHandle(hFile);
        return bIsDiskFile ? Failure{} : Failure{QEL_ERROR_REPLACE};
    }
    const DWORD nError = ::GetLastError();
    if (nError == ERROR_FILE_NOT_FOUND) return {};
    const bool bIsThere = nError == ERROR_SHARING_VIOLATION || nError == ERROR_LOCK_VIOLATION ||
                          nError == ERROR_ACCESS_DENIED;
    return {bIsThere ? QEL_ERROR_REPLACE : QEL_ERROR_WRITE, 0, 0, nError};
}

template <class TChar>
std::size_t LengthOf(const TChar* psz)
{
    std::size_t nLen = 0;
    while (psz[nLen]) ++nLen;
    return nLen;
}

// How much of a path stands before the name of the file.
template <class TCalls>
std::size_t FolderLength(const typename TCalls::Char* pszPath)
{
    std::size_t nFolder = 0;
    for (std::size_t n = 0; pszPath[n]; ++n) {
        if (TCalls::CharAt(pszPath + n) > 1)
            ++n;
        else if (pszPath[n] == '\\' || pszPath[n] == '/' || pszPath[n] == ':')
            nFolder = n + 1;
    }
    return nFolder;
}

// Names beside the target: its own, or that of its folder alone, with a number as the ending.
template <class TChar>
struct TempNames {
    const TChar* pszPath;
    std::size_t nKept; // characters of the path
    TChar* pszName;
};

// The name with an ending of ASCII letters; tells its length.
template <class TChar>
std::size_t WriteEnding(const TempNames<TChar>& names, const char* pszEnding)
{
    std::memcpy(names.pszName, names.pszPath, names.nKept * sizeof(TChar));
    TChar* p = names.pszName + names.nKept;
    do *p++ = static_cast<TChar>(*pszEnding);
    while (*pszEnding++);
    return static_cast<std::size_t>(p - names.pszName) - 1;
}

// The characters of the name by that number.
template <class TChar>
std::size_t WriteName(const TempNames<TChar>& names, unsigned long nNumber)
{
    char szEnding[TEMP_ROOM];
    std::snprintf(szEnding, sizeof szEnding, ".%02lu~", nNumber % TEMP_NUMBERS);
    return WriteEnding(names, szEnding);
}

// The number at the end of a file's name, or one that no name has. The name itself is written anew
// from it, so that nothing else is ever touched.
template <class TChar>
unsigned long NumberOf(const TChar* pszFile)
{
    const TChar* pszEnding = nullptr;
    for (const TChar* p = pszFile; *p; ++p)
        if (*p == '.') pszEnding = p + 1;
    if (!pszEnding) return TEMP_NUMBERS;
    unsigned long nNumber = 0;
    for (; *pszEnding >= '0' && *pszEnding <= '9' && nNumber < TEMP_NUMBERS; ++pszEnding)
        nNumber = nNumber * 10 + static_cast<unsigned long>(*pszEnding - '0');
    return nNumber;
}

// Removes the file unless somebody has it open, as one who writes it has until it is renamed.
template <class TCalls>
void RemoveUnheld(const typename TCalls::Char* pszName)
{
    const HANDLE hFile = TCalls::Create(pszName, DELETE, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (hFile != INVALID_HANDLE_VALUE) ::CloseHandle(hFile);
}

// Removes what processes left that were ended in the middle of a save.
template <class TCalls>
void RemoveLeftovers(const TempNames<typename TCalls::Char>& names)
{
    WriteEnding(names, ".*~");
    typename TCalls::Found found;
    const HANDLE hFind = TCalls::FindFirst(names.pszName, &found);
    if (hFind == INVALID_HANDLE_VALUE) return;
    int nLeft = MAX_REMOVED;
    do {
        const unsigned long nNumber = NumberOf(found.cFileName);
        if (nNumber >= TEMP_NUMBERS) continue;
        WriteName(names, nNumber);
        RemoveUnheld<TCalls>(names.pszName);
        --nLeft;
    } while (nLeft && TCalls::FindNext(hFind, &found));
    ::FindClose(hFind);
}

// Creates the file of the first number that is free. It can be renamed while it is open, so that
// no other save takes it for a leftover.
template <class TCalls>
HANDLE CreateNumbered(const TempNames<typename TCalls::Char>& names, std::size_t nMostChars)
{
    for (unsigned long n = 0; n < TEMP_NUMBERS && WriteName(names, n) <= nMostChars; ++n) {
        const HANDLE hFile = TCalls::Create(names.pszName, GENERIC_WRITE, FILE_SHARE_DELETE,
                                            nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return hFile;
    }
    return INVALID_HANDLE_VALUE;
}

// Creates a file beside the target under a name that nothing has, and leaves the name there. It is
// the target's with an ending or, where the system would not take so long a one, one of its own in
// the target's folder.
template <class TCalls>
HANDLE CreateBeside(TempNames<typename TCalls::Char> names)
{
    const std::size_t nLength = LengthOf(names.pszPath);
    const std::size_t nFolder = FolderLength<TCalls>(names.pszPath);
    const auto fits = [=](std::size_t nMore) {
        return nLength + nMore <= TCalls::MOST_CHARS &&
               nLength - nFolder + nMore <= TCalls::MOST_NAME;
    };
    HANDLE hFile = INVALID_HANDLE_VALUE;
    if (fits(TEMP_ENDING)) {
        names.nKept = nLength;
        RemoveLeftovers<TCalls>(names);
        hFile = CreateNumbered<TCalls>(names, TCalls::MOST_CHARS);
    }
    if (hFile == INVALID_HANDLE_VALUE && !fits(TEMP_ROOM - 1)) {
        names.nKept = nFolder;
        RemoveLeftovers<TCalls>(names);
        hFile = CreateNumbered<TCalls>(names, nLength + TEMP_ROOM);
    }
    return hFile;
}

} // namespace

CXmlFile::~CXmlFile()
{
    if (m_hFile != INVALID_HANDLE_VALUE) {
        DeleteTemp(); // while it is open: then it is ours
        ::CloseHandle(m_hFile);
    }
    std::free(m_pBuffer);
}

XmlError CXmlFile::Open(const char* pszPath)
{
    m_pszPath = pszPath;
    return Create(pszPath, &m_pszTemp);
}

XmlError CXmlFile::Open(const wchar_t* pszPath)
{
    m_widePath.emplace(pszPath);
    m_pszWidePath = m_widePath->Get();
    if (!m_pszWidePath) return Fail({QEL_ERROR_MEMORY});
    return Create(m_pszWidePath, &m_pszWideTemp);
}

template <class TChar>
XmlError CXmlFile::Create(const TChar* pszPath, TChar** ppszTemp)
{
    using Calls = CallsFor<TChar>;
    const std::size_t nTempSize = (LengthOf(pszPath) + TEMP_ROOM) * sizeof(TChar);
    m_pBuffer = static_cast<char*>(std::malloc(BUFFER + nTempSize));
    if (!m_pBuffer) return Fail({QEL_ERROR_MEMORY});
    *ppszTemp = static_cast<TChar*>(static_cast<void*>(m_pBuffer + BUFFER));
    const Failure why = WhyNotReplaced<Calls>(pszPath);
    if (why.nCode != QEL_ERROR_NONE) return Fail(why);
    m_hFile = CreateBeside<Calls>({pszPath, 0, *ppszTemp});
    if (m_hFile == INVALID_HANDLE_VALUE) return Fail({QEL_ERROR_WRITE, 0, 0, ::GetLastError()});
    UseRoom(m_pBuffer, m_pBuffer + BUFFER);
    return XML_OK;
}

XmlError CXmlFile::Fail(const Failure& failure)
{
    m_why = failure;
    return failure.nCode == QEL_ERROR_MEMORY ? XML_ERR_MEMORY : XML_ERR_CREATE;
}

void CXmlFile::Write(const char* pData, std::size_t nSize)
{
    if (m_bFailed || WriteAll(m_hFile, pData, nSize)) return;
    m_bFailed = true;
    Fail({QEL_ERROR_WRITE, 0, 0, ::GetLastError()});
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
    bool bDone = !m_bFailed && (Reaches() && TakesPlace());
    if (!bDone) DeleteTemp();
    const bool bClosed = ::CloseHandle(m_hFile);
    if (bDone && !bClosed) Fail({QEL_ERROR_WRITE, 0, 0, ::GetLastError()});
    m_hFile = INVALID_HANDLE_VALUE;
    return bDone && bClosed;
}

// Whether all of it is on the disk.
bool CXmlFile::Reaches()
{
    if (::FlushFileBuffers(m_hFile)) return true;
    Fail({QEL_ERROR_WRITE, 0, 0, ::GetLastError()});
    return false;
}

bool CXmlFile::TakesPlace()
{
    constexpr DWORD HOW = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const BOOL bMoved = m_pszPath ? ::MoveFileExA(m_pszTemp, m_pszPath, HOW)
                                  : ::MoveFileExW(m_pszWideTemp, m_pszWidePath, HOW);
    if (bMoved) return true;
    Fail({QEL_ERROR_REPLACE, 0, 0, ::GetLastError()});
    return false;
}

void CXmlFile::DeleteTemp() const
{
    if (m_pszPath)
        ::DeleteFileA(m_pszTemp);
    else
        ::DeleteFileW(m_pszWideTemp);
}
