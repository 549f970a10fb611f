// qel check: reports what is wrong with drawings in the form that editors and build tools
// understand.
#include "tools/qel/Checker.h"
#include "tools/qel/Command.h"
#include "tools/qel/Encoding.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>

namespace qel {

namespace {

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
    [[nodiscard]] std::string Text() const { return fmt::format("{}:{}", m_nLine, m_nColumn); }

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
    if (!ReadBytes(path, &bytes)) {
        Complain("cannot read '" + name + "': " + WhyNotRead(path));
        return EXIT_TROUBLE;
    }
    SetDrawingPage(DeclaredPage(bytes));
    const std::vector<Finding> findings = CheckDrawing(bytes);
    CPosition position(bytes);
    for (const Finding& finding : findings) {
        position.MoveTo(finding.nOffset);
        Print(fmt::format("{}:{}: {}: {}\n", name, position.Text(),
                          finding.bError ? "error" : "warning", DrawingToUtf8(finding.text)));
    }
    return findings.empty() ? EXIT_CLEAN : EXIT_FINDINGS;
}

constexpr char ABOUT[] = R"(Tells the author of a drawing what is wrong with it, one line a finding:

  FILE:LINE:COLUMN: error: TEXT      something is not read, or not as it stands there
  FILE:LINE:COLUMN: warning: TEXT    it is read, but has no effect or hardly the one meant

Lines and columns count from 1, columns by bytes. IN - is standard input, and @FILE stands for the
names in FILE, one a line or each ended by a zero byte; there may be any number of them.)";

constexpr char NOTES[] =
    R"(Exit status: 0 all drawings are clean; 1 something was found; 2 a drawing cannot be read (the
message is on standard error). With several drawings it is the highest of them.

Examples:
  qel check pump.qel
  qel check examples/*.qel && echo clean
  qel check - <pump.qel
  find . -name '*.qel' -print0 | qel check @-)";

int RunCheck(const CommandLine& given)
{
    if (given.names.empty()) throw CTrouble("check wants at least one drawing: qel check IN...");
    int nWorst = EXIT_CLEAN;
    for (const std::wstring& input : given.names) {
        const int nStatus = CheckFile(input);
        if (nStatus > nWorst) nWorst = nStatus;
    }
    return nWorst;
}

} // namespace

CommandRow CheckCommand()
{
    return {"check", "IN...", "what is wrong with drawings: FILE:LINE:COLUMN: error: TEXT",
            ABOUT,   NOTES,   {},
            RunCheck};
}

} // namespace qel
