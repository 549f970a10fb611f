// The system's dialogs of printing; see the header.
#include "tools/studio/PrintDialogs.h"

#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"

#include <cderr.h>
#include <commdlg.h>
#include <winspool.h>

namespace studio {

namespace {

constexpr int INCH = 2540; // in hundredths of a millimetre

// Memory of the system's that holds a structure, locked for as long as this lives.
template <typename T>
class CLocked {
public:
    explicit CLocked(HGLOBAL hData)
        : m_hData(hData), m_pData(hData ? static_cast<T*>(::GlobalLock(hData)) : nullptr)
    {
    }
    ~CLocked()
    {
        if (m_pData) ::GlobalUnlock(m_hData);
    }
    CLocked(const CLocked&) = delete;
    CLocked& operator=(const CLocked&) = delete;
    [[nodiscard]] T* Data() const { return m_pData; } // null: there is none

private:
    HGLOBAL m_hData;
    T* m_pData;
};

class CPrinterDc {
public:
    explicit CPrinterDc(HDC hdc) : m_hdc(hdc) {}
    ~CPrinterDc() { ::DeleteDC(m_hdc); }
    CPrinterDc(const CPrinterDc&) = delete;
    CPrinterDc& operator=(const CPrinterDc&) = delete;

    [[nodiscard]] HDC Dc() const { return m_hdc; }
    [[nodiscard]] int Cap(int nWhich) const { return ::GetDeviceCaps(m_hdc, nWhich); }
    [[nodiscard]] SIZE Paper() const
    {
        return {::MulDiv(Cap(PHYSICALWIDTH), INCH, Cap(LOGPIXELSX)),
                ::MulDiv(Cap(PHYSICALHEIGHT), INCH, Cap(LOGPIXELSY))};
    }
    [[nodiscard]] PageDevice Device() const
    {
        return {static_cast<double>(Cap(LOGPIXELSX)),
                static_cast<double>(Cap(LOGPIXELSY)),
                {-Cap(PHYSICALOFFSETX), -Cap(PHYSICALOFFSETY)}};
    }

private:
    HDC m_hdc;
};

SIZE PaperOfTheCountry()
{
    constexpr SIZE A4{21000, 29700};
    constexpr SIZE A3{29700, 42000};
    constexpr SIZE LETTER{21590, 27940};
    constexpr SIZE LEGAL{21590, 35560};
    DWORD nPaper = DMPAPER_A4;
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IPAPERSIZE | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<wchar_t*>(&nPaper), sizeof nPaper / sizeof(wchar_t));
    switch (nPaper) {
    case DMPAPER_LETTER:
        return LETTER;
    case DMPAPER_LEGAL:
        return LEGAL;
    case DMPAPER_A3:
        return A3;
    default:
        return A4;
    }
}

// Asked before the system's dialogs are, of which some tell it in their own way.
bool HasPrinter()
{
    constexpr DWORD NAMES = 4; // the kind of answer that asks no printer
    DWORD nSize = 0;
    DWORD nPrinters = 0;
    ::EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, NAMES, nullptr, 0,
                    &nSize, &nPrinters);
    return nSize > 0;
}

bool IsReady(HWND hOwner)
{
    if (HasPrinter()) return true;
    TellTrouble(hOwner, Text(IDS_PRINT_NO_PRINTER));
    return false;
}

void TellNoDialog(HWND hOwner)
{
    const DWORD nError = ::CommDlgExtendedError();
    if (!nError) return; // the user left it
    const bool bNone = nError == PDERR_NODEFAULTPRN || nError == PDERR_NODEVICES;
    TellTrouble(hOwner, bNone ? Text(IDS_PRINT_NO_PRINTER)
                              : Text(IDS_PRINT_FAILED, {std::to_wstring(nError)}));
}

// One page. 0: the printer, or the system before it, did not take it.
int PrintPageOn(const CPrinterDc& printer, const CPagePainter& painter, const PageSetup& setup,
                const std::wstring& title)
{
    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = title.c_str();
    if (::StartDocW(printer.Dc(), &info) <= 0) return ::GetLastError() == ERROR_CANCELLED;
    const bool bPainted = ::StartPage(printer.Dc()) > 0 &&
                          painter.Paint(printer.Dc(), setup, printer.Device()) &&
                          ::EndPage(printer.Dc()) > 0;
    if (bPainted) return ::EndDoc(printer.Dc()) > 0;
    ::AbortDoc(printer.Dc());
    return 0;
}

} // namespace

void TellTrouble(HWND hOwner, const std::wstring& sentence)
{
    ::MessageBoxW(hOwner, sentence.c_str(), Text(IDS_TITLE).c_str(), MB_OK | MB_ICONERROR);
}

CPrintDialogs::~CPrintDialogs()
{
    Note(nullptr, nullptr);
}

// A dialog gives back the memory that it was given, or other.
void CPrintDialogs::Note(HGLOBAL hMode, HGLOBAL hNames)
{
    if (m_hMode && m_hMode != hMode) ::GlobalFree(m_hMode);
    if (m_hNames && m_hNames != hNames) ::GlobalFree(m_hNames);
    m_hMode = hMode;
    m_hNames = hNames;
}

void CPrintDialogs::TakeDefaults(PageSetup* pSetup)
{
    PAGESETUPDLGW page{};
    page.lStructSize = sizeof page;
    page.Flags = PSD_RETURNDEFAULT | PSD_NOWARNING | PSD_INHUNDREDTHSOFMILLIMETERS;
    const bool bPrinter = ::PageSetupDlgW(&page) && page.hDevNames;
    if (bPrinter) Note(page.hDevMode, page.hDevNames);
    const bool bPaper = bPrinter && page.ptPaperSize.x > 0 && page.ptPaperSize.y > 0;
    pSetup->paper = bPaper ? SIZE{page.ptPaperSize.x, page.ptPaperSize.y} : PaperOfTheCountry();
}

void CPrintDialogs::TakeOrientation(const PageSetup& setup) const
{
    const CLocked<DEVMODEW> mode(m_hMode);
    if (!mode.Data()) return;
    mode.Data()->dmFields |= DM_ORIENTATION;
    mode.Data()->dmOrientation = IsLandscape(setup) ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
}

int CPrintDialogs::AskPage(HWND hOwner, PageSetup* pSetup)
{
    if (!IsReady(hOwner)) return 0;
    PAGESETUPDLGW page{};
    page.lStructSize = sizeof page;
    page.hwndOwner = hOwner;
    page.hDevMode = m_hMode;
    page.hDevNames = m_hNames;
    page.Flags = PSD_MARGINS | PSD_NOWARNING | PSD_INHUNDREDTHSOFMILLIMETERS;
    page.rtMargin = pSetup->margins;
    const bool bTaken = ::PageSetupDlgW(&page);
    Note(page.hDevMode, page.hDevNames);
    if (!bTaken) {
        TellNoDialog(hOwner);
        return 0;
    }
    pSetup->paper = {page.ptPaperSize.x, page.ptPaperSize.y};
    pSetup->margins = page.rtMargin;
    return 1;
}

int CPrintDialogs::Print(HWND hOwner, const CPagePainter& painter, PageSetup* pSetup,
                         const std::wstring& title)
{
    if (!IsReady(hOwner)) return 0;
    PRINTDLGW print{};
    print.lStructSize = sizeof print;
    print.hwndOwner = hOwner;
    print.hDevMode = m_hMode;
    print.hDevNames = m_hNames;
    print.nCopies = 1;
    print.Flags =
        PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE | PD_NOWARNING;
    const bool bTaken = ::PrintDlgW(&print) && print.hDC;
    Note(print.hDevMode, print.hDevNames);
    if (!bTaken) {
        TellNoDialog(hOwner);
        return 0;
    }
    const CPrinterDc printer(print.hDC);
    if (printer.Cap(PHYSICALWIDTH) > 0) pSetup->paper = printer.Paper();
    if (PrintPageOn(printer, painter, *pSetup, title)) return 1;
    TellTrouble(hOwner, Text(IDS_PRINT_FAILED, {std::to_wstring(::GetLastError())}));
    return 0;
}

std::wstring CPrintDialogs::Printer() const
{
    const CLocked<DEVNAMES> names(m_hNames);
    if (!names.Data()) return {};
    return reinterpret_cast<const wchar_t*>(names.Data()) + names.Data()->wDeviceOffset;
}

} // namespace studio
