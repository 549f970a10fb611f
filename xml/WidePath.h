// A path as it is handed to the system: one that is too long for the short form, as a full path
// with the prefix that lifts the limit.
#pragma once

#include <windows.h>

#include <cstddef>

class CWidePath {
public:
    // The short form leaves room for an ending.
    static constexpr std::size_t MAX_ENDING = 12;

    explicit CWidePath(const wchar_t* pszPath) noexcept;
    ~CWidePath();
    CWidePath(const CWidePath&) = delete;
    CWidePath& operator=(const CWidePath&) = delete;

    [[nodiscard]] const wchar_t* Get() const { return m_pszPath; } // null without memory

private:
    const wchar_t* m_pszPath;
    wchar_t* m_pMade = nullptr;
};
