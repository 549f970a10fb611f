// qel: draws, lists and checks drawings from the command line. The commands stand in files of their
// own.
#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <io.h>
#include <new>

namespace {

constexpr char HELP[] = R"(qel - draws, lists and checks instrument drawings (.qel)

  qel render IN OUT [options]   draw a drawing into a picture: .png, .bmp, .jpg or .emf
  qel animate IN OUT.gif --value ID=FROM..TO [options]
                                the same while values move: an animated picture
  qel info IN [--json]          size, kind, elements, what the host can set
  qel check IN...               what is wrong with drawings: FILE:LINE:COLUMN: error: TEXT

  qel COMMAND --help            the options of a command, with examples
  qel --help, qel --version

Texts and identifiers of drawings are read in the system's code page and printed as UTF-8.
A name that begins with "-" goes after a lone "--".

Exit status: 0 done, or nothing found; 1 qel check found something; 2 an input cannot be read,
an output cannot be written, or the command line is wrong (one message on standard error).

Examples:
  qel render pump.qel pump.png --size 1600x1200 --background FFFFFF
  qel render gauge.qel gauge.png --set 0.max=100 --value 0=62
  qel animate gauge.qel gauge.gif --set 0.max=100 --value 0=0..100
  qel info pump.qel --json
  qel check examples/*.qel
)";

struct CommandRow {
    const wchar_t* pszName;
    int (*pfnRun)(const Arguments& arguments);
    const char* pszHelp;
};

const CommandRow g_commands[] = {{L"render", RunRender, g_renderHelp},
                                 {L"animate", RunAnimate, g_animateHelp},
                                 {L"info", RunInfo, g_infoHelp},
                                 {L"check", RunCheck, g_checkHelp}};

bool IsHelpOption(const std::wstring& word)
{
    return word == L"--help" || word == L"-h";
}

bool AsksForHelp(const Arguments& arguments)
{
    const auto end = std::find(arguments.begin(), arguments.end(), L"--");
    return std::any_of(arguments.begin(), end, IsHelpOption);
}

int RunCommand(const CommandRow& row, const Arguments& arguments)
{
    if (!AsksForHelp(arguments)) return row.pfnRun(arguments);
    Print(row.pszHelp);
    return EXIT_CLEAN;
}

int Run(const Arguments& words)
{
    if (words.empty())
        throw CTrouble(
            "a command is missing: render, animate, info or check; 'qel --help' tells more");
    if (IsHelpOption(words[0])) {
        Print(HELP);
        return EXIT_CLEAN;
    }
    if (words[0] == L"--version") {
        Print("qel " QEL_VERSION "\n");
        return EXIT_CLEAN;
    }
    for (const CommandRow& row : g_commands)
        if (words[0] == row.pszName)
            return RunCommand(row, Arguments(words.begin() + 1, words.end()));
    throw CTrouble("unknown command '" + ToUtf8(words[0]) + "'; 'qel --help' lists them");
}

} // namespace

bool CArgumentReader::Next()
{
    if (m_nAt < m_arguments.size() && !m_bNamesOnly && m_arguments[m_nAt] == L"--") {
        m_bNamesOnly = true;
        ++m_nAt;
    }
    return m_nAt++ < m_arguments.size();
}

bool CArgumentReader::IsOption() const
{
    return !m_bNamesOnly && Current().size() > 1 && Current()[0] == L'-';
}

const std::wstring& CArgumentReader::Value()
{
    if (m_nAt >= m_arguments.size())
        throw CTrouble("a value is missing after " + ToUtf8(Current()));
    return m_arguments[m_nAt++];
}

void CArgumentReader::RefuseOption() const
{
    throw CTrouble("unknown option '" + ToUtf8(Current()) + "'; 'qel --help' lists them");
}

// Both streams carry UTF-8 bytes, with the line ends that the system's tools expect.
int wmain(int nCount, wchar_t** ppszWords)
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    try {
        const int nStatus = Run(Arguments(ppszWords + (nCount ? 1 : 0), ppszWords + nCount));
        if (FinishOutput()) return nStatus;
        Complain("standard output cannot be written");
    } catch (const std::bad_alloc&) {
        Complain("there is not enough memory");
    } catch (const std::exception& trouble) {
        Complain(trouble.what());
    }
    return EXIT_TROUBLE;
}
