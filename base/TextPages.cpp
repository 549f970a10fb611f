#include "base/TextPages.h"

#include <windows.h>

#include <string_view>

namespace {

// A name for which the system has several pages has the one that reads all of the others' bytes.
constexpr TextPageName g_names[] = {
    {936, "gb2312"},        {936, "gbk"},           {936, "gb_2312-80"},
    {936, "x-gbk"},         {936, "cp936"},         {54936, "gb18030"},
    {65001, "utf-8"},       {65001, "utf8"},        {950, "big5"},
    {950, "cp950"},         {932, "shift_jis"},     {932, "shift-jis"},
    {932, "sjis"},          {932, "windows-31j"},   {932, "cp932"},
    {20932, "euc-jp"},      {949, "euc-kr"},        {949, "ks_c_5601-1987"},
    {949, "windows-949"},   {949, "cp949"},         {20127, "us-ascii"},
    {20127, "ascii"},       {28591, "iso-8859-1"},  {28591, "latin1"},
    {28592, "iso-8859-2"},  {28593, "iso-8859-3"},  {28594, "iso-8859-4"},
    {28595, "iso-8859-5"},  {28596, "iso-8859-6"},  {28597, "iso-8859-7"},
    {28598, "iso-8859-8"},  {28599, "iso-8859-9"},  {28600, "iso-8859-10"},
    {28603, "iso-8859-13"}, {28604, "iso-8859-14"}, {28605, "iso-8859-15"},
    {28606, "iso-8859-16"}, {874, "windows-874"},   {874, "tis-620"},
    {1250, "windows-1250"}, {1250, "cp1250"},       {1251, "windows-1251"},
    {1251, "cp1251"},       {1252, "windows-1252"}, {1252, "cp1252"},
    {1253, "windows-1253"}, {1253, "cp1253"},       {1254, "windows-1254"},
    {1254, "cp1254"},       {1255, "windows-1255"}, {1255, "cp1255"},
    {1256, "windows-1256"}, {1256, "cp1256"},       {1257, "windows-1257"},
    {1257, "cp1257"},       {1258, "windows-1258"}, {1258, "cp1258"},
    {20866, "koi8-r"},      {21866, "koi8-u"},      {437, "ibm437"},
    {850, "ibm850"},        {852, "ibm852"},        {866, "ibm866"},
    {866, "cp866"},         {10000, "macintosh"},
};

constexpr char Small(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool IsSmall(std::string_view name)
{
    for (const char c : name)
        if (Small(c) != c) return false;
    return !name.empty();
}

template <std::size_t N>
consteval bool AreSound(const TextPageName (&rows)[N])
{
    for (std::size_t i = 0; i < N; ++i) {
        if (!IsSmall(rows[i].pszName)) return false;
        for (std::size_t j = 0; j < i; ++j)
            if (std::string_view(rows[i].pszName) == rows[j].pszName) return false;
    }
    return true;
}
static_assert(AreSound(g_names), "each name stands there once, in small letters");

bool IsSameName(const char* pszSmall, const char* pszName)
{
    while (*pszSmall && *pszSmall == Small(*pszName)) {
        ++pszSmall;
        ++pszName;
    }
    return *pszSmall == Small(*pszName);
}

} // namespace

std::span<const TextPageName> TextPageNames()
{
    return g_names;
}

uint32_t PageOfName(const char* pszName)
{
    for (const TextPageName& row : g_names)
        if (IsSameName(row.pszName, pszName)) return row.nPage;
    return 0;
}

const char* NameOfPage(uint32_t nPage)
{
    for (const TextPageName& row : g_names)
        if (row.nPage == nPage) return row.pszName;
    return nullptr;
}

bool IsKnownPage(uint32_t nPage)
{
    return nPage > PAGE_DECLARED && ::IsValidCodePage(nPage) != 0;
}
