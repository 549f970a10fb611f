// Pictures as files; see the header.
#include "tools/qel/ImageWriter.h"

#include "tools/qel/Command.h"
#include "tools/qel/Text.h"

#include <objidl.h>
// The next header needs these two under their plain names.
#include <algorithm>
namespace Gdiplus {
using std::max; // NOLINT(misc-unused-using-decls): for the header
using std::min; // NOLINT(misc-unused-using-decls)
} // namespace Gdiplus
#include <gdiplus.h>

#include <cwchar>
#include <memory>
#include <utility>

namespace {

constexpr char NOT_DRAWN[] = "the engine does not draw this drawing";
constexpr ULONG JPEG_QUALITY = 92;
constexpr int HUNDREDTHS_OF_MM = 100; // in one millimetre

struct KindRow {
    const wchar_t* pszExtension;
    PictureKind nKind;
    const wchar_t* pszMime;
};

constexpr KindRow g_kinds[] = {{L".png", PictureKind::Png, L"image/png"},
                               {L".bmp", PictureKind::Bmp, L"image/bmp"},
                               {L".jpg", PictureKind::Jpeg, L"image/jpeg"},
                               {L".jpeg", PictureKind::Jpeg, L"image/jpeg"},
                               {L".emf", PictureKind::Emf, nullptr}};

const KindRow& RowOf(const std::wstring& path)
{
    for (const KindRow& row : g_kinds) {
        const std::size_t nLen = std::wcslen(row.pszExtension);
        if (path.size() > nLen &&
            _wcsicmp(path.c_str() + path.size() - nLen, row.pszExtension) == 0)
            return row;
    }
    throw CTrouble("the picture '" + ToUtf8(path) +
                   "' needs the extension .png, .bmp, .jpg or .emf");
}

class CMemoryDc {
public:
    explicit CMemoryDc(SIZE size) : m_hdc(::CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
        m_hPrev = m_hBitmap ? ::SelectObject(m_hdc, m_hBitmap) : nullptr;
    }
    ~CMemoryDc()
    {
        if (m_hPrev) ::SelectObject(m_hdc, m_hPrev);
        if (m_hBitmap) ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CMemoryDc(const CMemoryDc&) = delete;
    CMemoryDc& operator=(const CMemoryDc&) = delete;

    [[nodiscard]] HDC Dc() const { return m_hdc; }
    [[nodiscard]] BYTE* Bits() const { return static_cast<BYTE*>(m_pBits); } // null without memory

private:
    HDC m_hdc;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
    void* m_pBits = nullptr;
};

class CGdiPlus { // the encoder library, for as long as it is needed
public:
    CGdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&m_nToken, &input, nullptr) != Gdiplus::Ok)
            throw CTrouble("the system's picture encoders are not there");
    }
    ~CGdiPlus() { Gdiplus::GdiplusShutdown(m_nToken); }
    CGdiPlus(const CGdiPlus&) = delete;
    CGdiPlus& operator=(const CGdiPlus&) = delete;

private:
    ULONG_PTR m_nToken = 0;
};

CLSID EncoderOf(const wchar_t* pszMime)
{
    UINT nCount = 0;
    UINT nSize = 0;
    Gdiplus::GetImageEncodersSize(&nCount, &nSize);
    const std::unique_ptr<BYTE[]> memory(new BYTE[nSize + 1]);
    auto* pEncoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.get());
    Gdiplus::GetImageEncoders(nCount, nSize, pEncoders);
    for (UINT n = 0; n < nCount; ++n)
        if (std::wcscmp(pEncoders[n].MimeType, pszMime) == 0) return pEncoders[n].Clsid;
    throw CTrouble("the system has no encoder for this kind of picture");
}

bool WriteBitmap(const std::wstring& path, const KindRow& row, SIZE size, const Painter& paint)
{
    const CMemoryDc canvas(size);
    if (!canvas.Bits()) throw CTrouble("there is no memory for a picture of this size");
    if (!paint(canvas.Dc())) throw CTrouble(NOT_DRAWN);
    ::GdiFlush();
    const CGdiPlus library;
    const CLSID encoder = EncoderOf(row.pszMime);
    Gdiplus::EncoderParameters parameters{};
    ULONG nQuality = JPEG_QUALITY;
    parameters.Count = 1;
    parameters.Parameter[0].Guid = Gdiplus::EncoderQuality;
    parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
    parameters.Parameter[0].NumberOfValues = 1;
    parameters.Parameter[0].Value = &nQuality;
    Gdiplus::Bitmap bitmap(size.cx, size.cy, size.cx * 4, PixelFormat32bppRGB, canvas.Bits());
    return bitmap.Save(path.c_str(), &encoder,
                       row.nKind == PictureKind::Jpeg ? &parameters : nullptr) == Gdiplus::Ok;
}

bool WriteRecording(const std::wstring& path, SIZE size, const Painter& paint)
{
    const HDC hdcScreen = ::GetDC(nullptr);
    // The frame is in lengths; readers turn it into pixels again by the recorded size of the
    // device, which is not what its dots per inch would give.
    const auto length = [hdcScreen](LONG nPixels, int nMillimetres, int nDevicePixels) {
        return ::MulDiv(nPixels, ::GetDeviceCaps(hdcScreen, nMillimetres) * HUNDREDTHS_OF_MM,
                        ::GetDeviceCaps(hdcScreen, nDevicePixels));
    };
    const RECT rcFrame{0, 0, length(size.cx, HORZSIZE, HORZRES),
                       length(size.cy, VERTSIZE, VERTRES)};
    const HDC hdc = ::CreateEnhMetaFileW(hdcScreen, path.c_str(), &rcFrame, L"qel\0drawing\0");
    ::ReleaseDC(nullptr, hdcScreen);
    if (!hdc) return false;
    const bool bDrawn = paint(hdc);
    const HENHMETAFILE hFile = ::CloseEnhMetaFile(hdc);
    if (hFile) ::DeleteEnhMetaFile(hFile); // the file itself stays
    if (!bDrawn) throw CTrouble(NOT_DRAWN);
    return hFile != nullptr;
}

// A name beside the picture's that no file has yet; the empty file of that name is there
// afterwards. Empty: none can be made.
std::wstring MakeUnfinished(const std::wstring& path)
{
    constexpr int MAX_TRIES = 100;
    for (int n = 0; n < MAX_TRIES; ++n) {
        std::wstring name = path + L"." + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(n) + L".part";
        const HANDLE hFile = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (hFile != INVALID_HANDLE_VALUE) {
            ::CloseHandle(hFile);
            return name;
        }
        if (::GetLastError() != ERROR_FILE_EXISTS) break;
    }
    return {};
}

// Removes the unfinished picture, however its making ends; nothing is left of one that was renamed.
class CUnfinishedFile {
public:
    explicit CUnfinishedFile(std::wstring name) : m_name(std::move(name)) {}
    ~CUnfinishedFile()
    {
        if (!m_name.empty()) ::DeleteFileW(m_name.c_str());
    }
    CUnfinishedFile(const CUnfinishedFile&) = delete;
    CUnfinishedFile& operator=(const CUnfinishedFile&) = delete;

    [[nodiscard]] const std::wstring& Name() const { return m_name; }
    bool RenameTo(const std::wstring& path)
    {
        if (!::MoveFileExW(m_name.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) return false;
        m_name.clear();
        return true;
    }

private:
    std::wstring m_name;
};

} // namespace

PictureKind KindOf(const std::wstring& path)
{
    return RowOf(path).nKind;
}

void WritePicture(const std::wstring& path, SIZE size, const Painter& paint)
{
    const KindRow& row = RowOf(path);
    CUnfinishedFile unfinished(MakeUnfinished(path));
    const std::wstring& name = unfinished.Name();
    if (!name.empty()) {
        const bool bWritten = row.nKind == PictureKind::Emf ? WriteRecording(name, size, paint)
                                                            : WriteBitmap(name, row, size, paint);
        if (bWritten && unfinished.RenameTo(path)) return;
    }
    throw CTrouble("cannot write '" + ToUtf8(path) + "'");
}
