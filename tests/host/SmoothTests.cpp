// Smooth pictures: each pixel is the mean of its samples, what stands upright stays as it is, and
// updates make what full draws make.
#include "tests/support/Host.h"

#include <cmath>
#include <functional>

namespace {

constexpr int SIDE = 60;
constexpr double BLACK_ON_WHITE = 255;

class CPictureHost {
public:
    explicit CPictureHost(const std::string& body, int nSmooth, int nSide = SIDE)
        : m_host(body, nSide), m_picture(nSide, nSide)
    {
        EXPECT_EQ(1, QELSetSmooth(m_host, nSmooth));
        m_host.Place({0, 0, nSide, nSide});
    }
    HQELENGINE Engine() const { return m_host; }
    const CTestBitmap& Draw() const // once: on white
    {
        m_host.Draw(m_picture.Dc());
        return m_picture;
    }

private:
    CTextHost m_host;
    CTestBitmap m_picture;
};

std::string UnlikePlain(const std::string& body)
{
    const CPictureHost plain(body, 0);
    const CTestBitmap& expected = plain.Draw();
    EXPECT_FALSE(IsBlank(expected)) << body;
    for (const int nSmooth : {2, 3, 4}) {
        const CPictureHost smooth(body, nSmooth);
        const std::string difference = FirstDifference(expected, smooth.Draw());
        if (!difference.empty()) return difference + ": " + body;
    }
    return "";
}

// How much of each pixel is black on the white picture, against the share of points, 32 by 32 of a
// pixel, that are inside.
struct Errors {
    double fMean;
    double fLargest;
};
Errors CoverageErrors(const std::string& body, const std::function<bool(double, double)>& isInside)
{
    constexpr int POINTS = 32;
    const CPictureHost host(body, 4);
    const CTestBitmap& picture = host.Draw();
    Errors errors{0, 0};
    int nCovered = 0;
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x) {
            int nInside = 0;
            for (int n = 0; n < POINTS * POINTS; ++n)
                nInside +=
                    isInside(x + (n % POINTS + 0.5) / POINTS, y + (n / POINTS + 0.5) / POINTS);
            const double fTrue = static_cast<double>(nInside) / (POINTS * POINTS);
            const double fDrawn = 1 - GetRValue(picture.At(x, y)) / BLACK_ON_WHITE;
            const double fError = std::fabs(fTrue - fDrawn);
            if (fDrawn > 0 || fTrue > 0) ++nCovered;
            errors.fMean += fError;
            errors.fLargest = std::max(errors.fLargest, fError);
        }
    EXPECT_GT(nCovered, 20) << body;
    errors.fMean /= nCovered;
    return errors;
}

// To the nearest point of what lies between two points: ends are round.
double DistanceToPart(double fX, double fY, double fX1, double fY1, double fX2, double fY2)
{
    const double fDx = fX2 - fX1;
    const double fDy = fY2 - fY1;
    const double fAt = ((fX - fX1) * fDx + (fY - fY1) * fDy) / (fDx * fDx + fDy * fDy);
    const double fNear = std::clamp(fAt, 0.0, 1.0);
    return std::hypot(fX - fX1 - fNear * fDx, fY - fY1 - fNear * fDy);
}

} // namespace

TEST(Smooth, TakesItsNumbersAlone)
{
    const CTextHost host("", SIDE);
    EXPECT_EQ(0, QELGetSmooth(host));
    for (const int n : {2, 3, 4}) {
        EXPECT_EQ(1, QELSetSmooth(host, n));
        EXPECT_EQ(n, QELGetSmooth(host));
    }
    for (const int n : {1, 5, -2, 100}) {
        EXPECT_EQ(0, QELSetSmooth(host, n));
        QELERROR error{};
        error.nSize = sizeof error;
        EXPECT_EQ(1, QELGetError(host, &error));
        EXPECT_EQ(static_cast<DWORD>(QEL_ERROR_ARGUMENT), error.nCode);
    }
    EXPECT_EQ(4, QELGetSmooth(host));
    EXPECT_EQ(1, QELNewFile(host));
    EXPECT_EQ(4, QELGetSmooth(host)); // of the engine
    EXPECT_EQ(1, QELSetSmooth(host, 0));
    EXPECT_EQ(0, QELSetSmooth(nullptr, 2));
    EXPECT_EQ(0, QELGetSmooth(nullptr));
}

TEST(Smooth, AChangeMakesEverythingDirtyAndTheSameNothing)
{
    const CTextHost host("<rect crd='10 10 20 20' lnwid='8' clr='0x0'/>", SIDE);
    RECT rc{};
    EXPECT_EQ(1, QELValidate(host));
    EXPECT_EQ(1, QELSetSmooth(host, 0));
    EXPECT_EQ(0, QELGetDirtyRect(host, &rc));
    EXPECT_EQ(1, QELSetSmooth(host, 2));
    EXPECT_EQ(1, QELGetDirtyRect(host, &rc));
}

TEST(Smooth, WhatStandsUprightIsAsWithout)
{
    for (const char* pszBody :
         {"<rect crd='10 12 40 47' lnwid='1' clr='0x3366cc' style='0x1' fg='0x0' bg='0x228844'/>",
          "<rect crd='10 12 40 47' lnwid='0' style='0x1' fg='0x0' bg='0x228844'/>",
          "<rect crd='10 12 40 47' lnwid='1' style='0x3' fg='0x0' bg='0x228844'/>",
          "<rect crd='10 12 40 47' lnwid='1' style='0x50005' fg='0x0' bg='0x228844'/>",
          "<line crd='5 7 50 7' lnwid='1' clr='0x3366cc'/>",
          "<polyline crd='5 5 40 5 40 30 12 30 12 50' lnwid='1' clr='0x3366cc'/>",
          "<polygon crd='5 5 40 5 40 30 22 30 22 50 5 50' lnwid='1' style='0x1' clr='0x3366cc'/>",
          "<drawrgn crd='10 12 40 47' style='0x3'/>",
          "<scale scid='0' sctype='vrtleft' crd='8 10 47 51' pin='1' set='max=7 ticks=7' "
          "value='3'/>",
          "<scale scid='0' sctype='horizdn' crd='8 10 47 51' pin='1' set='max=7 ticks=7' "
          "value='3'/>",
          "<meter mtid='0' usc='1' mtype='vert' crd='6 10 45 51' set='labels=0 max=7 ticks=5' "
          "value='3'><rect crd='6 10 45 51' lnwid='0' style='0x1'/></meter>",
          "<meter mtid='0' usc='1' mtype='horz' crd='6 10 45 51' set='labels=0 max=7 ticks=5' "
          "value='3'><rect crd='6 10 45 51' lnwid='0' style='0x1'/></meter>"})
        EXPECT_EQ("", UnlikePlain(pszBody));
}

TEST(Smooth, HatchesAndGradientsAreAsWithout)
{
    for (int nDraft = 0; nDraft < DRAFT_COUNT; ++nDraft)
        EXPECT_EQ("", UnlikePlain("<rect crd='11 13 40 47' lnwid='0' style='0x1' fg='0x99ccee' "
                                  "bg='0x228844' dr='" +
                                  std::to_string(nDraft) + "'/>"));
}

TEST(Smooth, PixelsThatNothingCoversAreNotTouched)
{
    const CTextHost host("<circle crd='30 30 10' lnwid='1'/>", SIDE);
    EXPECT_EQ(1, QELSetSmooth(host, 3));
    CTestBitmap picture(SIDE, SIDE);
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x) ::SetPixelV(picture.Dc(), x, y, RGB(x * 4, y * 4, x ^ y));
    host.Draw(picture.Dc());
    for (int y = 0; y < SIDE; ++y)
        for (int x = 0; x < SIDE; ++x)
            if (std::hypot(x - 30, y - 30) > 13 || std::hypot(x - 30, y - 30) < 7) {
                ASSERT_EQ(RGB(x * 4, y * 4, x ^ y), picture.At(x, y)) << x << " " << y;
            }
    EXPECT_NE(RGB(40 * 4, 30 * 4, 40 ^ 30), picture.At(39, 30));
}

TEST(Smooth, FilledFiguresCoverEachPixelByTheirArea)
{
    const Errors disc =
        CoverageErrors("<ellipse crd='10 10 50 50' lnwid='0' style='0x1' bg='0x0' fg='0x0'/>",
                       [](double x, double y) { return std::hypot(x - 30, y - 30) < 20; });
    EXPECT_LT(disc.fMean, 1.0 / 32);
    EXPECT_LT(disc.fLargest, 1.0 / 4);
    const Errors triangle =
        CoverageErrors("<polygon crd='5 50 30 7 56 45' lnwid='0' style='0x1' bg='0x0' fg='0x0'/>",
                       [](double x, double y) {
                           const auto side = [&](double x1, double y1, double x2, double y2) {
                               return (x2 - x1) * (y - y1) - (y2 - y1) * (x - x1) >= 0;
                           };
                           return side(5, 50, 30, 7) && side(30, 7, 56, 45) && side(56, 45, 5, 50);
                       });
    EXPECT_LT(triangle.fMean, 1.0 / 32);
    EXPECT_LT(triangle.fLargest, 1.0 / 4);
}

TEST(Smooth, RingsCoverEachPixelByTheirArea)
{
    for (const int nPen : {1, 2, 3, 6}) {
        const std::string body =
            "<circle crd='30 30 20' lnwid='" + std::to_string(nPen) + "' clr='0x0' style='0x0'/>";
        // A pen of an even width runs along the corners of pixels, as it does without samples.
        const double fMiddle = nPen % 2 != 0 ? 30 : 29.5;
        const Errors ring = CoverageErrors(body, [&](double x, double y) {
            return std::fabs(std::hypot(x - fMiddle, y - fMiddle) - 19.5) < nPen / 2.0;
        });
        EXPECT_LT(ring.fMean, 1.0 / 16) << nPen;
        EXPECT_LT(ring.fLargest, 1.0 / 3) << nPen;
    }
}

TEST(Smooth, LinesAtAllAnglesCoverEachPixelByTheirArea)
{
    for (int nAngle = 5; nAngle < 180; nAngle += 5) {
        if (nAngle == 90) continue;
        const double fAngle = nAngle * 3.14159265358979 / 180;
        const int nX = static_cast<int>(std::lround(20 * std::cos(fAngle)));
        const int nY = static_cast<int>(std::lround(20 * std::sin(fAngle)));
        const std::string crd = std::to_string(30 - nX) + " " + std::to_string(30 - nY) + " " +
                                std::to_string(30 + nX) + " " + std::to_string(30 + nY);
        const Errors line = CoverageErrors(
            "<line crd='" + crd + "' lnwid='3' clr='0x0'/>", [&](double x, double y) {
                return DistanceToPart(x - 30.5, y - 30.5, -nX, -nY, nX, nY) < 1.5;
            });
        EXPECT_LT(line.fMean, 1.0 / 16) << nAngle;
        EXPECT_LT(line.fLargest, 1.0 / 3) << nAngle;
    }
}

TEST(Smooth, UprightPartsOfASlantedLineAreAsWithout)
{
    for (const int nPen : {1, 2, 3, 4}) {
        const std::string body = "<polyline crd='5 8 20 15 20 50 50 50 58 30' clr='0x0' lnwid='" +
                                 std::to_string(nPen) + "'/>";
        const CPictureHost plainHost(body, 0);
        const CPictureHost smoothHost(body, 4);
        const CTestBitmap& plain = plainHost.Draw();
        const CTestBitmap& smooth = smoothHost.Draw();
        for (int x = 0; x < 40; ++x) EXPECT_EQ(plain.At(x, 30), smooth.At(x, 30)) << nPen;
        for (int y = 41; y < SIDE; ++y) EXPECT_EQ(plain.At(35, y), smooth.At(35, y)) << nPen;
    }
}

TEST(Smooth, OutlinesOfPolygonsCoverEachPixelByTheirArea)
{
    const Errors outline = CoverageErrors(
        "<polygon crd='8 50 31 9 54 43' lnwid='3' clr='0x0' style='0x0'/>", [](double x, double y) {
            const double fX = x - 0.5;
            const double fY = y - 0.5;
            return std::min({DistanceToPart(fX, fY, 8, 50, 31, 9),
                             DistanceToPart(fX, fY, 31, 9, 54, 43),
                             DistanceToPart(fX, fY, 54, 43, 8, 50)}) < 1.5;
        });
    EXPECT_LT(outline.fMean, 1.0 / 16);
    EXPECT_LT(outline.fLargest, 1.0 / 3);
}

TEST(Smooth, MetafilesAreAsWithout)
{
    const char* const pszBody = "<circle crd='30 30 20' lnwid='3' clr='0x0'/>";
    const CTextHost plain(pszBody, SIDE);
    const CTextHost smooth(pszBody, SIDE);
    EXPECT_EQ(1, QELSetSmooth(smooth, 4));
    EXPECT_EQ(plain.Calls(), smooth.Calls());
}

TEST(Smooth, TheContextIsAsAfterAPlainDraw)
{
    const char* const pszBody =
        "<circle crd='30 30 20' lnwid='3' clr='0x0' style='0x1' fg='0x123456' "
        "bg='0x654321'/>";
    std::string states[2];
    CTestBitmap picture(SIDE, SIDE);
    for (const int nSmooth : {0, 3}) {
        const CTextHost host(pszBody, SIDE);
        EXPECT_EQ(1, QELSetSmooth(host, nSmooth));
        MarkState(picture.Dc());
        host.Draw(picture.Dc());
        states[nSmooth ? 1 : 0] = DcState(picture.Dc());
    }
    EXPECT_EQ(states[0], states[1]);
}

TEST(Smooth, UpdatesMakeWhatFullDrawsMake)
{
    const char* const pszBody =
        "<circle crd='30 30 28' lnwid='1' style='0x1' bg='0x404040'/>"
        "<meter id='m' mtid='0' usc='1' upin='1' mtype='round' crd='30 30 25 2 2 58 58' "
        "set='max=100 ticks=10'/><line crd='3 5 56 40' lnwid='2' clr='0xff'/>";
    for (const int nSmooth : {2, 3, 4})
        for (const DWORD nScale : {100U, 150U}) {
            const CTextHost host(pszBody, SIDE);
            EXPECT_EQ(1, QELSetSmooth(host, nSmooth));
            EXPECT_EQ(1, QELSetPixelScale(host, nScale));
            CTestBitmap screen(SIDE, SIDE, 0x204060);
            CTestBitmap full(SIDE, SIDE, 0x204060);
            const HBRUSH hBrush = ::CreateSolidBrush(0x204060);
            for (const double fValue : {10.0, 35.0, 80.0, 5.0}) {
                EXPECT_EQ(1, QELSetValue(host, "m", fValue));
                EXPECT_EQ(1, QELUpdate(host, screen.Dc(), hBrush));
                full.Fill(0x204060);
                host.Draw(full.Dc());
                EXPECT_EQ("", FirstDifference(full, screen)) << nSmooth << " " << nScale;
            }
            ::DeleteObject(hBrush);
        }
}

// A read-out has the colour of the value before, in every part of the picture.
TEST(Smooth, AllPartsOfALargePictureAreOfOneDraw)
{
    constexpr int LARGE = 900; // more than one tile holds
    const char* const pszBody =
        "<meter mtid='0' usc='1' upin='1' mtype='roundUpgrade' crd='450 450 440 2 2 898 898' "
        "set='max=100 ticks=10 alarm=1 low-limit=20 high-limit=80 read-out=1'/>";
    const auto draw = [&](int nSmooth, CTestBitmap* pPicture) {
        const CTextHost host(pszBody, LARGE);
        EXPECT_EQ(1, QELSetSmooth(host, nSmooth));
        for (const DWORD nValue : {50U, 90U}) {
            host.Set(QEL_SEL_VALUE, nValue);
            pPicture->Fill(RGB(255, 255, 255));
            host.Draw(pPicture->Dc());
        }
    };
    CTestBitmap plain(LARGE, LARGE);
    CTestBitmap smooth(LARGE, LARGE);
    draw(0, &plain);
    draw(4, &smooth);
    // Nothing but the read-out is pure green below the middle, where there is no green zone.
    int nPlain = 0;
    int nSmooth = 0;
    for (int y = 600; y < 760; ++y)
        for (int x = 380; x < 520; ++x) {
            nPlain += plain.At(x, y) == RGB(0, 255, 0);
            nSmooth += smooth.At(x, y) == RGB(0, 255, 0);
        }
    EXPECT_EQ(nPlain > 0, nSmooth > 0);
}
