// qel check: reports what is wrong with drawings in the form that editors and build tools
// understand.
#include "tools/qel/Checker.h"
#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <cstdio>

namespace {

bool ReadFileBytes(const std::wstring& path, std::string* pBytes)
{
    std::FILE* pFile = _wfopen(path.c_str(), L"rb");
    if (!pFile) return false;
    char buffer[65536];
    for (std::size_t n = 0; (n = std::fread(buffer, 1, sizeof buffer, pFile)) > 0;)
        pBytes->append(buffer, n);
    const bool bDone = std::ferror(pFile) == 0;
    std::fclose(pFile);
    return bDone;
}

// Lines and columns count from 1, columns by bytes.
class CPosition {
public:
    explicit CPosition(const std::string& bytes) : m_bytes(bytes) {}

    void MoveTo(std::size_t nOffset) // forward only
    {
        for (; m_nAt < nOffset && m_nAt < m_bytes.size(); ++m_nAt) {
            ++m_nColumn;
            if (m_bytes[m_nAt] != '\n') continue;
            ++m_nLine;
            m_nColumn = 1;
        }
    }
    [[nodiscard]] std::string Text() const { return Format("%zu:%zu", m_nLine, m_nColumn); }

private:
    const std::string& m_bytes;
    std::size_t m_nAt = 0;
    std::size_t m_nLine = 1;
    std::size_t m_nColumn = 1;
};

int CheckFile(const std::wstring& path)
{
    const std::string name = ToUtf8(path);
    std::string bytes;
    if (!ReadFileBytes(path, &bytes)) {
        Complain("cannot read '" + name + "'");
        return EXIT_TROUBLE;
    }
    const std::vector<Finding> findings = CheckDrawing(bytes);
    CPosition position(bytes);
    for (const Finding& finding : findings) {
        position.MoveTo(finding.nOffset);
        Print(name + ":" + position.Text() + (finding.bError ? ": error: " : ": warning: ") +
              AnsiToUtf8(finding.text) + "\n");
    }
    return findings.empty() ? EXIT_CLEAN : EXIT_FINDINGS;
}

} // namespace

int RunCheck(const Arguments& arguments)
{
    Arguments inputs;
    CArgumentReader reader(arguments);
    while (reader.Next()) {
        if (reader.IsOption()) reader.RefuseOption();
        inputs.push_back(reader.Current());
    }
    if (inputs.empty()) throw CTrouble("check wants at least one drawing: qel check IN...");
    int nWorst = EXIT_CLEAN;
    for (const std::wstring& input : inputs) {
        const int nStatus = CheckFile(input);
        if (nStatus > nWorst) nWorst = nStatus;
    }
    return nWorst;
}
