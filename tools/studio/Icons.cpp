// The program's pictures; see the header.
#include "tools/studio/Icons.h"

#include "include/QELEngine.h"
#include "tools/studio/Picture.h"
#include "tools/studio/SystemLook.h"

#include <algorithm>
#include <string>

namespace studio {

namespace {

constexpr int ICON_SIDE = 20; // units of an icon's drawing
constexpr int SAMPLES = 4;

// Draws into the middle of a picture, whose colours are multiplied by alpha.
int DrawResource(const wchar_t* pszName, const CPicture& picture, int nMargin)
{
    HRSRC hInfo = ::FindResourceW(nullptr, pszName, RT_RCDATA);
    HGLOBAL hData = hInfo ? ::LoadResource(nullptr, hInfo) : nullptr;
    HQELENGINE hEngine = hData ? CreateQELEngine() : nullptr;
    if (!hEngine) return 0;
    const int nWhole = picture.Size().cx;
    const int nSide = nWhole - 2 * nMargin;
    DWORD* pCorner = static_cast<DWORD*>(picture.Bits()) + nMargin * nWhole + nMargin;
    QELSetPixelScale(hEngine, static_cast<DWORD>(nSide * 100 / ICON_SIDE));
    QELSetSmooth(hEngine, SAMPLES);
    const int nDrawn =
        QELOpenMemory(hEngine, ::LockResource(hData), ::SizeofResource(nullptr, hInfo)) &&
        QELRenderBitmap(hEngine, pCorner, nSide, nSide, nWhole * 4, 0);
    DestroyQELEngine(hEngine);
    return nDrawn;
}

// Of buttons in high contrast.
struct IconColors {
    COLORREF clrText = ::GetSysColor(COLOR_BTNTEXT);
    COLORREF clrGround = ::GetSysColor(COLOR_3DFACE);
};

COLORREF Between(COLORREF clrA, COLORREF clrB, int nPart)
{
    constexpr int WHOLE = 255;
    const auto mix = [nPart](int nA, int nB) {
        return (nA * (WHOLE - nPart) + nB * nPart) / WHOLE;
    };
    return RGB(mix(GetRValue(clrA), GetRValue(clrB)), mix(GetGValue(clrA), GetGValue(clrB)),
               mix(GetBValue(clrA), GetBValue(clrB)));
}

// What is drawn dark or coloured is as texts are, and what is white as the ground.
COLORREF SignColor(int nLightness)
{
    constexpr int WHOLE = 255;
    const IconColors colors;
    return Between(colors.clrText, colors.clrGround, std::clamp(2 * nLightness - WHOLE, 0, WHOLE));
}

// An icon that is a sample of something light or dark shows it in the lighter or darker of the two,
// within a line as texts are.
COLORREF SampleColor(int nLightness)
{
    constexpr int DARK = 60;
    constexpr int LIGHT = 128;
    const IconColors colors;
    const bool bTextIsLight = IsFaceDark();
    if (nLightness >= LIGHT) return bTextIsLight ? colors.clrText : colors.clrGround;
    if (nLightness >= DARK) return colors.clrText;
    return bTextIsLight ? colors.clrGround : colors.clrText;
}

// The colours are multiplied by alpha.
void TakeSystemColors(const CPicture& picture, COLORREF (*pfnColor)(int))
{
    constexpr int WHOLE = 255;
    auto* p = static_cast<BYTE*>(picture.Bits());
    for (int n = picture.Size().cx * picture.Size().cy; n > 0; --n, p += 4) {
        const int nAlpha = p[3];
        if (!nAlpha) continue;
        const COLORREF clr = pfnColor((p[0] + p[1] + p[2]) / 3 * WHOLE / nAlpha);
        p[0] = static_cast<BYTE>(GetBValue(clr) * nAlpha / WHOLE);
        p[1] = static_cast<BYTE>(GetGValue(clr) * nAlpha / WHOLE);
        p[2] = static_cast<BYTE>(GetRValue(clr) * nAlpha / WHOLE);
    }
}

bool IsSample(const std::wstring& name)
{
    return name == L"ICON_LIGHT" || name == L"ICON_DARK";
}

// The image list takes a copy, which no context holds.
void AddTo(HIMAGELIST hList, const wchar_t* pszName, int nSide, int nMargin)
{
    CPicture picture;
    if (!picture.SetSize({nSide + 2 * nMargin, nSide + 2 * nMargin})) return;
    DrawResource(pszName, picture, nMargin);
    if (IsHighContrast()) TakeSystemColors(picture, IsSample(pszName) ? SampleColor : SignColor);
    auto* hCopy = static_cast<HBITMAP>(
        ::CopyImage(picture.Bitmap(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    ImageList_Add(hList, hCopy, nullptr);
    ::DeleteObject(hCopy);
}

} // namespace

HIMAGELIST MakeIcons(std::initializer_list<const wchar_t*> names, int nSide, int nMargin)
{
    const int nWhole = nSide + 2 * nMargin;
    HIMAGELIST hList =
        ImageList_Create(nWhole, nWhole, ILC_COLOR32, static_cast<int>(names.size()), 0);
    for (const wchar_t* pszName : names) AddTo(hList, pszName, nSide, nMargin);
    return hList;
}

HICON MakeIcon(const wchar_t* pszName, int nSide)
{
    CPicture picture;
    if (!picture.SetSize({nSide, nSide}) || !DrawResource(pszName, picture, 0)) return nullptr;
    HBITMAP hMask = ::CreateBitmap(nSide, nSide, 1, 1, nullptr);
    ICONINFO info{TRUE, 0, 0, hMask, picture.Bitmap()};
    HICON hIcon = ::CreateIconIndirect(&info);
    ::DeleteObject(hMask);
    return hIcon;
}

} // namespace studio
