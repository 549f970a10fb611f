// No drawing holds its host up: what numbers without sense would have the system do for minutes is
// left out or made for what shows. Tests are not timed on a machine that has other work to do, so
// the named cases count what was made: lines, bytes of bitmaps, widths of pens, texts. The last one
// draws by chance and looks at the clock, but at most of the time that the engine itself takes.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace {

constexpr int SIDE = 1000;
constexpr RECT SURFACE{0, 0, SIDE, SIDE};

HMODULE Engine()
{
    return ::GetModuleHandleA("QELEngine.dll");
}

std::string Times(int nCount, const std::string& element)
{
    std::string text;
    for (int n = 0; n < nCount; ++n) text += element;
    return text;
}

class HeldUp : public ::testing::Test {
protected:
    HeldUp() : m_h(CreateQELEngine()) {}
    ~HeldUp() override { EXPECT_EQ(1, DestroyQELEngine(m_h)); }

    void Open(const std::string& elements, SIZE size = {SIDE, SIDE})
    {
        ASSERT_TRUE(WriteBytes(m_folder.Path("a.qel"),
                               "<qel width=\"" + std::to_string(size.cx) + "\" height=\"" +
                                   std::to_string(size.cy) + "\">" + elements + "</qel>"));
        ASSERT_EQ(1, QELOpenFile(m_h, m_folder.Path("a.qel").c_str()));
    }
    void Draw(HDC hdc, const RECT& rcQel = SURFACE) const
    {
        EXPECT_EQ(1, QELSetQELRect(m_h, &rcQel));
        EXPECT_EQ(1, QELDraw(m_h, hdc, &rcQel, QEL_DRAW_FULL));
    }
    // What one full draw makes.
    CCountedCalls::Counts Count(const RECT& rcQel = SURFACE)
    {
        const CCountedCalls calls(Engine());
        m_drawn.Fill(RGB(255, 255, 255));
        Draw(m_drawn.Dc(), rcQel);
        return CCountedCalls::Seen();
    }

    CTestFolder m_folder;
    CTestBitmap m_drawn{SIDE, SIDE};
    HQELENGINE m_h;
};

} // namespace

TEST_F(HeldUp, OfABorderOf65535RingsTheOnesThatShowAreStroked)
{
    // Rings 0 to 499 go inwards, and 500 to 999 out again; the rest is outside.
    Open(Times(100, "<rect style=\"0xffff0003\" crd=\"0 0 1000 1000\"/>"));
    EXPECT_EQ(100u * 1000 * 4, Count().nLines);
    EXPECT_FALSE(IsBlank(m_drawn));
    // Of a small one far from the sides as well.
    Open("<rect style=\"0xffff0003\" crd=\"500 500 510 510\"/>");
    EXPECT_GE(510u * 4, Count().nLines);
    Open("<drawrgn style=\"0x7fff0002\" crd=\"0 0 1000 1000\"/>");
    EXPECT_EQ(1000u * 4, Count().nLines);
}

TEST_F(HeldUp, AGradientOverThousandsOfUnitsHasABrushOfWhatShows)
{
    constexpr std::size_t SCREEN = std::size_t{SIDE} * SIDE * 4;
    Open(Times(20, "<polygon style=\"0x1\" dr=\"14\" crd=\"3 0 0 8190 4000 4000 8190\"/>"));
    EXPECT_GE(20 * SCREEN, Count().nPatternBytes);
    EXPECT_LT(20u * 4000, Count().nPatternBytes);
    EXPECT_FALSE(IsBlank(m_drawn));
    // In a window that is larger than what of it is on the surface.
    Open("<ellipse style=\"0x1\" dr=\"22\" crd=\"0 0 1000 1000\"/>"
         "<rect style=\"0x1\" dr=\"24\" crd=\"0 0 1000 1000\"/>");
    EXPECT_GE(2 * SCREEN, Count({-2000, -2000, 6000, 6000}).nPatternBytes);
    EXPECT_FALSE(IsBlank(m_drawn));
    const RECT rcClip{10, 10, 30, 30};
    ::IntersectClipRect(m_drawn.Dc(), rcClip.left, rcClip.top, rcClip.right, rcClip.bottom);
    EXPECT_GE(2u * 20 * 20 * 4, Count({-2000, -2000, 6000, 6000}).nPatternBytes);
}

TEST_F(HeldUp, TheRegionOfAFaceOf16000PixelsIsMadeOfWhatShows)
{
    Open(Times(5, "<meter mtype=\"vert\" crd=\"10 10 60 900\">"
                  "<pie style=\"0x1\" crd=\"-7000 -7000 9000 9000 9000 100 100 9000\"/></meter>"));
    const std::size_t nBytes = Count().nMonoBytes;
    EXPECT_LT(0u, nBytes);
    EXPECT_GT(5u * 1000 * 1000, nBytes); // the whole takes 32 million each
    EXPECT_FALSE(IsBlank(m_drawn));
}

TEST_F(HeldUp, DashedPensAreNotDrawnWiderThan100Pixels)
{
    for (const char* pszStyle : {"1", "2", "3", "4"}) {
        const std::string attributes = std::string(" clr=\"0xff\" lnwid=\"10000\" lnstyle=\"") +
                                       pszStyle + "\" crd=\"10 10 390 290 5 5 9 9\"/>";
        Open(Times(10, "<arc" + attributes) + Times(10, "<pie" + attributes), {400, 300});
        EXPECT_EQ(100, Count().nWidestPen) << pszStyle;
        EXPECT_FALSE(IsBlank(m_drawn));
    }
    Open("<line lnwid=\"99\" lnstyle=\"1\" crd=\"0 0 9 9\"/>");
    EXPECT_EQ(99, Count().nWidestPen);
    for (const char* pszStyle : {"0", "6"}) {
        Open(std::string("<line lnwid=\"4000\" lnstyle=\"") + pszStyle + "\" crd=\"0 0 9 9\"/>");
        EXPECT_EQ(4000, Count().nWidestPen) << pszStyle;
    }
}

// The system goes beyond its memory with a pen that leaves nothing of the box inside of its frame.
TEST_F(HeldUp, APenInsideOfTheFrameLeavesACurveOnePixelAtLeast)
{
    for (const char* pszShape : {"pie", "chord", "arc", "ellipse", "circle", "rndrect"}) {
        Open(std::string("<") + pszShape +
             " style=\"0x1\" clr=\"0xff\" lnstyle=\"6\" lnwid=\"9000\" crd=\"30 30 90 60 40 50 10 "
             "20\"/>");
        const int nWidest = Count().nWidestPen;
        EXPECT_LE(1, nWidest) << pszShape;
        EXPECT_GT(std::strcmp(pszShape, "circle") ? 30 : 180, nWidest) << pszShape;
    }
    Open(Times(5, "<pie lnstyle=\"6\" lnwid=\"987117464\" "
                  "crd=\"642 -1 83 -9 -157290574 969 89783 529\"/>"),
         {23, SIDE});
    EXPECT_GE(6, Count().nWidestPen); // of eight pixels
    Open("<ellipse lnstyle=\"6\" lnwid=\"20\" crd=\"30 30 90 60\"/>");
    EXPECT_EQ(20, Count().nWidestPen); // what fits stays
}

TEST_F(HeldUp, ATextWithCharactersBeyondAllFontsIsLeftOut)
{
    Open("<text fg=\"0xff\" crd=\"0 0 50 50\">A</text>", {50, 50});
    EXPECT_EQ(0u, Count({0, 0, 50, 781830154}).nTexts);
    EXPECT_TRUE(IsBlank(m_drawn));
    EXPECT_EQ(0u, Count({0, 0, 781830154, 50}).nTexts);
    EXPECT_EQ(0u, Count({0, 0, 50, 8208}).nTexts); // cells grow by steps of 12
    EXPECT_EQ(1u, Count({0, 0, 50, 8192}).nTexts);
    EXPECT_EQ(1u, Count({0, 0, 300, 300}).nTexts);
    EXPECT_FALSE(IsBlank(m_drawn));
}

// ---- by chance

namespace {

// Seconds of the processor's time: what the machine does besides does not count.
double Now()
{
    FILETIME made;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    ::GetProcessTimes(::GetCurrentProcess(), &made, &ended, &kernel, &user);
    const auto ticks = [](const FILETIME& time) {
        return (uint64_t{time.dwHighDateTime} << 32) + time.dwLowDateTime;
    };
    return static_cast<double>(ticks(kernel) + ticks(user)) / 1e7;
}

constexpr double BAR = 2.0;        // seconds
constexpr double SLOW = BAR / 100; // a call that a draw of a hundred elements may not have in each
constexpr double GUARD = 4;        // times the bar: the machine has other work to do

// Calls that are slow in themselves: each is made once more on another surface, with the same pen,
// brush and arguments, and what it takes there is its own.
class CSlowCalls {
public:
    static void Restart()
    {
        s_fOwn = 0;
        s_worst.clear();
        s_fWorst = 0;
    }
    static double Own() { return s_fOwn; }
    static const std::string& Worst() { return s_worst; }

    template <class Function>
    static void Note(const char* pszName, double fTook, HDC hdc, POINT ptFrom,
                     const Function& again)
    {
        if (fTook < SLOW) return;
        CTestBitmap alone(SIDE, SIDE);
        const CTestSelect pen(alone.Dc(), ::GetCurrentObject(hdc, OBJ_PEN), false);
        const CTestSelect brush(alone.Dc(), ::GetCurrentObject(hdc, OBJ_BRUSH), false);
        const CTestSelect font(alone.Dc(), ::GetCurrentObject(hdc, OBJ_FONT), false);
        ::SetArcDirection(alone.Dc(), ::GetArcDirection(hdc));
        ::MoveToEx(alone.Dc(), ptFrom.x, ptFrom.y, nullptr);
        const double fStart = Now();
        again(alone.Dc());
        const double fAgain = Now() - fStart;
        const double fAlone = std::min(fTook, fAgain);
        s_fOwn += fAgain + (fAlone >= SLOW ? fTook : 0); // the second time is the test's own
        if (fAlone > s_fWorst) {
            s_fWorst = fAlone;
            s_worst = pszName;
        }
    }

private:
    inline static double s_fOwn = 0;
    inline static double s_fWorst = 0;
    inline static std::string s_worst;
};

// What a call that takes a device context first is measured with.
template <class Function>
class CMeasured;

template <class... Args>
class CMeasured<BOOL(Args...)> {
    using Real = BOOL(WINAPI*)(HDC, Args...);

public:
    template <int PLACE>
    static BOOL WINAPI Call(HDC hdc, Args... args)
    {
        POINT ptFrom{0, 0};
        ::GetCurrentPositionEx(hdc, &ptFrom);
        const double fStart = Now();
        const BOOL bResult = s_pfnReal[PLACE](hdc, args...);
        CSlowCalls::Note(s_pszName[PLACE], Now() - fStart, hdc, ptFrom,
                         [&](HDC hdcAlone) { s_pfnReal[PLACE](hdcAlone, args...); });
        return bResult;
    }
    template <int PLACE>
    static void Put(const char* pszName)
    {
        ULONG_PTR* pEntry = FindImport(Engine(), pszName);
        ASSERT_NE(nullptr, pEntry) << pszName;
        s_pszName[PLACE] = pszName;
        s_pfnReal[PLACE] = reinterpret_cast<Real>(*pEntry);
        ASSERT_TRUE(SetImport(pEntry, reinterpret_cast<ULONG_PTR>(&Call<PLACE>)));
    }
    template <int PLACE>
    static void TakeBack()
    {
        SetImport(FindImport(Engine(), s_pszName[PLACE]),
                  reinterpret_cast<ULONG_PTR>(s_pfnReal[PLACE]));
    }

private:
    inline static const char* s_pszName[3]{};
    inline static Real s_pfnReal[3]{};
};

using End = CMeasured<BOOL(int, int)>;
using Box = CMeasured<BOOL(int, int, int, int)>;
using RoundBox = CMeasured<BOOL(int, int, int, int, int, int)>;
using Part = CMeasured<BOOL(int, int, int, int, int, int, int, int)>;
using Points = CMeasured<BOOL(const POINT*, int)>;

class CMeasure {
public:
    CMeasure()
    {
        Box::Put<0>("Ellipse");
        Box::Put<1>("Rectangle");
        RoundBox::Put<0>("RoundRect");
        Part::Put<0>("Arc");
        Part::Put<1>("Pie");
        Part::Put<2>("Chord");
        Points::Put<0>("Polygon");
        End::Put<0>("LineTo");
    }
    ~CMeasure()
    {
        Box::TakeBack<0>();
        Box::TakeBack<1>();
        RoundBox::TakeBack<0>();
        Part::TakeBack<0>();
        Part::TakeBack<1>();
        Part::TakeBack<2>();
        Points::TakeBack<0>();
        End::TakeBack<0>();
    }
    CMeasure(const CMeasure&) = delete;
    CMeasure& operator=(const CMeasure&) = delete;
};

// Drawings with numbers of every size, most of them such as drawings have.
class CChance {
public:
    explicit CChance(unsigned nSeed) : m_engine(nSeed) {}

    std::string Elements(int nCount)
    {
        std::string text;
        for (int n = 0; n < nCount; ++n) text += Element();
        return text;
    }
    LONG Side() { return static_cast<LONG>(Below(3) ? SIDE : 1 + Magnitude()); }

private:
    // Over more rows the system takes seconds for a polygon or a slanted line, and a run minutes.
    static constexpr unsigned MOST_ROWS = 0xFFFF;

    unsigned Below(unsigned n) { return m_engine() % n; }
    unsigned Magnitude() { return (m_engine() >> 1) >> Below(31); } // of every number of bits
    std::string Number(unsigned nMost)
    {
        if (Below(3)) return std::to_string(Below(SIDE));
        return (Below(2) ? "-" : "") + std::to_string(Magnitude() & nMost);
    }
    std::string Numbers(int nCount, unsigned nMost = ~0U)
    {
        std::string text;
        for (int n = 0; n < nCount; ++n) text += (n ? " " : "") + Number(nMost);
        return text;
    }
    std::string Style()
    {
        static constexpr const char* fills[] = {"0000", "0001", "0001", "0003", "0005"};
        char sz[16];
        std::snprintf(sz, sizeof sz, "0x%x", Below(3) ? Below(8) : Below(65536));
        return std::string(sz) + fills[Below(5)];
    }
    std::string Look()
    {
        static constexpr const char* flags[] = {"0x0", "0x0", "0x1000", "0x8000", "0x30000"};
        return " style=\"" + Style() + "\" dr=\"" + std::to_string(Below(38)) + "\" lnstyle=\"" +
               std::to_string(Below(2) ? 0 : Below(7)) + "\" lnwid=\"" +
               std::to_string(Below(20) ? Below(5) : Magnitude()) + "\" fg=\"0xff8800\" flag=\"" +
               flags[Below(5)] + "\"";
    }
    std::string Shape()
    {
        static constexpr const char* names[] = {"text",    "rect",     "chord",   "pie",
                                                "rndrect", "arc",      "ellipse", "circle",
                                                "line",    "polyline", "polygon"};
        static constexpr int numbers[] = {4, 4, 8, 8, 6, 8, 4, 3, 4, 10, 10};
        const unsigned n = Below(11);
        const std::string crd =
            (n >= 9 ? "5 " : "") + Numbers(numbers[n], n >= 8 ? MOST_ROWS : ~0U);
        return std::string("<") + names[n] + Look() + " crd=\"" + crd + "\">Abc</" + names[n] + ">";
    }
    std::string Element()
    {
        static constexpr const char* types[] = {"vert",         "vert3d",     "horz",  "horz3d",
                                                "round",        "Arc",        "pie",   "clock",
                                                "roundUpgrade", "pieUpgrade", "sector"};
        static constexpr int numbers[] = {4, 4, 4, 4, 7, 9, 9, 7, 7, 9, 7};
        switch (Below(12)) {
        case 0: {
            const unsigned n = Below(11);
            return std::string("<meter upin=\"1\" mtype=\"") + types[n] + "\" crd=\"" +
                   Numbers(numbers[n]) + "\">" + (Below(2) ? Shape() : "") + "</meter>";
        }
        case 1:
            return "<drawrgn style=\"" + Style() + "\" crd=\"" + Numbers(4) + "\"/>";
        default:
            return Shape();
        }
    }

    std::mt19937 m_engine;
};

} // namespace

// QEL_DRAWINGS=N draws N of them, QEL_FIRST=N begins with another.
TEST_F(HeldUp, ADrawingOfAHundredElementsTakesNoLongerThanTheSystemsOwnSlowCalls)
{
    const char* pszCount = std::getenv("QEL_DRAWINGS");
    const char* pszFirst = std::getenv("QEL_FIRST");
    const auto nFirst = static_cast<unsigned>(pszFirst ? std::atoi(pszFirst) : 1);
    const auto nCount = static_cast<unsigned>(pszCount ? std::atoi(pszCount) : 4);
    double fWorst = 0;
    unsigned nWorst = 0;
    int nSlow = 0;
    for (unsigned n = nFirst; n < nFirst + nCount; ++n) {
        CChance chance(n);
        const SIZE size{chance.Side(), chance.Side()};
        Open(chance.Elements(100), size);
        const double fStart = Now();
        Draw(m_drawn.Dc());
        double fTook = Now() - fStart;
        if (fTook > BAR) { // once more, to see whose time it is
            const CMeasure measure;
            CSlowCalls::Restart();
            const double fAgain = Now();
            Draw(m_drawn.Dc());
            fTook = Now() - fAgain - CSlowCalls::Own();
            ++nSlow;
        }
        if (fTook > fWorst) {
            fWorst = fTook;
            nWorst = n;
        }
        EXPECT_GT(GUARD * BAR, fTook)
            << "drawing " << n << ", slowest call " << CSlowCalls::Worst();
    }
    if (pszCount)
        std::printf(
            "%u drawings, %d above the bar by slow calls; the longest without them: %.2f s (%u)\n",
            nCount, nSlow, fWorst, nWorst);
}
