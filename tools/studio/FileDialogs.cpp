// The dialogs for names; see the header.
#include "tools/studio/FileDialogs.h"

#include "tools/studio/Strings.h"

#include <commdlg.h>
#include <cwchar>

namespace studio {

namespace {

constexpr std::size_t NAME_SIZE = 4096;
constexpr DWORD FLAGS = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

std::wstring Ask(decltype(&::GetOpenFileNameW) pfnAsk, OPENFILENAMEW dialog, std::wstring name)
{
    name.resize(NAME_SIZE, L'\0');
    dialog.lStructSize = sizeof dialog;
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = static_cast<DWORD>(name.size());
    name.resize(pfnAsk(&dialog) ? std::wcslen(name.c_str()) : 0);
    return name;
}

} // namespace

std::wstring FilterOf(std::span<const FileKind> kinds)
{
    std::wstring filter;
    for (const FileKind& kind : kinds) filter += Text(kind.nText) + L'\0' + kind.pszPattern + L'\0';
    return filter;
}

std::wstring AskToOpen(HWND hOwner, std::span<const FileKind> kinds)
{
    const std::wstring filter = FilterOf(kinds);
    OPENFILENAMEW dialog{};
    dialog.hwndOwner = hOwner;
    dialog.lpstrFilter = filter.c_str();
    dialog.Flags = FLAGS | OFN_FILEMUSTEXIST;
    return Ask(::GetOpenFileNameW, dialog, {});
}

std::wstring AskToSave(HWND hOwner, std::span<const FileKind> kinds, std::wstring name,
                       const wchar_t* pszExtension)
{
    const std::wstring filter = FilterOf(kinds);
    OPENFILENAMEW dialog{};
    dialog.hwndOwner = hOwner;
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrDefExt = pszExtension;
    dialog.Flags = FLAGS | OFN_OVERWRITEPROMPT;
    return Ask(::GetSaveFileNameW, dialog, std::move(name));
}

} // namespace studio
