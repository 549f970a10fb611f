// A second engine; see the header.
#include "tools/studio/model/EngineCopy.h"

#include <string>

namespace studio {

namespace {

constexpr DWORD AS_DECLARED = 1;

} // namespace

HQELENGINE CopyOf(HQELENGINE hShown)
{
    DWORD nSize = 0;
    QELSaveMemory(hShown, nullptr, &nSize);
    std::string bytes(nSize, '\0');
    HQELENGINE hEngine = CreateQELEngine();
    QELSetTextCodePage(hEngine, AS_DECLARED);
    if (QELSaveMemory(hShown, bytes.data(), &nSize) && QELOpenMemory(hEngine, bytes.data(), nSize))
        return hEngine;
    DestroyQELEngine(hEngine);
    return nullptr;
}

} // namespace studio
