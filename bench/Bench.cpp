// Measures what has to stay cheap, as ratios within one run: times of a machine say little, but ten
// times the elements must not cost more than about ten times as much, and one handle among a
// hundred thousand must be found as fast as one among ten.
#include "include/QELEngine.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

double Now() // milliseconds
{
    LARGE_INTEGER nFrequency{};
    LARGE_INTEGER nCount{};
    ::QueryPerformanceFrequency(&nFrequency);
    ::QueryPerformanceCounter(&nCount);
    return 1000.0 * static_cast<double>(nCount.QuadPart) / static_cast<double>(nFrequency.QuadPart);
}

class CCanvas { // a small memory bitmap to draw on
public:
    CCanvas() : m_hdc(::CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, 200, -200, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* pBits = nullptr;
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &pBits, nullptr, 0);
        m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    }
    ~CCanvas()
    {
        ::SelectObject(m_hdc, m_hPrev);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;
    [[nodiscard]] HDC Dc() const { return m_hdc; }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hPrev = nullptr;
};

constexpr RECT DEVICE{0, 0, 200, 200};
const char* const PATH_IN = "qel_bench_in.qel";
const char* const PATH_OUT = "qel_bench_out.qel";

void WriteDrawing(int nCount)
{
    std::FILE* pFile = std::fopen(PATH_IN, "wb");
    if (!pFile) return;
    std::fputs(
        "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n<qel width=\"200\" height=\"200\">\r\n",
        pFile);
    for (int n = 0; n < nCount; ++n) {
        const int nX = n * 7 % 190;
        const int nY = n * 13 % 190;
        std::fprintf(
            pFile, "<rect id=\"r%d\" style=\"0x1\" dr=\"0\" bg=\"0x%x\" crd=\"%d %d %d %d\"/>\r\n",
            n, n * 977 % 0xFFFFFF, nX, nY, nX + 8, nY + 8);
    }
    std::fputs("</qel>\r\n", pFile);
    std::fclose(pFile);
}

struct Times { // milliseconds for one drawing
    double fOpen;
    double fWalk;
    double fDraw;
    double fSave;
    double fClose;
};

Times Measure(int nCount)
{
    WriteDrawing(nCount);
    const CCanvas canvas;
    HQELENGINE hEngine = CreateQELEngine();
    Times times{};
    double fAt = Now();
    const auto lap = [&fAt](double* pf) {
        const double fNow = Now();
        *pf = fNow - fAt;
        fAt = fNow;
    };
    if (!QELOpenFile(hEngine, PATH_IN)) std::puts("the drawing could not be opened");
    lap(&times.fOpen);
    int nSeen = 0;
    for (HQELELEM h = QELGetFirstChild(hEngine, QELGetRootElem(hEngine)); h;
         h = QELGetNextElem(hEngine, h))
        nSeen += QELGetElemType(hEngine, h) == QEL_TYPE_RECT;
    if (nSeen != nCount) std::puts("elements are missing");
    lap(&times.fWalk);
    QELSetQELRect(hEngine, &DEVICE);
    QELDraw(hEngine, canvas.Dc(), &DEVICE, QEL_DRAW_FULL);
    lap(&times.fDraw);
    if (!QELSaveFile(hEngine, PATH_OUT)) std::puts("the drawing could not be saved");
    lap(&times.fSave);
    DestroyQELEngine(hEngine);
    lap(&times.fClose);
    return times;
}

void PrintRatio(const char* pszWhat, double fSmall, double fLarge, double fFactor)
{
    std::printf("%-34s %9.2f ms %9.2f ms   x %5.2f of linear\n", pszWhat, fSmall, fLarge,
                fLarge / (fSmall * fFactor));
}

void MeasureGrowth()
{
    constexpr int SMALL = 5000;
    constexpr int LARGE = 50000;
    std::printf("%d elements against %d, all siblings:\n", SMALL, LARGE);
    Measure(SMALL); // warms caches and heap
    const Times small = Measure(SMALL);
    const Times large = Measure(LARGE);
    constexpr double FACTOR = static_cast<double>(LARGE) / SMALL;
    PrintRatio("open", small.fOpen, large.fOpen, FACTOR);
    PrintRatio("walk", small.fWalk, large.fWalk, FACTOR);
    PrintRatio("draw in full", small.fDraw, large.fDraw, FACTOR);
    PrintRatio("save", small.fSave, large.fSave, FACTOR);
    PrintRatio("close", small.fClose, large.fClose, FACTOR);
    ::DeleteFileA(PATH_IN);
    ::DeleteFileA(PATH_OUT);
}

double MeasureLookup(HQELENGINE hEngine, HQELELEM hElem)
{
    constexpr int CALLS = 1000000;
    const double fStart = Now();
    int nSum = 0;
    for (int n = 0; n < CALLS; ++n) nSum += QELGetElemType(hEngine, hElem);
    if (nSum != CALLS * QEL_TYPE_RECT) std::puts("the lookup failed");
    return Now() - fStart;
}

void MeasureHandles()
{
    constexpr int LIVE = 100000;
    HQELENGINE hEngine = CreateQELEngine();
    QELNewFile(hEngine);
    HQELELEM hFirst = QELCreateElem(hEngine, QEL_TYPE_RECT, nullptr, nullptr);
    const double fFew = MeasureLookup(hEngine, hFirst);
    for (int n = 1; n < LIVE; ++n) QELCreateElem(hEngine, QEL_TYPE_RECT, nullptr, nullptr);
    const double fMany = MeasureLookup(hEngine, hFirst);
    DestroyQELEngine(hEngine);
    std::printf("\na million calls with 1 live element handle against %d:\n", LIVE);
    PrintRatio("QELGetElemType", fFew, fMany, 1.0);
}

// A million settings by id, of the meter that was made last.
double MeasureSetting(int nMeters)
{
    constexpr DWORD FIRST_ID = 1000;
    constexpr int CALLS = 1000000;
    HQELENGINE hEngine = CreateQELEngine();
    QELNewFile(hEngine);
    QELMETERATTR attr{};
    for (int n = 0; n < nMeters; ++n) {
        HQELELEM hMeter = QELCreateElem(hEngine, QEL_TYPE_METER, nullptr, nullptr);
        QELGetElemAttr(hEngine, hMeter, &attr, nullptr);
        attr.nId = FIRST_ID + static_cast<DWORD>(n);
        QELSetElemAttr(hEngine, hMeter, &attr, sizeof attr);
    }
    const double fStart = Now();
    int nTaken = 0;
    for (int n = 0; n < CALLS; ++n)
        nTaken += QELSetScaleParam(hEngine, attr.nId, QEL_SEL_HIGH_LIMIT, static_cast<DWORD>(n));
    const double fTime = Now() - fStart;
    if (nTaken != CALLS) std::puts("a setting was refused");
    DestroyQELEngine(hEngine);
    return fTime;
}

void MeasureIds()
{
    constexpr int METERS = 10000;
    std::printf("\na million settings by id with 1 meter against %d:\n", METERS);
    MeasureSetting(1);
    PrintRatio("QELSetScaleParam", MeasureSetting(1), MeasureSetting(METERS), 1.0);
}

void MeasurePartial()
{
    WriteDrawing(2000);
    const CCanvas canvas;
    HQELENGINE hEngine = CreateQELEngine();
    QELOpenFile(hEngine, PATH_IN);
    QELSetQELRect(hEngine, &DEVICE);
    constexpr int DRAWS = 20;
    const auto measure = [&](DWORD nFlags) {
        const double fStart = Now();
        for (int n = 0; n < DRAWS; ++n) QELDraw(hEngine, canvas.Dc(), &DEVICE, nFlags);
        return Now() - fStart;
    };
    measure(QEL_DRAW_FULL);
    const double fFull = measure(QEL_DRAW_FULL);
    const double fPartial = measure(0);
    DestroyQELEngine(hEngine);
    ::DeleteFileA(PATH_IN);
    std::printf(
        "\n%d redraws of 2000 static shapes: full %.2f ms, partial %.4f ms (%.5f of full)\n", DRAWS,
        fFull, fPartial, fPartial / fFull);
}

} // namespace

int main()
{
    MeasureGrowth();
    MeasureHandles();
    MeasureIds();
    MeasurePartial();
    return 0;
}
