// qel animate: draws a drawing whose values go through ranges into an animated picture, as a host
// would show it: one full draw, and partial ones onto the same bitmap.
#include "tools/qel/Canvas.h"
#include "tools/qel/FixedTime.h"
#include "tools/qel/GifWriter.h"
#include "tools/qel/HostElements.h"
#include "tools/qel/ImageWriter.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/Scene.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

namespace qel {

namespace {

constexpr int DEFAULT_FRAMES = 30;
constexpr int MAX_FRAMES = 1000;
constexpr int DEFAULT_FPS = 10;
constexpr int MAX_FPS = 50; // many viewers do not show less than two hundredths
constexpr int HUNDREDTHS = 100;

struct Pace {
    int nFrames = DEFAULT_FRAMES;
    int nPerSecond = DEFAULT_FPS;
    int nBlinkFrames = 0; // of one phase; 0: it stays
    bool bFramesGiven = false;

    // How long a frame shows, in hundredths; the times of all frames add up exactly.
    [[nodiscard]] int Delay(int nFrame) const
    {
        return HUNDREDTHS * (nFrame + 1) / nPerSecond - HUNDREDTHS * nFrame / nPerSecond;
    }
};

int ReadCount(const char* pszOption, const std::wstring& text, int nMin, int nMax)
{
    long nValue = 0;
    if (!ReadNumber(text, 10, &nValue) || nValue < nMin || nValue > nMax)
        throw CTrouble(fmt::format("{} wants a whole number, {} to {}, not '{}'", pszOption, nMin,
                                   nMax, ToUtf8(text)));
    return static_cast<int>(nValue);
}

constexpr char FRAMES_GROUP[] = "The frames";

constexpr SettingRow<Pace> g_rows[] = {
    {{OptionRow::Takes::Value, "--frames", "N", FRAMES_GROUP,
      "2 to 1000; by default 30, with --data its rows"},
     [](const GivenOption& given, Pace* pPace) {
         pPace->nFrames = ReadCount("--frames", given.value, 2, MAX_FRAMES);
         pPace->bFramesGiven = true;
     }},
    {{OptionRow::Takes::Value, "--fps", "N", FRAMES_GROUP,
      "frames a second, 1 to 50; by default 10"},
     [](const GivenOption& given, Pace* pPace) {
         pPace->nPerSecond = ReadCount("--fps", given.value, 1, MAX_FPS);
     }},
    {{OptionRow::Takes::Value, "--blink-frames", "N", FRAMES_GROUP,
      "blinking colours change between bright and dark every N frames, 1 to 1000, bright first; "
      "with --blink dark first"},
     [](const GivenOption& given, Pace* pPace) {
         pPace->nBlinkFrames = ReadCount("--blink-frames", given.value, 1, MAX_FRAMES);
     }}};

// Tells on a terminal how far the work is, on one line that is gone at the end.
class CProgress {
public:
    explicit CProgress(int nAll) : m_nAll(nAll)
    {
        DWORD nMode = 0;
        m_bTerminal = ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &nMode) != 0;
    }
    ~CProgress()
    {
        if (m_bTerminal) Show(std::string(m_nShown, ' ') + "\r");
    }
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    void Tell(int nDone)
    {
        if (!m_bTerminal) return;
        const std::string text = fmt::format("frame {} of {}", nDone, m_nAll); // never gets shorter
        Show(text);
        m_nShown = text.size();
    }

private:
    static void Show(const std::string& text)
    {
        std::fprintf(stderr, "\r%s", text.c_str());
        std::fflush(stderr);
    }

    int m_nAll;
    bool m_bTerminal = false;
    std::size_t m_nShown = 0;
};

// The time that clocks show, by frame.
class CPlayedTime {
public:
    CPlayedTime(const CLiveOptions& live, const Pace& pace) : m_pace(pace)
    {
        if (const SYSTEMTIME* pTime = live.Time()) {
            m_local = m_universal = *pTime;
        } else {
            ::GetLocalTime(&m_local);
            ::GetSystemTime(&m_universal);
        }
        if (live.LastTime()) m_nSpan = SecondsBetween(m_local, *live.LastTime());
    }

    void SetIn(const CScene& scene, int nFrame) const
    {
        const int nSeconds = m_nSpan < 0 ? nFrame / m_pace.nPerSecond
                                         : m_nSpan * nFrame / std::max(m_pace.nFrames - 1, 1);
        scene.SetTime(LaterTime(m_local, nSeconds), LaterTime(m_universal, nSeconds));
    }

private:
    const Pace& m_pace;
    SYSTEMTIME m_local{};
    SYSTEMTIME m_universal{};
    int m_nSpan = -1; // from the first frame to the last, in seconds; less than 0: as they show
};

// Sets what moves, frame by frame, and paints it.
class CPlayer {
public:
    CPlayer(const CScene& scene, const SceneOptions& options, const Pace& pace, bool bSmooth)
        : m_scene(scene), m_options(options), m_pace(pace), m_time(options.live, pace),
          m_bClock(FindHostElements(scene.Drawing().Engine()).HasClock()),
          m_bInParts(options.live.MovesNumbersAlone() && !bSmooth && !m_bClock &&
                     !pace.nBlinkFrames)
    {
    }

    [[nodiscard]] bool Moves() const
    {
        return m_bClock || m_pace.nBlinkFrames || m_options.live.Table() ||
               m_options.live.HasRanges();
    }
    void Paint(HDC hdc, int nFrame) const;
    [[nodiscard]] CGifMovie Play() const;

private:
    const CScene& m_scene;
    const SceneOptions& m_options;
    const Pace& m_pace;
    CPlayedTime m_time;
    bool m_bClock;
    bool m_bInParts; // partial draws, which are never smooth, show all that moves
};

void CPlayer::Paint(HDC hdc, int nFrame) const
{
    m_options.live.ApplyFrame(m_scene.Drawing().Engine(), nFrame, m_pace.nFrames);
    if (m_pace.nBlinkFrames)
        m_scene.SetBlink((nFrame / m_pace.nBlinkFrames % 2 != 0) != m_options.bBlink);
    if (m_bClock) m_time.SetIn(m_scene, nFrame);
    const bool bDrawn = !m_bInParts ? m_scene.PaintAnew(hdc)
                                    : (nFrame ? m_scene.PaintMoving(hdc) : m_scene.Paint(hdc));
    if (!bDrawn) throw CTrouble(NOT_DRAWN);
    ::GdiFlush();
}

CGifMovie CPlayer::Play() const
{
    const CCanvas canvas(m_scene.Size());
    if (!canvas.Bits()) throw CTrouble(NO_MEMORY_FOR_PICTURE);
    CGifMovie movie(m_scene.Size());
    CProgress progress(m_pace.nFrames);
    for (int n = 0; n < m_pace.nFrames; ++n) {
        progress.Tell(n + 1);
        Paint(canvas.Dc(), n);
        movie.Add(reinterpret_cast<const uint32_t*>(canvas.Bits()), m_pace.Delay(n));
    }
    return movie;
}

// A row of a table is a frame.
void TakeFrames(const CValueTable* pTable, Pace* pPace)
{
    if (!pTable) return;
    if (pPace->bFramesGiven) throw CTrouble("--frames and --data: a row of the table is a frame");
    if (pTable->CountRows() > MAX_FRAMES)
        throw CTrouble(fmt::format("'{}' has {} rows, and an animated picture at most {} frames",
                                   pTable->File(), pTable->CountRows(), MAX_FRAMES));
    pPace->nFrames = pTable->CountRows();
}

constexpr char ABOUT[] =
    R"(Draws the drawing IN into the animated picture OUT.gif while something moves in it: values and the
status number from one number to another (FROM..TO), evenly from the first frame to the last, all
that a table has (--data), blinking colours (--blink-frames), and clocks, which go on by the time
that each frame shows; then again from the beginning. All other options hold from the first frame
on. Each frame is what 'qel render' draws; but where values of numbers alone move, with --smooth 0,
the first frame is drawn in full, and after it only the moving parts are drawn over what stands
there, as a host does it. IN - is standard input, OUT - standard output.

The picture has the exact colours when all frames together have at most 256 of them, else the 256
that come nearest. While it works, a terminal shows how far it is.)";

constexpr char EXAMPLES[] = R"(
Exit status: 0 the picture is there; 2 it is not (the message is on standard error).

Examples:
  qel animate gauge.qel gauge.gif --set 0.max=100 --value 0=0..100
  qel animate panel.qel panel.gif --status 1 --value 0=20.0..80 --value 41=9..5 --frames 60 --fps 20
  qel animate pump.qel pump.gif --data day.csv --fps 5
  qel animate panel.qel panel.gif --status 0..3 --blink-frames 5 --time 10:08:36)";

int RunAnimate(const CommandLine& given)
{
    SceneOptions options(true);
    Pace pace;
    ReadSceneOptions(given, "animate", &options,
                     [&pace](const GivenOption& option) { TakeOption(g_rows, option, &pace); });
    if (!IsStandardOutput(options.out) && !HasExtension(options.out, L".gif"))
        throw CTrouble("the picture '" + ToUtf8(options.out) + "' needs the extension .gif");
    if (options.bTransparent)
        throw CTrouble(
            "--transparent is of 'qel render' alone: the frames of a .gif stand one over "
            "the other");
    TakeFrames(options.live.Table(), &pace);
    const long nSmooth = SmoothSamples(options, true);
    const CScene scene(options, nSmooth);
    const CPlayer player(scene, options, pace, nSmooth != 0);
    WriteComplete(options.out, [&](const std::wstring& name) { return player.Play().Write(name); });
    scene.TellUnheard();
    if (!player.Moves())
        Complain("warning: nothing moves: there are no --value ID=FROM..TO, --status FROM..TO, "
                 "--data and --blink-frames, and the drawing has no clock with hands");
    return EXIT_CLEAN;
}

} // namespace

CommandRow AnimateCommand()
{
    CommandRow row{"animate",
                   "IN OUT.gif [options]",
                   "the same while values move: an animated picture",
                   ABOUT,
                   std::string(g_sceneNotes) + EXAMPLES,
                   {},
                   RunAnimate};
    AddOptions(g_rows, &row.options);
    AddSceneOptions(&row.options);
    return row;
}

} // namespace qel
