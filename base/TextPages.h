// The code pages of texts: the names by which drawings declare them, and which of them the system
// knows. The conversion of texts is in base/WideText.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

constexpr uint32_t PAGE_ANSI = 0;     // the system's own; texts are drawn as their bytes
constexpr uint32_t PAGE_DECLARED = 1; // whichever the drawing declares
constexpr uint32_t PAGE_GB2312 = 936; // what a drawing has that declares nothing
constexpr uint32_t PAGE_UTF8 = 65001;

struct TextPageName {
    uint16_t nPage;
    const char* pszName; // in small letters
};

// The first name of a page is the registered one, the one that a new drawing declares.
std::span<const TextPageName> TextPageNames();

// The page of a name, in letters of either case; 0 for a name that there is not.
uint32_t PageOfName(const char* pszName);
const char* NameOfPage(uint32_t nPage); // the registered one; null for none
// Whether the system converts texts of that page. The numbers below that stand for settings of the
// system are no pages.
bool IsKnownPage(uint32_t nPage);
