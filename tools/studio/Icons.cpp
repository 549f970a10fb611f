// The program's pictures; see the header.
#include "tools/studio/Icons.h"

#include "include/QELEngine.h"
#include "tools/studio/Picture.h"

namespace studio {

namespace {

constexpr int ICON_SIDE = 20; // units of an icon's drawing
constexpr int SAMPLES = 4;

// Draws into a picture whose colours are multiplied by alpha.
int DrawResource(const wchar_t* pszName, const CPicture& picture)
{
    HRSRC hInfo = ::FindResourceW(nullptr, pszName, RT_RCDATA);
    HGLOBAL hData = hInfo ? ::LoadResource(nullptr, hInfo) : nullptr;
    HQELENGINE hEngine = hData ? CreateQELEngine() : nullptr;
    if (!hEngine) return 0;
    const int nSide = picture.Size().cx;
    QELSetPixelScale(hEngine, static_cast<DWORD>(nSide * 100 / ICON_SIDE));
    QELSetSmooth(hEngine, SAMPLES);
    const int nDrawn =
        QELOpenMemory(hEngine, ::LockResource(hData), ::SizeofResource(nullptr, hInfo)) &&
        QELRenderBitmap(hEngine, picture.Bits(), nSide, nSide, nSide * 4, 0);
    DestroyQELEngine(hEngine);
    return nDrawn;
}

// The image list takes the bitmap's copy while no context holds it.
void AddTo(HIMAGELIST hList, const wchar_t* pszName, int nSide)
{
    CPicture picture;
    if (!picture.SetSize({nSide, nSide})) return;
    DrawResource(pszName, picture);
    HBITMAP hCopy = static_cast<HBITMAP>(
        ::CopyImage(picture.Bitmap(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    ImageList_Add(hList, hCopy, nullptr);
    ::DeleteObject(hCopy);
}

} // namespace

HIMAGELIST MakeIcons(std::initializer_list<const wchar_t*> names, int nSide)
{
    HIMAGELIST hList =
        ImageList_Create(nSide, nSide, ILC_COLOR32, static_cast<int>(names.size()), 0);
    for (const wchar_t* pszName : names) AddTo(hList, pszName, nSide);
    return hList;
}

HICON MakeIcon(const wchar_t* pszName, int nSide)
{
    CPicture picture;
    if (!picture.SetSize({nSide, nSide}) || !DrawResource(pszName, picture)) return nullptr;
    HBITMAP hMask = ::CreateBitmap(nSide, nSide, 1, 1, nullptr);
    ICONINFO info{TRUE, 0, 0, hMask, picture.Bitmap()};
    HICON hIcon = ::CreateIconIndirect(&info);
    ::DeleteObject(hMask);
    return hIcon;
}

} // namespace studio
