// What render and animate have in common; see the header.
#include "tools/qel/Scene.h"

#include "tools/qel/Text.h"
#include "tools/qel/TextFont.h"

#include <cwchar>
#include <cwctype>
#include <utility>

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

SIZE ReadSize(const std::wstring& text)
{
    const std::size_t nCross = text.find(L'x');
    long nWidth = 0;
    long nHeight = 0;
    if (nCross == std::wstring::npos || !ReadSide(text.substr(0, nCross), &nWidth) ||
        !ReadSide(text.substr(nCross + 1), &nHeight) || nHeight > MAX_PIXELS / nWidth)
        throw CTrouble("--size wants WIDTHxHEIGHT, each 1 to 16384 and together no more than "
                       "8192x8192, not '" +
                       ToUtf8(text) + "'");
    return {nWidth, nHeight};
}

COLORREF ReadColor(const std::wstring& text)
{
    long nValue = 0;
    bool bHex = text.size() == 6;
    for (const wchar_t c : text) bHex = bHex && std::iswxdigit(c);
    if (!bHex || !ReadNumber(text, 16, &nValue))
        throw CTrouble("--background wants six hexadecimal digits, RRGGBB, not '" + ToUtf8(text) +
                       "'");
    return RGB((nValue >> 16) & 0xFF, (nValue >> 8) & 0xFF, nValue & 0xFF);
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

bool TakePictureOption(CArgumentReader& reader, SceneOptions* pOptions)
{
    const std::wstring& word = reader.Current();
    if (word == L"--size")
        pOptions->size = ReadSize(reader.Value());
    else if (word == L"--background")
        pOptions->clrBackground = ReadColor(reader.Value());
    else if (word == L"--rotate")
        pOptions->nRotate = ReadAngle(reader.Value());
    else if (word == L"--blink")
        pOptions->bBlink = true;
    else if (word == L"--pressed")
        pOptions->bPressed = true;
    else if (word == L"--font")
        pOptions->font = ReadFont(reader.Value());
    else
        return false;
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

SIZE PictureSize(const CDrawing& drawing)
{
    const SIZE ref = drawing.RefSize();
    if (!IsPositive(ref))
        throw CTrouble("the drawing has no size of its own; give one with --size");
    const LONG nFactor = (WANTED_WIDTH - 1) / ref.cx + 1;
    if (ref.cx > MAX_SIDE || ref.cy > MAX_SIDE / nFactor ||
        ref.cy * nFactor > MAX_PIXELS / (ref.cx * nFactor))
        throw CTrouble(
            "the drawing is too large or too narrow for a picture; give a size with --size");
    return {ref.cx * nFactor, ref.cy * nFactor};
}

// Gives the drawing its size, its turn and its phase; the size of the picture.
SIZE SetUp(const CDrawing& drawing, const SceneOptions& options)
{
    if (options.size.cx && !IsPositive(drawing.RefSize()))
        GiveSize(drawing, options.size, options.nRotate);
    if (options.nRotate) QELRotate(drawing.Engine(), options.nRotate);
    if (options.bBlink) QELSetBlinkState(drawing.Engine(), 1);
    const SIZE size = options.size.cx ? options.size : PictureSize(drawing);
    const RECT rc{0, 0, size.cx, size.cy};
    QELSetQELRect(drawing.Engine(), &rc);
    return size;
}

} // namespace

void ReadSceneOptions(const Arguments& arguments, const char* pszCommand, SceneOptions* pOptions,
                      const std::function<bool(CArgumentReader&)>& takeOwn)
{
    const std::string command = pszCommand;
    Arguments names;
    CArgumentReader reader(arguments);
    while (reader.Next()) {
        if (!reader.IsOption())
            names.push_back(reader.Current());
        else if (!TakePictureOption(reader, pOptions) && !pOptions->live.Take(reader) &&
                 !takeOwn(reader))
            reader.RefuseOption();
    }
    if (names.size() > 2) throw CTrouble(command + " takes one drawing and one picture");
    if (names.size() < 2)
        throw CTrouble(command + " wants a drawing and a picture: qel " + command + " IN OUT");
    pOptions->in = names[0];
    pOptions->out = names[1];
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
