// Pictures of the drawing that is shown: asks for their size and name, and writes or copies them.
#pragma once

#include "tools/studio/model/Exporter.h"

#include <windows.h>

#include <string>

namespace studio {

// Asks in two dialogs; nothing happens when one is left. Says why a picture cannot be written.
void ExportPicture(HWND hOwner, HQELENGINE hShown, const CPlay& play, const std::wstring& drawing);

// To the clipboard, in the size that it is shown in.
void CopyPicture(HWND hOwner, HQELENGINE hShown, const CPlay& play, SIZE size, bool bMetafile);

} // namespace studio
