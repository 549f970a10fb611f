// Files that appear under their name only when they are complete.
#pragma once

#include <functional>
#include <string>

namespace qel {

// For standard output, "-", the bytes go there. Else calls write with the name of a new file beside
// the one wanted. When that is done (true), the file gets its name, in place of an older one; else
// nothing is left of it, and CTrouble tells so.
void WriteComplete(const std::wstring& path,
                   const std::function<bool(const std::wstring& name)>& write);

} // namespace qel
