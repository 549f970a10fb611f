// The system's dialogs for the name of a file.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace studio {

struct FileKind {
    UINT nText; // what it is called
    const wchar_t* pszPattern;
};

// As the dialogs take them: each text ends with a null character.
std::wstring FilterOf(std::span<const FileKind> kinds);

// The name that was chosen, empty when none was. The one to save begins as told and gets the
// extension where it has none.
std::wstring AskToOpen(HWND hOwner, std::span<const FileKind> kinds);
std::wstring AskToSave(HWND hOwner, std::span<const FileKind> kinds, std::wstring name,
                       const wchar_t* pszExtension);

} // namespace studio
