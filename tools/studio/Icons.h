// The program's pictures. They are drawings, which the engine itself draws at the size that the
// monitor wants.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <initializer_list>

namespace studio {

// The drawings of these resources, in this order, each with a transparent margin around it; the
// caller destroys the list.
HIMAGELIST MakeIcons(std::initializer_list<const wchar_t*> names, int nSide, int nMargin);

// The program's own picture; the caller destroys it.
HICON MakeIcon(const wchar_t* pszName, int nSide);

} // namespace studio
