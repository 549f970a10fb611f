// Pictures as files; see the header.
#include "tools/qel/ImageWriter.h"

#include "tools/qel/Canvas.h"
#include "tools/qel/Command.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/Streams.h"
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
#include <new>

namespace qel {

namespace {

constexpr ULONG JPEG_QUALITY = 92;
constexpr int HUNDREDTHS_OF_MM = 100; // in one millimetre

struct KindRow {
    const wchar_t* pszExtension;
    PictureKind nKind;
    const wchar_t* pszMime;
};

// The first one is that of standard output.
constexpr KindRow g_kinds[] = {{L".png", PictureKind::Png, L"image/png"},
                               {L".bmp", PictureKind::Bmp, L"image/bmp"},
                               {L".jpg", PictureKind::Jpeg, L"image/jpeg"},
                               {L".jpeg", PictureKind::Jpeg, L"image/jpeg"},
                               {L".emf", PictureKind::Emf, nullptr}};

const KindRow& RowOf(const std::wstring& path)
{
    if (IsStandardOutput(path)) return g_kinds[0];
    for (const KindRow& row : g_kinds) {
        if (HasExtension(path, row.pszExtension)) return row;
    }
    throw CTrouble("the picture '" + ToUtf8(path) +
                   "' needs the extension .png, .bmp, .jpg or .emf" +
                   (HasExtension(path, L".gif") ? "; 'qel animate' makes .gif" : ""));
}

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

bool Encode(const std::wstring& path, const KindRow& row, SIZE size, BYTE* pBits,
            Gdiplus::PixelFormat nFormat)
{
    const CGdiPlus library;
    const CLSID encoder = EncoderOf(row.pszMime);
    Gdiplus::EncoderParameters parameters{};
    ULONG nQuality = JPEG_QUALITY;
    parameters.Count = 1;
    parameters.Parameter[0].Guid = Gdiplus::EncoderQuality;
    parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
    parameters.Parameter[0].NumberOfValues = 1;
    parameters.Parameter[0].Value = &nQuality;
    Gdiplus::Bitmap bitmap(size.cx, size.cy, size.cx * 4, nFormat, pBits);
    return bitmap.Save(path.c_str(), &encoder,
                       row.nKind == PictureKind::Jpeg ? &parameters : nullptr) == Gdiplus::Ok;
}

bool WriteBitmap(const std::wstring& path, const KindRow& row, SIZE size, const Painter& paint)
{
    const CCanvas canvas(size);
    if (!canvas.Bits()) throw CTrouble(NO_MEMORY_FOR_PICTURE);
    if (!paint(canvas.Dc())) throw CTrouble(NOT_DRAWN);
    ::GdiFlush();
    return Encode(path, row, size, canvas.Bits(), PixelFormat32bppRGB);
}

// The colour that was multiplied by its alpha; a file has the two apart.
BYTE Straight(BYTE nColor, BYTE nAlpha)
{
    constexpr int OPAQUE_ALPHA = 255;
    return static_cast<BYTE>(std::min((nColor * OPAQUE_ALPHA + nAlpha / 2) / nAlpha, OPAQUE_ALPHA));
}

void MakeStraight(BYTE* pBits, std::size_t nPixels)
{
    for (BYTE* p = pBits; p != pBits + 4 * nPixels; p += 4)
        for (int n = 0; n < 3 && p[3]; ++n) p[n] = Straight(p[n], p[3]);
}

bool WriteRendering(const std::wstring& path, const KindRow& row, SIZE size, const Renderer& render)
{
    const std::size_t nPixels = static_cast<std::size_t>(size.cx) * size.cy;
    const std::unique_ptr<BYTE[]> bits(new (std::nothrow) BYTE[4 * nPixels]);
    if (!bits) throw CTrouble(NO_MEMORY_FOR_PICTURE);
    if (!render(bits.get())) throw CTrouble(NOT_DRAWN);
    MakeStraight(bits.get(), nPixels);
    return Encode(path, row, size, bits.get(), PixelFormat32bppARGB);
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

} // namespace

bool HasExtension(const std::wstring& path, const wchar_t* pszExtension)
{
    const std::size_t nLen = std::wcslen(pszExtension);
    return path.size() > nLen && _wcsicmp(path.c_str() + path.size() - nLen, pszExtension) == 0;
}

PictureKind KindOf(const std::wstring& path)
{
    return RowOf(path).nKind;
}

void WritePicture(const std::wstring& path, SIZE size, const Painter& paint)
{
    const KindRow& row = RowOf(path);
    WriteComplete(path, [&](const std::wstring& name) {
        return row.nKind == PictureKind::Emf ? WriteRecording(name, size, paint)
                                             : WriteBitmap(name, row, size, paint);
    });
}

void WriteTransparent(const std::wstring& path, SIZE size, const Renderer& render)
{
    WriteComplete(path, [&](const std::wstring& name) {
        return WriteRendering(name, RowOf(path), size, render);
    });
}

} // namespace qel
