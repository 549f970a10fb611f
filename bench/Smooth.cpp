#include "bench/Smooth.h"

#include "bench/Memory.h"
#include "bench/Session.h"
#include "bench/Svg.h"
#include "tools/qel/Canvas.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>

namespace {

constexpr int ELEMENTS = 1000;
constexpr int SAMPLES = 4;
constexpr const char* DIAL = "dial";
const HBRUSH GROUND = static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)); // as a canvas is at first
constexpr const char* FACE = "WenQuanYi Zen Hei Mono";
constexpr std::size_t BYTES_A_ROW = static_cast<std::size_t>(SCENE_SIZE.cx) * 4;
constexpr std::size_t BYTES = BYTES_A_ROW * SCENE_SIZE.cy;

bool IsSamePicture(const qel::CCanvas& a, const qel::CCanvas& b)
{
    ::GdiFlush();
    return std::memcmp(a.Bits(), b.Bits(), BYTES) == 0;
}

double TimeOfDraw(const CEngine& engine, const qel::CCanvas& canvas, const RECT& rc = DEVICE)
{
    return TimeOf([&] { engine.Draw(canvas.Dc(), QEL_DRAW_FULL, rc); });
}

// A dial of 100 by 100 pixels in the middle of the mixed shapes.
std::string DialText()
{
    constexpr const char* METER =
        "<meter id=\"dial\" mtid=\"1\" upin=\"1\" mtype=\"round\" crd=\"500 375 42 450 325 550 "
        "425\">"
        "<circle style=\"0x1\" bg=\"0x404040\" lnwid=\"0\" crd=\"500 375 49\"/></meter>\r\n";
    std::string text = SceneText(MakeScene(SceneKind::Mixed, ELEMENTS));
    return text.insert(text.rfind("</qel>"), METER);
}

// The engine with the dial, and what it draws on.
struct DialHost {
    explicit DialHost(int nSamples) : canvas(SCENE_SIZE)
    {
        QELSetSmooth(engine, nSamples);
        engine.OpenShown(DialText());
        engine.Draw(canvas.Dc(), QEL_DRAW_FULL);
        QELValidate(engine);
    }
    [[nodiscard]] double Update() const { return TimeOfUpdate(engine, canvas.Dc(), DIAL, GROUND); }

    CEngine engine;
    qel::CCanvas canvas;
};

// Drawn again on an empty surface it is what the updates have left.
void ExpectUpdated(const DialHost& host)
{
    const qel::CCanvas other(SCENE_SIZE);
    host.engine.Draw(other.Dc(), QEL_DRAW_FULL);
    if (!IsSamePicture(host.canvas, other)) Die("an update does not draw what a full draw does");
}

// Of what letters do not cover: they have a face of their own in memory.
std::string TextWithoutTexts()
{
    std::vector<Shape> shapes = MakeScene(SceneKind::Mixed, ELEMENTS);
    std::erase_if(shapes, [](const Shape& shape) { return shape.nType == QEL_TYPE_TEXT; });
    return SceneText(shapes);
}

void Render(const CEngine& engine, std::vector<unsigned char>* pBits)
{
    if (!QELRenderBitmap(engine, pBits->data(), SCENE_SIZE.cx, SCENE_SIZE.cy, BYTES_A_ROW, 0))
        Die("no picture in memory could be made");
}

// On black the colours of a picture in memory are those of a draw.
void ExpectSameColors()
{
    const CEngine engine;
    engine.OpenShown(TextWithoutTexts());
    const qel::CCanvas canvas(SCENE_SIZE);
    engine.Draw(canvas.Dc(), QEL_DRAW_FULL);
    ::GdiFlush();
    std::vector<unsigned char> bits(BYTES);
    Render(engine, &bits);
    for (std::size_t n = 0; n < BYTES; ++n)
        if (n % 4 != 3 && bits[n] != canvas.Bits()[n])
            Die("a picture in memory is not what is drawn");
}

} // namespace

void MeasureSmoothDrawing()
{
    const std::string text = SceneText(MakeScene(SceneKind::Mixed, ELEMENTS));
    const CEngine plain;
    const CEngine smooth;
    plain.OpenShown(text);
    smooth.OpenShown(text);
    QELSetSmooth(smooth, SAMPLES);
    const qel::CCanvas canvas(SCENE_SIZE);
    const qel::CCanvas other(SCENE_SIZE);
    const Measured measured = Compare(
        TurnsFor(ELEMENTS), [&] { return TimeOfDraw(smooth, canvas); },
        [&] { return TimeOfDraw(plain, other); });
    if (IsSamePicture(canvas, other)) Die("nothing is smooth");
    g_table.Bar("smooth full draw of 1000 / plain (us)", measured, 1000, 8);
}

void MeasureSmoothUpdate()
{
    const DialHost plain(0);
    const DialHost smooth(SAMPLES);
    const Measured measured = Compare(
        TurnsFor(ELEMENTS), [&] { return smooth.Update(); }, [&] { return plain.Update(); });
    ExpectUpdated(plain);
    ExpectUpdated(smooth);
    g_table.Bar("smooth update of a dial of 100 x 100 / plain (us)", measured, 1000, 8);
}

void MeasurePixelScale()
{
    constexpr RECT TWICE{0, 0, 2 * SCENE_SIZE.cx, 2 * SCENE_SIZE.cy};
    const std::string text = SceneText(MakeScene(SceneKind::Mixed, ELEMENTS));
    const CEngine plain;
    const CEngine scaled;
    plain.OpenShown(text, TWICE);
    scaled.OpenShown(text, TWICE);
    QELSetPixelScale(scaled, 200);
    const qel::CCanvas canvas({TWICE.right, TWICE.bottom});
    g_table.Bar("pixel scale 200 at 2000 x 1500 / 100 (us)",
                Compare(
                    TurnsFor(ELEMENTS), [&] { return TimeOfDraw(scaled, canvas, TWICE); },
                    [&] { return TimeOfDraw(plain, canvas, TWICE); }),
                1000, 1.3);
}

void MeasurePictures()
{
    ExpectSameColors();
    const CEngine engine;
    engine.OpenShown(SceneText(MakeScene(SceneKind::Mixed, ELEMENTS)));
    const qel::CCanvas canvas(SCENE_SIZE);
    std::vector<unsigned char> bits(BYTES);
    g_table.Bar("picture in memory / full draw into a bitmap (us)",
                Compare(
                    TurnsFor(ELEMENTS), [&] { return TimeOf([&] { Render(engine, &bits); }); },
                    [&] { return TimeOfDraw(engine, canvas); }),
                1000, 2.5);
}

void MeasureSmoothMemory()
{
    const DialHost host(SAMPLES);
    host.engine.Draw(host.canvas.Dc(), QEL_DRAW_FULL);
    const DWORD nObjects = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    const CAllocationCount count("QELEngine.dll");
    if (!CAllocationCount::IsPatched()) Die("the DLL's allocations cannot be counted");
    host.engine.Draw(host.canvas.Dc(), QEL_DRAW_FULL);
    g_table.Bar("heap allocations in a smooth draw after the first",
                static_cast<double>(count.Count()), 0, 0);
    const DWORD nLeft = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS) - nObjects;
    g_table.Bar("GDI objects left by it", nLeft, 0, 0);
}

int WriteSvg(const char* pszPath)
{
    std::ofstream file(pszPath, std::ios::binary);
    file << SvgText(MakeScene(SceneKind::Mixed, ELEMENTS), FACE);
    return file.good() ? 0 : 2;
}

int DrawByLine()
{
    const CEngine engine;
    engine.OpenShown(SceneText(MakeScene(SceneKind::Mixed, ELEMENTS)));
    QELSetSmooth(engine, SAMPLES);
    const qel::CCanvas canvas(SCENE_SIZE);
    std::memset(canvas.Bits(), 0xFF, BYTES);
    const HFONT hFont = ::CreateFontA(-12, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, FACE);
    const HGDIOBJ hPrev = ::SelectObject(canvas.Dc(), hFont);
    for (std::string line; std::getline(std::cin, line);) {
        const double fTime = TimeOfDraw(engine, canvas);
        ::GdiFlush();
        if (!line.empty())
            std::ofstream(line, std::ios::binary)
                .write(reinterpret_cast<const char*>(canvas.Bits()), BYTES);
        std::printf("%.0f\n", fTime); // the file is whole by now
        std::fflush(stdout);
    }
    ::SelectObject(canvas.Dc(), hPrev);
    ::DeleteObject(hFont);
    ::DeleteFileA(PATH_IN);
    return 0;
}
