// The stand-in for kernel32 fails as it is asked to, and reports the misuse of file handles.
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

int g_nMisuses = 0;

template <class Act>
int CountMisuses(Act act)
{
    g_nMisuses = 0;
    const gdi::MisuseHandler pfnPrev =
        gdi::SetMisuseHandler([](const std::string&) { ++g_nMisuses; });
    act();
    gdi::SetMisuseHandler(pfnPrev);
    return g_nMisuses;
}

HANDLE Open(const char* pszPath, DWORD nAccess, DWORD nHow, DWORD nShare = 0)
{
    return ::CreateFileA(pszPath, nAccess, nShare, nullptr, nHow, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string Bytes(const char* pszPath)
{
    std::string bytes = "none";
    kernel::GetFile(pszPath, &bytes);
    return bytes;
}

} // namespace

TEST(KernelDouble, WritesAndReadsFilesWhateverTheCaseOfTheirNames)
{
    const HANDLE h = Open("C:\\temp\\New.qel", GENERIC_WRITE, CREATE_NEW);
    DWORD n = 0;
    EXPECT_TRUE(::WriteFile(h, "abc", 3, &n, nullptr));
    EXPECT_TRUE(::CloseHandle(h));
    EXPECT_EQ("abc", Bytes("c:/TEMP/new.QEL"));
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open("new.qel", GENERIC_WRITE, CREATE_NEW));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_EXISTS), ::GetLastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open("C:\\none\\a", GENERIC_WRITE, CREATE_NEW));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PATH_NOT_FOUND), ::GetLastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open("a", GENERIC_READ, OPEN_EXISTING));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), ::GetLastError());
}

TEST(KernelDouble, ReportsHandlesThatAreNotOpen)
{
    kernel::PutFile("a", "abc");
    const HANDLE h = Open("a", GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(1, kernel::OpenHandles());
    EXPECT_TRUE(::CloseHandle(h));
    EXPECT_EQ(0, kernel::OpenHandles());
    EXPECT_EQ(1, CountMisuses([&] { EXPECT_FALSE(::CloseHandle(h)); }));
    DWORD n = 0;
    char c = 0;
    EXPECT_EQ(1, CountMisuses([&] { ::ReadFile(h, &c, 1, &n, nullptr); }));
    EXPECT_EQ(1, CountMisuses([&] { ::CloseHandle(INVALID_HANDLE_VALUE); }));
}

TEST(KernelDouble, HandlesExcludeEachOtherUnlessTheyShare)
{
    kernel::PutFile("a", "abc");
    const HANDLE h = Open("a", GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ);
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open("a", GENERIC_WRITE, OPEN_EXISTING, FILE_SHARE_READ));
    EXPECT_EQ(static_cast<DWORD>(ERROR_SHARING_VIOLATION), ::GetLastError());
    const HANDLE hOther = Open("a", GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ);
    EXPECT_NE(INVALID_HANDLE_VALUE, hOther);
    EXPECT_FALSE(::MoveFileExA("a", "b", 0));
    EXPECT_FALSE(::DeleteFileA("a"));
    ::CloseHandle(h);
    ::CloseHandle(hOther);
    kernel::Lock("a", true);
    EXPECT_EQ(INVALID_HANDLE_VALUE, Open("a", GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ));
    kernel::Lock("a", false);
    EXPECT_TRUE(::DeleteFileA("a"));
}

TEST(KernelDouble, RemovesAFileThatWasOpenedForItWhenItIsClosed)
{
    kernel::PutFile("a", "abc");
    const auto open = [](DWORD nAccess, DWORD nShare) {
        return ::CreateFileA("a", nAccess, nShare, nullptr, OPEN_EXISTING,
                             FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    };
    const HANDLE hWriter = Open("a", GENERIC_WRITE, OPEN_EXISTING, FILE_SHARE_DELETE);
    EXPECT_EQ(INVALID_HANDLE_VALUE, open(DELETE, 0)); // it shares nothing, the writer writes
    EXPECT_EQ(static_cast<DWORD>(ERROR_SHARING_VIOLATION), ::GetLastError());
    ::CloseHandle(hWriter);
    ::SetFileAttributesA("a", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(INVALID_HANDLE_VALUE, open(DELETE, 0));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), ::GetLastError());
    ::SetFileAttributesA("a", FILE_ATTRIBUTE_NORMAL);
    const HANDLE h = open(DELETE, 0);
    EXPECT_EQ("abc", Bytes("a"));
    EXPECT_TRUE(::CloseHandle(h));
    EXPECT_EQ("none", Bytes("a"));
}

TEST(KernelDouble, FindsTheFilesOfAPatternInItsFolderAlone)
{
    kernel::FormatDisk();
    ASSERT_TRUE(::CreateDirectoryA("C:\\temp\\a.1~", nullptr));
    for (const char* pszName : {"a.1~", "A.22~", "a.x", "b.1~", "a.1~\\a.3~"})
        kernel::PutFile(std::string("C:\\temp\\") + pszName, "");
    WIN32_FIND_DATAA found;
    const HANDLE hFind = ::FindFirstFileA("a.*~", &found);
    ASSERT_NE(INVALID_HANDLE_VALUE, hFind);
    EXPECT_EQ(1, kernel::OpenHandles());
    EXPECT_STREQ("A.22~", found.cFileName);
    EXPECT_FALSE(::FindNextFileA(hFind, &found));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_MORE_FILES), ::GetLastError());
    EXPECT_TRUE(::FindClose(hFind));
    EXPECT_EQ(0, kernel::OpenHandles());
    EXPECT_EQ(1, CountMisuses([&] { EXPECT_FALSE(::FindClose(hFind)); }));
    EXPECT_EQ(INVALID_HANDLE_VALUE, ::FindFirstFileA("none*", &found));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), ::GetLastError());
}

TEST(KernelDouble, ADiskThatIsFullTakesWhatFitsAndThenNothing)
{
    kernel::Faults faults;
    faults.nSpace = 4;
    kernel::SetFaults(faults);
    const HANDLE h = Open("a", GENERIC_WRITE, CREATE_NEW);
    DWORD n = 0;
    EXPECT_TRUE(::WriteFile(h, "abcdef", 6, &n, nullptr));
    EXPECT_EQ(4U, n);
    EXPECT_FALSE(::WriteFile(h, "ef", 2, &n, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_DISK_FULL), ::GetLastError());
    ::CloseHandle(h);
    EXPECT_EQ("abcd", Bytes("a"));
}

TEST(KernelDouble, ReadsGiveLessAndFilesShrinkAsAsked)
{
    kernel::PutFile("a", "abcdef");
    kernel::Faults faults;
    faults.nMostRead = 2;
    faults.nShrinkTo = 3;
    kernel::SetFaults(faults);
    const HANDLE h = Open("a", GENERIC_READ, OPEN_EXISTING);
    char buffer[8] = {};
    DWORD n = 0;
    EXPECT_TRUE(::ReadFile(h, buffer, 6, &n, nullptr));
    EXPECT_EQ(2U, n);
    EXPECT_TRUE(::ReadFile(h, buffer, 6, &n, nullptr));
    EXPECT_EQ(1U, n);
    EXPECT_TRUE(::ReadFile(h, buffer, 6, &n, nullptr));
    EXPECT_EQ(0U, n);
    ::CloseHandle(h);
}

TEST(KernelDouble, WhatWasNotFlushedMayBeLostWhenThePowerFails)
{
    for (const bool bLose : {false, true}) {
        kernel::FormatDisk();
        kernel::Faults faults;
        faults.nStopAt = 5;
        kernel::SetFaults(faults);
        const HANDLE h = Open("a", GENERIC_WRITE, CREATE_NEW);
        DWORD n = 0;
        EXPECT_TRUE(::WriteFile(h, "abc", 3, &n, nullptr));
        EXPECT_TRUE(::FlushFileBuffers(h));
        EXPECT_TRUE(::WriteFile(h, "def", 3, &n, nullptr));
        EXPECT_FALSE(kernel::HasPowerFailed());
        EXPECT_FALSE(::FlushFileBuffers(h));
        EXPECT_TRUE(kernel::HasPowerFailed());
        EXPECT_FALSE(::CloseHandle(h));
        EXPECT_FALSE(::DeleteFileA("a"));
        kernel::Restart(bLose);
        EXPECT_EQ(bLose ? "abc" : "abcdef", Bytes("a"));
        EXPECT_EQ(0, kernel::OpenHandles());
    }
}

TEST(KernelDouble, TheTimeIsTheOneThatIsSet)
{
    const SYSTEMTIME local{2024, 2, 4, 29, 13, 45, 6, 7};
    const SYSTEMTIME universal{2024, 2, 4, 29, 5, 45, 6, 7};
    kernel::SetTime(&local, &universal);
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    EXPECT_EQ(13, now.wHour);
    ::GetSystemTime(&now);
    EXPECT_EQ(5, now.wHour);
    kernel::SetTime(nullptr, nullptr);
    ::GetSystemTime(&now);
    EXPECT_GE(now.wYear, 2024);
}

TEST(KernelDouble, ConvertsChineseAndTellsWhatHasNoBytes)
{
    char bytes[16];
    BOOL bReplaced = FALSE;
    EXPECT_EQ(3, ::WideCharToMultiByte(CP_ACP, 0, L"\u4e2d", -1, bytes, sizeof bytes, nullptr,
                                       &bReplaced));
    EXPECT_STREQ("\xD6\xD0", bytes);
    EXPECT_FALSE(bReplaced);
    EXPECT_EQ(2, ::WideCharToMultiByte(CP_ACP, 0, L"\u0e01", -1, bytes, sizeof bytes, nullptr,
                                       &bReplaced));
    EXPECT_TRUE(bReplaced);
    wchar_t wide[4];
    EXPECT_EQ(2, ::MultiByteToWideChar(CP_ACP, 0, "\xD6\xD0", -1, wide, 4));
    EXPECT_EQ(0x4E2D, wide[0]);
    EXPECT_EQ(0, ::MultiByteToWideChar(CP_ACP, 0, "abcdef", -1, wide, 4));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), ::GetLastError());
}

TEST(AllocationFaults, FailWhatIsAskedForAndNothingElse)
{
    alloc::Fail(2);
    void* pFirst = std::malloc(4);
    void* pSecond = std::calloc(1, 4);
    void* pThird = new (std::nothrow) char[4];
    const int nCount = alloc::Count();
    alloc::Off();
    EXPECT_NE(nullptr, pFirst);
    EXPECT_EQ(nullptr, pSecond);
    EXPECT_NE(nullptr, pThird);
    EXPECT_EQ(3, nCount);
    std::free(pFirst);
    delete[] static_cast<char*>(pThird);
    alloc::FailFrom(1);
    void* pFourth = new (std::nothrow) int;
    void* pFifth = std::realloc(nullptr, 9);
    alloc::Off();
    EXPECT_EQ(nullptr, pFourth);
    EXPECT_EQ(nullptr, pFifth);
}
