// The stand-in for kernel32: files.
#include "tests/native/KernelDouble.h"

#include "tests/native/GdiDouble.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <utility>

namespace kernel {
namespace {

constexpr uint64_t FIRST_HANDLE = 0x40000000;

struct File {
    std::string bytes;
    std::string flushed; // what a power failure leaves
    DWORD nAttributes = FILE_ATTRIBUTE_ARCHIVE;
    bool bLocked = false;
};
using FilePtr = std::shared_ptr<File>;

struct Handle {
    FilePtr pFile;
    DWORD nAccess = 0;
    DWORD nShare = 0;
    uint64_t nAt = 0;
    bool bDeleteOnClose = false;
};

// What a search has found and not yet given.
using Search = std::vector<std::string>;

struct Disk {
    std::map<std::string, FilePtr> files;     // by the full path in lower case
    std::map<std::string, std::string> names; // as given
    std::set<std::string> folders;
    std::map<uint64_t, Handle> handles;
    std::map<uint64_t, Search> searches;
    uint64_t nNextHandle = FIRST_HANDLE;
    std::string current;
    Faults faults;
    int nOperations = 0;
    int nReads = 0;
    bool bPowerFailed = false;
    std::function<void()> watcher;
    DWORD nLastError = 0;
    bool bLongPaths = false; // the call gave the prefix for them
};

void Format(Disk& disk)
{
    disk.files.clear();
    disk.names.clear();
    disk.folders = {"c:", "c:\\temp"};
    disk.handles.clear();
    disk.searches.clear();
    disk.current = "C:\\temp";
    disk.faults = {};
    disk.nOperations = disk.nReads = 0;
    disk.bPowerFailed = false;
}

Disk& TheDisk()
{
    static thread_local Disk s_disk = [] {
        Disk disk;
        Format(disk);
        return disk;
    }();
    return s_disk;
}

bool Fail(DWORD nError)
{
    TheDisk().nLastError = nError;
    return false;
}

bool IsLeadByte(char c)
{
    return static_cast<unsigned char>(c) >= 0x81 && static_cast<unsigned char>(c) < 0xFF;
}

// The path's parts between the backslashes. The second byte of a Chinese character may be one too.
std::vector<std::string> PartsOf(const std::string& path)
{
    std::vector<std::string> parts(1);
    for (std::size_t n = 0; n < path.size(); ++n) {
        if (path[n] == '\\') {
            parts.emplace_back();
            continue;
        }
        parts.back() += path[n];
        if (IsLeadByte(path[n]) && n + 1 < path.size()) parts.back() += path[++n];
    }
    return parts;
}

// A folder "." is the one that it stands in, and ".." the one above; folders that a path leaves
// again need not be there. A doubled backslash is one.
std::string WithoutDots(const std::string& path)
{
    const bool bNoName = path.ends_with('\\');
    std::vector<std::string> kept;
    for (std::string& part : PartsOf(path)) {
        if (part == "..") {
            if (kept.size() > 1) kept.pop_back();
        } else if (!part.empty() && part != ".") {
            kept.push_back(std::move(part));
        }
    }
    if (bNoName) kept.emplace_back();
    std::string full;
    for (const std::string& part : kept) full += (full.empty() ? "" : "\\") + part;
    return full;
}

// The full path. The second byte of a Chinese character may be a backslash or a letter.
std::string FullPath(const std::string& path)
{
    std::string full;
    for (std::size_t n = 0; n < path.size(); ++n) {
        full += path[n] == '/' ? '\\' : path[n];
        if (IsLeadByte(path[n]) && n + 1 < path.size()) full += path[++n];
    }
    if (full.starts_with("\\\\")) return full; // of a share or a device
    if (full.starts_with("\\")) full = TheDisk().current.substr(0, 2) + full;
    if (full.size() < 2 || full[1] != ':') full = TheDisk().current + "\\" + full;
    return WithoutDots(full);
}

std::string KeyOf(const std::string& path)
{
    const std::string full = FullPath(path);
    std::string key;
    for (std::size_t n = 0; n < full.size(); ++n) {
        const char c = full[n];
        key += static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
        if (IsLeadByte(c) && n + 1 < full.size()) key += full[++n];
    }
    return key;
}

std::string FolderOf(const std::string& key)
{
    const std::size_t nName = PartsOf(key).back().size();
    return nName < key.size() ? key.substr(0, key.size() - nName - 1) : "";
}

File* FindFile(const std::string& key)
{
    const auto it = TheDisk().files.find(key);
    return it == TheDisk().files.end() ? nullptr : it->second.get();
}

// Every file operation begins here: false when the power has failed.
bool Begin()
{
    Disk& disk = TheDisk();
    if (const std::function<void()> watcher = std::exchange(disk.watcher, nullptr)) {
        watcher();
        disk.watcher = watcher;
    }
    if (disk.bPowerFailed) return Fail(ERROR_NOT_READY);
    if (++disk.nOperations == disk.faults.nStopAt) {
        disk.bPowerFailed = true;
        return Fail(ERROR_NOT_READY);
    }
    return true;
}

// Whether a path can name a file here; else the error is set.
bool IsUsable(const char* pszPath, const std::string& key)
{
    if (!pszPath || !*pszPath) return Fail(ERROR_PATH_NOT_FOUND);
    constexpr std::size_t MOST_NAME = 255;
    const bool bLong = TheDisk().bLongPaths;
    if (!bLong && key.size() >= MAX_PATH) return Fail(ERROR_PATH_NOT_FOUND);
    if (bLong && key.size() - FolderOf(key).size() > MOST_NAME + 1) return Fail(ERROR_INVALID_NAME);
    if (TheDisk().folders.contains(key)) return Fail(ERROR_ACCESS_DENIED);
    if (!TheDisk().folders.contains(FolderOf(key))) return Fail(ERROR_PATH_NOT_FOUND);
    const std::size_t nName = FolderOf(key).size() + 1;
    if (key.size() == nName) return Fail(ERROR_PATH_NOT_FOUND);
    if (key.find_first_of("<>\"|?*", nName) != std::string::npos) return Fail(ERROR_INVALID_NAME);
    return true;
}

// Whether the handles that are open let another one in, and it them.
bool IsShared(const File& file, DWORD nAccess, DWORD nShare)
{
    if (file.bLocked) return false;
    for (const auto& [n, handle] : TheDisk().handles) {
        if (handle.pFile.get() != &file) continue;
        if ((nAccess & GENERIC_READ) && !(handle.nShare & FILE_SHARE_READ)) return false;
        if ((nAccess & GENERIC_WRITE) && !(handle.nShare & FILE_SHARE_WRITE)) return false;
        if ((nAccess & DELETE) && !(handle.nShare & FILE_SHARE_DELETE)) return false;
        if ((handle.nAccess & GENERIC_READ) && !(nShare & FILE_SHARE_READ)) return false;
        if ((handle.nAccess & GENERIC_WRITE) && !(nShare & FILE_SHARE_WRITE)) return false;
    }
    return true;
}

constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Handle* FindHandle(HANDLE hFile, const char* pszFunction)
{
    const auto it = TheDisk().handles.find(reinterpret_cast<uint64_t>(hFile));
    if (it != TheDisk().handles.end()) return &it->second;
    gdi::ReportMisuse(std::string(pszFunction) + " on a handle that is not open");
    Fail(ERROR_INVALID_HANDLE);
    return nullptr;
}

uint64_t NewHandle()
{
    const uint64_t n = TheDisk().nNextHandle;
    TheDisk().nNextHandle += 4;
    return n;
}

HANDLE Open(FilePtr pFile, DWORD nAccess, DWORD nShare, DWORD nFlags)
{
    const uint64_t n = NewHandle();
    const bool bDelete = (nFlags & FILE_FLAG_DELETE_ON_CLOSE) != 0;
    TheDisk().handles[n] = {std::move(pFile), nAccess, nShare, 0, bDelete};
    return reinterpret_cast<HANDLE>(n);
}

void Remove(const File* pFile)
{
    Disk& disk = TheDisk();
    for (auto it = disk.files.begin(); it != disk.files.end(); ++it) {
        if (it->second.get() != pFile) continue;
        disk.names.erase(it->first);
        disk.files.erase(it);
        return;
    }
}

// A pattern has one "*" at most, which the tests of the engine need no more of.
bool Matches(const std::string& key, const std::string& pattern)
{
    const std::size_t nStar = pattern.find('*');
    if (nStar == std::string::npos) return key == pattern;
    const std::string head = pattern.substr(0, nStar);
    const std::string tail = pattern.substr(nStar + 1);
    return key.size() >= head.size() + tail.size() && key.starts_with(head) &&
           key.ends_with(tail) && FolderOf(key) == FolderOf(pattern);
}

bool GiveNext(Search& search, WIN32_FIND_DATAA* pOut)
{
    if (search.empty()) return Fail(ERROR_NO_MORE_FILES);
    *pOut = {};
    std::strncpy(pOut->cFileName, PartsOf(search.back()).back().c_str(), MAX_PATH - 1);
    search.pop_back();
    return true;
}

DWORD ErrorWhenPresent(const File& file, DWORD nAccess, DWORD nShare, DWORD nHow)
{
    if (nHow == CREATE_NEW) return ERROR_FILE_EXISTS;
    if ((file.nAttributes & FILE_ATTRIBUTE_READONLY) && (nAccess & (GENERIC_WRITE | DELETE)))
        return ERROR_ACCESS_DENIED;
    return IsShared(file, nAccess, nShare) ? NO_ERROR : ERROR_SHARING_VIOLATION;
}

bool IsReplaceable(const File& file)
{
    return !(file.nAttributes & FILE_ATTRIBUTE_READONLY) && IsShared(file, DELETE, SHARE_ALL);
}

} // namespace

// ---- the disk, for tests ----

void FormatDisk()
{
    Format(TheDisk());
}

bool PutFile(const std::string& path, const std::string& bytes)
{
    const std::string key = KeyOf(path);
    if (!IsUsable(path.c_str(), key)) return false;
    FilePtr& pFile = TheDisk().files[key];
    if (!pFile) pFile = std::make_shared<File>();
    pFile->bytes = pFile->flushed = bytes;
    TheDisk().names[key] = FullPath(path);
    return true;
}

bool GetFile(const std::string& path, std::string* pBytes)
{
    const File* pFile = FindFile(KeyOf(path));
    if (pFile && pBytes) *pBytes = pFile->bytes;
    return pFile != nullptr;
}

std::vector<std::string> FileNames()
{
    std::vector<std::string> names;
    for (const auto& [key, pFile] : TheDisk().files) names.push_back(TheDisk().names[key]);
    return names;
}

int OpenHandles()
{
    return static_cast<int>(TheDisk().handles.size() + TheDisk().searches.size());
}

bool PutHostFile(const std::string& path, const std::string& hostPath)
{
    std::ifstream in(hostPath, std::ios::binary);
    if (!in) return false;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return PutFile(path, bytes.str());
}

// ---- faults ----

void SetFaults(const Faults& faults)
{
    TheDisk().faults = faults;
    TheDisk().nOperations = TheDisk().nReads = 0;
}

void SetWatcher(std::function<void()> watcher)
{
    TheDisk().watcher = std::move(watcher);
}

int Operations()
{
    return TheDisk().nOperations;
}

void Lock(const std::string& path, bool bLocked)
{
    if (File* pFile = FindFile(KeyOf(path))) pFile->bLocked = bLocked;
}

void AllowLongPaths(bool bAllow)
{
    TheDisk().bLongPaths = bAllow;
}

std::string FullPathOf(const std::string& path)
{
    return FullPath(path);
}

bool HasPowerFailed()
{
    return TheDisk().bPowerFailed;
}

void Restart(bool bLoseUnflushed)
{
    Disk& disk = TheDisk();
    disk.bPowerFailed = false;
    disk.faults = {};
    disk.handles.clear();
    disk.searches.clear();
    for (auto& [key, pFile] : disk.files)
        (bLoseUnflushed ? pFile->bytes : pFile->flushed) =
            bLoseUnflushed ? pFile->flushed : pFile->bytes;
}

} // namespace kernel

using namespace kernel;

// ---- what the engine calls ----

DWORD WINAPI GetLastError()
{
    return TheDisk().nLastError;
}

void WINAPI SetLastError(DWORD nError)
{
    TheDisk().nLastError = nError;
}

HANDLE WINAPI CreateFileA(const char* pszPath, DWORD nAccess, DWORD nShare, SECURITY_ATTRIBUTES*,
                          DWORD nHow, DWORD nFlags, HANDLE)
{
    const std::string key = pszPath ? KeyOf(pszPath) : "";
    if (!Begin() || !IsUsable(pszPath, key)) return INVALID_HANDLE_VALUE;
    Disk& disk = TheDisk();
    if (File* pFile = FindFile(key)) {
        const DWORD nError = ErrorWhenPresent(*pFile, nAccess, nShare, nHow);
        if (nError != NO_ERROR) {
            Fail(nError);
            return INVALID_HANDLE_VALUE;
        }
        if (nHow == CREATE_ALWAYS || nHow == TRUNCATE_EXISTING) pFile->bytes.clear();
        return Open(disk.files[key], nAccess, nShare, nFlags);
    }
    if (nHow == OPEN_EXISTING || nHow == TRUNCATE_EXISTING) {
        Fail(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    const FilePtr pFile = std::make_shared<File>();
    disk.files[key] = pFile;
    disk.names[key] = FullPath(pszPath);
    return Open(pFile, nAccess, nShare, nFlags);
}

BOOL WINAPI CloseHandle(HANDLE hFile)
{
    if (TheDisk().bPowerFailed) return Fail(ERROR_NOT_READY);
    const Handle* pHandle = FindHandle(hFile, "CloseHandle");
    if (!pHandle) return FALSE;
    const Handle closed = *pHandle;
    TheDisk().handles.erase(
        reinterpret_cast<uint64_t>(hFile)); // it is closed whatever else happens
    if (!Begin()) return FALSE;
    if (closed.bDeleteOnClose) Remove(closed.pFile.get());
    return TRUE;
}

HANDLE WINAPI FindFirstFileA(const char* pszPattern, WIN32_FIND_DATAA* pOut)
{
    if (!Begin()) return INVALID_HANDLE_VALUE;
    const std::string pattern = KeyOf(pszPattern);
    Search search;
    for (const auto& [key, name] : TheDisk().names)
        if (Matches(key, pattern)) search.push_back(name);
    if ((!TheDisk().bLongPaths && pattern.size() >= MAX_PATH) || !GiveNext(search, pOut)) {
        Fail(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    const uint64_t n = NewHandle();
    TheDisk().searches[n] = std::move(search);
    return reinterpret_cast<HANDLE>(n);
}

BOOL WINAPI FindNextFileA(HANDLE hFind, WIN32_FIND_DATAA* pOut)
{
    return Begin() && GiveNext(TheDisk().searches[reinterpret_cast<uint64_t>(hFind)], pOut);
}

BOOL WINAPI FindClose(HANDLE hFind)
{
    if (TheDisk().bPowerFailed) return Fail(ERROR_NOT_READY);
    if (TheDisk().searches.erase(reinterpret_cast<uint64_t>(hFind))) return TRUE;
    gdi::ReportMisuse("FindClose on a handle that is not open");
    return Fail(ERROR_INVALID_HANDLE);
}

BOOL WINAPI ReadFile(HANDLE hFile, void* pOut, DWORD nWanted, DWORD* pnRead, OVERLAPPED*)
{
    Disk& disk = TheDisk();
    if (pnRead) *pnRead = 0;
    if (!Begin()) return FALSE;
    Handle* pHandle = FindHandle(hFile, "ReadFile");
    if (!pHandle) return FALSE;
    if (!(pHandle->nAccess & GENERIC_READ)) return Fail(ERROR_ACCESS_DENIED);
    if (++disk.nReads == disk.faults.nFailRead) return Fail(ERROR_CRC);
    const std::string& bytes = pHandle->pFile->bytes;
    const uint64_t nLeft = bytes.size() > pHandle->nAt ? bytes.size() - pHandle->nAt : 0;
    auto nRead = static_cast<DWORD>(std::min<uint64_t>(nLeft, nWanted));
    if (disk.faults.nMostRead) nRead = std::min(nRead, disk.faults.nMostRead);
    if (disk.faults.bReadsNothing) nRead = 0;
    if (nRead) std::memcpy(pOut, bytes.data() + pHandle->nAt, nRead);
    pHandle->nAt += nRead;
    if (pnRead) *pnRead = nRead;
    if (disk.faults.nShrinkTo >= 0 && bytes.size() > static_cast<uint64_t>(disk.faults.nShrinkTo))
        pHandle->pFile->bytes.resize(static_cast<std::size_t>(disk.faults.nShrinkTo));
    return TRUE;
}

BOOL WINAPI WriteFile(HANDLE hFile, const void* pBytes, DWORD nWanted, DWORD* pnWritten,
                      OVERLAPPED*)
{
    Disk& disk = TheDisk();
    if (pnWritten) *pnWritten = 0;
    if (!Begin()) return FALSE;
    Handle* pHandle = FindHandle(hFile, "WriteFile");
    if (!pHandle) return FALSE;
    if (!(pHandle->nAccess & GENERIC_WRITE)) return Fail(ERROR_ACCESS_DENIED);
    DWORD nWritten = nWanted;
    if (disk.faults.nMostWritten) nWritten = std::min(nWritten, disk.faults.nMostWritten);
    if (disk.faults.nSpace >= 0) {
        nWritten = static_cast<DWORD>(std::min<int64_t>(nWritten, disk.faults.nSpace));
        disk.faults.nSpace -= nWritten;
    }
    std::string& bytes = pHandle->pFile->bytes;
    if (bytes.size() < pHandle->nAt + nWritten)
        bytes.resize(static_cast<std::size_t>(pHandle->nAt + nWritten));
    if (nWritten) std::memcpy(bytes.data() + pHandle->nAt, pBytes, nWritten);
    pHandle->nAt += nWritten;
    if (pnWritten) *pnWritten = nWritten;
    return nWritten == nWanted || nWritten > 0 ? TRUE : Fail(ERROR_DISK_FULL);
}

BOOL WINAPI FlushFileBuffers(HANDLE hFile)
{
    if (!Begin()) return FALSE;
    const Handle* pHandle = FindHandle(hFile, "FlushFileBuffers");
    if (!pHandle) return FALSE;
    if (!(pHandle->nAccess & GENERIC_WRITE)) return Fail(ERROR_ACCESS_DENIED);
    pHandle->pFile->flushed = pHandle->pFile->bytes;
    return TRUE;
}

DWORD WINAPI GetFileSize(HANDLE hFile, DWORD* pnHigh)
{
    if (!Begin()) return INVALID_FILE_SIZE;
    const Handle* pHandle = FindHandle(hFile, "GetFileSize");
    if (!pHandle) return INVALID_FILE_SIZE;
    const uint64_t nSize = pHandle->pFile->bytes.size();
    if (pnHigh) *pnHigh = static_cast<DWORD>(nSize >> 32);
    return static_cast<DWORD>(nSize);
}

DWORD WINAPI SetFilePointer(HANDLE hFile, LONG nLow, LONG* pnHigh, DWORD nFrom)
{
    if (!Begin()) return INVALID_SET_FILE_POINTER;
    Handle* pHandle = FindHandle(hFile, "SetFilePointer");
    if (!pHandle || pnHigh) return INVALID_SET_FILE_POINTER;
    const auto nBase = nFrom == FILE_BEGIN     ? 0
                       : nFrom == FILE_CURRENT ? static_cast<int64_t>(pHandle->nAt)
                                               : static_cast<int64_t>(pHandle->pFile->bytes.size());
    if (nBase + nLow < 0) return INVALID_SET_FILE_POINTER;
    pHandle->nAt = static_cast<uint64_t>(nBase + nLow);
    return static_cast<DWORD>(pHandle->nAt);
}

DWORD WINAPI GetFileType(HANDLE hFile)
{
    if (!Begin()) return FILE_TYPE_UNKNOWN;
    return FindHandle(hFile, "GetFileType") ? FILE_TYPE_DISK : FILE_TYPE_UNKNOWN;
}

DWORD WINAPI GetFileAttributesA(const char* pszPath)
{
    const std::string key = pszPath ? KeyOf(pszPath) : "";
    if (!Begin()) return INVALID_FILE_ATTRIBUTES;
    if (TheDisk().folders.contains(key)) return FILE_ATTRIBUTE_DIRECTORY;
    if (!IsUsable(pszPath, key)) return INVALID_FILE_ATTRIBUTES;
    if (const File* pFile = FindFile(key)) return pFile->nAttributes;
    Fail(ERROR_FILE_NOT_FOUND);
    return INVALID_FILE_ATTRIBUTES;
}

BOOL WINAPI DeleteFileA(const char* pszPath)
{
    const std::string key = pszPath ? KeyOf(pszPath) : "";
    if (!Begin() || !IsUsable(pszPath, key)) return FALSE;
    const File* pFile = FindFile(key);
    if (!pFile) return Fail(ERROR_FILE_NOT_FOUND);
    if (pFile->nAttributes & FILE_ATTRIBUTE_READONLY) return Fail(ERROR_ACCESS_DENIED);
    if (!IsReplaceable(*pFile)) return Fail(ERROR_SHARING_VIOLATION);
    TheDisk().files.erase(key);
    TheDisk().names.erase(key);
    return TRUE;
}

BOOL WINAPI MoveFileExA(const char* pszFrom, const char* pszTo, DWORD nFlags)
{
    Disk& disk = TheDisk();
    const std::string from = pszFrom ? KeyOf(pszFrom) : "";
    const std::string to = pszTo ? KeyOf(pszTo) : "";
    if (!Begin() || !IsUsable(pszFrom, from) || !IsUsable(pszTo, to)) return FALSE;
    const File* pFrom = FindFile(from);
    if (!pFrom) return Fail(ERROR_FILE_NOT_FOUND);
    if (!IsShared(*pFrom, DELETE, SHARE_ALL)) return Fail(ERROR_SHARING_VIOLATION);
    if (const File* pTo = FindFile(to); pTo && pTo != pFrom) {
        if (!(nFlags & MOVEFILE_REPLACE_EXISTING)) return Fail(ERROR_ALREADY_EXISTS);
        if (!IsReplaceable(*pTo)) return Fail(ERROR_ACCESS_DENIED);
    }
    const FilePtr pFile = disk.files[from];
    disk.files.erase(from);
    disk.names.erase(from);
    disk.files[to] = pFile;
    disk.names[to] = FullPath(pszTo);
    return TRUE;
}

// ---- what tests call ----

BOOL WINAPI SetFileAttributesA(const char* pszPath, DWORD nAttributes)
{
    File* pFile = FindFile(KeyOf(pszPath));
    if (!pFile) return Fail(ERROR_FILE_NOT_FOUND);
    pFile->nAttributes = nAttributes;
    return TRUE;
}

BOOL WINAPI CreateDirectoryA(const char* pszPath, SECURITY_ATTRIBUTES*)
{
    const std::string key = KeyOf(pszPath);
    if (TheDisk().folders.contains(key) || FindFile(key)) return Fail(ERROR_ALREADY_EXISTS);
    if (!TheDisk().folders.contains(FolderOf(key))) return Fail(ERROR_PATH_NOT_FOUND);
    TheDisk().folders.insert(key);
    return TRUE;
}

BOOL WINAPI RemoveDirectoryA(const char* pszPath)
{
    const std::string key = KeyOf(pszPath);
    if (!TheDisk().folders.contains(key)) return Fail(ERROR_PATH_NOT_FOUND);
    for (const auto& [name, pFile] : TheDisk().files)
        if (FolderOf(name) == key) return Fail(ERROR_DIR_NOT_EMPTY);
    TheDisk().folders.erase(key);
    return TRUE;
}

DWORD WINAPI GetTempPathA(DWORD nSize, char* pszOut)
{
    constexpr char TEMP[] = "C:\\temp\\";
    if (nSize >= sizeof TEMP) std::memcpy(pszOut, TEMP, sizeof TEMP);
    return nSize >= sizeof TEMP ? sizeof TEMP - 1 : sizeof TEMP;
}

DWORD WINAPI GetCurrentDirectoryA(UINT nSize, char* pszOut)
{
    const std::string& path = TheDisk().current;
    if (nSize <= path.size()) return static_cast<DWORD>(path.size() + 1);
    std::memcpy(pszOut, path.c_str(), path.size() + 1);
    return static_cast<DWORD>(path.size());
}

BOOL WINAPI SetCurrentDirectoryA(const char* pszPath)
{
    std::string full = FullPath(pszPath);
    if (full.size() == FolderOf(full).size() + 1) full.pop_back(); // a backslash at its end
    if (!TheDisk().folders.contains(KeyOf(full))) return Fail(ERROR_FILE_NOT_FOUND);
    TheDisk().current = full;
    return TRUE;
}
