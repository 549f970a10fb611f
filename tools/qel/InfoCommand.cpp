// qel info: what is in a drawing, and what the host can set.
#include "tools/qel/Command.h"
#include "tools/qel/Drawing.h"
#include "tools/qel/Text.h"

namespace {

constexpr int INDENT = 2;

struct MaskRow {
    DWORD nBit;
    const char* pszName;
    const char* pszMeaning;
};

constexpr MaskRow g_masks[] = {
    {QEL_MASK_COLOR, "color", "parameter 0, the frame colour"},
    {QEL_MASK_DRAFT, "draft", "parameters 1 to 3, the hatch and its colours"},
    {QEL_MASK_KEEP, "keep", "keep modes"},
    {QEL_MASK_TEXT, "text", "texts"},
    {QEL_MASK_PRESS, "press", "the pressed shift"},
};

struct TypeRow {
    int nType;
    const char* pszTag;
};

constexpr TypeRow g_types[] = {
    {QEL_TYPE_ROOT, "qel"},    {QEL_TYPE_TEXT, "text"},         {QEL_TYPE_RECT, "rect"},
    {QEL_TYPE_CHORD, "chord"}, {QEL_TYPE_PIE, "pie"},           {QEL_TYPE_ROUNDRECT, "rndrect"},
    {QEL_TYPE_ARC, "arc"},     {QEL_TYPE_ELLIPSE, "ellipse"},   {QEL_TYPE_CIRCLE, "circle"},
    {QEL_TYPE_LINE, "line"},   {QEL_TYPE_POLYLINE, "polyline"}, {QEL_TYPE_POLYGON, "polygon"},
    {QEL_TYPE_GROUP, "g"},     {QEL_TYPE_STATUS, "status"},     {QEL_TYPE_FRAME, "frame"},
    {QEL_TYPE_SCALE, "scale"}, {QEL_TYPE_PATTERN, "pattern"},   {QEL_TYPE_DRAWRGN, "drawrgn"},
    {QEL_TYPE_METER, "meter"},
};

std::string TagOf(int nType)
{
    for (const TypeRow& row : g_types)
        if (row.nType == nType) return row.pszTag;
    return Format("type %d", nType);
}

struct Element {
    std::string tag;
    int nType;
    std::string id; // UTF-8
    bool bHasRect;
    RECT rc;
};

Element Describe(HQELENGINE hEngine, HQELELEM hElem)
{
    Element element{};
    element.nType = QELGetElemType(hEngine, hElem);
    element.tag = TagOf(element.nType);
    element.id = AnsiToUtf8(QELGetElemId(hEngine, hElem));
    element.bHasRect = QELGetElemRect(hEngine, hElem, &element.rc) != 0;
    return element;
}

std::string RectText(const RECT& rc, const char* pszFormat)
{
    return Format(pszFormat, static_cast<int>(rc.left), static_cast<int>(rc.top),
                  static_cast<int>(rc.right), static_cast<int>(rc.bottom));
}

// The attributes of a shape, as the engine keeps them.
std::string ShapeJson(HQELENGINE hEngine, HQELELEM hElem)
{
    QELSHAPEATTR attr{};
    if (!QELGetElemAttr(hEngine, hElem, &attr, nullptr)) return "";
    std::string json =
        Format(", \"style\": %lu, \"draft\": %ld, \"fg\": %lu, \"bg\": %lu, \"clr\": %lu, "
               "\"lineStyle\": %ld, \"lineWidth\": %ld, \"flags\": %lu",
               attr.nStyle, attr.nDraft, attr.clrA, attr.clrB, attr.clrPen, attr.nPenStyle,
               attr.nPenWidth, attr.nFlags);
    if (*attr.szText) json += ", \"text\": " + JsonString(AnsiToUtf8(attr.szText));
    return json;
}

// Elements nest at most 512 levels deep, so the walk may recurse.
void PrintTree(HQELENGINE hEngine, HQELELEM hElem, int nDepth)
{
    const Element element = Describe(hEngine, hElem);
    std::string line(static_cast<std::size_t>(nDepth) * INDENT, ' ');
    line += element.tag;
    if (!element.id.empty()) line += " \"" + element.id + "\"";
    if (element.bHasRect) line += "  " + RectText(element.rc, "%d,%d..%d,%d");
    Print(line + "\n");
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        PrintTree(hEngine, h, nDepth + 1);
}

void PrintTreeJson(HQELENGINE hEngine, HQELELEM hElem, int nDepth)
{
    const Element element = Describe(hEngine, hElem);
    const std::string indent(static_cast<std::size_t>(nDepth) * INDENT, ' ');
    Print(indent +
          Format("{\"type\": %d, \"tag\": \"%s\", \"id\": ", element.nType, element.tag.c_str()) +
          JsonString(element.id));
    if (element.bHasRect) Print(", \"rect\": " + RectText(element.rc, "[%d, %d, %d, %d]"));
    if (element.nType >= QEL_TYPE_TEXT && element.nType <= QEL_TYPE_POLYGON)
        Print(ShapeJson(hEngine, hElem));
    HQELELEM hChild = QELGetFirstChild(hEngine, hElem);
    if (hChild) {
        Print(", \"children\": [\n");
        while (hChild) {
            PrintTreeJson(hEngine, hChild, nDepth + 1);
            hChild = QELGetNextElem(hEngine, hChild);
            Print(hChild ? ",\n" : "\n" + indent + "]");
        }
    }
    Print("}");
}

void PrintText(const CDrawing& drawing)
{
    const HQELENGINE hEngine = drawing.Engine();
    const SIZE size = drawing.RefSize();
    Print(Format("size %d x %d, kind %d", static_cast<int>(size.cx), static_cast<int>(size.cy),
                 QELGetType(hEngine)) +
          (*QELGetName(hEngine) ? ", name \"" + AnsiToUtf8(QELGetName(hEngine)) + "\"\n" : "\n"));
    const DWORD nMask = QELParamsSupported(hEngine);
    Print(Format("the host can set (mask 0x%lx):", nMask));
    bool bAny = false;
    for (const MaskRow& row : g_masks) {
        if (!(nMask & row.nBit)) continue;
        Print(std::string(bAny ? "; " : " ") + row.pszMeaning);
        bAny = true;
    }
    Print(bAny ? "\n" : " nothing\n");
    PrintTree(hEngine, QELGetRootElem(hEngine), 0);
}

void PrintJson(const CDrawing& drawing)
{
    const HQELENGINE hEngine = drawing.Engine();
    const SIZE size = drawing.RefSize();
    Print(Format("{\n\"width\": %d,\n\"height\": %d,\n\"kind\": %d,\n\"name\": ",
                 static_cast<int>(size.cx), static_cast<int>(size.cy), QELGetType(hEngine)) +
          JsonString(AnsiToUtf8(QELGetName(hEngine))));
    const DWORD nMask = QELParamsSupported(hEngine);
    Print(Format(",\n\"paramsMask\": %lu,\n\"params\": [", nMask));
    bool bAny = false;
    for (const MaskRow& row : g_masks) {
        if (!(nMask & row.nBit)) continue;
        Print(Format("%s\"%s\"", bAny ? ", " : "", row.pszName));
        bAny = true;
    }
    Print("],\n\"root\":\n");
    PrintTreeJson(hEngine, QELGetRootElem(hEngine), 0);
    Print("\n}\n");
}

} // namespace

int RunInfo(const Arguments& arguments)
{
    std::wstring in;
    bool bJson = false;
    CArgumentReader reader(arguments);
    while (reader.Next()) {
        if (!reader.IsOption()) {
            if (!in.empty()) throw CTrouble("info takes one drawing");
            in = reader.Current();
        } else if (reader.Current() == L"--json") {
            bJson = true;
        } else {
            reader.RefuseOption();
        }
    }
    if (in.empty()) throw CTrouble("info wants a drawing: qel info IN");
    const CDrawing drawing(in);
    if (bJson)
        PrintJson(drawing);
    else
        PrintText(drawing);
    return EXIT_CLEAN;
}
