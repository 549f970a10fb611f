// The measurements: what the engine costs above its floor. Each figure stands beside its floor,
// which is measured in the same process by turns. bench.sh runs this program for both word sizes.
#include "bench/Floor.h"
#include "bench/Memory.h"
#include "bench/Replay.h"
#include "bench/Scene.h"
#include "bench/Session.h"
#include "bench/Smooth.h"
#include "tools/qel/Canvas.h"

#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr const char* PATH_OUT = "qel_bench_out.qel";
constexpr bool IS_32 = sizeof(void*) == 4;

// The plain reading of the file, which is no part of what is compared: into memory of its own, as
// the engine reads it. The bytes that the peer parses stand in memory that was touched before its
// clock starts, too.
double TimeOfReading(std::size_t nSize)
{
    char* pBytes = nullptr;
    const double fTime = TimeOf([&] {
        pBytes = static_cast<char*>(std::malloc(nSize));
        const HANDLE hFile = ::CreateFileA(PATH_IN, GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD nRead = 0;
        if (!pBytes || !::ReadFile(hFile, pBytes, static_cast<DWORD>(nSize), &nRead, nullptr) ||
            nRead != nSize)
            Die("the file could not be read");
        ::CloseHandle(hFile);
    });
    std::free(pBytes);
    return fTime;
}

double OpenOnce(double fReading)
{
    const CEngine engine;
    return TimeOf([&] { engine.Open(); }) - fReading;
}

double ParseByPeer(const std::string& text)
{
    std::vector<char> copy(text.begin(), text.end());
    copy.push_back(0);
    rapidxml::xml_document<> document;
    return TimeOf([&] { document.parse<0>(copy.data()); });
}

double g_fOpenSmall = 0; // ns an element

void MeasureOpening(int nCount)
{
    const std::string text = SceneText(MakeScene(SceneKind::Mixed, nCount));
    WriteFileBytes(text);
    std::vector<double> readings(static_cast<std::size_t>(TurnsFor(nCount)));
    for (double& fTime : readings) fTime = TimeOfReading(text.size());
    const double fReading = Median(readings);
    const Measured measured = Compare(
        TurnsFor(nCount), [&] { return OpenOnce(fReading); }, [&] { return ParseByPeer(text); });
    g_table.Bar("open " + std::to_string(nCount) + " elements / rapidxml's parse (ns an element)",
                measured, nCount, 3.5);
    g_table.Note("  the same with the reading of the file, on both sides",
                 (measured.fMine + fReading) / (measured.fFloor + fReading), "");
    if (nCount == 10000) {
        g_fOpenSmall = measured.fMine / nCount;
        g_table.Note("  bytes of file an element", static_cast<double>(text.size()) / nCount,
                     "bytes");
    }
    if (nCount == 1000000)
        g_table.Bar("open, ns an element: 1000000 / 10000", measured.fMine / nCount / g_fOpenSmall,
                    measured.fNoise, 1.4);
}

void MeasureNesting()
{
    constexpr int COUNT = 100000;
    const std::vector<Shape> shapes = MakeScene(SceneKind::Mixed, COUNT);
    const std::string flat = SceneText(shapes);
    const std::string nested = SceneText(shapes, 100);
    const auto open = [](const std::string& text) {
        WriteFileBytes(text);
        return OpenOnce(0);
    };
    // The nested drawing has a group for each ten shapes.
    Measured measured = Compare(
        TurnsFor(COUNT), [&] { return open(flat) / COUNT; },
        [&] { return open(nested) / (COUNT * 1.1); });
    g_table.Bar("open 100000: flat / nested (ns an element)", measured, 1, 1.15);
}

void MeasureHolding(bool bShowOnly, double* pfNormal)
{
    constexpr int COUNT = 100000;
    WriteFileBytes(SceneText(MakeScene(SceneKind::Mixed, COUNT)));
    QELShowOnly(bShowOnly);
    {
        const CEngine warm;
        warm.Open();
    }
    const std::size_t nBefore = BytesHeld();
    const CEngine engine;
    engine.Open();
    const double fEach = static_cast<double>(BytesHeld() - nBefore) / COUNT;
    QELShowOnly(0);
    if (!bShowOnly) {
        *pfNormal = fEach;
        g_table.Bar("heap an element after opening (bytes)", fEach, 0, IS_32 ? 250 : 350);
    } else {
        g_table.Note("  the same in show-only mode", fEach, "bytes");
        g_table.Bar("heap in show-only mode / normal", fEach / *pfNormal, 0, 0.6);
    }
}

void MeasureSaving()
{
    constexpr int COUNT = 100000;
    const std::string text = SceneText(MakeScene(SceneKind::Mixed, COUNT));
    WriteFileBytes(text);
    double fOpen = 0;
    double fClose = 0;
    const auto save = [&] {
        const CEngine engine;
        fOpen = TimeOf([&] { engine.Open(); });
        const double fSave = TimeOf([&] {
            if (!QELSaveFile(engine, PATH_OUT)) Die("the drawing could not be saved");
        });
        fClose = TimeOf([&] { QELCloseFile(engine); });
        return fSave;
    };
    g_table.Bar("save 100000 elements / open (ns an element)",
                Compare(TurnsFor(COUNT), save, [&] { return fOpen; }), COUNT, 1.3);
    const auto close = [&] {
        save();
        return fClose;
    };
    g_table.Bar("close 100000 elements / open (ns an element)",
                Compare(TurnsFor(COUNT), close, [&] { return fOpen; }), COUNT, 0.5);
}

// Without texts: the system leaves some bytes of a font's record unset.
void ExpectSameCalls(std::vector<Shape> shapes)
{
    std::erase_if(shapes, [](const Shape& shape) { return shape.nType == QEL_TYPE_TEXT; });
    const CEngine engine;
    engine.OpenShown(SceneText(shapes));
    if (Recorded([&](HDC hdc) { engine.Draw(hdc, QEL_DRAW_FULL); }) !=
        Recorded([&](HDC hdc) { DrawFloor(hdc, shapes); }))
        Die("the floor does not make the same calls");
}

void MeasureDrawing(SceneKind nKind, int nCount, const char* pszWhat, double fBar)
{
    const std::vector<Shape> shapes = MakeScene(nKind, nCount);
    const CEngine engine;
    engine.OpenShown(SceneText(shapes));
    if (nCount <= 10000) ExpectSameCalls(shapes);
    const qel::CCanvas canvas(SCENE_SIZE);
    const auto mine = [&] { return TimeOf([&] { engine.Draw(canvas.Dc(), QEL_DRAW_FULL); }); };
    const auto floor = [&] { return TimeOf([&] { DrawFloor(canvas.Dc(), shapes); }); };
    g_table.Bar(pszWhat, Compare(TurnsFor(nCount * 10), mine, floor), nCount, fBar);
}

struct DcState {
    COLORREF clrBack, clrText;
    int nMode;
    HGDIOBJ hPen, hBrush, hFont;
    POINT pt;
    bool operator==(const DcState& other) const
    {
        return clrBack == other.clrBack && clrText == other.clrText && nMode == other.nMode &&
               hPen == other.hPen && hBrush == other.hBrush && hFont == other.hFont &&
               pt.x == other.pt.x && pt.y == other.pt.y;
    }
};

DcState StateOf(HDC hdc)
{
    DcState state{::GetBkColor(hdc),
                  ::GetTextColor(hdc),
                  ::GetBkMode(hdc),
                  ::GetCurrentObject(hdc, OBJ_PEN),
                  ::GetCurrentObject(hdc, OBJ_BRUSH),
                  ::GetCurrentObject(hdc, OBJ_FONT),
                  {}};
    ::GetCurrentPositionEx(hdc, &state.pt);
    return state;
}

void MeasureClipping()
{
    constexpr int COUNT = 10000;
    const CEngine engine;
    engine.OpenShown(SceneText(MakeScene(SceneKind::Mixed, COUNT)));
    const qel::CCanvas full(SCENE_SIZE);
    const qel::CCanvas clipped(SCENE_SIZE);
    constexpr RECT CLIP{430, 320, 530, 395}; // a hundredth of the area
    const HRGN hRegion = ::CreateRectRgnIndirect(&CLIP);
    ::SelectClipRgn(clipped.Dc(), hRegion);
    ::DeleteObject(hRegion);
    engine.Draw(full.Dc(), QEL_DRAW_FULL);
    engine.Draw(clipped.Dc(), QEL_DRAW_FULL);
    if (!(StateOf(full.Dc()) == StateOf(clipped.Dc())))
        Die("a clip leaves the device context in another state");
    ::GdiFlush();
    for (LONG y = CLIP.top; y < CLIP.bottom; ++y) {
        const auto nAt = static_cast<std::size_t>(y * SCENE_SIZE.cx + CLIP.left) * 4;
        if (std::memcmp(full.Bits() + nAt, clipped.Bits() + nAt,
                        static_cast<std::size_t>(CLIP.right - CLIP.left) * 4) != 0)
            Die("a clip changes pixels inside of it");
    }
    const auto draw = [&](const qel::CCanvas& canvas) {
        return TimeOf([&] { engine.Draw(canvas.Dc(), QEL_DRAW_FULL); });
    };
    g_table.Bar("draw clipped to 1 % of the area / full draw (ns an element)",
                Compare(
                    TurnsFor(100000), [&] { return draw(clipped); }, [&] { return draw(full); }),
                COUNT, 0.06);
}

void MeasureGradient()
{
    constexpr int SIDE = 500;
    constexpr RECT RC{0, 0, SIDE, SIDE};
    constexpr COLORREF FIRST = 0x102030;
    constexpr COLORREF SECOND = 0xF0E0D0;
    constexpr int KIND_AVERAGE = 2; // across and down, averaged
    const qel::CCanvas mine({SIDE, SIDE});
    const qel::CCanvas other({SIDE, SIDE});
    const auto engine = [&] {
        return TimeOf([&] {
            const HQELGRADIENT h = QELCreateGradientDescriptor(&RC, KIND_AVERAGE, FIRST, SECOND);
            ::FillRect(mine.Dc(), &RC, QELGetGradientBrush(h));
            QELCloseGradientDescriptor(h);
        });
    };
    const auto floor = [&] {
        return TimeOf([&] {
            unsigned char axis[SIDE][3]; // the same in both directions
            for (int p = 0; p < SIDE; ++p)
                for (int n = 0; n < 3; ++n) {
                    const int a = FIRST >> (16 - 8 * n) & 0xFF;
                    const int b = SECOND >> (16 - 8 * n) & 0xFF;
                    axis[p][n] = static_cast<unsigned char>(a + p * (b - a) / SIDE);
                }
            std::vector<unsigned char> dib(sizeof(BITMAPINFOHEADER) + SIDE * SIDE * 4);
            BITMAPINFOHEADER header{sizeof header, SIDE, -SIDE, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
            std::memcpy(dib.data(), &header, sizeof header);
            unsigned char* p = dib.data() + sizeof header;
            for (const auto& down : axis)
                for (const auto& across : axis) {
                    for (int n = 0; n < 3; ++n)
                        p[n] = static_cast<unsigned char>((across[n] + down[n]) >> 1);
                    p += 4;
                }
            const HBRUSH hBrush = ::CreateDIBPatternBrushPt(dib.data(), DIB_RGB_COLORS);
            ::FillRect(other.Dc(), &RC, hBrush);
            ::DeleteObject(hBrush);
        });
    };
    engine();
    floor();
    ::GdiFlush();
    if (std::memcmp(mine.Bits(), other.Bits(), SIDE * SIDE * 4) != 0)
        Die("the gradients are not the same");
    g_table.Bar("gradient fill of 500 x 500 / table, brush and fill (us)",
                Compare(TurnsFor(10000), engine, floor), 1000, 1.5);
}

// Nanoseconds for one setting by id.
double TimeOfSetting(HQELENGINE hEngine, int nFirst, int nMeters)
{
    constexpr int CALLS = 200000;
    int nTaken = 0;
    const double fTime = TimeOf([&] {
        for (int n = 0; n < CALLS; ++n)
            nTaken += QELSetScaleParam(
                hEngine, static_cast<DWORD>(nFirst) + static_cast<DWORD>(n * 7919 % nMeters),
                QEL_SEL_HIGH_LIMIT, static_cast<DWORD>(n));
    });
    if (nTaken != CALLS) Die("a setting was refused");
    return fTime / CALLS;
}

void MeasureSettings()
{
    constexpr int FIRST = 1000;
    constexpr int MANY = 10000;
    const CEngine one;
    const CEngine many;
    one.OpenShown(PanelText(1, FIRST, {}));
    many.OpenShown(PanelText(MANY, FIRST, {}));
    const Measured measured = Compare(
        TurnsFor(100000), [&] { return TimeOfSetting(many, FIRST, MANY); },
        [&] { return TimeOfSetting(one, FIRST, 1); });
    g_table.Bar("set a value by id: 10000 meters / 1 (ns)", measured, 1, 8);
    g_table.Bar("set a value by id among 10000 meters (ns)", measured.fMine, measured.fNoise, 50);
}

// Nanoseconds for one value by identifier.
double TimeOfValue(HQELENGINE hEngine, const std::vector<std::string>& ids)
{
    constexpr std::size_t CALLS = 200000;
    std::size_t nTaken = 0;
    const double fTime = TimeOf([&] {
        for (std::size_t n = 0; n < CALLS; ++n)
            nTaken += static_cast<std::size_t>(QELSetValue(
                hEngine, ids[n * 7919 % ids.size()].c_str(), static_cast<double>(n % 11)));
    });
    if (nTaken != CALLS) Die("a value was refused");
    return fTime / CALLS;
}

std::vector<std::string> MeterIds(int nMeters)
{
    std::vector<std::string> ids;
    ids.reserve(static_cast<std::size_t>(nMeters));
    for (int n = 0; n < nMeters; ++n) ids.push_back("m" + std::to_string(n));
    return ids;
}

// After an update, so that places are remembered.
void MeasureValues()
{
    constexpr int MANY = 10000;
    const qel::CCanvas canvas(SCENE_SIZE);
    const CEngine one;
    const CEngine many;
    one.OpenShown(PanelText(1, 1000, {}));
    many.OpenShown(PanelText(MANY, 1000, {}));
    for (const CEngine* pEngine : {&one, &many}) QELUpdate(*pEngine, canvas.Dc(), nullptr);
    const Measured measured = Compare(
        TurnsFor(100000), [&] { return TimeOfValue(many, MeterIds(MANY)); },
        [&] { return TimeOfValue(one, MeterIds(1)); });
    g_table.Bar("set a value by identifier: 10000 meters / 1 (ns)", measured, 1, 4);
    g_table.Bar("set a value by identifier among 10000 (ns)", measured.fMine, measured.fNoise, 80);
}

// Those of the shapes that paint where a meter does, as the engine tells it.
std::vector<Shape> ShapesAt(const CEngine& engine, const char* pszId,
                            const std::vector<Shape>& shapes)
{
    std::vector<Shape> met;
    RECT rcMeter{};
    if (!QELGetIdDrawRect(engine, pszId, &rcMeter)) Die("a meter has no place");
    HQELELEM hElem = QELGetFirstChild(engine, QELGetRootElem(engine));
    for (const Shape& shape : shapes) {
        RECT rc{};
        RECT rcMeet{};
        if (QELGetElemDrawRect(engine, hElem, &rc) && ::IntersectRect(&rcMeet, &rc, &rcMeter))
            met.push_back(shape);
        hElem = QELGetNextElem(engine, hElem);
    }
    return met;
}

constexpr const char* DIAL = "m500";

RECT PlaceOf(HQELENGINE hEngine, const char* pszId)
{
    RECT rc{};
    if (!QELGetIdDrawRect(hEngine, pszId, &rc)) Die("a meter has no place");
    return rc;
}

// The calls of a full draw of one dial of the panel, as it shows a value.
CReplay CallsOfDial(double fValue)
{
    const CEngine alone;
    alone.OpenShown(PanelText(1000, 1000, {}));
    for (const std::string& id : MeterIds(1000)) QELSetVisible(alone, id.c_str(), id == DIAL);
    QELSetValue(alone, DIAL, fValue);
    CReplay replay(Recorded([&](HDC hdc) { alone.Draw(hdc, QEL_DRAW_FULL); }));
    if (!replay.IsWhole()) Die("the dial makes calls that cannot be replayed");
    return replay;
}

// The pixels of what stands in the place of the dial, by an update and by its floor.
void ExpectSamePlace(const qel::CCanvas& mine, const qel::CCanvas& other, const RECT& rc)
{
    ::GdiFlush();
    for (LONG y = rc.top; y < rc.bottom; ++y) {
        const auto nAt = static_cast<std::size_t>(y * SCENE_SIZE.cx + rc.left) * 4;
        if (std::memcmp(mine.Bits() + nAt, other.Bits() + nAt,
                        static_cast<std::size_t>(rc.right - rc.left) * 4) != 0)
            Die("an update does not draw what its floor does");
    }
}

// The floor of an update are the calls of what stands in the place of the dial, and of the dial,
// under a clip.
void MeasureOneDial(const CEngine& engine, const std::vector<Shape>& shapes)
{
    constexpr double FIRST = 3;
    const qel::CCanvas canvas(SCENE_SIZE);
    const qel::CCanvas other(SCENE_SIZE);
    const std::vector<Shape> met = ShapesAt(engine, DIAL, shapes);
    const CReplay dial = CallsOfDial(FIRST);
    const RECT rc = PlaceOf(engine, DIAL);
    const auto floor = [&] {
        return TimeOf([&] {
            ::SaveDC(other.Dc());
            ::IntersectClipRect(other.Dc(), rc.left, rc.top, rc.right, rc.bottom);
            DrawFloor(other.Dc(), met);
            dial.Draw(other.Dc());
            ::RestoreDC(other.Dc(), -1);
        });
    };
    QELUpdate(engine, canvas.Dc(), nullptr);
    QELSetValue(engine, DIAL, FIRST);
    QELUpdate(engine, canvas.Dc(), nullptr);
    floor();
    ExpectSamePlace(canvas, other, rc);
    g_table.Bar(
        "update of a dial of 1000 beside 100000 shapes / the same calls (us)",
        Compare(
            TurnsFor(10000), [&] { return TimeOfUpdate(engine, canvas.Dc(), DIAL); }, floor),
        1000, 1.5);
}

// Far enough from a place that no shape of a scene reaches into it.
bool IsElsewhere(const Shape& shape, const RECT& rc)
{
    constexpr LONG REACH = 100;
    const bool bList = shape.nType == QEL_TYPE_POLYLINE || shape.nType == QEL_TYPE_POLYGON;
    const int* pnAt = shape.n + (bList ? 1 : 0);
    return pnAt[0] < rc.left - REACH || pnAt[0] > rc.right + REACH || pnAt[1] < rc.top - REACH ||
           pnAt[1] > rc.bottom + REACH;
}

// The same dial, when nine times as many shapes more stand elsewhere.
void MeasureMoreElsewhere(const CEngine& engine, const std::vector<Shape>& shapes)
{
    std::vector<Shape> more = shapes;
    const RECT rc = PlaceOf(engine, DIAL);
    const auto elsewhere = [&](const Shape& shape) { return IsElsewhere(shape, rc); };
    while (more.size() < shapes.size() * 10)
        std::ranges::copy_if(shapes, std::back_inserter(more), elsewhere);
    const CEngine large;
    large.OpenShown(PanelText(1000, 1000, more));
    const qel::CCanvas canvas(SCENE_SIZE);
    const qel::CCanvas other(SCENE_SIZE);
    QELUpdate(engine, other.Dc(), nullptr);
    QELUpdate(large, canvas.Dc(), nullptr);
    g_table.Bar("the same with 1000000 shapes elsewhere / 100000 (us)",
                Compare(
                    TurnsFor(10000), [&] { return TimeOfUpdate(large, canvas.Dc(), DIAL); },
                    [&] { return TimeOfUpdate(engine, other.Dc(), DIAL); }),
                1000, 1.2);
    ExpectSamePlace(canvas, other, rc);
}

void MeasureDials()
{
    const std::vector<Shape> shapes = MakeScene(SceneKind::Mixed, 100000);
    const CEngine engine;
    engine.OpenShown(PanelText(1000, 1000, shapes));
    MeasureOneDial(engine, shapes);
    if (!g_bQuick) MeasureMoreElsewhere(engine, shapes);
}

void MeasureUpdates()
{
    const qel::CCanvas canvas(SCENE_SIZE);
    const CEngine bare;
    bare.OpenShown(PanelText(1000, 1000, {}));
    QELUpdate(bare, canvas.Dc(), nullptr);
    const std::vector<std::string> ids = MeterIds(1000);
    int nValue = 0;
    const auto update = [&] {
        ++nValue;
        for (const std::string& id : ids) QELSetValue(bare, id.c_str(), nValue % 11);
        return TimeOf([&] {
            if (!QELUpdate(bare, canvas.Dc(), nullptr)) Die("nothing was updated");
        });
    };
    update();
    g_table.Bar("update of 1000 dials / full draw of them (us)",
                Compare(TurnsFor(100000), update,
                        [&] { return TimeOf([&] { bare.Draw(canvas.Dc(), QEL_DRAW_FULL); }); }),
                1000, 1.05);
    const DWORD nObjects = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    const CAllocationCount count("QELEngine.dll");
    update();
    g_table.Bar("heap allocations in 1000 values and their update",
                static_cast<double>(count.Count()), 0, 0);
    g_table.Bar("GDI objects left by it",
                ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS) - nObjects, 0, 0);
}

// A setting that every meter takes by its id. Values are taken by the ids up to 32 alone.
void SetEach(HQELENGINE hEngine, int nFirst, int nMeters, DWORD clr)
{
    for (int n = 0; n < nMeters; ++n)
        if (!QELSetScaleParam(hEngine, static_cast<DWORD>(nFirst) + static_cast<DWORD>(n),
                              QEL_SEL_PIN_COLOR, clr))
            Die("a setting was refused");
}

std::string RecordedRedraw(const CEngine& engine, int nFirst, int nMeters, DWORD clr)
{
    SetEach(engine, nFirst, nMeters, clr);
    return Recorded([&](HDC hdc) { engine.Draw(hdc, 0); });
}

// On both canvases stands the same picture. After a redraw and the replay of that redraw it does
// again.
void ExpectSameRedraw(const CEngine& engine, const CReplay& replay, const qel::CCanvas& mine,
                      const qel::CCanvas& other)
{
    if (!replay.IsWhole()) Die("the dials make calls that cannot be replayed");
    engine.Draw(mine.Dc(), 0);
    replay.Draw(other.Dc());
    ::GdiFlush();
    const auto nBytes = static_cast<std::size_t>(SCENE_SIZE.cx) * SCENE_SIZE.cy * 4;
    if (std::memcmp(mine.Bits(), other.Bits(), nBytes) != 0)
        Die("the replay does not draw the same dials");
}

// A partial redraw after every meter has got another colour, with and without static shapes in the
// drawing.
void MeasurePartial()
{
    constexpr int FIRST = 1000;
    constexpr int METERS = 1000;
    const qel::CCanvas canvas(SCENE_SIZE);
    const CEngine bare;
    const CEngine full;
    bare.OpenShown(PanelText(METERS, FIRST, {}));
    full.OpenShown(PanelText(METERS, FIRST, MakeScene(SceneKind::Mixed, 100000)));
    DWORD clr = 0;
    const auto redraw = [&](const CEngine& engine) {
        SetEach(engine, FIRST, METERS, ++clr);
        return TimeOf([&] { engine.Draw(canvas.Dc(), 0); });
    };
    redraw(bare);
    redraw(full);
    const qel::CCanvas other(SCENE_SIZE);
    const CReplay replay(RecordedRedraw(bare, FIRST, METERS, ++clr));
    bare.Draw(canvas.Dc(), QEL_DRAW_FULL);
    bare.Draw(other.Dc(), QEL_DRAW_FULL);
    ExpectSameRedraw(bare, replay, canvas, other);
    g_table.Bar("partial redraw of 1000 dials / the same calls (us)",
                Compare(
                    TurnsFor(100000), [&] { return redraw(bare); },
                    [&] { return TimeOf([&] { replay.Draw(other.Dc()); }); }),
                1000, 1.05);
    g_table.Bar("partial redraw of 1000 dials beside 100000 shapes / alone (us)",
                Compare(
                    TurnsFor(100000), [&] { return redraw(full); }, [&] { return redraw(bare); }),
                1000, 1.02);
}

void MeasureAllocations()
{
    const qel::CCanvas canvas(SCENE_SIZE);
    const CEngine engine;
    engine.OpenShown(PanelText(100, 1000, MakeScene(SceneKind::Mixed, 1100)));
    engine.Draw(canvas.Dc(), QEL_DRAW_FULL);
    const DWORD nObjects = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    const CAllocationCount count("QELEngine.dll");
    if (!CAllocationCount::IsPatched()) Die("the DLL's allocations cannot be counted");
    engine.Draw(canvas.Dc(), QEL_DRAW_FULL);
    g_table.Bar("heap allocations in a full draw", static_cast<double>(count.Count()), 0, 0);
    const long nBefore = count.Count();
    SetEach(engine, 1000, 100, 0x123456);
    engine.Draw(canvas.Dc(), 0);
    g_table.Bar("heap allocations in 100 settings and a partial redraw",
                static_cast<double>(count.Count() - nBefore), 0, 0);
    const DWORD nLeft = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS) - nObjects;
    g_table.Bar("GDI objects left by both", nLeft, 0, 0);
}

void MeasureOpenings()
{
    for (const int nCount : {10000, 100000, 1000000})
        if (!g_bQuick || nCount < 1000000) MeasureOpening(nCount);
}

void MeasureMemory()
{
    double fNormal = 0;
    MeasureHolding(false, &fNormal);
    MeasureHolding(true, &fNormal);
}

void MeasureDrawings()
{
    MeasureDrawing(SceneKind::Mixed, 1000, "full draw of 1000 / the same calls (ns an element)",
                   1.03);
    MeasureDrawing(SceneKind::Mixed, 10000, "full draw of 10000 / the same calls", 1.03);
    if (!g_bQuick) MeasureDrawing(SceneKind::Mixed, 100000, "full draw of 100000", 1.03);
    MeasureDrawing(SceneKind::Lines, 10000, "full draw of 10000 lines / the same calls", 1.10);
}

struct Measurement {
    const char* pszName;
    void (*pfnMeasure)();
};

constexpr Measurement g_measurements[] = {
    {"open", MeasureOpenings},
    {"nesting", MeasureNesting},
    {"memory", MeasureMemory},
    {"save", MeasureSaving},
    {"draw", MeasureDrawings},
    {"clip", MeasureClipping},
    {"gradient", MeasureGradient},
    {"partial", MeasurePartial},
    {"set", MeasureSettings},
    {"allocations", MeasureAllocations},
    {"values", MeasureValues},
    {"dials", MeasureDials},
    {"updates", MeasureUpdates},
    {"smooth", MeasureSmoothDrawing},
    {"smooth-update", MeasureSmoothUpdate},
    {"scale", MeasurePixelScale},
    {"pictures", MeasurePictures},
    {"smooth-memory", MeasureSmoothMemory},
};

const Measurement* LookupMeasurement(std::string_view name)
{
    return std::ranges::find(g_measurements, name, &Measurement::pszName);
}

int CountOf(std::string_view text)
{
    int nCount = 0;
    const char* pEnd = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), pEnd, nCount);
    if (result.ec != std::errc() || result.ptr != pEnd || nCount < 1) Die("that is no count");
    return nCount;
}

} // namespace

// qel_bench [--quick] [NAME...] | --make COUNT | --open | --svg FILE | --draws. Names choose
// measurements. --make writes the drawing that --open opens, in a process of its own whose peak the
// caller sees; the last two are for turns with another program.
int main(int nArgs, char** ppszArgs)
{
    const std::string arg = nArgs > 1 ? ppszArgs[1] : "";
    if (arg == "--open") {
        const CEngine engine;
        engine.Open();
        return 0;
    }
    if (arg == "--make" && nArgs > 2) {
        WriteFileBytes(SceneText(MakeScene(SceneKind::Mixed, CountOf(ppszArgs[2]))));
        return 0;
    }
    if (arg == "--svg" && nArgs > 2) return WriteSvg(ppszArgs[2]);
    if (arg == "--draws") return DrawByLine();
    g_bQuick = arg == "--quick";
    const std::span<char*> names(ppszArgs + 1 + g_bQuick, ppszArgs + nArgs);
    for (const char* pszName : names)
        if (LookupMeasurement(pszName) == std::end(g_measurements))
            Die("there is no such measurement");
    for (const Measurement& row : g_measurements)
        if (names.empty() || std::ranges::find(names, std::string_view(row.pszName)) != names.end())
            row.pfnMeasure();
    ::DeleteFileA(PATH_IN);
    ::DeleteFileA(PATH_OUT);
    return g_table.Missed() ? 1 : 0;
}
