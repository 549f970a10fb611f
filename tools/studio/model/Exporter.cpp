// Pictures of an open drawing; see the header.
#include "tools/studio/model/Exporter.h"

#include "tools/qel/Canvas.h"
#include "tools/qel/Command.h"
#include "tools/qel/GifWriter.h"
#include "tools/qel/ImageWriter.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/TextFont.h"
#include "tools/studio/model/EngineCopy.h"

#include <algorithm>
#include <cmath>
#include <exception>

namespace studio {

namespace {

constexpr int SAMPLES = 4; // each way, of a smooth picture
constexpr int FRAMES_A_SECOND = 10;
constexpr double SHORTEST_SPAN = 1; // seconds
constexpr double LONGEST_SPAN = 30;

class CClipboard {
public:
    explicit CClipboard(HWND hOwner) : m_bOpen(::OpenClipboard(hOwner) && ::EmptyClipboard()) {}
    ~CClipboard()
    {
        if (m_bOpen) ::CloseClipboard();
    }
    CClipboard(const CClipboard&) = delete;
    CClipboard& operator=(const CClipboard&) = delete;

    // What it takes is its own from then on.
    [[nodiscard]] bool Take(UINT nFormat, HANDLE hData) const
    {
        return m_bOpen && hData && ::SetClipboardData(nFormat, hData);
    }

private:
    bool m_bOpen;
};

// The pixels of a canvas as the clipboard has them: rows from the bottom.
HGLOBAL MakeBitmapData(const BYTE* pBits, SIZE size)
{
    const auto nRow = static_cast<std::size_t>(size.cx) * 4;
    const std::size_t nBytes = sizeof(BITMAPINFOHEADER) + nRow * static_cast<std::size_t>(size.cy);
    HGLOBAL hData = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, nBytes);
    auto* pData = hData ? static_cast<BYTE*>(::GlobalLock(hData)) : nullptr;
    if (!pData) return nullptr;
    auto* pHeader = reinterpret_cast<BITMAPINFOHEADER*>(pData);
    pHeader->biSize = sizeof *pHeader;
    pHeader->biWidth = size.cx;
    pHeader->biHeight = size.cy;
    pHeader->biPlanes = 1;
    pHeader->biBitCount = 32;
    BYTE* pRow = pData + sizeof *pHeader;
    for (LONG y = size.cy - 1; y >= 0; --y, pRow += nRow)
        std::copy_n(pBits + nRow * static_cast<std::size_t>(y), nRow, pRow);
    ::GlobalUnlock(hData);
    return hData;
}

// Calls that end with CTrouble where they fail.
template <class Work>
int Try(std::string* pWhy, Work work)
{
    try {
        work();
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

} // namespace

double SpanOf(const CSignals& signals)
{
    return std::clamp(signals.LongestPeriod(), SHORTEST_SPAN, LONGEST_SPAN);
}

CExporter::CExporter(HQELENGINE hShown, const CPlay& play)
    : m_hEngine(CopyOf(hShown)), m_face(qel::DefaultTextFace())
{
    m_play.TakeFrom(play);
    if (m_hEngine) m_play.Opened(m_hEngine);
}

CExporter::~CExporter()
{
    if (m_hEngine) DestroyQELEngine(m_hEngine);
}

SIZE CExporter::RefSize() const
{
    SIZE size{0, 0};
    QELGetRefSize(m_hEngine, &size);
    return size;
}

// Pens, borders and texts are as they are at the picture's zoom.
void CExporter::SetUp(const ExportSetting& setting) const
{
    constexpr double PERCENT = 100;
    constexpr DWORD LEAST = 25;
    constexpr DWORD MOST = 1600;
    const RECT rc{0, 0, setting.size.cx, setting.size.cy};
    const SIZE ref = RefSize();
    if (ref.cx <= 0 || ref.cy <= 0 || rc.right <= 0 || rc.bottom <= 0)
        throw qel::CTrouble(qel::NOT_DRAWN);
    const double fZoom =
        std::min(static_cast<double>(rc.right) / ref.cx, static_cast<double>(rc.bottom) / ref.cy);
    const auto nScale = static_cast<DWORD>(std::lround(fZoom * PERCENT));
    QELSetPixelScale(m_hEngine, std::clamp(nScale, LEAST, MOST));
    QELSetSmooth(m_hEngine, setting.bSmooth ? SAMPLES : 0);
    QELSetQELRect(m_hEngine, &rc);
    QELSetFontFace(m_hEngine, m_face.c_str());
    QELAdvance(m_hEngine, 0);
}

bool CExporter::Paint(HDC hdc, const ExportSetting& setting) const
{
    const RECT rc{0, 0, setting.size.cx, setting.size.cy};
    HBRUSH hBrush = ::CreateSolidBrush(setting.clrBackground);
    ::FillRect(hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
    const LOGFONTW font = qel::TextFont(m_face);
    HFONT hFont = ::CreateFontIndirectW(&font);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    const int nDrawn = QELDraw(m_hEngine, hdc, &rc, QEL_DRAW_FULL);
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hFont);
    ::GdiFlush();
    return nDrawn != 0;
}

void CExporter::WriteStill(const std::wstring& path, const ExportSetting& setting) const
{
    if (qel::KindOf(path) == qel::PictureKind::Png && setting.bTransparent)
        return qel::WriteTransparent(path, setting.size, [&](BYTE* pBits) {
            return QELRenderBitmap(m_hEngine, pBits, setting.size.cx, setting.size.cy,
                                   setting.size.cx * 4, 0) != 0;
        });
    qel::WritePicture(path, setting.size, [&](HDC hdc) { return Paint(hdc, setting); });
}

void CExporter::WriteMovie(const std::wstring& path, const ExportSetting& setting)
{
    constexpr int HUNDREDTHS = 100 / FRAMES_A_SECOND;
    constexpr double STEP = 1000.0 / FRAMES_A_SECOND;
    const auto nFrames = static_cast<int>(std::lround(SpanOf(m_play.Signals()) * FRAMES_A_SECOND));
    const qel::CCanvas canvas(setting.size);
    if (!canvas.Bits()) throw qel::CTrouble(qel::NO_MEMORY_FOR_PICTURE);
    qel::CGifMovie movie(setting.size);
    m_play.Signals().Rewind();
    m_play.Signals().Play(true);
    for (int n = 0; n < nFrames; ++n) {
        m_play.Tick(m_hEngine, n ? STEP : 0);
        if (!Paint(canvas.Dc(), setting)) throw qel::CTrouble(qel::NOT_DRAWN);
        movie.Add(reinterpret_cast<const uint32_t*>(canvas.Bits()), HUNDREDTHS);
    }
    qel::WriteComplete(path, [&](const std::wstring& name) { return movie.Write(name); });
}

int CExporter::Write(const std::wstring& path, const ExportSetting& setting, std::string* pWhy)
{
    return Try(pWhy, [&] {
        const bool bMovie = qel::HasExtension(path, L".gif");
        if (!bMovie) qel::KindOf(path); // one that is none is refused before any work
        SetUp(setting);
        if (bMovie)
            WriteMovie(path, setting);
        else
            WriteStill(path, setting);
    });
}

int CExporter::CopyBitmap(HWND hOwner, const ExportSetting& setting, std::string* pWhy)
{
    return Try(pWhy, [&] {
        SetUp(setting);
        const qel::CCanvas canvas(setting.size);
        if (!canvas.Bits()) throw qel::CTrouble(qel::NO_MEMORY_FOR_PICTURE);
        if (!Paint(canvas.Dc(), setting)) throw qel::CTrouble(qel::NOT_DRAWN);
        HGLOBAL hData = MakeBitmapData(canvas.Bits(), setting.size);
        if (CClipboard(hOwner).Take(CF_DIB, hData)) return;
        ::GlobalFree(hData);
        throw qel::CTrouble("the clipboard does not take it");
    });
}

int CExporter::CopyMetafile(HWND hOwner, SIZE size, std::string* pWhy)
{
    return Try(pWhy, [&] {
        ExportSetting setting;
        setting.size = size;
        setting.bSmooth = false;
        SetUp(setting);
        const HDC hdc = ::CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
        const bool bDrawn = hdc && Paint(hdc, setting);
        HENHMETAFILE hFile = hdc ? ::CloseEnhMetaFile(hdc) : nullptr;
        if (bDrawn && CClipboard(hOwner).Take(CF_ENHMETAFILE, hFile)) return;
        ::DeleteEnhMetaFile(hFile);
        throw qel::CTrouble("the clipboard does not take it");
    });
}

} // namespace studio
