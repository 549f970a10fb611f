#include "bench/Scene.h"

#include <cstdio>

namespace {

class CNumbers { // the same sequence everywhere
public:
    int Below(int n)
    {
        m_n = m_n * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<int>((m_n >> 33) % static_cast<unsigned>(n));
    }

private:
    unsigned long long m_n = 20261121;
};

constexpr const char* TAGS[] = {"",    "text",    "rect",   "chord", "pie",      "rndrect",
                                "arc", "ellipse", "circle", "line",  "polyline", "polygon"};

void PutBox(CNumbers& numbers, Shape* pShape)
{
    const int nW = 8 + numbers.Below(40);
    const int nH = 8 + numbers.Below(30);
    pShape->n[0] = numbers.Below(SCENE_SIZE.cx - nW);
    pShape->n[1] = numbers.Below(SCENE_SIZE.cy - nH);
    pShape->n[2] = pShape->n[0] + nW;
    pShape->n[3] = pShape->n[1] + nH;
}

void PutPoints(CNumbers& numbers, Shape* pShape)
{
    PutBox(numbers, pShape);
    const int nX = pShape->n[0];
    const int nY = pShape->n[1];
    pShape->n[0] = 4;
    for (int i = 0; i < 4; ++i) {
        pShape->n[1 + 2 * i] = nX + numbers.Below(40);
        pShape->n[2 + 2 * i] = nY + numbers.Below(30);
    }
}

void PutGeometry(CNumbers& numbers, Shape* pShape)
{
    int* n = pShape->n;
    switch (pShape->nType) {
    case QEL_TYPE_POLYLINE:
    case QEL_TYPE_POLYGON:
        PutPoints(numbers, pShape);
        return;
    case QEL_TYPE_CIRCLE:
        n[2] = 4 + numbers.Below(20);
        n[0] = n[2] + numbers.Below(SCENE_SIZE.cx - 2 * n[2]);
        n[1] = n[2] + numbers.Below(SCENE_SIZE.cy - 2 * n[2]);
        return;
    default:
        PutBox(numbers, pShape);
    }
    if (pShape->nType == QEL_TYPE_ROUNDRECT) n[4] = n[5] = 6;
    if (pShape->nType == QEL_TYPE_ARC || pShape->nType == QEL_TYPE_PIE ||
        pShape->nType == QEL_TYPE_CHORD) {
        n[4] = n[2];
        n[5] = n[1] + 3;
        n[6] = n[0];
        n[7] = n[3] - 3;
    }
    if (pShape->nType == QEL_TYPE_TEXT) pShape->text = "P" + std::to_string(numbers.Below(100));
}

int WordsOf(const Shape& shape, int* pnFirst)
{
    *pnFirst = 0;
    switch (shape.nType) {
    case QEL_TYPE_POLYLINE:
    case QEL_TYPE_POLYGON:
        *pnFirst = 1;
        return 2 * shape.n[0];
    case QEL_TYPE_CIRCLE:
        return 3;
    case QEL_TYPE_ROUNDRECT:
        return 6;
    case QEL_TYPE_ARC:
    case QEL_TYPE_PIE:
    case QEL_TYPE_CHORD:
        return 8;
    default:
        return 4;
    }
}

std::string CrdOf(const Shape& shape)
{
    int nFirst = 0;
    const int nWords = WordsOf(shape, &nFirst);
    std::string crd;
    for (int i = 0; i < nWords; ++i) {
        if (i) crd += ' ';
        crd += std::to_string(shape.n[nFirst + i]);
    }
    return crd;
}

std::string ShapeText(const Shape& shape)
{
    char szText[64];
    std::string text = std::string("<") + TAGS[shape.nType];
    const auto put = [&](const char* pszFormat, unsigned n) {
        std::snprintf(szText, sizeof szText, pszFormat, n);
        text += szText;
    };
    if (shape.nStyle) put(" style=\"0x%x\"", shape.nStyle);
    if (shape.nDraft) put(" dr=\"%d\"", static_cast<unsigned>(shape.nDraft));
    if (shape.clrA != 0xFFFFFF) put(" fg=\"0x%x\"", shape.clrA);
    if (shape.clrB) put(" bg=\"0x%x\"", shape.clrB);
    if (shape.clrPen != 0xFFFFFF) put(" clr=\"0x%x\"", shape.clrPen);
    if (shape.nPenWidth != 1) put(" lnwid=\"%d\"", static_cast<unsigned>(shape.nPenWidth));
    text += " crd=\"" + CrdOf(shape) + "\"";
    return text + (shape.text.empty() ? "/>\r\n" : ">" + shape.text + "</text>\r\n");
}

std::string Head()
{
    char szHead[128];
    std::snprintf(szHead, sizeof szHead,
                  "<?xml version=\"1.0\" encoding=\"gb2312\" ?>\r\n"
                  "<qel width=\"%ld\" height=\"%ld\">\r\n",
                  SCENE_SIZE.cx, SCENE_SIZE.cy);
    return szHead;
}

} // namespace

std::vector<Shape> MakeScene(SceneKind nKind, int nCount)
{
    CNumbers numbers;
    std::vector<Shape> shapes;
    shapes.reserve(static_cast<std::size_t>(nCount));
    for (int i = 0; i < nCount; ++i) {
        Shape shape{};
        shape.nType = nKind == SceneKind::Mixed   ? 1 + i % 11
                      : nKind == SceneKind::Lines ? static_cast<int>(QEL_TYPE_LINE)
                                                  : static_cast<int>(QEL_TYPE_RECT);
        const bool bOutline = shape.nType == QEL_TYPE_LINE || shape.nType == QEL_TYPE_ARC ||
                              shape.nType == QEL_TYPE_POLYLINE || shape.nType == QEL_TYPE_TEXT;
        shape.nStyle = bOutline ? 0 : QEL_STYLE_FILL;
        shape.clrA =
            shape.nType == QEL_TYPE_TEXT ? static_cast<DWORD>(numbers.Below(0xFFFFFF)) : 0xFFFFFF;
        shape.clrB = bOutline ? 0 : static_cast<DWORD>(1 + numbers.Below(0xFFFFFE));
        shape.clrPen = static_cast<DWORD>(numbers.Below(0xFFFFFF));
        shape.nPenWidth = 1;
        PutGeometry(numbers, &shape);
        shapes.push_back(shape);
    }
    return shapes;
}

std::string SceneText(const std::vector<Shape>& shapes, int nLevels)
{
    std::string text = Head();
    if (!nLevels) {
        for (const Shape& shape : shapes) text += ShapeText(shape);
        return text + "</qel>\r\n";
    }
    // Towers of groups, each with some shapes on every level.
    constexpr std::size_t A_LEVEL = 10;
    for (std::size_t i = 0; i < shapes.size();) {
        int nOpen = 0;
        for (; nOpen < nLevels && i < shapes.size(); ++nOpen) {
            text += "<g>\r\n";
            for (std::size_t n = 0; n < A_LEVEL && i < shapes.size(); ++n)
                text += ShapeText(shapes[i++]);
        }
        for (; nOpen; --nOpen) text += "</g>\r\n";
    }
    return text + "</qel>\r\n";
}

std::string PanelText(int nMeters, int nFirstId, const std::vector<Shape>& behind)
{
    constexpr int SIDE = 24;
    constexpr int IN_A_ROW = 40;
    std::string text = Head();
    for (const Shape& shape : behind) text += ShapeText(shape);
    for (int i = 0; i < nMeters; ++i) {
        const int nX = i % IN_A_ROW * SIDE;
        const int nY = i / IN_A_ROW * SIDE % 720;
        char szMeter[256];
        std::snprintf(
            szMeter, sizeof szMeter,
            "<meter id=\"m%d\" mtid=\"%d\" upin=\"1\" mtype=\"round\" crd=\"%d %d %d %d %d %d %d\">"
            "<circle style=\"0x1\" bg=\"0x404040\" lnwid=\"0\" crd=\"%d %d %d\"/></meter>\r\n",
            i, nFirstId + i, nX + SIDE / 2, nY + SIDE / 2, SIDE / 2 - 2, nX, nY, nX + SIDE,
            nY + SIDE, nX + SIDE / 2, nY + SIDE / 2, SIDE / 2 - 1);
        text += szMeter;
    }
    return text + "</qel>\r\n";
}
