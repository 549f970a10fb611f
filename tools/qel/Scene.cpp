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

// The last option about the size holds; width and height go together.
bool TakeSizeOption(const GivenOption& given, SceneOptions* pOptions)
{
    SIZE size{0, 0};
    double fZoom = 0;
    if (given.name == "--size")
        size = ReadSize(given.value);
    else if (given.name == "--width")
        size = {ReadOneSide(given), pOptions->bWhole ? 0 : pOptions->size.cy};
    else if (given.name == "--height")
        size = {pOptions->bWhole ? 0 : pOptions->size.cx, ReadOneSide(given)};
    else if (given.name == "--zoom")
        fZoom = ReadZoom(given.value);
    else
        return false;
    pOptions->bWhole = given.name == "--size";
    pOptions->size = size;
    pOptions->fZoom = fZoom;
    return true;
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

bool TakePictureOption(const GivenOption& given, SceneOptions* pOptions)
{
    if (given.name == "--output")
        pOptions->out = given.value;
    else if (given.name == "--background")
        pOptions->clrBackground = ReadBackground(given.value);
    else if (given.name == "--rotate")
        pOptions->nRotate = ReadAngle(given.value);
    else if (given.name == "--blink")
        pOptions->bBlink = true;
    else if (given.name == "--pressed")
        pOptions->bPressed = true;
    else if (given.name == "--font")
        pOptions->font = ReadFont(given.value);
    else
        return TakeSizeOption(given, pOptions);
    return true;
}

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
    return options.fZoom > 0 ? options.fZoom : static_cast<double>(DefaultZoom(ref));
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
SIZE SetUp(const CDrawing& drawing, const SceneOptions& options)
{
    if (IsPositive(options.size) && !IsPositive(drawing.RefSize()))
        GiveSize(drawing, options.size, options.nRotate);
    if (options.nRotate) QELRotate(drawing.Engine(), options.nRotate);
    if (options.bBlink) QELSetBlinkState(drawing.Engine(), 1);
    const SIZE size = PictureSize(drawing, options);
    const RECT rc{0, 0, size.cx, size.cy};
    QELSetQELRect(drawing.Engine(), &rc);
    return size;
}

} // namespace

OptionRows SceneOptionRows()
{
    using Takes = OptionRow::Takes;
    OptionRows rows{
        {Takes::Value, "-o,--output"},  {Takes::Value, "--config"}, {Takes::Value, "--size"},
        {Takes::Value, "--width"},      {Takes::Value, "--height"}, {Takes::Value, "--zoom"},
        {Takes::Value, "--background"}, {Takes::Value, "--rotate"}, {Takes::Nothing, "--blink"},
        {Takes::Nothing, "--pressed"},  {Takes::Value, "--font"}};
    for (const OptionRow& row : CLiveOptions::Rows()) rows.push_back(row);
    return rows;
}

void ReadSceneOptions(const CommandLine& given, const char* pszCommand, SceneOptions* pOptions,
                      const std::function<bool(const GivenOption&)>& takeOwn)
{
    const std::string command = pszCommand;
    for (const GivenOption& option : given.options)
        if (!TakePictureOption(option, pOptions) && !pOptions->live.Take(option)) takeOwn(option);
    Arguments names = given.names;
    if (!pOptions->out.empty()) names.push_back(pOptions->out);
    if (names.size() > 2) throw CTrouble(command + " takes one drawing and one picture");
    if (names.size() < 2)
        throw CTrouble(command + " wants a drawing and a picture: qel " + command + " IN OUT");
    pOptions->in = names[0];
    pOptions->out = names[1];
    if (IsPositive(pOptions->size) && !Fits(pOptions->size.cx, pOptions->size.cy))
        throw CTrouble(fmt::format("a picture's width and height are {}", SIZE_LIMITS));
}

bool ReadNumber(const std::wstring& text, int nBase, long* pnValue)
{
    if (text.empty() || text.size() > 9 || std::iswspace(text[0])) return false;
    wchar_t* pEnd = nullptr;
    *pnValue = std::wcstol(text.c_str(), &pEnd, nBase);
    return *pEnd == 0;
}

CScene::CScene(const SceneOptions& options)
    : m_options(options), m_drawing(options.in), m_size(SetUp(m_drawing, options)),
      m_time(options.live.Time()),
      m_font(TextFont(options.font.empty() ? DefaultTextFace() : options.font))
{
    options.live.Apply(m_drawing);
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
    const HFONT hFont = ::CreateFontIndirectW(&m_font);
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

bool CScene::PaintMoving(HDC hdc) const
{
    return Draw(hdc, 0);
}

} // namespace qel
