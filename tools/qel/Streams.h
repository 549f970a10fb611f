// Standard input and output in the place of files, and lists of arguments.
#pragma once

#include "tools/qel/Command.h"

namespace qel {

bool IsStandardInput(const std::wstring& path);  // "-" or "/dev/stdin"
bool IsStandardOutput(const std::wstring& path); // "-" or "/dev/stdout"

// All bytes of standard input, which is read at the first call.
const std::string& StandardInput();

// All bytes of a file or of standard input; false: it cannot be read.
bool ReadBytes(const std::wstring& path, std::string* pBytes);

// Writes a file of these bytes; false: not all of them could be written.
bool WriteBytes(const std::wstring& path, const std::string& bytes);

// Why a file cannot be read.
const char* WhyNotRead(const std::wstring& path);

// A file in the folder for temporary ones, for what is done with names alone; it goes with this.
// CTrouble when none can be made.
class CTemporaryFile {
public:
    CTemporaryFile();
    ~CTemporaryFile();
    CTemporaryFile(const CTemporaryFile&) = delete;
    CTemporaryFile& operator=(const CTemporaryFile&) = delete;

    [[nodiscard]] const std::wstring& Name() const { return m_name; }
    [[nodiscard]] bool Write(const std::string& bytes) const;

private:
    std::wstring m_name;
};

// The arguments in a list: UTF-8, one a line, or each ended by a zero byte if there is any.
// CTrouble when it cannot be read.
Arguments ReadArgumentList(const std::wstring& path);

} // namespace qel
