// qel render: draws a drawing into a picture.
#include "tools/qel/Command.h"
#include "tools/qel/Drawing.h"
#include "tools/qel/ImageWriter.h"
#include "tools/qel/Text.h"

#include <cwchar>
#include <cwctype>

namespace {

constexpr LONG WANTED_WIDTH = 800;
constexpr LONG MAX_SIDE = 16384;
constexpr int FONT_HEIGHT = 16; // texts take the face and choose their own size
constexpr wchar_t DEFAULT_FONT[] = L"WenQuanYi Zen Hei Mono"; // even widths, and Chinese glyphs

struct Options {
    std::wstring in;
    std::wstring out;
    SIZE size{0, 0}; // 0: by the drawing
    COLORREF clrBackground = RGB(0xC0, 0xC0, 0xC0);
    int nRotate = 0;
    bool bBlink = false;
    bool bPressed = false;
    std::wstring font = DEFAULT_FONT;
};

// The whole text as a number of that base; false for anything else.
bool ReadNumber(const std::wstring& text, int nBase, long* pnValue)
{
    if (text.empty() || text.size() > 9 || std::iswspace(text[0])) return false;
    wchar_t* pEnd = nullptr;
    *pnValue = std::wcstol(text.c_str(), &pEnd, nBase);
    return *pEnd == 0;
}

SIZE ReadSize(const std::wstring& text)
{
    const std::size_t nCross = text.find(L'x');
    long nWidth = 0;
    long nHeight = 0;
    if (nCross == std::wstring::npos || !ReadNumber(text.substr(0, nCross), 10, &nWidth) ||
        !ReadNumber(text.substr(nCross + 1), 10, &nHeight) || nWidth < 1 || nHeight < 1 ||
        nWidth > MAX_SIDE || nHeight > MAX_SIDE)
        throw CTrouble("--size wants WIDTHxHEIGHT, each 1 to 16384, not '" + ToUtf8(text) + "'");
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

Options ReadOptions(const Arguments& arguments)
{
    Options options;
    CArgumentReader reader(arguments);
    while (reader.Next()) {
        const std::wstring& word = reader.Current();
        if (!reader.IsOption()) {
            if (!options.out.empty()) throw CTrouble("render takes one drawing and one picture");
            (options.in.empty() ? options.in : options.out) = word;
        } else if (word == L"--size") {
            options.size = ReadSize(reader.Value());
        } else if (word == L"--background") {
            options.clrBackground = ReadColor(reader.Value());
        } else if (word == L"--rotate") {
            options.nRotate = ReadAngle(reader.Value());
        } else if (word == L"--blink") {
            options.bBlink = true;
        } else if (word == L"--pressed") {
            options.bPressed = true;
        } else if (word == L"--font") {
            options.font = reader.Value();
        } else {
            reader.RefuseOption();
        }
    }
    if (options.out.empty())
        throw CTrouble("render wants a drawing and a picture: qel render IN OUT");
    if (options.font.size() >= LF_FACESIZE)
        throw CTrouble("--font wants a name of at most 31 characters");
    return options;
}

SIZE PictureSize(const CDrawing& drawing)
{
    const SIZE ref = drawing.RefSize();
    if (ref.cx < 1 || ref.cy < 1)
        throw CTrouble("the drawing has no size of its own; give one with --size");
    const LONG nFactor = (WANTED_WIDTH - 1) / ref.cx + 1;
    if (ref.cx > MAX_SIDE || ref.cy > MAX_SIDE / nFactor)
        throw CTrouble(
            "the drawing is too large or too narrow for a picture; give a size with --size");
    return {ref.cx * nFactor, ref.cy * nFactor};
}

void Paint(HDC hdc, const CDrawing& drawing, const Options& options, const RECT& rc)
{
    const HBRUSH hBrush = ::CreateSolidBrush(options.clrBackground);
    ::FillRect(hdc, &rc, hBrush);
    ::DeleteObject(hBrush);
    LOGFONTW font{};
    font.lfHeight = FONT_HEIGHT;
    font.lfCharSet = DEFAULT_CHARSET;
    std::wcsncpy(font.lfFaceName, options.font.c_str(), LF_FACESIZE - 1);
    const HFONT hFont = ::CreateFontIndirectW(&font);
    const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
    QELDraw(drawing.Engine(), hdc, &rc, QEL_DRAW_FULL | (options.bPressed ? QEL_DRAW_PRESSED : 0));
    ::SelectObject(hdc, hPrev);
    ::DeleteObject(hFont);
}

} // namespace

int RunRender(const Arguments& arguments)
{
    const Options options = ReadOptions(arguments);
    KindOf(options.out); // a name that cannot be written is refused before any work
    const CDrawing drawing(options.in);
    if (options.nRotate) QELRotate(drawing.Engine(), options.nRotate);
    if (options.bBlink) QELSetBlinkState(drawing.Engine(), 1);
    const SIZE size = options.size.cx ? options.size : PictureSize(drawing);
    const RECT rc{0, 0, size.cx, size.cy};
    QELSetQELRect(drawing.Engine(), &rc);
    WritePicture(options.out, size, [&](HDC hdc) { Paint(hdc, drawing, options, rc); });
    return EXIT_CLEAN;
}
