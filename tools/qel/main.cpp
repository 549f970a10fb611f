// qel: draws, lists and checks drawings from the command line. The commands stand in files of their
// own.
#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <windows.h>

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <io.h>

namespace {

constexpr char HELP[] =
    "qel - draws, lists and checks instrument drawings (.qel)\n"
    "\n"
    "  qel render IN OUT [options]   draw a drawing into a picture\n"
    "      OUT                       .png, .bmp, .jpg or .emf (the recorded drawing calls)\n"
    "      --size WxH                in pixels; by default the reference size times the smallest\n"
    "                                whole number that makes it at least 800 wide\n"
    "      --background RRGGBB       hexadecimal; by default C0C0C0, on which black and white "
    "show\n"
    "      --rotate DEG              turn counter-clockwise, by quarter turns\n"
    "      --blink                   the dark phase of blinking colours\n"
    "      --pressed                 elements with the pressed flag are drawn pressed\n"
    "      --font NAME               the face of all texts\n"
    "  qel info IN [--json]          size, kind, elements, what the host can set\n"
    "  qel check IN...               what is wrong with drawings: FILE:LINE:COLUMN: error: TEXT\n"
    "  qel --help, qel --version\n"
    "\n"
    "Exit status: 0 done, or nothing found; 1 qel check found something; 2 an input cannot be "
    "read, an\n"
    "output cannot be written, or the command line is wrong (the message is on standard error).\n"
    "\n"
    "Examples:\n"
    "  qel render pump.qel pump.png --size 1600x1200 --background FFFFFF\n"
    "  qel info pump.qel --json\n"
    "  qel check examples/*.qel\n";

struct CommandRow {
    const wchar_t* pszName;
    int (*pfnRun)(const Arguments& arguments);
};

constexpr CommandRow g_commands[] = {
    {L"render", RunRender}, {L"info", RunInfo}, {L"check", RunCheck}};

int Run(const Arguments& words)
{
    if (words.empty()) {
        Complain("a command is missing: render, info or check; 'qel --help' tells more");
        return EXIT_TROUBLE;
    }
    for (const std::wstring& word : words) {
        if (word == L"--help" || word == L"-h") {
            Print(HELP);
            return EXIT_CLEAN;
        }
    }
    if (words[0] == L"--version") {
        Print("qel " QEL_VERSION "\n");
        return EXIT_CLEAN;
    }
    for (const CommandRow& row : g_commands)
        if (words[0] == row.pszName) return row.pfnRun(Arguments(words.begin() + 1, words.end()));
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

// The text goes out as UTF-8 bytes with the line ends that the system's tools expect.
int wmain(int nCount, wchar_t** ppszWords)
{
    _setmode(_fileno(stdout), _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    try {
        const int nStatus = Run(Arguments(ppszWords + (nCount ? 1 : 0), ppszWords + nCount));
        if (std::fflush(stdout) == 0) return nStatus;
        Complain("standard output cannot be written");
    } catch (const std::exception& trouble) {
        Complain(trouble.what());
    }
    return EXIT_TROUBLE;
}
