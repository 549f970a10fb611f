// Meters and scales of all types and looks at another pixel scale against the plain picture
// enlarged.
#include "tests/support/Scaled.h"

#include <cmath>
#include <cstring>
#include <set>

namespace {

constexpr int SIDE = 240;

// A type with the settings that it is tried with, beside the common ones.
struct Looks {
    const char* pszType;
    const char* pszCrd;
    std::vector<std::string> sets;
};

constexpr char COMMON[] = "scale-color=0xff label-color=0 "
                          "low-color=0x8080 high-color=0x808000 max=100 scale-end=100 ";
// Lengths of which the parts that are asked for are whole pixels.
constexpr char DIAL[] = "120 120 111 4 4 236 236";
constexpr char ARC[] = "120 120 111 4 4 236 236 45 315";
constexpr char BAR[] = "15 10 116 110";
constexpr char BODY[] = "15 10 121 115";
const std::string ALARM = "alarm=1 low-limit=25 high-limit=75";
// Inside of the hub and around the cylinder nothing else is seen, which has less than a pixel.
const std::string HUB = "face-color=0xff0000 ";
const std::string CYLINDER = "frame-option=1 face-color=0xffffff ";

const std::vector<std::string> g_bars{
    "", "ticks=20 major-every=4", "reverse=1", "use-base=1 base=50", "fill-only=1", "min=-100"};
const std::vector<std::string> g_bodies{
    "frame=1", CYLINDER + "frame=1",  "reverse=1",
    CYLINDER,  "frame=1 fill-only=1", "frame=1 use-base=1 base=20"};

const Looks g_meters[] = {
    {"vert", BAR, g_bars},
    {"horz", BAR, g_bars},
    {"vert3d", BODY, g_bodies},
    {"horz3d", BODY, g_bodies},
    {"round", DIAL, {"", ALARM, "full-circle=1", "angle=30 ticks=20", "reverse=1"}},
    {"Arc", ARC, {HUB, HUB + ALARM, HUB + "ticks=20 major-every=4", HUB + "reverse=1"}},
    {"pie", ARC, {"", "ticks=20", "reverse=1"}},
    {"pieUpgrade", ARC, {"", "axis-style=1", "axis-style=2", "axis-style=3", "reverse=1"}},
    {"clock", DIAL, {"", "axis-style=1", "axis-style=2", "axis-style=3"}},
    {"roundUpgrade",
     DIAL,
     {"pin-style=0", "pin-style=1 axis-style=1", "pin-style=2 axis-style=2",
      "pin-style=3 axis-style=3", "pin-style=4", ALARM, "full-circle=1 angle=30"}},
    {"sector", DIAL, {"sectors=1", "sectors=3", "sectors=7"}}};

bool IsBar(const Looks& looks)
{
    return looks.pszCrd == BAR || looks.pszCrd == BODY;
}

// With the colours that a set does not tell itself.
std::string Settings(const std::string& set)
{
    std::string settings = COMMON + set;
    if (set.find("pin-color") == std::string::npos) settings += " pin-color=0xff0000";
    if (set.find("face-color") == std::string::npos) settings += " face-color=0xc0c0c0";
    return settings + " labels=0";
}

// Clocks have no hands, which would show the time of the run, and charts none of their own.
std::string Meter(const Looks& looks, const std::string& set)
{
    const std::string type = looks.pszType;
    const std::string pin = type == "clock" || type == "sector" ? "0" : "1";
    // Of which a bar has a whole number of pixels, and which is none of a tick.
    const std::string value = IsBar(looks) ? "60" : "64";
    const std::string face = IsBar(looks) ? "<rect crd='15 10 75 100' lnwid='0' style='0x1'/>" : "";
    // The system leaves gaps between the sectors of a chart, which have its outlines' colour then.
    const std::string below =
        type == "sector" ? "<circle crd='120 120 110' style='0x1' dr='1' fg='0x0' lnwid='0'/>" : "";
    return below + "<meter mtid='0' usc='1' upin='" + pin + "' mtype='" + type + "' crd='" +
           looks.pszCrd + "' value='" + value + "' set='" + Settings(set) + "'>" + face +
           "</meter>";
}

// With a hatch in the bars, and values in the sectors.
std::string UnlikeMeter(const std::string& body, Near nNear, int nDraft = DRAFT_SOLID_TEXT)
{
    CScaled scaled(body, SIDE);
    QELSetParam(scaled.Engine(), QEL_PARAM_DRAFT, nDraft);
    QELSetParam(scaled.Engine(), QEL_PARAM_DRAFT_FORE, 0x20C0C0);
    QELSetParam(scaled.Engine(), QEL_PARAM_DRAFT_BACK, 0xC020C0);
    for (DWORD n = 1; n <= 7; ++n) QELSetScaleParam(scaled.Engine(), n, QEL_SEL_VALUE, 10 + 3 * n);
    const CPixels plain = scaled.Render(1);
    EXPECT_GT(plain.Counts().size(), 1U) << body;
    for (const int nTimes : SCALES) {
        const CPixels large = scaled.Render(nTimes);
        std::string unlike = Unlike(plain, large, ReachOf(nNear, nTimes));
        if (unlike.empty()) unlike = UnlikeShares(plain, large);
        if (!unlike.empty()) return unlike + ": " + body;
    }
    return "";
}

} // namespace

TEST(ScaledMeters, HaveLooksOfEachType)
{
    std::set<std::string> types;
    for (const Looks& looks : g_meters) types.insert(looks.pszType);
    EXPECT_EQ(11U, types.size());
}

TEST(ScaledMeters, BarsArePlainOnesEnlarged)
{
    for (const Looks& looks : g_meters)
        for (const std::string& set : looks.sets)
            for (const int nDraft : {int{DRAFT_SOLID_TEXT}, 6}) {
                if (looks.pszCrd != BAR) continue;
                EXPECT_EQ("", UnlikeMeter(Meter(looks, set), Near::Blocks, nDraft));
            }
}

TEST(ScaledMeters, OthersAreNearThePlainOnesEnlarged)
{
    for (const Looks& looks : g_meters)
        for (const std::string& set : looks.sets)
            if (looks.pszCrd != BAR) {
                EXPECT_EQ("", UnlikeMeter(Meter(looks, set), Near::Reckoned));
            }
}

namespace {

constexpr COLORREF LOW_ZONE = 0x8080;
constexpr COLORREF HIGH_ZONE = 0x808000;
constexpr COLORREF GREEN_BAND = 0xFF00;
constexpr double DEGREE = 3.14159265358979323846 / 180;
constexpr int CENTRE = 120; // of a band of even width, which goes along the edge of pixels

// How far a point is past a ray out of the middle of a dial; angles grow clockwise from straight
// down.
double Past(double fX, double fY, double fAngle)
{
    return -(fX * std::cos(fAngle * DEGREE) + fY * std::sin(fAngle * DEGREE));
}

// "" when the pixels of a zone end at both rays, within so many units: none is farther, and some
// are as far at each side of the band.
std::string UnlikeZone(const CPixels& picture, COLORREF clr, double fFrom, double fTo, double fOff)
{
    const int t = picture.Width() / SIDE;
    double fFirst[2] = {1e9, 1e9}; // of the inner half and of the outer one
    double fLast[2] = {1e9, 1e9};
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x) {
            if (picture.At(x, y) != clr) continue;
            const double fX = x + 0.5 - CENTRE * t;
            const double fY = y + 0.5 - CENTRE * t;
            const int nHalf = std::hypot(fX, fY) > 105 * t ? 1 : 0;
            fFirst[nHalf] = std::min(fFirst[nHalf], Past(fX, fY, fFrom));
            fLast[nHalf] = std::min(fLast[nHalf], -Past(fX, fY, fTo));
        }
    std::string unlike;
    for (const double f : {fFirst[0], fFirst[1], fLast[0], fLast[1]})
        if (std::fabs(f) > fOff) unlike += std::to_string(f) + " ";
    return unlike;
}

} // namespace

TEST(ScaledMeters, ZonesOfGaugesEndSquareToTheirBand)
{
    const std::string body =
        "<meter mtid='0' usc='0' upin='0' mtype='roundUpgrade' value='64' crd='" +
        std::string(DIAL) + "' set='" + Settings(ALARM) + "'/>";
    CScaled scaled(body, SIDE);
    for (const int nTimes : SCALES) {
        const CPixels picture = scaled.Render(nTimes);
        EXPECT_EQ("", UnlikeZone(picture, LOW_ZONE, 30, 105, 2)) << nTimes;
        EXPECT_EQ("", UnlikeZone(picture, GREEN_BAND, 105, 255, 2)) << nTimes;
        EXPECT_EQ("", UnlikeZone(picture, HIGH_ZONE, 255, 330, 2)) << nTimes;
    }
}

// ---- numbers ----

namespace {

struct Number {
    int nX;
    int nY;
    std::string text;
    int nWidth; // of the cells of its font
    int nHeight;
};

// The numbers that are drawn at a scale, in their order.
std::vector<Number> NumbersAt(const CTextHost& host, int nTimes)
{
    std::vector<Number> numbers;
    int nWidth = 0, nHeight = 0;
    EXPECT_EQ(1, QELSetPixelScale(host, static_cast<DWORD>(100 * nTimes)));
    for (const std::string& line : host.Calls({"CreateFont", "Text"})) {
        int nX = 0, nY = 0;
        std::sscanf(line.c_str(), "CreateFont width %d height %d", &nWidth, &nHeight);
        if (std::sscanf(line.c_str(), "Text %d,%d", &nX, &nY) == 2)
            numbers.push_back({nX, nY, line.substr(line.find('"')), nWidth, nHeight});
    }
    return numbers;
}

// How far the system makes digits wider than so many times those of the smaller font.
int WidthBeyond(const Number& plain, const Number& large, int nTimes)
{
    const CTestBitmap bitmap(1, 1);
    int nWidths[2] = {};
    for (const Number* p : {&plain, &large}) {
        const CTestSelect font(bitmap.Dc(),
                               ::CreateFontA(p->nHeight, p->nWidth, 0, 0, FW_DONTCARE, FALSE, FALSE,
                                             FALSE, 255, 0, 0, 0, DEFAULT_PITCH, nullptr),
                               true);
        SIZE size{};
        const std::string digits = p->text.substr(1, p->text.size() - 2);
        ::GetTextExtentPoint32A(bitmap.Dc(), digits.c_str(), static_cast<int>(digits.size()),
                                &size);
        nWidths[p == &large] = size.cx;
    }
    return std::abs(nWidths[1] - nTimes * nWidths[0]);
}

// "" when each number stands where the plain one does, and is as many times as large. nCuts: how
// often a fraction is cut off on the way to its place, of a pixel there and of a unit here.
// nCellBound: below which the cells differ, 1 where they are whole pixels.
std::string UnlikeNumbers(const std::vector<Number>& plain, const std::vector<Number>& large,
                          int nTimes, int nCuts, int nCellBound)
{
    if (plain.size() != large.size()) return "other numbers";
    for (std::size_t n = 0; n < plain.size(); ++n) {
        const Number& a = plain[n];
        const Number& b = large[n];
        const int nBound = nCuts * (nTimes + 1);
        if (a.text != b.text) return "another number " + b.text;
        if (std::abs(b.nWidth - a.nWidth * nTimes) >= nCellBound ||
            std::abs(b.nHeight - a.nHeight * nTimes) >= nCellBound)
            return "another cell of " + b.text;
        const int nBeside = std::abs(b.nX - a.nX * nTimes) - WidthBeyond(a, b, nTimes);
        const int nAbove = std::abs(b.nY - a.nY * nTimes);
        if (nBeside >= nBound || nAbove >= nBound)
            return b.text + " is " + std::to_string(nBeside) + "," + std::to_string(nAbove) +
                   " units off";
    }
    return "";
}

} // namespace

TEST(ScaledMeters, NumbersStandWhereThePlainOnesDoAndAreAsManyTimesAsLarge)
{
    for (const Looks& looks : g_meters)
        for (const char* pszSet : {"", "font=0 ticks=8 major-every=2", "font=4", "reverse=1",
                                   "decimals=1 min=-50", "angle=20"}) {
            // A sector has no numbers but those of its values, and reads out none without them.
            if (std::strcmp(looks.pszType, "sector") == 0) continue;
            std::string body = Meter(looks, pszSet);
            body.replace(body.find("labels=0"), 8, "labels=1");
            CTextHost host(body, SIDE);
            const std::vector<Number> plain = NumbersAt(host, 1);
            EXPECT_LT(2U, plain.size()) << body;
            for (const int nTimes : SCALES) {
                host.Place({0, 0, SIDE * nTimes, SIDE * nTimes});
                // The place of a tick and half of the text; of dials their radius as well, and of a
                // clock the height of its font, which is a part of the radius.
                const bool bClock = std::strcmp(looks.pszType, "clock") == 0;
                const int nCuts = IsBar(looks) ? 2 : 3 + bClock;
                EXPECT_EQ("", UnlikeNumbers(plain, NumbersAt(host, nTimes), nTimes, nCuts,
                                            bClock ? nTimes : 1))
                    << nTimes << " times: " << body;
            }
            host.Place({0, 0, SIDE, SIDE});
        }
}
