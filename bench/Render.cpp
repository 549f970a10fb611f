// The floor of qel render: the GDI calls of a scene, and the picture written by the same encoder.
//   qel_bench_render COUNT OUT.png
#include "bench/Floor.h"
#include "tools/qel/ImageWriter.h"

#include <cstdlib>

int wmain(int nArgs, wchar_t** ppszArgs)
{
    if (nArgs != 3) return 2;
    const std::vector<Shape> shapes =
        MakeScene(SceneKind::Mixed, std::wcstol(ppszArgs[1], nullptr, 10));
    qel::WritePicture(ppszArgs[2], SCENE_SIZE, [&](HDC hdc) {
        constexpr RECT ALL{0, 0, SCENE_SIZE.cx, SCENE_SIZE.cy};
        const HBRUSH hBrush = ::CreateSolidBrush(0xC0C0C0);
        ::FillRect(hdc, &ALL, hBrush);
        ::DeleteObject(hBrush);
        // The font that qel takes for texts, or they would be other pictures.
        const HFONT hFont = ::CreateFontW(-12, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0,
                                          CLEARTYPE_QUALITY, 0, L"WenQuanYi Zen Hei Mono");
        const HGDIOBJ hPrev = ::SelectObject(hdc, hFont);
        DrawFloor(hdc, shapes);
        ::SelectObject(hdc, hPrev);
        ::DeleteObject(hFont);
        return true;
    });
    return 0;
}
