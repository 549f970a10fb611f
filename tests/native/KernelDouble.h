// A stand-in for the functions of kernel32 that the native build of the engine calls: files on a
// disk in memory that fails as asked, times and code pages that a test sets. Paths are compared as
// Windows does, without regard to the case of letters. Each thread has a disk of its own. Misuse of
// file handles is reported like that of GDI objects (tests/native/GdiDouble.h).
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kernel {

// ---- the disk ----

// The disk is empty but for the folder "C:\temp", which is also the current one.
void FormatDisk(); // back to that; takes all faults back too
bool PutFile(const std::string& path, const std::string& bytes); // false: there is no such folder
bool GetFile(const std::string& path, std::string* pBytes);      // false: there is no such file
std::vector<std::string> FileNames();                            // of all files, in order
int OpenHandles();                                               // searches too
bool PutHostFile(const std::string& path, const std::string& hostPath); // copies from the real disk

// ---- faults ----

struct Faults {
    int64_t nSpace = -1;        // bytes that can still be written; negative: no limit
    DWORD nMostRead = 0;        // bytes that one read gives at most; 0: no limit
    DWORD nMostWritten = 0;     // bytes that one write takes at most; 0: no limit
    int nFailRead = 0;          // the read by this number fails, from 1; 0: none
    int64_t nShrinkTo = -1;     // after the first read the file has only so many bytes
    bool bReadsNothing = false; // reads succeed without a byte
    int nStopAt = 0;            // the power fails at the file operation by this number, from 1
};
void SetFaults(const Faults& faults);             // operations and reads count from here on
int Operations();                                 // file operations since then
void Lock(const std::string& path, bool bLocked); // another process has the file open for itself

// Called before each file operation, as another process that looks at the disk; null: none. Its own
// operations are not watched.
void SetWatcher(std::function<void()> watcher);

// After the power has failed no operation does anything. What was written but not flushed is lost
// with bLoseUnflushed, else it is there; handles are closed either way.
bool HasPowerFailed();
void Restart(bool bLoseUnflushed);

// ---- time, code page ----

void SetTime(const SYSTEMTIME* pLocal, const SYSTEMTIME* pUniversal); // null: the real time again
void SetCodePage(UINT nCodePage);                                     // the ANSI one, 936 at first

// ---- between the files of this stand-in ----

void AllowLongPaths(bool bAllow);                // of this call
std::string FullPathOf(const std::string& path); // from the current folder on, without dots

} // namespace kernel
