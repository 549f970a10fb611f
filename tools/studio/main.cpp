// QEL Studio: shows drawings live in a window.
#include "tools/studio/MainWindow.h"
#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

#include <commctrl.h>

#include <new>
#include <shellapi.h>

namespace studio {

namespace {

constexpr int EXIT_TROUBLE = 2;

std::vector<std::wstring> Words()
{
    std::vector<std::wstring> words;
    int nWords = 0;
    wchar_t** ppWords = ::CommandLineToArgvW(::GetCommandLineW(), &nWords);
    for (int n = 1; ppWords && n < nWords; ++n) words.emplace_back(ppWords[n]);
    ::LocalFree(ppWords);
    return words;
}

unsigned SentenceOf(CommandLine::Fault fault)
{
    switch (fault) {
    case CommandLine::Fault::PortMissing:
        return IDS_OPTION_PORT_MISSING;
    case CommandLine::Fault::PortWrong:
        return IDS_OPTION_PORT_WRONG;
    case CommandLine::Fault::Twice:
        return IDS_OPTION_TWICE;
    default:
        return IDS_OPTION_UNKNOWN;
    }
}

int TellFault(const CommandLine& line)
{
    const std::wstring text = Text(SentenceOf(line.fault), {line.wrong}) + Text(IDS_OPTION_USAGE);
    ::MessageBoxW(nullptr, text.c_str(), Text(IDS_TITLE).c_str(), MB_OK | MB_ICONERROR);
    return EXIT_TROUBLE;
}

int Run(int nShow)
{
    const CommandLine line = ReadCommandLine(Words());
    if (line.fault != CommandLine::Fault::None) return TellFault(line);
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&controls);
    const std::wstring kept = SettingsPath();
    CMainWindow window(LoadSettings(kept));
    if (!window.Create(nShow)) return EXIT_TROUBLE;
    window.Open(line.files);
    window.TakeLiveData(line);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (window.Translate(&message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    if (!kept.empty()) SaveSettings(window.Kept(), kept);
    return static_cast<int>(message.wParam);
}

} // namespace

} // namespace studio

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int nShow)
{
    try {
        return studio::Run(nShow);
    } catch (const std::bad_alloc&) {
        return studio::EXIT_TROUBLE;
    }
}
