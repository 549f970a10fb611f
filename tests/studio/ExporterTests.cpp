// Pictures of a drawing that is played with: what is in them, and that what shows it stays.
#include "tools/studio/model/Exporter.h"

#include "tests/studio/StudioSupport.h"
#include "tests/support/Files.h"

#include <cstring>

using studio::CExporter;
using studio::CPlay;
using studio::ExportSetting;
using studio::SignalKind;
using studio::SignalSetting;

namespace {

constexpr char BOX[] =
    "<rect id=\"box\" style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff\" crd=\"0 0 50 100\"/>";

// Of the bytes of a BMP with four bytes a pixel, 0x00RRGGBB.
uint32_t PixelOf(const std::string& bytes, LONG x, LONG y)
{
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    std::memcpy(&file, bytes.data(), sizeof file);
    std::memcpy(&info, bytes.data() + sizeof file, sizeof info);
    const LONG nBytes = info.biBitCount / 8;
    const LONG nRow = (info.biWidth * nBytes + 3) / 4 * 4;
    const LONG nLine = info.biHeight < 0 ? y : info.biHeight - 1 - y;
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data()) + file.bfOffBits +
                    nLine * nRow + x * nBytes;
    return static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[1]) << 8 | p[0];
}

class Exporter : public testing::Test {
protected:
    std::string Write(CExporter* pExporter, const char* pszName, const ExportSetting& setting)
    {
        const std::string path = m_folder.Path(pszName);
        m_why.clear();
        EXPECT_EQ(1, pExporter->Write({path.begin(), path.end()}, setting, &m_why)) << m_why;
        return ReadBytes(path);
    }

    CTestFolder m_folder;
    std::string m_why;
};

ExportSetting Plain(LONG nWidth, LONG nHeight)
{
    ExportSetting setting;
    setting.size = {nWidth, nHeight};
    setting.bSmooth = false;
    return setting;
}

} // namespace

TEST_F(Exporter, WritesThePictureOfTheValuesInItsSize)
{
    const COpenDrawing drawing(BOX);
    CPlay play;
    ASSERT_EQ(1, play.Values().Set(drawing, "box.fg", "#0000FF", &m_why)) << m_why;
    CExporter exporter(drawing, play);
    const std::string bytes = Write(&exporter, "a.bmp", Plain(40, 20));
    EXPECT_EQ(0x0000FFU, PixelOf(bytes, 10, 10));
    EXPECT_EQ(0xFFFFFFU, PixelOf(bytes, 30, 10)) << "the background is white unless it is told";
}

TEST_F(Exporter, LeavesWhatShowsTheDrawingAsItIs)
{
    const COpenDrawing drawing(BOX);
    const RECT rc{3, 4, 33, 44};
    QELSetQELRect(drawing, &rc);
    QELValidate(drawing);
    CPlay play;
    CExporter exporter(drawing, play);
    Write(&exporter, "a.bmp", Plain(400, 400));
    RECT rcNow{};
    RECT rcDirty{};
    QELGetQELRect(drawing, &rcNow);
    EXPECT_TRUE(::EqualRect(&rc, &rcNow));
    EXPECT_EQ(0, QELGetDirtyRect(drawing, &rcDirty));
    EXPECT_EQ(0, QELIsModified(drawing));
}

TEST_F(Exporter, TurnsAsTheDrawingIsTurned)
{
    const std::string wide =
        "<rect style=\"0x1\" dr=\"1\" lnwid=\"0\" fg=\"0xff\" crd=\"0 0 50 10\"/>";
    const COpenDrawing drawing(wide);
    CPlay play;
    play.Turn(drawing);
    CExporter exporter(drawing, play);
    const std::string bytes = Write(&exporter, "a.bmp", Plain(100, 100));
    EXPECT_EQ(0xFF0000U, PixelOf(bytes, 5, 95)) << "counter-clockwise: what was left is below";
    EXPECT_EQ(0xFFFFFFU, PixelOf(bytes, 45, 5));
}

TEST_F(Exporter, KnowsKindsByTheirExtensions)
{
    const COpenDrawing drawing(BOX);
    CPlay play;
    CExporter exporter(drawing, play);
    EXPECT_EQ("\x89PNG", Write(&exporter, "a.png", Plain(8, 8)).substr(0, 4));
    EXPECT_EQ(" EMF", Write(&exporter, "a.emf", Plain(8, 8)).substr(40, 4));
    EXPECT_EQ("GIF89a", Write(&exporter, "a.gif", Plain(8, 8)).substr(0, 6));
    EXPECT_EQ(0, exporter.Write(L"a.txt", Plain(8, 8), &m_why));
    EXPECT_FALSE(m_why.empty());
    EXPECT_EQ(0, exporter.Write(L"a.png", Plain(0, 8), &m_why));
    EXPECT_EQ(3, m_folder.CountFiles());
}

TEST_F(Exporter, ATransparentPictureHasAlpha)
{
    constexpr std::size_t COLOR_TYPE_AT =
        25; // in the header of a PNG; 6 is red, green, blue, alpha
    const COpenDrawing drawing(BOX);
    CPlay play;
    CExporter exporter(drawing, play);
    ExportSetting setting = Plain(8, 8);
    EXPECT_NE(6, Write(&exporter, "plain.png", setting)[COLOR_TYPE_AT]);
    setting.bTransparent = true;
    EXPECT_EQ(6, Write(&exporter, "clear.png", setting)[COLOR_TYPE_AT]);
}

TEST_F(Exporter, AMovieHasAPictureForEachChange)
{
    const COpenDrawing drawing(BOX);
    CPlay play;
    SignalSetting square;
    square.kind = SignalKind::Column;
    square.cells = {"#FF0000", "#00FF00", "#0000FF"};
    square.fPeriod = 1;
    play.Signals().Set("box.fg", square);
    EXPECT_EQ(3, studio::SpanOf(play.Signals()));
    CExporter exporter(drawing, play);
    const std::string bytes = Write(&exporter, "a.gif", Plain(8, 8));
    int nFrames = 0;
    const std::string frame("\x21\xF9\x04", 3); // what each begins with
    for (std::size_t n = bytes.find(frame); n != std::string::npos; n = bytes.find(frame, n + 1))
        ++nFrames;
    EXPECT_EQ(3, nFrames);
    EXPECT_EQ(nullptr, play.Values().Find("box.fg")) << "the play itself stands still";
}

TEST_F(Exporter, CopiesABitmapAndAMetafile)
{
    const COpenDrawing drawing(BOX);
    CPlay play;
    CExporter exporter(drawing, play);
    ASSERT_EQ(1, exporter.CopyBitmap(nullptr, Plain(30, 20), &m_why)) << m_why;
    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_DIB));
    ASSERT_EQ(1, exporter.CopyMetafile(nullptr, {30, 20}, &m_why)) << m_why;
    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_ENHMETAFILE));
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_DIB)) << "it has taken the place of the bitmap";
}

TEST(Span, IsThatOfTheLongestSignalWithinItsLimits)
{
    studio::CSignals signals;
    EXPECT_EQ(1, studio::SpanOf(signals));
    SignalSetting setting;
    setting.kind = SignalKind::Ramp;
    setting.fPeriod = 4;
    signals.Set("a", setting);
    setting.fPeriod = 7;
    signals.Set("b", setting);
    setting.kind = SignalKind::Constant;
    setting.fPeriod = 20;
    signals.Set("c", setting);
    EXPECT_EQ(7, studio::SpanOf(signals));
    setting.kind = SignalKind::Sine;
    setting.fPeriod = 3600;
    signals.Set("d", setting);
    EXPECT_EQ(30, studio::SpanOf(signals));
}
