// Pictures of the drawing that is shown; see the header.
#include "tools/studio/Export.h"
#include "tools/studio/FileDialogs.h"

#include "tools/studio/Resource.h"
#include "tools/studio/Strings.h"
#include "tools/studio/Window.h"
#include "tools/studio/model/Convert.h"

#include <windowsx.h>

namespace studio {

namespace {

constexpr int MOST_SIDE = 16384;
constexpr double MOST_PIXELS = 8192.0 * 8192.0; // so many fit a process of 32 bits

void Tell(HWND hOwner, const std::string& why)
{
    ::MessageBoxW(hOwner, FromUtf8(why).c_str(), Text(IDS_TITLE).c_str(), MB_OK | MB_ICONERROR);
}

// What the dialog is about. Of the two sides the one that was changed last leads.
class CExportDialog {
public:
    CExportDialog(SIZE ref, ExportSetting* pSetting) : m_ref(ref), m_pSetting(pSetting) {}

    bool Ask(HWND hOwner)
    {
        return ::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_EXPORT), hOwner,
                                 Procedure, reinterpret_cast<LPARAM>(this)) == IDOK;
    }

private:
    static INT_PTR CALLBACK Procedure(HWND hDialog, UINT nMessage, WPARAM wParam, LPARAM lParam);
    void Show();
    void Follow(int nId, LONG nUnits, int nOther, LONG nOtherUnits);
    bool Take();

    HWND m_hDialog = nullptr;
    SIZE m_ref;
    ExportSetting* m_pSetting;
    bool m_bFollowing = true; // one side sets the other
};

void CExportDialog::Show()
{
    ::SetDlgItemInt(m_hDialog, IDC_EXPORT_WIDTH, static_cast<UINT>(m_pSetting->size.cx), FALSE);
    ::SetDlgItemInt(m_hDialog, IDC_EXPORT_HEIGHT, static_cast<UINT>(m_pSetting->size.cy), FALSE);
    ::CheckDlgButton(m_hDialog, IDC_EXPORT_SMOOTH, m_pSetting->bSmooth ? BST_CHECKED : 0);
    ::CheckDlgButton(m_hDialog, IDC_EXPORT_CLEAR, m_pSetting->bTransparent ? BST_CHECKED : 0);
    m_bFollowing = false;
}

// The other side in proportion.
void CExportDialog::Follow(int nId, LONG nUnits, int nOther, LONG nOtherUnits)
{
    const UINT nSide = ::GetDlgItemInt(m_hDialog, nId, nullptr, FALSE);
    if (m_bFollowing || nUnits <= 0 || nSide > MOST_SIDE) return;
    m_bFollowing = true;
    ::SetDlgItemInt(m_hDialog, nOther,
                    static_cast<UINT>(::MulDiv(static_cast<int>(nSide), nOtherUnits, nUnits)),
                    FALSE);
    m_bFollowing = false;
}

bool CExportDialog::Take()
{
    const auto nWidth =
        static_cast<LONG>(::GetDlgItemInt(m_hDialog, IDC_EXPORT_WIDTH, nullptr, FALSE));
    const auto nHeight =
        static_cast<LONG>(::GetDlgItemInt(m_hDialog, IDC_EXPORT_HEIGHT, nullptr, FALSE));
    if (nWidth < 1 || nHeight < 1 || nWidth > MOST_SIDE || nHeight > MOST_SIDE ||
        static_cast<double>(nWidth) * nHeight > MOST_PIXELS) {
        Tell(m_hDialog, ToUtf8(Text(IDS_EXPORT_SIZE)));
        return false;
    }
    m_pSetting->size = {nWidth, nHeight};
    m_pSetting->bSmooth = ::IsDlgButtonChecked(m_hDialog, IDC_EXPORT_SMOOTH) == BST_CHECKED;
    m_pSetting->bTransparent = ::IsDlgButtonChecked(m_hDialog, IDC_EXPORT_CLEAR) == BST_CHECKED;
    return true;
}

INT_PTR CALLBACK CExportDialog::Procedure(HWND hDialog, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_INITDIALOG) {
        ::SetWindowLongPtrW(hDialog, DWLP_USER, lParam);
        auto* pNew = Passed<CExportDialog*>(lParam);
        pNew->m_hDialog = hDialog;
        pNew->Show();
        return TRUE;
    }
    auto* pThis = Passed<CExportDialog*>(::GetWindowLongPtrW(hDialog, DWLP_USER));
    if (!pThis || nMessage != WM_COMMAND) return FALSE;
    const UINT nId = LOWORD(wParam);
    if (nId == IDC_EXPORT_WIDTH && HIWORD(wParam) == EN_CHANGE)
        pThis->Follow(IDC_EXPORT_WIDTH, pThis->m_ref.cx, IDC_EXPORT_HEIGHT, pThis->m_ref.cy);
    if (nId == IDC_EXPORT_HEIGHT && HIWORD(wParam) == EN_CHANGE)
        pThis->Follow(IDC_EXPORT_HEIGHT, pThis->m_ref.cy, IDC_EXPORT_WIDTH, pThis->m_ref.cx);
    if (nId == IDCANCEL || (nId == IDOK && pThis->Take()))
        ::EndDialog(hDialog, static_cast<INT_PTR>(nId));
    return TRUE;
}

constexpr FileKind g_kinds[] = {{IDS_EXPORT_PNG, L"*.png"},
                                {IDS_EXPORT_GIF, L"*.gif"},
                                {IDS_EXPORT_EMF, L"*.emf"},
                                {IDS_EXPORT_BMP, L"*.bmp"},
                                {IDS_EXPORT_JPG, L"*.jpg"}};

class CWaiting {
public:
    CWaiting() : m_hPrev(::SetCursor(::LoadCursorW(nullptr, IDC_WAIT))) {}
    ~CWaiting() { ::SetCursor(m_hPrev); }
    CWaiting(const CWaiting&) = delete;
    CWaiting& operator=(const CWaiting&) = delete;

private:
    HCURSOR m_hPrev;
};

} // namespace

void ExportPicture(HWND hOwner, HQELENGINE hShown, const CPlay& play, const std::wstring& drawing)
{
    CExporter exporter(hShown, play);
    ExportSetting setting;
    setting.size = exporter.RefSize();
    if (!CExportDialog(setting.size, &setting).Ask(hOwner)) return;
    const std::wstring path =
        AskToSave(hOwner, g_kinds, drawing.substr(0, drawing.rfind(L'.')), L"png");
    std::string why;
    if (path.empty()) return;
    const CWaiting waiting;
    if (!exporter.Write(path, setting, &why)) Tell(hOwner, why);
}

void CopyPicture(HWND hOwner, HQELENGINE hShown, const CPlay& play, SIZE size, bool bMetafile)
{
    CExporter exporter(hShown, play);
    ExportSetting setting;
    setting.size = size;
    std::string why;
    const int nCopied = bMetafile ? exporter.CopyMetafile(hOwner, size, &why)
                                  : exporter.CopyBitmap(hOwner, setting, &why);
    if (!nCopied) Tell(hOwner, why);
}

} // namespace studio
