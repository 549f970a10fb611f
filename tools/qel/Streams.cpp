// Standard streams, and lists of arguments; see the header.
#include "tools/qel/Streams.h"

#include "tools/qel/Text.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

namespace qel {

namespace {

void ReadAll(std::FILE* pFile, std::string* pBytes)
{
    char buffer[65536];
    for (std::size_t n = 0; (n = std::fread(buffer, 1, sizeof buffer, pFile)) > 0;)
        pBytes->append(buffer, n);
}

std::string WithoutByteOrderMark(const std::string& utf8)
{
    return utf8.starts_with("\xEF\xBB\xBF") ? utf8.substr(3) : utf8;
}

} // namespace

bool IsStandardInput(const std::wstring& path)
{
    return path == L"-" || path == L"/dev/stdin";
}

bool IsStandardOutput(const std::wstring& path)
{
    return path == L"-" || path == L"/dev/stdout";
}

const std::string& StandardInput()
{
    static const std::string s_bytes = [] {
        std::string bytes;
        ReadAll(stdin, &bytes);
        return bytes;
    }();
    return s_bytes;
}

bool ReadBytes(const std::wstring& path, std::string* pBytes)
{
    if (IsStandardInput(path)) {
        *pBytes = StandardInput();
        return std::ferror(stdin) == 0;
    }
    std::FILE* pFile = _wfopen(path.c_str(), L"rb");
    if (!pFile) return false;
    ReadAll(pFile, pBytes);
    const bool bDone = std::ferror(pFile) == 0;
    std::fclose(pFile);
    return bDone;
}

bool WriteBytes(const std::wstring& path, const std::string& bytes)
{
    std::FILE* pFile = _wfopen(path.c_str(), L"wb");
    if (!pFile) return false;
    const bool bWritten = std::fwrite(bytes.data(), 1, bytes.size(), pFile) == bytes.size();
    return std::fclose(pFile) == 0 && bWritten;
}

const char* WhyNotRead(const std::wstring& path)
{
    if (IsStandardInput(path)) return "it is closed, or fails";
    const DWORD nAttributes = ::GetFileAttributesW(path.c_str());
    if (nAttributes == INVALID_FILE_ATTRIBUTES) return "there is no such file";
    return nAttributes & FILE_ATTRIBUTE_DIRECTORY ? "it is a folder" : "it cannot be opened";
}

CTemporaryFile::CTemporaryFile()
{
    wchar_t szFolder[MAX_PATH + 1];
    wchar_t szName[MAX_PATH];
    if (!::GetTempPathW(MAX_PATH + 1, szFolder) || !::GetTempFileNameW(szFolder, L"qel", 0, szName))
        throw CTrouble("no temporary file can be made");
    m_name = szName;
}

CTemporaryFile::~CTemporaryFile()
{
    ::DeleteFileW(m_name.c_str());
}

bool CTemporaryFile::Write(const std::string& bytes) const
{
    return WriteBytes(m_name, bytes);
}

Arguments ReadArgumentList(const std::wstring& path)
{
    std::string bytes;
    if (!ReadBytes(path, &bytes))
        throw CTrouble("cannot read the list '" + ToUtf8(path) + "': " + WhyNotRead(path));
    bytes = WithoutByteOrderMark(bytes);
    const bool bLines = bytes.find('\0') == std::string::npos;
    Arguments words;
    for (std::size_t nAt = 0; nAt < bytes.size();) {
        const std::size_t nEnd = std::min(bytes.find(bLines ? '\n' : '\0', nAt), bytes.size());
        std::string word = bytes.substr(nAt, nEnd - nAt);
        nAt = nEnd + 1;
        if (bLines && word.ends_with('\r')) word.pop_back();
        if (!bLines || !word.empty()) words.push_back(FromUtf8(word)); // lines may be empty
    }
    return words;
}

} // namespace qel
