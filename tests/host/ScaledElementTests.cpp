// Each element, style and keep mode at another pixel scale against the plain picture enlarged: what
// stands upright to the pixel, other outlines nearly.
#include "tests/support/Scaled.h"

#include <cmath>
#include <map>
#include <set>

namespace {

constexpr int SIDE = 30;
// Both are whole numbers of units, and as different as can be.
constexpr SIZE STRETCHED{2 * SIDE, 3 * SIDE};

// An element of each type with place for more attributes, and how near it is to the plain one.
struct Sample {
    DWORD nType;
    const char* pszBegin;
    const char* pszEnd;
    Near nNear;
};

const Sample g_shapes[] = {
    {QEL_TYPE_RECT, "<rect crd='6 8 20 22'", "/>", Near::Blocks},
    {QEL_TYPE_CHORD, "<chord crd='4 6 26 20 30 4 0 18'", "/>", Near::Outlines},
    {QEL_TYPE_PIE, "<pie crd='4 6 26 20 30 4 0 18'", "/>", Near::Outlines},
    {QEL_TYPE_ROUNDRECT, "<rndrect crd='4 6 26 20 8 6'", "/>", Near::Outlines},
    {QEL_TYPE_ARC, "<arc crd='4 6 26 20 30 4 0 18'", "/>", Near::Outlines},
    {QEL_TYPE_ELLIPSE, "<ellipse crd='4 6 26 20'", "/>", Near::Outlines},
    {QEL_TYPE_CIRCLE, "<circle crd='14 16 10'", "/>", Near::Outlines},
    {QEL_TYPE_LINE, "<line crd='4 8 26 8'", "/>", Near::Blocks},
    {QEL_TYPE_LINE, "<line crd='4 6 26 20'", "/>", Near::Outlines},
    {QEL_TYPE_POLYLINE, "<polyline crd='4 5 24 5 24 15 9 15 9 25'", "/>", Near::Blocks},
    {QEL_TYPE_POLYLINE, "<polyline crd='4 5 24 12 12 25'", "/>", Near::Outlines},
    {QEL_TYPE_POLYGON, "<polygon crd='4 5 24 5 24 15 14 15 14 25 4 25'", "/>", Near::Blocks},
    {QEL_TYPE_POLYGON, "<polygon crd='4 5 24 12 12 25'", "/>", Near::Outlines}};

const Sample g_others[] = {
    {QEL_TYPE_TEXT, "<text fg='0x3366cc' crd='2 4 28 20'", ">AB</text>", Near::Reckoned},
    {QEL_TYPE_GROUP, "<g", "><rect crd='6 8 20 22' lnwid='1' style='0x1'/></g>", Near::Blocks},
    {QEL_TYPE_STATUS, "<status", "><rect crd='6 8 20 22' lnwid='1' style='0x1'/></status>",
     Near::Blocks},
    {QEL_TYPE_FRAME, "<frame", "><rect crd='6 8 20 22' lnwid='1' style='0x1'/></frame>",
     Near::Blocks},
    {QEL_TYPE_PATTERN, "<pattern", "><rect crd='6 8 20 22' lnwid='1' style='0x1'/></pattern>",
     Near::Blocks},
    {QEL_TYPE_SCALE, "<scale sctype='vrtleft' crd='6 4 18 24' pin='1'", "/>", Near::Blocks},
    {QEL_TYPE_SCALE, "<scale sctype='round' crd='15 15 10 8 2' pin='1'", "/>", Near::Outlines},
    {QEL_TYPE_DRAWRGN, "<drawrgn crd='6 8 20 22' style='0x3'", "/>", Near::Blocks},
    {QEL_TYPE_METER, "<meter mtype='vert' usc='1' set='labels=0 ticks=5' value='4' crd='4 5 24 25'",
     "><rect crd='4 5 24 25' lnwid='0' style='0x1'/></meter>", Near::Blocks},
    {QEL_TYPE_METER,
     "<meter mtype='round' upin='1' usc='0' set='labels=0' value='4' crd='15 15 12 1 1 29 29'",
     "><circle crd='15 15 12' style='0x1' lnwid='0'/></meter>", Near::Outlines}};

bool HasArea(const Sample& sample)
{
    return sample.nType != QEL_TYPE_ARC && sample.nType != QEL_TYPE_LINE &&
           sample.nType != QEL_TYPE_POLYLINE;
}

std::string With(const Sample& sample, const std::string& more)
{
    return sample.pszBegin + (" " + more) + sample.pszEnd;
}

std::string Hex(unsigned n)
{
    char sz[16];
    std::snprintf(sz, sizeof sz, "0x%x", n);
    return sz;
}

std::string Style(unsigned nStyle, int nPen, int nWidth, int nDraft = DRAFT_SOLID_BACK)
{
    return "clr='0x3366cc' fg='0x99ccee' bg='0x228844' style='" + Hex(nStyle) + "' lnstyle='" +
           std::to_string(nPen) + "' lnwid='" + std::to_string(nWidth) + "' dr='" +
           std::to_string(nDraft) + "'";
}

// All of the keep modes, and none.
std::vector<unsigned> KeepModes()
{
    std::vector<unsigned> modes{QEL_KEEP_NONE, QEL_KEEP_ALL};
    for (const unsigned nAnchor : {QEL_KEEP_LEFT, QEL_KEEP_TOP, QEL_KEEP_RIGHT, QEL_KEEP_BOTTOM})
        for (const unsigned nAlong :
             {QEL_ALONG_KEEP_BORDERS, QEL_ALONG_KEEP_LENGTH, QEL_ALONG_AS_QEL})
            for (const unsigned nAway :
                 {QEL_AWAY_AS_QEL, QEL_AWAY_AS_GRAPH, QEL_AWAY_KEEP_LENGTH, QEL_AWAY_KEEP_BORDER})
                modes.push_back(nAnchor | nAlong | nAway);
    return modes;
}

constexpr COLORREF PEN = 0x3366CC;

int PenPixels(const CPixels& pixels)
{
    return pixels.Counts()[PEN];
}

// The part of an outline that its dashes leave.
double Dashed(const CPixels& dashes, const CPixels& outline)
{
    return static_cast<double>(PenPixels(dashes)) / PenPixels(outline);
}

// Both are within two pixels of the geometry.
bool LiesOn(const CPixels& outline, const CPixels& dashes)
{
    constexpr int REACH = 2;
    for (int y = 0; y < dashes.Height(); ++y)
        for (int x = 0; x < dashes.Width(); ++x)
            if (dashes.At(x, y) == PEN &&
                !outline.Has(PEN, x - REACH, y - REACH, x + REACH, y + REACH))
                return false;
    return true;
}

std::string UnlikeDashes(const Sample& sample, int nPen)
{
    const std::string body = With(sample, Style(0x1, nPen, 1));
    CScaled broken(body, SIDE, STRETCHED);
    CScaled whole(With(sample, Style(0x1, PS_SOLID, 1)), SIDE, STRETCHED);
    const double fPlain = Dashed(broken.Draw(1), whole.Draw(1));
    EXPECT_GT(fPlain, 0) << body;
    for (const int nTimes : SCALES) {
        const CPixels dashes = broken.Draw(nTimes);
        const CPixels outline = whole.Draw(nTimes);
        const std::string at = "at " + std::to_string(nTimes) + " times ";
        if (!LiesOn(outline, dashes)) return at + "off the outline: " + body;
        // Some systems make a broken pen up to half a unit wider along curves.
        const double fMore = Dashed(dashes, outline) / fPlain;
        if (fMore < 0.75 || fMore > 1.5) return at + std::to_string(fMore) + " as much: " + body;
    }
    return "";
}

// Of the pixels that have no outline around them.
std::string UnlikeCells(const CPixels& plain, const CPixels& large)
{
    constexpr int EDGE = 3;
    const int t = large.Width() / plain.Width();
    for (int y = 0; y < large.Height(); ++y)
        for (int x = 0; x < large.Width(); ++x) {
            const int nX = x / t, nY = y / t;
            if (large.At(x, y) == plain.At(nX, nY)) continue;
            if (!plain.Has(PEN, nX - EDGE, nY - EDGE, nX + EDGE, nY + EDGE))
                return PlaceText(t, x, y, large.At(x, y));
        }
    return "";
}

std::string UnlikeCells(const std::string& body)
{
    CScaled scaled(body, SIDE, STRETCHED);
    const CPixels plain = scaled.Draw(1);
    for (const int nTimes : SCALES) {
        const std::string unlike = UnlikeCells(plain, scaled.Draw(nTimes));
        if (!unlike.empty()) return unlike + ": " + body;
    }
    return "";
}

} // namespace

TEST(ScaledElements, HaveASampleOfEachType)
{
    std::set<DWORD> types;
    for (const Sample& sample : g_shapes) types.insert(sample.nType);
    for (const Sample& sample : g_others) types.insert(sample.nType);
    for (DWORD n = QEL_TYPE_TEXT; n <= QEL_TYPE_METER; ++n) {
        const bool bNone = n == QEL_TYPE_PATH || n == QEL_TYPE_DEFS || n == QEL_TYPE_USE;
        EXPECT_EQ(bNone, !types.contains(n)) << n;
    }
}

TEST(ScaledElements, ArePlainOnesEnlarged)
{
    for (const Sample& sample : g_others)
        EXPECT_EQ("", UnlikePlain(With(sample, ""), sample.nNear, SIDE, STRETCHED));
}

TEST(ScaledElements, FillStylesArePlainOnesEnlarged)
{
    for (const Sample& sample : g_shapes)
        for (const unsigned nStyle : {0x0U, 0x1U, 0x3U, 0x5U, 0x40003U, 0x10005U})
            EXPECT_EQ("", UnlikePlain(With(sample, Style(nStyle, PS_SOLID, 1)), sample.nNear, SIDE,
                                      STRETCHED));
}

TEST(ScaledElements, PenWidthsArePlainOnesEnlarged)
{
    for (const Sample& sample : g_shapes)
        for (const int nWidth : {1, 2, 3, 4, 5})
            for (const int nPen : {PS_SOLID, PS_INSIDEFRAME}) {
                // Corners of wider pens are round, and what they leave of a pointed one is small.
                const Near nNear = nWidth > 1 ? Near::Reckoned : sample.nNear;
                const std::string body = With(sample, Style(0x1, nPen, nWidth));
                EXPECT_EQ("", UnlikePlain(body, nNear, SIDE, STRETCHED));
            }
}

TEST(ScaledElements, PenStylesArePlainOnesEnlarged)
{
    for (const Sample& sample : g_shapes)
        for (const int nPen : {PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT, PS_NULL}) {
            if (nPen != PS_NULL && sample.nNear != Near::Blocks) continue;
            if (nPen == PS_NULL && !HasArea(sample)) continue; // nothing is drawn
            const std::string body = With(sample, Style(0x1, nPen, 1));
            EXPECT_EQ("", UnlikePlain(body, sample.nNear, SIDE, STRETCHED));
        }
}

// Of curves the system reckons the lengths.
TEST(ScaledElements, DashesLieOnTheOutlineAndCoverAsMuchOfIt)
{
    for (const Sample& sample : g_shapes)
        for (const int nPen : {PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT})
            EXPECT_EQ("", UnlikeDashes(sample, nPen));
}

namespace {

constexpr int DASHED_SIDE = 100;

struct Place {
    double x;
    double y;
};

// Whether a dash or a gap of a pen lies around a length, in pixels, and how far its nearer end is
// away.
bool IsInDash(int nPen, double fLength, double* pfWithin)
{
    static const std::map<int, std::vector<int>> LENGTHS{{PS_DASH, {18, 6}},
                                                         {PS_DOT, {3, 3}},
                                                         {PS_DASHDOT, {9, 6, 3, 6}},
                                                         {PS_DASHDOTDOT, {9, 3, 3, 3, 3, 3}}};
    const std::vector<int>& lengths = LENGTHS.at(nPen);
    double fBegin = 0;
    for (std::size_t n = 0;; n = (n + 1) % lengths.size()) {
        const double fEnd = fBegin + lengths[n];
        *pfWithin = std::min(fLength - fBegin, fEnd - fLength);
        if (fLength < fEnd) return n % 2 == 0;
        fBegin = fEnd;
    }
}

// "" when the middle of a side is as its pen has it at each length from its begin on; but for what
// the system may round at the end of a dash, and for what the next sides cover of it. fBefore: how
// far before its first point it begins.
std::string UnlikeSide(const CPixels& picture, int nTimes, int nPen, Place from, Place to,
                       double fBefore, double fCorner)
{
    constexpr double ROUNDED = 3; // units: of the begin, of the length and of the corners
    const double fLength = std::hypot(to.x - from.x, to.y - from.y);
    for (double f = fCorner; f < fLength - fCorner; f += 0.5) {
        double fWithin = 0;
        const bool bInDash = IsInDash(nPen, (f + fBefore) / nTimes, &fWithin);
        if (fWithin * nTimes <= ROUNDED) continue;
        const int nX = static_cast<int>(std::floor(from.x + (to.x - from.x) * f / fLength));
        const int nY = static_cast<int>(std::floor(from.y + (to.y - from.y) * f / fLength));
        const int nBeside = bInDash ? 1 : 0; // a narrow line may go beside its middle
        if (picture.Has(PEN, nX - nBeside, nY - nBeside, nX + nBeside, nY + nBeside) != bInDash)
            return PlaceText(nTimes, nX, nY, picture.At(nX, nY)) + " after " +
                   std::to_string(f / nTimes) + " pixels";
    }
    return "";
}

// A figure of lines from point to point. The first one begins at the edge of its pixel, the others
// in the middle of theirs. Around a polygon the pattern runs on; else each line begins with a dash.
std::string UnlikeDashedSides(const char* pszTag, std::vector<POINT> points, int nPen)
{
    const bool bPolygon = pszTag == std::string("polygon");
    std::string crd;
    for (const POINT& pt : points)
        crd += (crd.empty() ? "" : " ") + std::to_string(pt.x) + " " + std::to_string(pt.y);
    const std::string body =
        std::string("<") + pszTag + " crd='" + crd + "' " + Style(0x0, nPen, 1) + "/>";
    if (bPolygon) points.push_back(points[0]);
    CScaled scaled(body, DASHED_SIDE);
    for (const int t : SCALES) {
        const CPixels picture = scaled.Draw(t);
        double fBefore = 0;
        for (std::size_t n = 1; n < points.size(); ++n) {
            const auto middle = [&](POINT pt) { return Place{(pt.x + 0.5) * t, (pt.y + 0.5) * t}; };
            const Place from = middle(points[n - 1]), to = middle(points[n]);
            const double fX = std::fabs(to.x - from.x), fY = std::fabs(to.y - from.y);
            const double fLength = std::hypot(fX, fY);
            if (n == 1 || !bPolygon) fBefore = n == 1 ? t / 2 * fLength / std::max(fX, fY) : 0;
            const double fCorner = points.size() > 2 ? 3 * t : t;
            const std::string unlike = UnlikeSide(picture, t, nPen, from, to, fBefore, fCorner);
            if (!unlike.empty()) return unlike + ": " + body;
            fBefore += fLength;
        }
    }
    return "";
}

} // namespace

// Along a slanted line the plain pens of the system count pixels of the longer axis, so that their
// dashes are up to half as long again. At other scales they are as long as upright ones.
TEST(ScaledElements, DashesOfSlantedLinesAreMeasuredAlongThem)
{
    for (const int nPen : {PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT}) {
        for (const POINT ptEnd : {POINT{95, 95}, POINT{95, 40}, POINT{95, 8}, POINT{30, 90}})
            EXPECT_EQ("", UnlikeDashedSides("line", {{5, 5}, ptEnd}, nPen));
        EXPECT_EQ("", UnlikeDashedSides("line", {{90, 80}, {12, 30}}, nPen)); // the other way
        EXPECT_EQ("", UnlikeDashedSides("polyline", {{5, 5}, {50, 40}, {30, 90}}, nPen));
        EXPECT_EQ("", UnlikeDashedSides("polygon", {{5, 5}, {90, 20}, {30, 90}}, nPen));
    }
}

TEST(ScaledElements, BrokenPensOfMorePixelsAreWhole)
{
    for (const Sample& sample : g_shapes)
        for (const int nPen : {PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT}) {
            const std::string body = With(sample, Style(0x1, nPen, 2));
            EXPECT_EQ("", UnlikePlain(body, Near::Outlines, SIDE, STRETCHED));
        }
}

TEST(ScaledElements, HatchesOfUprightFiguresArePlainOnesEnlarged)
{
    for (const Sample& sample : g_shapes)
        for (int nDraft = 0; nDraft < DRAFT_GRADIENT; ++nDraft) {
            if (sample.nNear != Near::Blocks) continue;
            const std::string body = With(sample, Style(0x1, PS_SOLID, 1, nDraft));
            EXPECT_EQ("", UnlikePlain(body, Near::Blocks, SIDE, STRETCHED));
        }
}

TEST(ScaledElements, CellsOfHatchesArePlainOnesEnlargedInAllFigures)
{
    for (const Sample& sample : g_shapes)
        for (int nDraft = 0; nDraft < DRAFT_GRADIENT; ++nDraft)
            EXPECT_EQ("", UnlikeCells(With(sample, Style(0x1, PS_SOLID, 1, nDraft))));
}

TEST(ScaledElements, KeepModesKeepPixelsOfTheScale)
{
    for (const unsigned nKeep : KeepModes()) {
        const std::string flag = "flag='" + Hex(nKeep) + "' ";
        for (const Sample& sample : g_shapes)
            EXPECT_EQ("", UnlikePlain(With(sample, flag + Style(0x1, PS_SOLID, 1)), sample.nNear,
                                      SIDE, STRETCHED));
        for (const Sample& sample : g_others)
            EXPECT_EQ("", UnlikePlain(With(sample, flag), sample.nNear, SIDE, STRETCHED));
    }
}

TEST(ScaledElements, PressedOnesAreShiftedByPixelsOfTheScale)
{
    for (const Sample& sample : g_shapes)
        EXPECT_EQ("", UnlikePlain(With(sample, "flag='0x4000' " + Style(0x1, PS_SOLID, 1)),
                                  sample.nNear, SIDE, STRETCHED, QEL_DRAW_FULL | QEL_DRAW_PRESSED));
}
