// qel: draws, lists and checks drawings from the command line. The commands stand in files of their
// own.
#include "tools/qel/Command.h"
#include "tools/qel/Streams.h"
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
The name - is standard input (as /dev/stdin is), and for OUT standard output: a PNG, or a GIF.
@FILE stands for the arguments in FILE, in UTF-8, one a line or each ended by a zero byte.
A name that begins with "-" or "@" goes after a lone "--".

Exit status: 0 done, or nothing found; 1 qel check found something; 2 an input cannot be read,
an output cannot be written, or the command line is wrong (one message on standard error); 3 of
the script ./qel: the program could not be set up or started, or did not run to its end.

Examples:
  qel render pump.qel pump.png --size 1600x1200 --background FFFFFF
  qel render gauge.qel gauge.png --set 0.max=100 --value 0=62
  qel animate gauge.qel gauge.gif --set 0.max=100 --value 0=0..100
  qel info pump.qel --json
  qel check examples/*.qel
  qel render - - <pump.qel >pump.png
  find . -name '*.qel' -print0 | qel check @-
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

void CArgumentReader::ExpandLists()
{
    constexpr int MAX_LISTS = 100;
    const auto isList = [](const std::wstring& word) { return word.size() > 1 && word[0] == L'@'; };
    while (!m_bNamesOnly && m_nAt < m_arguments.size() && isList(m_arguments[m_nAt])) {
        const std::wstring path = m_arguments[m_nAt].substr(1);
        if (++m_nLists > MAX_LISTS)
            throw CTrouble("the list '" + ToUtf8(path) + "' is one too many, or in itself");
        const Arguments words = ReadArgumentList(path);
        const auto at = m_arguments.begin() + static_cast<std::ptrdiff_t>(m_nAt);
        m_arguments.insert(m_arguments.erase(at), words.begin(), words.end());
    }
}

bool CArgumentReader::Next()
{
    ExpandLists();
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

// What ./qel has set tells by the status, too, that this program was started.
int Status(int nStatus)
{
    constexpr int STARTED = 64;
    return ::GetEnvironmentVariableW(L"QEL_TELL_START", nullptr, 0) ? nStatus + STARTED : nStatus;
}

// The streams carry bytes: drawings, pictures, or UTF-8 with the line ends of the system's tools.
int wmain(int nCount, wchar_t** ppszWords)
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    try {
        const int nStatus = Run(Arguments(ppszWords + (nCount ? 1 : 0), ppszWords + nCount));
        if (FinishOutput()) return Status(nStatus);
        Complain("standard output cannot be written");
    } catch (const std::bad_alloc&) {
        Complain("there is not enough memory");
    } catch (const std::exception& trouble) {
        Complain(trouble.what());
    }
    return Status(EXIT_TROUBLE);
}
