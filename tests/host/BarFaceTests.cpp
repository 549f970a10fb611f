// 3D bars on faces of every form and on every kind of surface, as a host sees them: a partial
// redraw after a change of value leaves no pixel of the old body, and what may stay is that and no
// more.
#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int SIDE = 120; // pixels and units of the drawings here
constexpr RECT QEL{0, 0, SIDE, SIDE};
constexpr int ROOM = 270; // pixels of the pictures: some surfaces enlarge
constexpr COLORREF GROUND = 0x203040, FACE = 0xC0D0E0, BAR = 0x00A000, LINE = 0x404040;
constexpr COLORREF FAR_LINE = 0x0000FF;

// A face, as the file has it, over or around the bar 30,10 to 80,110 (upright) or 10,40 to 110,90.
struct Face {
    const char* pszName;
    const char* pszUp;
    const char* pszWide;
};
constexpr Face g_faces[] = {
    {"ellipse", "<ellipse style='0x1' crd='30 10 80 110'/>",
     "<ellipse style='0x1' crd='10 40 110 90'/>"},
    {"round corners", "<rndrect style='0x1' lnwid='3' crd='25 5 85 115 40 40'/>",
     "<rndrect style='0x1' lnwid='3' crd='5 35 115 95 40 40'/>"},
    {"circle", "<circle style='0x1' lnwid='0' crd='55 60 40'/>",
     "<circle style='0x1' lnwid='0' crd='60 65 40'/>"},
    {"shorter than the bar", "<rect style='0x1' lnwid='0' crd='30 40 80 90'/>",
     "<rect style='0x1' lnwid='0' crd='40 40 90 90'/>"},
    {"outlined rectangle", "<rect style='0x1' crd='30 10 80 110'/>",
     "<rect style='0x1' crd='10 40 110 90'/>"},
    {"rectangle with a wide outline", "<rect style='0x1' lnwid='7' crd='30 10 80 110'/>",
     "<rect style='0x1' lnwid='7' crd='10 40 110 90'/>"},
    {"raised rectangle", "<rect style='0x40003' crd='30 10 80 110'/>",
     "<rect style='0x40003' crd='10 40 110 90'/>"},
    {"triangle", "<polygon style='0x1' crd='20 115 55 5 90 115'/>",
     "<polygon style='0x1' crd='5 35 115 65 5 95'/>"},
    {"two shapes with a gap",
     "<rect style='0x1' crd='30 10 80 50'/><g><ellipse style='0x1' crd='35 60 75 110'/></g>",
     "<rect style='0x1' crd='10 40 50 90'/><g><ellipse style='0x1' crd='60 45 110 85'/></g>"},
    {"segment", "<pie style='0x1' crd='20 5 90 115 90 100 20 100'/>",
     "<pie style='0x1' crd='5 30 115 100 100 95 20 95'/>"},
    {"larger than the bar", "<rect style='0x1' lnwid='0' crd='20 0 90 120'/>",
     "<rect style='0x1' lnwid='0' crd='0 30 120 100'/>"},
};

// What a host may have done to its device context.
struct Surface {
    const char* pszName;
    void (*pfnSetUp)(HDC);
};
void Enlarge(HDC hdc, int nTimes, int nPer)
{
    ::SetMapMode(hdc, MM_ANISOTROPIC);
    ::SetWindowExtEx(hdc, nPer, nPer, nullptr);
    ::SetViewportExtEx(hdc, nTimes, nTimes, nullptr);
}
const Surface g_surfaces[] = {
    {"plain", [](HDC) {}},
    {"moved viewport", [](HDC hdc) { ::SetViewportOrgEx(hdc, 31, 17, nullptr); }},
    {"moved beyond the edge", [](HDC hdc) { ::SetViewportOrgEx(hdc, -25, -40, nullptr); }},
    {"moved window", [](HDC hdc) { ::SetWindowOrgEx(hdc, -9, -23, nullptr); }},
    {"doubled",
     [](HDC hdc) {
         Enlarge(hdc, 2, 1);
         ::SetViewportOrgEx(hdc, 7, 3, nullptr);
     }},
    {"reduced", [](HDC hdc) { Enlarge(hdc, 3, 4); }},
    {"moved world",
     [](HDC hdc) {
         ::SetGraphicsMode(hdc, GM_ADVANCED);
         const XFORM move{1, 0, 0, 1, 20, 10};
         ::SetWorldTransform(hdc, &move);
     }},
    {"enlarged world",
     [](HDC hdc) {
         ::SetGraphicsMode(hdc, GM_ADVANCED);
         const XFORM grow{2, 0, 0, 2, 5, 5};
         ::SetWorldTransform(hdc, &grow);
     }},
};

class CBar { // an engine with one 3D bar
public:
    CBar(bool bUp, const std::string& face) : m_h(CreateQELEngine())
    {
        const std::string path = m_folder.Path("in.qel");
        char szGround[160];
        std::snprintf(szGround, sizeof szGround,
                      "<rect style='0x1' lnwid='0' bg='0x%lx' crd='0 0 120 120'/>", GROUND);
        const std::string side = std::to_string(SIDE);
        WriteBytes(path, "<qel width='" + side + "' height='" + side + "'>" + szGround +
                             "<meter mtype='" + (bUp ? "vert3d" : "horz3d") + "' crd='" +
                             (bUp ? "30 10 80 110" : "10 40 110 90") + "'>" + face +
                             "</meter></qel>");
        EXPECT_EQ(1, QELOpenFile(m_h, path.c_str()));
        EXPECT_EQ(1, QELSetQELRect(m_h, &QEL));
        const DWORD rows[][2] = {
            {QEL_SEL_MAX, 100},         {QEL_SEL_SHOW_FRAME, 1},       {QEL_SEL_SHOW_LABELS, 0},
            {QEL_SEL_FACE_COLOR, FACE}, {QEL_SEL_PIN_COLOR, FAR_LINE}, {QEL_SEL_SCALE_COLOR, LINE}};
        for (const auto& row : rows) Set(row[0], row[1]);
        QELSetParam(m_h, QEL_PARAM_DRAFT, 0);
        QELSetParam(m_h, QEL_PARAM_DRAFT_FORE, BAR);
        QELSetParam(m_h, QEL_PARAM_DRAFT_BACK, 0x80FFFF);
    }
    ~CBar() { DestroyQELEngine(m_h); }
    CBar(const CBar&) = delete;
    CBar& operator=(const CBar&) = delete;
    operator HQELENGINE() const { return m_h; }

    void Set(DWORD nSelector, DWORD nValue) const
    {
        EXPECT_EQ(1, QELSetScaleParam(m_h, 0, nSelector, nValue)) << nSelector;
    }
    void Draw(HDC hdc, DWORD nValue, DWORD nFlags) const
    {
        EXPECT_EQ(1, QELSetScaleStatus(m_h, 0, nValue));
        EXPECT_EQ(1, QELDraw(m_h, hdc, &QEL, nFlags));
    }

private:
    CTestFolder m_folder;
    HQELENGINE m_h;
};

using Draws = std::function<void(HDC)>;
using Picture = std::unique_ptr<CTestBitmap>;

Picture OnBitmap(const Surface& surface, const Draws& draws)
{
    auto p = std::make_unique<CTestBitmap>(ROOM, ROOM);
    const int nSaved = ::SaveDC(p->Dc());
    surface.pfnSetUp(p->Dc());
    draws(p->Dc());
    ::RestoreDC(p->Dc(), nSaved);
    return p;
}

// The same by way of an enhanced metafile, played back pixel by pixel.
Picture OnMetafile(const Surface& surface, const Draws& draws)
{
    auto p = std::make_unique<CTestBitmap>(ROOM, ROOM);
    const HDC hdcScreen = ::CreateCompatibleDC(nullptr);
    const auto hundredths = [&](int nPixels, int nSize, int nCount) -> LONG {
        return ::MulDiv(nPixels, ::GetDeviceCaps(hdcScreen, nSize) * 100,
                        ::GetDeviceCaps(hdcScreen, nCount));
    };
    // Of one size whatever is drawn: else no two of them are played back alike.
    const RECT rcFrame{0, 0, hundredths(ROOM, HORZSIZE, HORZRES),
                       hundredths(ROOM, VERTSIZE, VERTRES)};
    ::DeleteDC(hdcScreen);
    const HDC hdc = ::CreateEnhMetaFileA(nullptr, nullptr, &rcFrame, nullptr);
    surface.pfnSetUp(hdc);
    draws(hdc);
    const HENHMETAFILE hFile = ::CloseEnhMetaFile(hdc);
    const RECT rc{0, 0, ROOM, ROOM};
    EXPECT_TRUE(::PlayEnhMetaFile(p->Dc(), hFile, &rc));
    ::DeleteEnhMetaFile(hFile);
    return p;
}

// All pixels at once, as 0x00rrggbb: there are too many pictures here to ask for each.
std::vector<uint32_t> PixelsOf(const CTestBitmap& bitmap)
{
    DIBSECTION section{};
    ::GetObjectA(::GetCurrentObject(bitmap.Dc(), OBJ_BITMAP), sizeof section, &section);
    ::GdiFlush();
    const auto* pPixels = static_cast<const uint32_t*>(section.dsBm.bmBits);
    return {pPixels, pPixels + ROOM * ROOM};
}

bool IsBar(uint32_t nPixel)
{
    return (nPixel & 0xFFFFFF) == (BAR & 0xFF00); // green alone
}

constexpr DWORD g_sweep[] = {95, 20, 100, 0, 130, 62};

std::string SweepDifference(bool bUp, const char* pszFace, const Surface& surface, bool bMetafile,
                            const std::vector<std::pair<DWORD, DWORD>>& settings)
{
    const CBar moving(bUp, pszFace), still(bUp, pszFace);
    for (const CBar* pBar : {&moving, &still})
        for (const auto& [nSelector, nValue] : settings) pBar->Set(nSelector, nValue);
    const auto take = bMetafile ? OnMetafile : OnBitmap;
    const Picture swept = take(surface, [&](HDC hdc) {
        for (const DWORD nValue : g_sweep)
            moving.Draw(hdc, nValue, nValue == g_sweep[0] ? QEL_DRAW_FULL : 0);
    });
    const Picture fresh = take(
        surface, [&](HDC hdc) { still.Draw(hdc, g_sweep[std::size(g_sweep) - 1], QEL_DRAW_FULL); });
    const std::vector<uint32_t> expected = PixelsOf(*fresh), drawn = PixelsOf(*swept);
    EXPECT_LT(30, std::count_if(expected.begin(), expected.end(), IsBar)) << pszFace;
    int nCount = 0;
    for (std::size_t n = 0; n < expected.size(); ++n) nCount += expected[n] != drawn[n];
    return nCount ? std::to_string(nCount) + " pixels" : "";
}

void ExpectCleanSweeps(const Surface& surface, bool bMetafile)
{
    for (const Face& face : g_faces)
        for (const bool bUp : {true, false})
            for (const DWORD nCylinder : {0UL, 1UL})
                EXPECT_EQ("", SweepDifference(bUp, bUp ? face.pszUp : face.pszWide, surface,
                                              bMetafile, {{QEL_SEL_FRAME_OPTION, nCylinder}}))
                    << surface.pszName << ", " << face.pszName << (bUp ? ", upright" : ", lying")
                    << (nCylinder ? ", cylinder" : ", box");
}

class BarFace : public testing::TestWithParam<int> {};

TEST_P(BarFace, ASweepOnEveryFaceEndsInThePixelsOfOneFullDraw)
{
    ExpectCleanSweeps(g_surfaces[GetParam()], false);
}

TEST_P(BarFace, ASweepOnAMetafileEndsSoToo)
{
    ExpectCleanSweeps(g_surfaces[GetParam()], true);
}

INSTANTIATE_TEST_SUITE_P(Surfaces, BarFace,
                         testing::Range(0, static_cast<int>(std::size(g_surfaces))),
                         [](const auto& row) {
                             std::string name = g_surfaces[row.param].pszName;
                             for (char& c : name)
                                 if (c == ' ') c = '_';
                             return name;
                         });

TEST(BarFace, ASweepWithABaseInReverseOrWithHatchesEndsSoToo)
{
    const std::vector<std::pair<DWORD, DWORD>> rows[] = {
        {{QEL_SEL_USE_BASE, 1}, {QEL_SEL_BASE_VALUE, 50}},
        {{QEL_SEL_REVERSE, 1}},
        {{QEL_SEL_SHOW_FRAME, 0}},
        {{QEL_SEL_SHOW_SCALE, 0}, {QEL_SEL_TICKS, 3}},
    };
    for (const auto& row : rows)
        for (const Face& face : g_faces)
            for (const bool bUp : {true, false})
                for (const DWORD nCylinder : {0UL, 1UL}) {
                    auto settings = row;
                    settings.emplace_back(QEL_SEL_FRAME_OPTION, nCylinder);
                    EXPECT_EQ("", SweepDifference(bUp, bUp ? face.pszUp : face.pszWide,
                                                  g_surfaces[1], false, settings))
                        << row[0].first << ", " << face.pszName << bUp << nCylinder;
                }
}

// ---- what may stay, and no more ----

// The pixels of one draw after another on one bitmap, the first of them a full one.
std::vector<uint32_t> After(const CBar& bar, const std::vector<DWORD>& values)
{
    return PixelsOf(*OnBitmap(g_surfaces[0], [&](HDC hdc) {
        for (const DWORD nValue : values)
            bar.Draw(hdc, nValue, nValue == values[0] ? QEL_DRAW_FULL : 0);
    }));
}

// With "fill only" nothing empties the column: the old body stays where the new one does not paint.
TEST(BarFace, WithFillOnlyTheOldBodyStaysWhereTheNewOneIsNot)
{
    for (const Face& face : g_faces)
        for (const bool bUp : {true, false})
            for (const DWORD nCylinder : {0UL, 1UL}) {
                SCOPED_TRACE(testing::Message() << face.pszName << bUp << nCylinder);
                const CBar bar(bUp, bUp ? face.pszUp : face.pszWide);
                bar.Set(QEL_SEL_FILL_ONLY, 1);
                bar.Set(QEL_SEL_SHOW_FRAME, 0);
                bar.Set(QEL_SEL_FRAME_OPTION, nCylinder);
                const auto none = After(bar, {0}), old = After(bar, {90}), now = After(bar, {60});
                const auto swept = After(bar, {90, 60});
                int nStayed = 0, nWrong = 0;
                for (std::size_t n = 0; n < swept.size(); ++n) {
                    const bool bPainted = now[n] != none[n];
                    nWrong += swept[n] != (bPainted ? now[n] : old[n]);
                    nStayed += !bPainted && old[n] != none[n];
                }
                EXPECT_EQ(0, nWrong);
                EXPECT_LT(0, nStayed);
            }
}

// The read-out is no part of the body. Its place is the lower end of the column: what of it stands
// beside the face no partial redraw paints over, so that digits lie over digits there.
TEST(BarFace, TheReadOutStaysWhereItStandsBesideTheFaceAlone)
{
    int nStayedBeside = 0;
    for (const Face& face : g_faces)
        for (const bool bUp : {true, false}) {
            SCOPED_TRACE(testing::Message() << face.pszName << bUp);
            const CBar bar(bUp, bUp ? face.pszUp : face.pszWide);
            const auto plain = After(bar, {88});
            const std::vector<uint32_t> repainted = PixelsOf(
                *OnBitmap(g_surfaces[0], [&](HDC hdc) { bar.Draw(hdc, 60, 0); })); // on white
            bar.Set(QEL_SEL_SHOW_VALUE, 1);
            bar.Set(QEL_SEL_FONT_SIZE, 1);
            const auto old = After(bar, {88}), now = After(bar, {60}), swept = After(bar, {88, 60});
            EXPECT_NE(plain, old); // it is there
            int nStayed = 0, nWrong = 0;
            for (std::size_t n = 0; n < swept.size(); ++n) {
                if (swept[n] == now[n]) continue;
                ++nStayed;
                nWrong += repainted[n] != 0xFFFFFF || old[n] == plain[n];
            }
            EXPECT_EQ(0, nWrong);
            const bool bCovers = std::string(face.pszName) == "larger than the bar";
            EXPECT_TRUE(!bCovers || nStayed == 0);
            nStayedBeside += nStayed;
        }
    EXPECT_LT(0, nStayedBeside);
}

// ---- edits ----

struct Edit {
    const char* pszWhat;
    void (*edit)(HQELENGINE h, HQELELEM hMeter, HQELELEM hFace);
};
const Edit g_edits[] = {
    {"turned left", [](HQELENGINE h, HQELELEM, HQELELEM) { EXPECT_EQ(1, QELRotate(h, 90)); }},
    {"turned upside down",
     [](HQELENGINE h, HQELELEM, HQELELEM) { EXPECT_EQ(1, QELRotate(h, 180)); }},
    {"turned and back",
     [](HQELENGINE h, HQELELEM, HQELELEM) {
         EXPECT_EQ(1, QELRotate(h, -90));
         const CTestBitmap between(ROOM, ROOM);
         EXPECT_EQ(1, QELDraw(h, between.Dc(), &QEL, QEL_DRAW_FULL));
         EXPECT_EQ(1, QELRotate(h, 0));
         EXPECT_EQ(1, QELRotate(h, 270));
     }},
    {"moved and grown",
     [](HQELENGINE h, HQELELEM, HQELELEM hFace) {
         const RECT rc{25, 5, 75, 80};
         EXPECT_EQ(1, QELSetElemRect(h, hFace, &rc));
     }},
    {"another record",
     [](HQELENGINE h, HQELELEM, HQELELEM hFace) {
         QELSHAPEATTR attr{};
         EXPECT_EQ(1, QELGetElemAttr(h, hFace, &attr, nullptr));
         attr.nGeometry[1] += 17;
         attr.nPenWidth = 6;
         EXPECT_EQ(1, QELSetElemAttr(h, hFace, &attr, sizeof attr));
     }},
    {"copied, the copy moved",
     [](HQELENGINE h, HQELELEM, HQELELEM hFace) {
         const HQELELEM hCopy = QELCopyElem(h, hFace);
         const RECT rc{60, 60, 100, 110};
         EXPECT_EQ(1, QELSetElemRect(h, hCopy, &rc));
     }},
    {"added to",
     [](HQELENGINE h, HQELELEM hMeter, HQELELEM) {
         const HQELELEM hNew = QELCreateElem(h, QEL_TYPE_ELLIPSE, hMeter, nullptr);
         QELSHAPEATTR attr{};
         EXPECT_EQ(1, QELGetElemAttr(h, hNew, &attr, nullptr));
         const LONG box[] = {50, 50, 118, 90};
         std::copy(box, box + 4, attr.nGeometry);
         EXPECT_EQ(1, QELSetElemAttr(h, hNew, &attr, sizeof attr));
     }},
    {"deleted",
     [](HQELENGINE h, HQELELEM, HQELELEM hFace) { EXPECT_EQ(1, QELDeleteElem(h, hFace)); }},
    {"out of the meter",
     [](HQELENGINE h, HQELELEM, HQELELEM hFace) {
         EXPECT_EQ(1, QELMoveElem(h, hFace, QELGetRootElem(h), nullptr));
     }},
};

void ExpectEditsShow(const char* pszType, const char* pszCrd)
{
    for (const Edit& edit : g_edits) {
        SCOPED_TRACE(testing::Message() << pszType << ": " << edit.pszWhat);
        CTestFolder folder;
        const std::string path = folder.Path("in.qel");
        WriteBytes(path, std::string("<qel width='120' height='120'><meter mtype='") + pszType +
                             "' crd='" + pszCrd +
                             "'><rect style='0x1' crd='30 10 65 50'/>"
                             "<rect style='0x1' crd='35 60 70 100'/></meter></qel>");
        const HQELENGINE h = CreateQELEngine();
        ASSERT_EQ(1, QELOpenFile(h, path.c_str()));
        ASSERT_EQ(1, QELSetQELRect(h, &QEL));
        for (const auto& [nSelector, nValue] : {std::pair<DWORD, DWORD>{QEL_SEL_FACE_COLOR, FACE},
                                                {QEL_SEL_SHOW_FRAME, 1},
                                                {QEL_SEL_SECTOR_COUNT, 3},
                                                {QEL_SEL_SHOW_LABELS, 0}})
            EXPECT_EQ(1, QELSetScaleParam(h, 0, nSelector, nValue));
        EXPECT_EQ(1, QELSetScaleStatus(h, 0, 7));
        QELSetParam(h, QEL_PARAM_DRAFT_FORE, BAR);
        const auto draw = [&](const RECT& rc) {
            EXPECT_EQ(1, QELSetQELRect(h, &rc));
            const CTestBitmap picture(ROOM, ROOM);
            EXPECT_EQ(1, QELDraw(h, picture.Dc(), &rc, QEL_DRAW_FULL));
            return PixelsOf(picture);
        };
        const auto before = draw(QEL);
        const HQELELEM hMeter = QELGetFirstChild(h, QELGetRootElem(h));
        edit.edit(h, hMeter, QELGetFirstChild(h, hMeter));
        const auto after = draw(QEL);
        // In a window of another size nothing that was kept is used again.
        draw({0, 0, 77, 93});
        EXPECT_TRUE(draw(QEL) == after);
        EXPECT_FALSE(before == after);
        DestroyQELEngine(h);
    }
}

TEST(BarFace, EveryEditOfTheFaceAndEveryTurnShowAtOnce)
{
    for (const char* pszType : {"vert", "vert3d", "horz", "horz3d"})
        ExpectEditsShow(pszType, "20 5 100 115");
    ExpectEditsShow("sector", "50 55 40 5 5 95 105");
}

} // namespace
