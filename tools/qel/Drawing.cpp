// A drawing opened through the exported interface; see the header.
#include "tools/qel/Drawing.h"

#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <vector>

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
    const DWORD nAttributes = ::GetFileAttributesW(path.c_str());
    if (nAttributes == INVALID_FILE_ATTRIBUTES) return "there is no such file";
    if (nAttributes & FILE_ATTRIBUTE_DIRECTORY) return "it is a folder";
    return "it is no drawing, or cannot be read ('qel check' tells more)";
}

} // namespace

CDrawing::CDrawing(const std::wstring& path) : m_hEngine(CreateQELEngine())
{
    if (m_hEngine && QELOpenFileU(m_hEngine, path.c_str())) return;
    const std::wstring shortName = ShortName(path);
    if (m_hEngine && !shortName.empty() && QELOpenFileU(m_hEngine, shortName.c_str())) return;
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
