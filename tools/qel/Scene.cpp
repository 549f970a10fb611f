// What render and animate have in common; see the header.
#include "tools/qel/Scene.h"

#include "tools/qel/Text.h"
#include "tools/qel/TextFont.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <cwctype>
#include <utility>

namespace qel {

namespace {

constexpr LONG WANTED_WIDTH = 800;
constexpr LONG MAX_SIDE = 16384;
constexpr long SCREEN_SAMPLES = 4;
constexpr LONG MAX_PIXELS = 8192 * 8192; // so many fit a process of 32 bits, and their file as well

// Digits alone.
bool ReadSide(const std::wstring& text, long* pnSide)
{
    return text.find_first_not_of(L"0123456789") == std::wstring::npos &&
           ReadNumber(text, 10, pnSide) && *pnSide >= 1 && *pnSide <= MAX_SIDE;
}

constexpr char SIZE_LIMITS[] = "each 1 to 16384 and together no more than 8192x8192";

bool Fits(double fWidth, double fHeight)
{
    return fWidth >= 1 && fHeight >= 1 && fWidth <= MAX_SIDE && fHeight <= MAX_SIDE &&
           fWidth * fHeight <= MAX_PIXELS;
}

SIZE ReadSize(const std::wstring& text)
{
    const std::size_t nCross = text.find(L'x');
    long nWidth = 0;
    long nHeight = 0;
    if (nCross == std::wstring::npos || !ReadSide(text.substr(0, nCross), &nWidth) ||
        !ReadSide(text.substr(nCross + 1), &nHeight) || !Fits(nWidth, nHeight))
        throw CTrouble(
            fmt::format("--size wants WIDTHxHEIGHT, {}, not '{}'", SIZE_LIMITS, ToUtf8(text)));
    return {nWidth, nHeight};
}

LONG ReadOneSide(const GivenOption& given)
{
    long nSide = 0;
    if (ReadSide(given.value, &nSide)) return nSide;
    throw CTrouble(fmt::format("{} wants a number of pixels, 1 to {}, not '{}'", given.name,
                               MAX_SIDE, ToUtf8(given.value)));
}

double ReadZoom(const std::wstring& text)
{
    constexpr std::size_t MAX_DIGITS = 12;
    wchar_t* pEnd = nullptr;
    const double fZoom = std::wcstod(text.c_str(), &pEnd);
    if (text.find_first_not_of(L"0123456789.") == std::wstring::npos && text.size() <= MAX_DIGITS &&
        !*pEnd && fZoom > 0)
        return fZoom;
    throw CTrouble(fmt::format(
        "--zoom wants how many times the drawing's size, as 2 or 0.5, not '{}'", ToUtf8(text)));
}

// The last option about the size holds.
void TakeSize(const GivenOption& given, SceneOptions* pOptions)
{
    pOptions->size = ReadSize(given.value);
    pOptions->bWhole = true;
    pOptions->fZoom = 0;
}

// Width and height go together.
void TakeSide(const GivenOption& given, LONG SIZE::*pSide, SceneOptions* pOptions)
{
    const LONG nSide = ReadOneSide(given);
    if (pOptions->bWhole) pOptions->size = {0, 0};
    pOptions->size.*pSide = nSide;
    pOptions->bWhole = false;
    pOptions->fZoom = 0;
}

void TakeZoom(const GivenOption& given, SceneOptions* pOptions)
{
    pOptions->fZoom = ReadZoom(given.value);
    pOptions->size = {0, 0};
    pOptions->bWhole = false;
}

long ReadScale(const std::wstring& text)
{
    long nScale = 0;
    if (ReadNumber(text, 10, &nScale) && nScale >= 25 && nScale <= 1600) return nScale;
    throw CTrouble("--scale wants a percentage from 25 to 1600, not '" + ToUtf8(text) + "'");
}

long ReadSmooth(const std::wstring& text)
{
    long nSamples = 0;
    if (ReadNumber(text, 10, &nSamples) && (nSamples == 0 || (nSamples >= 2 && nSamples <= 4)))
        return nSamples;
    throw CTrouble("--smooth wants 2, 3 or 4 samples each way, or 0, not '" + ToUtf8(text) + "'");
}

COLORREF ReadBackground(const std::wstring& text)
{
    COLORREF clr = 0;
    if (ReadColor(ToUtf8(text.starts_with(L'#') ? text : L'#' + text), &clr)) return clr;
    throw CTrouble("--background wants six hexadecimal digits, RRGGBB, not '" + ToUtf8(text) + "'");
}

int ReadAngle(const std::wstring& text)
{
    long nValue = 0;
    if (!ReadNumber(text, 10, &nValue))
        throw CTrouble("--rotate wants a whole number of degrees, not '" + ToUtf8(text) + "'");
    return static_cast<int>(nValue);
}

std::wstring ReadFont(const std::wstring& name)
{
    if (!IsScalableFace(name))
        throw CTrouble("--font: the system has no scalable font '" + ToUtf8(name) + "'");
    return name;
}

constexpr char PICTURE_GROUP[] = "The picture";
constexpr auto VALUE = OptionRow::Takes::Value;
constexpr auto NOTHING = OptionRow::Takes::Nothing;

constexpr SettingRow<SceneOptions> g_rows[] = {
    {{VALUE, "-o,--output", "OUT", PICTURE_GROUP, "the picture, in the place of the second name"},
     [](const GivenOption& given, SceneOptions* p) { p->out = given.value; }},
    {{VALUE, "--size", "WxH", PICTURE_GROUP,
      "the size in pixels, each side 1 to 16384 and no more pixels than 8192x8192 has; by default "
      "the drawing's reference size times the smallest whole number that makes it at least 800 "
      "wide. Of the options about the size the last one holds"},
     TakeSize},
    {{VALUE, "--width", "W", PICTURE_GROUP,
      "one side in pixels; the other one follows the drawing, unless both are given"},
     [](const GivenOption& given, SceneOptions* p) { TakeSide(given, &SIZE::cx, p); }},
    {{VALUE, "--height", "H", PICTURE_GROUP, "the other side, likewise"},
     [](const GivenOption& given, SceneOptions* p) { TakeSide(given, &SIZE::cy, p); }},
    {{VALUE, "--zoom", "N", PICTURE_GROUP, "so many times the drawing's reference size: 2, or 0.5"},
     TakeZoom},
    {{VALUE, "--scale", "P", PICTURE_GROUP,
      "how large the pixels are that pens, borders, hatches and texts are told in, in percent, 25 "
      "to "
      "1600; without --size, --width and --height the picture becomes as much larger. 200 is for a "
      "screen of twice the resolution"},
     [](const GivenOption& given, SceneOptions* p) { p->nScale = ReadScale(given.value); }},
    {{VALUE, "--smooth", "N", PICTURE_GROUP,
      "each pixel is the mean of 2, 3 or 4 samples each way, so that slanted lines, arcs and "
      "letters are smooth; 0 is none. By default 4 for .png, .jpg and .gif, 0 for .bmp. Of .emf, "
      "which has no pixels, nothing changes"},
     [](const GivenOption& given, SceneOptions* p) { p->smooth = ReadSmooth(given.value); }},
    {{VALUE, "--background", "RRGGBB", PICTURE_GROUP,
      "hexadecimal; by default C0C0C0, on which black and white both show. Here as everywhere a "
      "colour is taken, #RRGGBB is one, too"},
     [](const GivenOption& given, SceneOptions* p) {
         p->clrBackground = ReadBackground(given.value);
         p->bBackground = true;
     }},
    {{NOTHING, "--transparent", "", PICTURE_GROUP,
      "no background: the picture, a .png of 'qel render', lets through what stands behind it "
      "where "
      "nothing is painted, and in part at smooth edges"},
     [](const GivenOption&, SceneOptions* p) { p->bTransparent = true; }},
    {{VALUE, "--rotate", "DEG", PICTURE_GROUP,
      "turn counter-clockwise, by quarter turns: 90, 180, 270, -90"},
     [](const GivenOption& given, SceneOptions* p) { p->nRotate = ReadAngle(given.value); }},
    {{NOTHING, "--blink", "", PICTURE_GROUP, "the dark phase of blinking colours"},
     [](const GivenOption&, SceneOptions* p) { p->bBlink = true; }},
    {{NOTHING, "--pressed", "", PICTURE_GROUP, "elements with the pressed flag are drawn pressed"},
     [](const GivenOption&, SceneOptions* p) { p->bPressed = true; }},
    {{VALUE, "--font", "NAME", PICTURE_GROUP,
      "the face of all texts, a scalable one; by default WenQuanYi Zen Hei Mono or another one of "
      "even width with Chinese glyphs"},
     [](const GivenOption& given, SceneOptions* p) { p->font = ReadFont(given.value); }},
    {{VALUE, "--config", "FILE", PICTURE_GROUP,
      "options from a file, one a line: width = 800, set = [\"0.max=100\"], blink = true; after a "
      "line [render] or [animate] for that command alone. # and ; begin a line that is a remark. "
      "What the command line gives, too, is taken from there; a setting comes before those of the "
      "command line"},
     [](const GivenOption&, SceneOptions*) {}}}; // its words stand in the place of it by now

bool IsPositive(SIZE size)
{
    return size.cx > 0 && size.cy > 0;
}

// Whether a turn by that angle exchanges width and height, as the engine itself turns an empty
// drawing.
bool LiesOnItsSide(int nRotate)
{
    const HQELENGINE hEngine = CreateQELEngine();
    SIZE size{1, 2};
    const bool bSide = QELNewFile(hEngine) && QELSetRefSize(hEngine, &size) &&
                       QELRotate(hEngine, nRotate) && QELGetRefSize(hEngine, &size) && size.cx == 2;
    DestroyQELEngine(hEngine);
    return bSide;
}

// A drawing without a size of its own is drawn one unit to a pixel: the picture's size becomes its
// own. This is to come before a turn, which would press all elements into the drawing's size.
void GiveSize(const CDrawing& drawing, SIZE size, int nRotate)
{
    if (LiesOnItsSide(nRotate)) std::swap(size.cx, size.cy);
    QELSetRefSize(drawing.Engine(), &size);
}

// The smallest whole number that makes the picture wide enough.
LONG DefaultZoom(SIZE ref)
{
    return (WANTED_WIDTH - 1) / ref.cx + 1;
}

double Zoom(SIZE ref, const SceneOptions& options)
{
    if (options.size.cx) return static_cast<double>(options.size.cx) / ref.cx;
    if (options.size.cy) return static_cast<double>(options.size.cy) / ref.cy;
    const double fPlain = options.fZoom > 0 ? options.fZoom : static_cast<double>(DefaultZoom(ref));
    return fPlain * static_cast<double>(options.nScale) / 100;
}

SIZE PictureSize(const CDrawing& drawing, const SceneOptions& options)
{
    const SIZE ref = drawing.RefSize();
    if (IsPositive(options.size)) return options.size;
    if (!IsPositive(ref))
        throw CTrouble("the drawing has no size of its own; give one with --size");
    const double fZoom = Zoom(ref, options);
    const double fWidth = std::max(std::round(ref.cx * fZoom), 1.0);
    const double fHeight = std::max(std::round(ref.cy * fZoom), 1.0);
    if (!Fits(fWidth, fHeight))
        throw CTrouble(
            "the drawing is too large or too narrow for a picture; give a size with --size");
    return {static_cast<LONG>(fWidth), static_cast<LONG>(fHeight)};
}

// Gives the drawing its size, its turn and its phase; the size of the picture.
SIZE SetUp(const CDrawing& drawing, const SceneOptions& options, long nSmooth)
{
    if (IsPositive(options.size) && !IsPositive(drawing.RefSize()))
        GiveSize(drawing, options.size, options.nRotate);
    if (options.nRotate) QELRotate(drawing.Engine(), options.nRotate);
    if (options.bBlink) QELSetBlinkState(drawing.Engine(), 1);
    QELSetPixelScale(drawing.Engine(), static_cast<DWORD>(options.nScale));
    QELSetSmooth(drawing.Engine(), static_cast<int>(nSmooth));
    const SIZE size = PictureSize(drawing, options);
    const RECT rc{0, 0, size.cx, size.cy};
    QELSetQELRect(drawing.Engine(), &rc);
    return size;
}

} // namespace

const char* const g_sceneNotes = R"(A value may also be joined to its option: --size=400x300.

An ID of digits, decimal or 0x hexadecimal, is the number of a scale or meter (scid, mtid); all else
is an identifier of the file (id). --text and --quality have identifiers alone, also of digits.

V is a decimal number, also a negative one, or 0x and hexadecimal digits; a colour is #RRGGBB, or
0xBBGGRR with the last two digits red. Values, and the setting base, may also be real numbers,
written with a point: a meter draws the kind that was set last, so write all its values with a point
or none. What the drawing refuses is an error, and then there is no picture. What it takes and
nothing in it follows (a status number that no element has, a parameter, setting, value or time that
shows nowhere) is a warning on standard error, and the picture is made.
)";

void AddSceneOptions(OptionRows* pRows)
{
    AddOptions(g_rows, pRows);
    CLiveOptions::AddRows(pRows);
}

void ReadSceneOptions(const CommandLine& given, const char* pszCommand, SceneOptions* pOptions,
                      const std::function<void(const GivenOption&)>& takeOwn)
{
    const std::string command = pszCommand;
    for (const GivenOption& option : given.options)
        if (!TakeOption(g_rows, option, pOptions) && !pOptions->live.Take(option)) takeOwn(option);
    Arguments names = given.names;
    if (!pOptions->out.empty()) names.push_back(pOptions->out);
    if (names.size() > 2) throw CTrouble(command + " takes one drawing and one picture");
    if (names.size() < 2)
        throw CTrouble(command + " wants a drawing and a picture: qel " + command + " IN OUT");
    pOptions->in = names[0];
    pOptions->out = names[1];
    if (IsPositive(pOptions->size) && !Fits(pOptions->size.cx, pOptions->size.cy))
        throw CTrouble(fmt::format("a picture's width and height are {}", SIZE_LIMITS));
    if (pOptions->bTransparent && pOptions->bBackground)
        throw CTrouble("--transparent and --background: a transparent picture has no background");
}

long SmoothSamples(const SceneOptions& options, bool bForScreen)
{
    return options.smooth.value_or(bForScreen ? SCREEN_SAMPLES : 0);
}

bool ReadNumber(const std::wstring& text, int nBase, long* pnValue)
{
    if (text.empty() || text.size() > 9 || std::iswspace(text[0])) return false;
    wchar_t* pEnd = nullptr;
    *pnValue = std::wcstol(text.c_str(), &pEnd, nBase);
    return *pEnd == 0;
}

CScene::CScene(const SceneOptions& options, long nSmooth)
    : m_options(options), m_drawing(options.in), m_size(SetUp(m_drawing, options, nSmooth)),
      m_face(options.font.empty() ? DefaultTextFace() : options.font)
{
    if (const SYSTEMTIME* pTime = options.live.Time()) SetTime(*pTime, *pTime);
    options.live.Apply(m_drawing.Engine());
    Settle();
}

// A gauge's read-out has the colour of the value before. A picture is to show one that has stood at
// its value: it is drawn once onto a single pixel that nobody sees.
void CScene::Settle() const
{
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    if (!hdc) return;
    Draw(hdc, QEL_DRAW_FULL);
    ::DeleteDC(hdc);
}

bool CScene::Draw(HDC hdc, DWORD nFlags) const
{
    const RECT rc{0, 0, m_size.cx, m_size.cy};
    const LOGFONTW font = TextFont(m_face);
    const HFONT hFont = ::CreateFontIndirectW(&font);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    const int nDrawn =
        QELDraw(m_drawing.Engine(), hdc, &rc, nFlags | (m_options.bPressed ? QEL_DRAW_PRESSED : 0));
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hFont);
    return nDrawn != 0;
}

bool CScene::Paint(HDC hdc) const
{
    const RECT rc{0, 0, m_size.cx, m_size.cy};
    const HBRUSH hBrush = ::CreateSolidBrush(m_options.clrBackground);
    ::FillRect(hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
    return Draw(hdc, QEL_DRAW_FULL);
}

// Clocks show the time of the last advance there.
bool CScene::Render(BYTE* pBits) const
{
    QELAdvance(m_drawing.Engine(), 0);
    return QELSetFontFace(m_drawing.Engine(), m_face.c_str()) &&
           QELRenderBitmap(m_drawing.Engine(), pBits, m_size.cx, m_size.cy, m_size.cx * 4,
                           m_options.bPressed ? QEL_DRAW_PRESSED : 0);
}

void CScene::TellUnheard() const
{
    for (const std::string& text : m_options.live.Unheard(m_drawing.Engine()))
        Complain("warning: " + text);
}

bool CScene::PaintMoving(HDC hdc) const
{
    return Draw(hdc, 0);
}

bool CScene::PaintAnew(HDC hdc) const
{
    Settle();
    return Paint(hdc);
}

void CScene::SetBlink(bool bDark) const
{
    QELSetBlinkState(m_drawing.Engine(), bDark);
}

void CScene::SetTime(const SYSTEMTIME& local, const SYSTEMTIME& universal) const
{
    m_time.Set(local, universal);
}

} // namespace qel
