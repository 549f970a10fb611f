// qel: draws, lists and checks drawings from the command line. The commands stand in files of their
// own.
#include "tools/qel/CommandLine.h"
#include "tools/qel/Text.h"

#include <windows.h>

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <io.h>
#include <new>

namespace qel {

namespace {

constexpr char ABOUT[] = "Draws, lists and checks instrument drawings (.qel).";

constexpr char NOTES[] = R"('qel COMMAND --help' tells the options of a command, with examples.

Texts and identifiers of drawings are read in the encoding that the drawing declares, and printed as
UTF-8.
The name - is standard input (as /dev/stdin is), and for OUT standard output: a PNG, or a GIF.
@FILE stands for the arguments in FILE, in UTF-8, one a line or each ended by a zero byte.
A name that begins with "-" or "@" goes after a lone "--". A value may be
joined to its option: --option=VALUE.

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
  find . -name '*.qel' -print0 | qel check @-)";

constexpr OptionRow VERSION{OptionRow::Takes::Nothing, "--version", "", "Options",
                            "the version of the program"};

int PrintVersion(const CommandLine&)
{
    Print("qel " QEL_VERSION "\n");
    return EXIT_CLEAN;
}

CommandRows Commands()
{
    return {RenderCommand(), AnimateCommand(), InfoCommand(), CheckCommand()};
}

// The program without a command.
CommandRow Program()
{
    return {"", "COMMAND [options]", "", ABOUT, NOTES, {&VERSION}, PrintVersion};
}

int RunCommand(const CommandRow& row, const Arguments& arguments, const CommandRows& commands)
{
    const CommandLine given = ReadCommandLine(row, arguments, commands);
    if (given.help.empty()) return row.pfnRun(given);
    Print(given.help);
    return EXIT_CLEAN;
}

bool IsOption(const std::wstring& word)
{
    return word.size() > 1 && word[0] == L'-' && word != L"--";
}

int Run(const Arguments& words)
{
    if (words.empty())
        throw CTrouble(
            "a command is missing: render, animate, info or check; 'qel --help' tells more");
    const CommandRows commands = Commands();
    if (IsOption(words[0])) return RunCommand(Program(), {words[0]}, commands);
    const std::string name = ToUtf8(words[0]);
    for (const CommandRow& row : commands)
        if (name == row.pszName)
            return RunCommand(row, Arguments(words.begin() + 1, words.end()), {});
    throw CTrouble("unknown command '" + name + "'; 'qel --help' lists them");
}

// What ./qel has set tells by the status, too, that this program was started.
int Status(int nStatus)
{
    constexpr int STARTED = 64;
    return ::GetEnvironmentVariableW(L"QEL_TELL_START", nullptr, 0) ? nStatus + STARTED : nStatus;
}

int Answer(int nCount, wchar_t** ppszWords)
{
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

} // namespace

} // namespace qel

// The streams carry bytes: drawings, pictures, or UTF-8 with the line ends of the system's tools.
int wmain(int nCount, wchar_t** ppszWords)
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    return qel::Answer(nCount, ppszWords);
}
