// The font of texts; see the header. tests/LegibleTests.cpp holds it to being read.
#include "tools/qel/TextFont.h"

#include <cwchar>

namespace qel {

namespace {

constexpr int FONT_HEIGHT = 16; // texts take the face and choose their own size

// All have Chinese glyphs but the last; those of even width come first, since the engine gives
// every byte of a text the same width and cuts what is wider.
constexpr const wchar_t* g_defaultFaces[] = {L"WenQuanYi Zen Hei Mono", L"NSimSun", L"SimSun",
                                             L"WenQuanYi Zen Hei", L"Courier New"};

int CALLBACK NoteScalable(const LOGFONTW*, const TEXTMETRICW*, DWORD nType, LPARAM pFound)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the system passes the pointer on as a number
    if (!(nType & RASTER_FONTTYPE)) *reinterpret_cast<bool*>(pFound) = true;
    return 1;
}

} // namespace

LOGFONTW TextFont(const std::wstring& face)
{
    LOGFONTW font{};
    font.lfHeight = FONT_HEIGHT;
    font.lfCharSet = DEFAULT_CHARSET;
    // Faces ask for letters of two colours in small sizes. In a cell of 6 x 12 those lose strokes:
    // 400 becomes 100, and a hyphen nothing.
    font.lfQuality = CLEARTYPE_QUALITY;
    std::wcsncpy(font.lfFaceName, face.c_str(), LF_FACESIZE - 1);
    return font;
}

bool IsScalableFace(const std::wstring& face)
{
    if (face.empty() || face.size() >= LF_FACESIZE) return false;
    bool bFound = false;
    LOGFONTW font = TextFont(face);
    const HDC hdc = ::CreateCompatibleDC(nullptr);
    ::EnumFontFamiliesExW(hdc, &font, NoteScalable, reinterpret_cast<LPARAM>(&bFound), 0);
    ::DeleteDC(hdc);
    return bFound;
}

std::wstring DefaultTextFace()
{
    for (const wchar_t* pszFace : g_defaultFaces)
        if (IsScalableFace(pszFace)) return pszFace;
    return {};
}

} // namespace qel
