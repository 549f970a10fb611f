// A printed page; see the header.
#include "tools/studio/model/PrintPage.h"

#include "tools/qel/ImageWriter.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/TextFont.h"
#include "tools/studio/model/EngineCopy.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>

namespace studio {

namespace {

constexpr double LENGTHS = 2540; // of a page in an inch
constexpr double UNITS = 96;     // of a drawing in an inch at its actual size
constexpr int SAMPLES = 4;       // each way, on a screen
constexpr double LEAST_SCALE = 0.25;
constexpr double MOST_SCALE = 16;  // that the engine takes
constexpr double LONGEST = 32767;  // side of a metafile's paper, in pixels
constexpr int DEVICE_INCHES = 100; // of the device that a metafile tells of

struct Span {
    LONG nFrom;
    LONG nTo;
};

Span SpanOf(double fFrom, double fLength, double fDots)
{
    const LONG nFrom = std::lround(fFrom * fDots);
    return {nFrom, nFrom + std::max(std::lround(fLength * fDots), 1L)};
}

RECT Moved(Span x, Span y, POINT pt)
{
    return {x.nFrom + pt.x, y.nFrom + pt.y, x.nTo + pt.x, y.nTo + pt.y};
}

// Along one side, in inches.
struct Side {
    double fPaper;
    double fFrom; // of what the margins leave
    double fRoom;
    double fUnits; // of the drawing at its actual size

    [[nodiscard]] double Begin(double fZoom) const
    {
        return fFrom + std::max(fRoom - fUnits * fZoom, 0.0) / 2;
    }
};

Side SideOf(LONG nPaper, LONG nBefore, LONG nAfter, LONG nUnits)
{
    const double fRoom = std::max<double>(nPaper - nBefore - nAfter, 1) / LENGTHS;
    return {nPaper / LENGTHS, nBefore / LENGTHS, fRoom, std::max<double>(nUnits, 1) / UNITS};
}

class CSavedDc {
public:
    explicit CSavedDc(HDC hdc) : m_hdc(hdc), m_nSaved(::SaveDC(hdc)) {}
    ~CSavedDc() { ::RestoreDC(m_hdc, m_nSaved); }
    CSavedDc(const CSavedDc&) = delete;
    CSavedDc& operator=(const CSavedDc&) = delete;

private:
    HDC m_hdc;
    int m_nSaved;
};

void ClipTo(HDC hdc, const RECT& rc)
{
    ::IntersectClipRect(hdc, rc.left, rc.top, rc.right, rc.bottom);
}

// Says of a metafile that was recorded on a screen that its pixels are so many an inch. Its frame
// is the paper.
void SetDots(std::string* pBytes, const PageSetup& setup, double fDots)
{
    constexpr LONG MILLIMETRES = 2540; // in so many inches
    ENHMETAHEADER header{};
    if (pBytes->size() < sizeof header) return;
    std::memcpy(&header, pBytes->data(), sizeof header);
    header.rclFrame = {0, 0, setup.paper.cx, setup.paper.cy};
    const LONG nDevice = std::lround(fDots * DEVICE_INCHES);
    header.szlDevice = {nDevice, nDevice};
    header.szlMillimeters = {MILLIMETRES, MILLIMETRES};
    header.szlMicrometers = {MILLIMETRES * 1000, MILLIMETRES * 1000};
    std::memcpy(pBytes->data(), &header, sizeof header);
}

std::string BytesOf(HENHMETAFILE hFile)
{
    std::string bytes(hFile ? ::GetEnhMetaFileBits(hFile, 0, nullptr) : 0, '\0');
    if (hFile)
        ::GetEnhMetaFileBits(hFile, static_cast<UINT>(bytes.size()),
                             reinterpret_cast<BYTE*>(bytes.data()));
    ::DeleteEnhMetaFile(hFile);
    return bytes;
}

bool WriteAll(const std::wstring& path, const std::string& bytes)
{
    std::FILE* pFile = _wfopen(path.c_str(), L"wb");
    if (!pFile) return false;
    const bool bWritten = std::fwrite(bytes.data(), 1, bytes.size(), pFile) == bytes.size();
    return std::fclose(pFile) == 0 && bWritten;
}

} // namespace

void TurnPaper(PageSetup* pSetup, bool bLandscape)
{
    if (IsLandscape(*pSetup) != bLandscape) std::swap(pSetup->paper.cx, pSetup->paper.cy);
}

bool IsLandscape(const PageSetup& setup)
{
    return setup.paper.cx > setup.paper.cy;
}

bool PrintPage::IsCut() const
{
    return rcPicture.left < rcMargins.left || rcPicture.top < rcMargins.top ||
           rcPicture.right > rcMargins.right || rcPicture.bottom > rcMargins.bottom;
}

PrintPage LayOut(const PageSetup& setup, SIZE drawing, const PageDevice& device)
{
    const RECT& rc = setup.margins;
    const Side x = SideOf(setup.paper.cx, rc.left, rc.right, drawing.cx);
    const Side y = SideOf(setup.paper.cy, rc.top, rc.bottom, drawing.cy);
    const auto place = [&](double fX, double fWidth, double fY, double fHeight) {
        return Moved(SpanOf(fX, fWidth, device.fDotsX), SpanOf(fY, fHeight, device.fDotsY),
                     device.ptPaper);
    };
    PrintPage page;
    page.fZoom = setup.bFit ? std::min(x.fRoom / x.fUnits, y.fRoom / y.fUnits) : 1;
    page.fScale = page.fZoom * std::min(device.fDotsX, device.fDotsY) / UNITS;
    page.rcPaper = place(0, x.fPaper, 0, y.fPaper);
    page.rcMargins = place(x.fFrom, x.fRoom, y.fFrom, y.fRoom);
    page.rcPicture = place(x.Begin(page.fZoom), x.fUnits * page.fZoom, y.Begin(page.fZoom),
                           y.fUnits * page.fZoom);
    return page;
}

CPagePainter::CPagePainter(HQELENGINE hShown, const CPlay& play)
    : m_hEngine(CopyOf(hShown)), m_face(qel::DefaultTextFace())
{
    if (!m_hEngine) return;
    CPlay mine;
    mine.TakeFrom(play);
    mine.Opened(m_hEngine);
    QELSetFontFace(m_hEngine, m_face.c_str());
    QELSetSmooth(m_hEngine, SAMPLES); // printers and metafiles are drawn plainly all the same
    QELAdvance(m_hEngine, 0);
}

CPagePainter::~CPagePainter()
{
    if (m_hEngine) DestroyQELEngine(m_hEngine);
}

SIZE CPagePainter::RefSize() const
{
    SIZE size{0, 0};
    QELGetRefSize(m_hEngine, &size);
    return size;
}

int CPagePainter::Paint(HDC hdc, const PageSetup& setup, const PageDevice& device) const
{
    const PrintPage page = LayOut(setup, RefSize(), device);
    return page.fScale > MOST_SCALE ? Play(hdc, setup, page) : Draw(hdc, page);
}

int CPagePainter::Draw(HDC hdc, const PrintPage& page) const
{
    constexpr double PERCENT = 100;
    const double fScale = std::clamp(page.fScale, LEAST_SCALE, MOST_SCALE);
    const CSavedDc saved(hdc);
    ClipTo(hdc, page.rcMargins);
    ClipTo(hdc, page.rcPicture);
    QELSetPixelScale(m_hEngine, static_cast<DWORD>(std::lround(fScale * PERCENT)));
    QELSetQELRect(m_hEngine, &page.rcPicture);
    const LOGFONTW font = qel::TextFont(m_face);
    HFONT hFont = ::CreateFontIndirectW(&font);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    const int nDrawn = QELDraw(m_hEngine, hdc, &page.rcPicture, QEL_DRAW_FULL);
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hFont);
    return nDrawn;
}

// Where a pixel of the drawing is more of the device's than the engine takes: lines and curves of a
// metafile are as sharp in any size.
int CPagePainter::Play(HDC hdc, const PageSetup& setup, const PrintPage& page) const
{
    const std::string bytes = Record(setup);
    if (bytes.empty()) return 0;
    HENHMETAFILE hFile = ::SetEnhMetaFileBits(static_cast<UINT>(bytes.size()),
                                              reinterpret_cast<const BYTE*>(bytes.data()));
    const CSavedDc saved(hdc);
    ClipTo(hdc, page.rcMargins);
    const int nPlayed = hFile && ::PlayEnhMetaFile(hdc, hFile, &page.rcPaper);
    if (hFile) ::DeleteEnhMetaFile(hFile);
    return nPlayed;
}

// In the finest scale that keeps the paper within what all readers take. A whole number of pixels
// for each of the drawing, by four, is also what the rows of hatches are recorded without fill in.
// Empty: not drawn.
std::string CPagePainter::Record(const PageSetup& setup) const
{
    const double fZoom = LayOut(setup, RefSize(), PageDevice()).fZoom;
    const double fInches = std::max(setup.paper.cx, setup.paper.cy) / LENGTHS;
    double fScale = MOST_SCALE;
    while (fScale > 4 && fScale * UNITS / fZoom * fInches > LONGEST) fScale /= 2;
    const double fDots = fScale * UNITS / fZoom;
    const RECT rcFrame{0, 0, setup.paper.cx, setup.paper.cy};
    const HDC hdc = ::CreateEnhMetaFileW(nullptr, nullptr, &rcFrame, L"QEL Studio\0page\0");
    const int nDrawn = hdc && Draw(hdc, LayOut(setup, RefSize(), {fDots, fDots, {0, 0}}));
    std::string bytes = hdc ? BytesOf(::CloseEnhMetaFile(hdc)) : std::string();
    SetDots(&bytes, setup, fDots);
    return nDrawn ? bytes : std::string();
}

int CPagePainter::WriteMetafile(const std::wstring& path, const PageSetup& setup,
                                std::string* pWhy) const
{
    const std::string bytes = Record(setup);
    *pWhy = qel::NOT_DRAWN;
    if (bytes.empty()) return 0;
    try {
        qel::WriteComplete(path, [&](const std::wstring& name) { return WriteAll(name, bytes); });
        pWhy->clear();
        return 1;
    } catch (const std::exception& trouble) {
        *pWhy = trouble.what();
        return 0;
    }
}

} // namespace studio
