// qel animate: draws a drawing whose values go through ranges into an animated picture, as a host
// would show it: one full draw, and partial ones onto the same bitmap.
#include "tools/qel/Canvas.h"
#include "tools/qel/GifWriter.h"
#include "tools/qel/ImageWriter.h"
#include "tools/qel/OutputFile.h"
#include "tools/qel/Scene.h"
#include "tools/qel/Streams.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>

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
    {{OptionRow::Takes::Value, "--frames", "N", FRAMES_GROUP, "2 to 1000; by default 30"},
     [](const GivenOption& given, Pace* pPace) {
         pPace->nFrames = ReadCount("--frames", given.value, 2, MAX_FRAMES);
     }},
    {{OptionRow::Takes::Value, "--fps", "N", FRAMES_GROUP,
      "frames a second, 1 to 50; by default 10"},
     [](const GivenOption& given, Pace* pPace) {
         pPace->nPerSecond = ReadCount("--fps", given.value, 1, MAX_FPS);
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

CGifMovie Play(const CScene& scene, const CLiveOptions& live, const Pace& pace)
{
    const CCanvas canvas(scene.Size());
    if (!canvas.Bits()) throw CTrouble(NO_MEMORY_FOR_PICTURE);
    CGifMovie movie(scene.Size());
    CProgress progress(pace.nFrames);
    for (int n = 0; n < pace.nFrames; ++n) {
        progress.Tell(n + 1);
        live.ApplyFrame(scene.Drawing(), n, pace.nFrames);
        const bool bDrawn = n ? scene.PaintMoving(canvas.Dc()) : scene.Paint(canvas.Dc());
        if (!bDrawn) throw CTrouble(NOT_DRAWN);
        ::GdiFlush();
        movie.Add(reinterpret_cast<const uint32_t*>(canvas.Bits()), pace.Delay(n));
    }
    return movie;
}

constexpr char ABOUT[] =
    R"(Draws the drawing IN into the animated picture OUT.gif while values go from one number to another,
evenly from the first frame to the last, then again from the beginning. The first frame is drawn in
full; after it only the moving parts are drawn over what stands there, as a host does it. All other
options hold from the first frame on. IN - is standard input, OUT - standard output.

The picture has the exact colours when all frames together have at most 256 of them, else the 256
that come nearest. While it works, a terminal shows how far it is.)";

constexpr char EXAMPLES[] = R"(
Exit status: 0 the picture is there; 2 it is not (the message is on standard error).

Examples:
  qel animate gauge.qel gauge.gif --set 0.max=100 --value 0=0..100
  qel animate panel.qel panel.gif --status 1 --value 0=20.0..80 --value 41=9..5 --frames 60 --fps 20)";

int RunAnimate(const CommandLine& given)
{
    SceneOptions options(true);
    Pace pace;
    ReadSceneOptions(given, "animate", &options,
                     [&pace](const GivenOption& option) { TakeOption(g_rows, option, &pace); });
    if (!IsStandardOutput(options.out) && !HasExtension(options.out, L".gif"))
        throw CTrouble("the picture '" + ToUtf8(options.out) + "' needs the extension .gif");
    if (!options.live.HasRanges())
        throw CTrouble("animate wants a value that moves: --value ID=FROM..TO");
    const CScene scene(options);
    WriteComplete(options.out, [&](const std::wstring& name) {
        return Play(scene, options.live, pace).Write(name);
    });
    scene.TellUnheard();
    return EXIT_CLEAN;
}

} // namespace

CommandRow AnimateCommand()
{
    CommandRow row{"animate",
                   "IN OUT.gif --value ID=FROM..TO [options]",
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
