// The promise of updates by chance: over the drawings of the examples and over drawings by chance,
// whatever is changed, the picture of an update is that of a full draw wherever nothing is dirty.
#include "tests/support/ChanceChanges.h"
#include "tests/support/Files.h"
#include "tests/support/Screen.h"

#include <cstdlib>

namespace {

constexpr int CHANGES = 30;    // of each drawing
constexpr unsigned SEEDS = 30; // unless the environment wants more
constexpr int MOST_WRONG = 8;
constexpr COLORREF GARBAGE = 0xFF00FF;

// ---- the drawings of the examples

std::string ExamplesFolder()
{
    const std::string folder = QEL_EXAMPLES;
    return folder[0] == '/' ? "Z:" + folder : folder; // where the build ran on another system
}

void AddDrawings(const std::string& folder, std::vector<std::string>* pPaths)
{
    WIN32_FIND_DATAA data{};
    const HANDLE hFind = ::FindFirstFileA((folder + "/*.qel").c_str(), &data);
    if (hFind == INVALID_HANDLE_VALUE) return;
    do pPaths->push_back(folder + "/" + data.cFileName);
    while (::FindNextFileA(hFind, &data));
    ::FindClose(hFind);
}

std::vector<std::string> ExampleDrawings()
{
    std::vector<std::string> paths;
    AddDrawings(ExamplesFolder(), &paths);
    AddDrawings(ExamplesFolder() + "/gallery", &paths);
    std::sort(paths.begin(), paths.end());
    return paths;
}

// ---- the host

class CSmoothFont {
public:
    CSmoothFont()
    {
        LOGFONTA font{};
        font.lfHeight = -13;
        font.lfQuality = ANTIALIASED_QUALITY;
        font.lfCharSet = DEFAULT_CHARSET;
        std::snprintf(font.lfFaceName, sizeof font.lfFaceName, "WenQuanYi Micro Hei");
        m_hFont = ::CreateFontIndirectA(&font);
    }
    ~CSmoothFont() { ::DeleteObject(m_hFont); }
    CSmoothFont(const CSmoothFont&) = delete;
    CSmoothFont& operator=(const CSmoothFont&) = delete;
    operator HFONT() const { return m_hFont; }

private:
    HFONT m_hFont;
};

struct Manner {      // of a host
    bool bBrush;     // else it fills the dirty area itself
    bool bSmooth;    // a font with smoothed edges
    bool bClips;     // paints now here, now there
    bool bTwo;       // shows the drawing twice
    bool bNamed;     // gives identifiers to what has none
    bool bShowsTime; // there are clocks
};

class CSurface {
public:
    explicit CSurface(HFONT hFont)
        : m_bitmap(CHANCE_SIDE, CHANCE_SIDE, SCREEN_GROUND),
          m_font(m_bitmap.Dc(), hFont ? hFont : ::GetStockObject(SYSTEM_FONT), false)
    {
    }
    CTestBitmap& Bitmap() { return m_bitmap; }
    HDC Dc() const { return m_bitmap.Dc(); }

private:
    CTestBitmap m_bitmap;
    CTestSelect m_font;
};

class CTrial {
public:
    CTrial(const std::string& text, const Manner& manner, CTestDice* pDice)
        : m_text(text), m_manner(manner), m_dice(*pDice), m_first(Font()), m_second(Font()),
          m_full(Font()), m_changes(m_h, pDice)
    {
        EXPECT_EQ(1, QELOpenMemory(m_h, text.data(), static_cast<DWORD>(text.size())));
        const RECT rc{0, 0, CHANCE_SIDE, CHANCE_SIDE};
        EXPECT_EQ(1, QELSetQELRect(m_h, &rc));
        if (manner.bNamed) m_changes.NameElements();
    }
    ~CTrial() { EXPECT_EQ(1, DestroyQELEngine(m_h)); }
    CTrial(const CTrial&) = delete;
    CTrial& operator=(const CTrial&) = delete;

    void Change()
    {
        m_done = "";
        for (int n = m_dice.Below(3); n >= 0; --n) m_done += m_changes.Make() + "; ";
    }
    const std::string& Done() const { return m_done; }
    int Updates() const { return m_nUpdates; }

    // "" when the picture is right after an update. Clocks show the time of the last step, so that
    // all of it has to happen within a second.
    std::string WrongAfterUpdate()
    {
        std::string wrong;
        SYSTEMTIME before{}, after{};
        do {
            ::GetSystemTime(&before);
            if (m_manner.bShowsTime) QELAdvance(m_h, 0);
            Update();
            wrong = Wrong();
            ::GetSystemTime(&after);
        } while (m_manner.bShowsTime && before.wSecond != after.wSecond);
        return wrong;
    }

private:
    HFONT Font() const { return m_manner.bSmooth ? static_cast<HFONT>(m_smooth) : nullptr; }
    // What is dirty may hold anything before an update.
    void SpoilDirty(HDC hdc, COLORREF clr)
    {
        const CTestRegion dirty;
        const CTestBrush brush(clr);
        if (QELGetDirtyRegion(m_h, dirty)) ::FillRgn(hdc, dirty, brush);
    }
    int UpdateOn(const CSurface& surface)
    {
        SpoilDirty(surface.Dc(), m_manner.bBrush ? GARBAGE : SCREEN_GROUND);
        return QELUpdate(m_h, surface.Dc(), m_manner.bBrush ? HBRUSH(m_ground) : nullptr);
    }
    void Update()
    {
        const CTestRegion dirty;
        QELGetDirtyRegion(m_h, dirty);
        if (m_manner.bClips && m_dice.Below(3)) SelectAnyClip(m_first.Dc());
        m_nUpdates += UpdateOn(m_first);
        ::SelectClipRgn(m_first.Dc(), nullptr);
        if (!m_manner.bTwo) return;
        InvalidateRegion(dirty);
        UpdateOn(m_second);
    }
    void SelectAnyClip(HDC hdc)
    {
        const CTestRegion clip, hole;
        const int x = m_dice.Below(CHANCE_SIDE), y = m_dice.Below(CHANCE_SIDE);
        ::SetRectRgn(clip, x - 60, y - 60, x + 60, y + 60);
        ::SetRectRgn(hole, x - 5, y - 20, x + 20, y + 5);
        ::CombineRgn(clip, clip, hole, m_dice.Below(2) ? RGN_DIFF : RGN_XOR);
        ::SelectClipRgn(hdc, clip);
    }
    void InvalidateRegion(HRGN hRegion)
    {
        std::vector<unsigned char> data(::GetRegionData(hRegion, 0, nullptr));
        auto* pData = reinterpret_cast<RGNDATA*>(data.data());
        ASSERT_NE(0U, ::GetRegionData(hRegion, static_cast<DWORD>(data.size()), pData));
        const auto* pRects = reinterpret_cast<const RECT*>(pData->Buffer);
        for (DWORD n = 0; n < pData->rdh.nCount; ++n) QELInvalidate(m_h, pRects + n);
    }
    std::string Wrong()
    {
        RECT rc{};
        EXPECT_EQ(1, QELGetQELRect(m_h, &rc));
        // Twice: the colour of a read-out is that of the value of the draw before.
        for (int n = 0; n < 2; ++n) {
            m_full.Bitmap().Fill(SCREEN_GROUND);
            QELDraw(m_h, m_full.Dc(), &rc, QEL_DRAW_FULL);
        }
        for (CSurface* p : {&m_full, &m_first, &m_second}) SpoilDirty(p->Dc(), GARBAGE);
        const std::string wrong = FirstDifference(m_full.Bitmap(), m_first.Bitmap());
        if (!wrong.empty() || !m_manner.bTwo) return wrong;
        return FirstDifference(m_full.Bitmap(), m_second.Bitmap());
    }

    const std::string m_text;
    const Manner m_manner;
    CTestDice& m_dice;
    const CSmoothFont m_smooth;
    const CTestBrush m_ground{SCREEN_GROUND};
    const HQELENGINE m_h = CreateQELEngine();
    CSurface m_first, m_second, m_full;
    CChanceChanges m_changes;
    std::string m_done;
    int m_nUpdates = 0;
};

unsigned FromEnvironment(const char* pszName, unsigned nElse)
{
    const char* const psz = std::getenv(pszName);
    return psz ? static_cast<unsigned>(std::atoi(psz)) : nElse;
}

struct Tally {
    int nChanges = 0;
    int nUpdates = 0;
    int nWrong = 0;
};

void Play(const std::string& name, const std::string& text, bool bNamed, unsigned nSeed,
          Tally* pTally)
{
    CTestDice dice(nSeed);
    const unsigned nManner = nSeed * 7 + nSeed / 8;
    const Manner manner{(nManner & 1) != 0,
                        (nManner & 2) != 0,
                        (nManner & 12) == 4,
                        (nManner & 12) == 8,
                        bNamed,
                        text.find("clock") != std::string::npos};
    CTrial trial(text, manner, &dice);
    std::string done = "opened";
    for (int n = 0; n < CHANGES; ++n) {
        const std::string wrong = trial.WrongAfterUpdate();
        if (!wrong.empty()) {
            ADD_FAILURE() << name << ", seed " << nSeed << ", manner " << (nManner & 15)
                          << ", change " << n << ": " << wrong << "\n"
                          << done;
            ++pTally->nWrong;
            return;
        }
        trial.Change();
        done += "\n" + trial.Done();
        ++pTally->nChanges;
    }
    pTally->nUpdates += trial.Updates();
}

} // namespace

// QEL_UPDATE_SEEDS tells how many drawings by chance, and as many times an example; each changes
// thirty times.
TEST(Update, AfterAnyChangeThePictureIsThatOfAFullDraw)
{
    const std::vector<std::string> examples = ExampleDrawings();
    ASSERT_LE(30U, examples.size()) << ExamplesFolder();
    const unsigned nFirst = FromEnvironment("QEL_UPDATE_FIRST", 1);
    const unsigned nSeeds = FromEnvironment("QEL_UPDATE_SEEDS", SEEDS);
    Tally tally;
    for (unsigned n = nFirst; n < nFirst + nSeeds && tally.nWrong < MOST_WRONG; ++n) {
        CTestDice dice(n);
        const std::string text = CChanceDrawing(&dice).Text();
        Play(text, text, false, n, &tally);
        const std::string& path = examples[n % examples.size()];
        Play(path, ReadBytes(path), true, n, &tally);
    }
    EXPECT_LT(tally.nChanges / 3, tally.nUpdates); // many of the changes are to be seen
    RecordProperty("changes", tally.nChanges);
    RecordProperty("updates", tally.nUpdates);
}

TEST(Update, TheFontOfTheSmoothedPicturesIsSmoothed)
{
    const CSmoothFont font;
    CSurface surface(font);
    ::SetTextColor(surface.Dc(), 0xFFFFFF);
    ::SetBkColor(surface.Dc(), 0);
    surface.Bitmap().Fill(0);
    ::TextOutA(surface.Dc(), 5, 5, "Q&#9", 4);
    const int nAll = CHANCE_SIDE * CHANCE_SIDE;
    const int nSharp = CountPixels(surface.Bitmap(), 0) + CountPixels(surface.Bitmap(), 0xFFFFFF);
    EXPECT_GT(nAll, nSharp);
    EXPECT_LT(nAll / 2, nSharp);
}
