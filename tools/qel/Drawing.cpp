// A drawing opened through the exported interface; see the header.
#include "tools/qel/Drawing.h"

#include "tools/qel/Clause.h"
#include "tools/qel/Encoding.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>

namespace qel {

namespace {

// Texts and identifiers are those of the encoding that the drawing declares.
bool Open(HQELENGINE hEngine, const std::wstring& path)
{
    constexpr DWORD AS_DECLARED = 1;
    QELSetTextCodePage(hEngine, AS_DECLARED);
    if (!IsStandardInput(path)) return QELOpenFileW(hEngine, path.c_str());
    const std::string& bytes = StandardInput();
    return QELOpenMemory(hEngine, bytes.data(), static_cast<DWORD>(bytes.size()));
}

// As the engine tells it, with the place and the system's number where it has them.
std::string WhyNotOpened(HQELENGINE hEngine)
{
    QELERROR error{};
    error.nSize = sizeof error;
    QELGetError(hEngine, &error);
    std::string why = Clause(error.szText);
    if (error.nLine) why = fmt::format("{}:{}: {}", error.nLine, error.nColumn, why);
    if (error.nCode == QEL_ERROR_OPEN || error.nCode == QEL_ERROR_READ)
        why += fmt::format(" (system error {})", error.nSystem);
    if (error.nCode >= QEL_ERROR_XML) why += " ('qel check' tells more)";
    return why;
}

} // namespace

CDrawing::CDrawing(const std::wstring& path) : m_hEngine(CreateQELEngine())
{
    std::string bytes;
    if (m_hEngine && Open(m_hEngine, path) && ReadBytes(path, &bytes)) {
        SetDrawingPage(DeclaredPage(bytes));
        return;
    }
    const std::string why = WhyNotOpened(m_hEngine);
    DestroyQELEngine(m_hEngine);
    throw CTrouble("cannot open '" + ToUtf8(path) + "': " + why);
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
