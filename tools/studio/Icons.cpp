// The program's pictures; see the header.
#include "tools/studio/Icons.h"

#include "include/QELEngine.h"
#include "tools/studio/Picture.h"

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

// The image list takes a copy, which no context holds.
void AddTo(HIMAGELIST hList, const wchar_t* pszName, int nSide, int nMargin)
{
    CPicture picture;
    if (!picture.SetSize({nSide + 2 * nMargin, nSide + 2 * nMargin})) return;
    DrawResource(pszName, picture, nMargin);
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
