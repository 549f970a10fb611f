// A drawing opened through the exported interface; see the header.
#include "tools/qel/Drawing.h"

#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <vector>

namespace qel {

namespace {

// A name that the code page lacks characters for, or that is too long for it, may have a short
// form.
std::wstring ShortName(const std::wstring& path)
{
    std::vector<wchar_t> name(::GetShortPathNameW(path.c_str(), nullptr, 0) + 1);
    const DWORD nLen =
        ::GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
    return {name.data(), nLen < name.size() ? nLen : 0};
}

const char* WhyNotOpened(const std::wstring& path)
{
    const char* pszNotDrawing = "it is no drawing, or cannot be read ('qel check' tells more)";
    if (IsStandardInput(path)) return pszNotDrawing;
    const DWORD nAttributes = ::GetFileAttributesW(path.c_str());
    if (nAttributes == INVALID_FILE_ATTRIBUTES) return "there is no such file";
    return nAttributes & FILE_ATTRIBUTE_DIRECTORY ? "it is a folder" : pszNotDrawing;
}

// By its own name or by the short one.
bool OpenByName(HQELENGINE hEngine, const std::wstring& path)
{
    if (QELOpenFileU(hEngine, path.c_str())) return true;
    const std::wstring shortName = ShortName(path);
    return !shortName.empty() && QELOpenFileU(hEngine, shortName.c_str());
}

bool Open(HQELENGINE hEngine, const std::wstring& path)
{
    if (!IsStandardInput(path)) return OpenByName(hEngine, path);
    const CTemporaryFile file; // the engine opens files alone
    return file.Write(StandardInput()) && OpenByName(hEngine, file.Name());
}

} // namespace

CDrawing::CDrawing(const std::wstring& path) : m_hEngine(CreateQELEngine())
{
    if (m_hEngine && Open(m_hEngine, path)) return;
    DestroyQELEngine(m_hEngine);
    throw CTrouble("cannot open '" + ToUtf8(path) + "': " + WhyNotOpened(path));
}

CDrawing::~CDrawing()
{
    DestroyQELEngine(m_hEngine);
}

SIZE CDrawing::RefSize() const
{
    SIZE size{0, 0};
    QELGetRefSize(m_hEngine, &size);
    return size;
}

} // namespace qel
