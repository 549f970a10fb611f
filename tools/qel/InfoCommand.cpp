// qel info: what is in a drawing, and what the host can set.
#include "document/ShapeForms.h"
#include "engine/ElementTypes.h"
#include "tools/qel/Command.h"
#include "tools/qel/Drawing.h"
#include "tools/qel/HostListing.h"
#include "tools/qel/Text.h"

#include <cstring>

namespace {

constexpr int INDENT = 2;

// Values of the exported header by their names there.
struct NamedBits {
    DWORD nMask; // of the bits that belong together
    DWORD nBits;
    const char* pszName;
};

struct MaskRow {
    DWORD nBits;
    const char* pszName; // null: the header has no name for it
    const char* pszMeaning;
};

constexpr DWORD MASK_VALUES = 0x60; // of every meter and scale

constexpr MaskRow g_masks[] = {
    {QEL_MASK_COLOR, "QEL_MASK_COLOR", "parameter 0, the frame colour"},
    {QEL_MASK_DRAFT, "QEL_MASK_DRAFT", "parameters 1 to 3, the hatch and its colours"},
    {QEL_MASK_KEEP, "QEL_MASK_KEEP", "keep modes"},
    {QEL_MASK_TEXT, "QEL_MASK_TEXT", "texts"},
    {QEL_MASK_PRESS, "QEL_MASK_PRESS", "the pressed shift"},
    {MASK_VALUES, nullptr, "values of meters and scales"},
};

constexpr NamedBits g_flags[] = {
    {QEL_FLAG_COLOR_PARAM, QEL_FLAG_COLOR_PARAM, "QEL_FLAG_COLOR_PARAM"},
    {QEL_FLAG_DRAFT_PARAM, QEL_FLAG_DRAFT_PARAM, "QEL_FLAG_DRAFT_PARAM"},
    {QEL_FLAG_PRESS, QEL_FLAG_PRESS, "QEL_FLAG_PRESS"},
    {QEL_KEEP_ALL, QEL_KEEP_ALL, "QEL_KEEP_ALL"},
    {QEL_KEEP_LEFT, QEL_KEEP_LEFT, "QEL_KEEP_LEFT"},
    {QEL_KEEP_TOP, QEL_KEEP_TOP, "QEL_KEEP_TOP"},
    {QEL_KEEP_RIGHT, QEL_KEEP_RIGHT, "QEL_KEEP_RIGHT"},
    {QEL_KEEP_BOTTOM, QEL_KEEP_BOTTOM, "QEL_KEEP_BOTTOM"},
    {QEL_ALONG_MASK, QEL_ALONG_KEEP_LENGTH, "QEL_ALONG_KEEP_LENGTH"},
    {QEL_ALONG_MASK, QEL_ALONG_AS_QEL, "QEL_ALONG_AS_QEL"},
    {QEL_AWAY_MASK, QEL_AWAY_AS_GRAPH, "QEL_AWAY_AS_GRAPH"},
    {QEL_AWAY_MASK, QEL_AWAY_KEEP_LENGTH, "QEL_AWAY_KEEP_LENGTH"},
    {QEL_AWAY_MASK, QEL_AWAY_KEEP_BORDER, "QEL_AWAY_KEEP_BORDER"},
};

struct Element {
    std::string typeName;
    int nType;
    std::string id; // UTF-8
    bool bHasRect;
    RECT rc;
};

Element Describe(HQELENGINE hEngine, HQELELEM hElem)
{
    Element element{};
    element.nType = QELGetElemType(hEngine, hElem);
    const ElementType* pRow = g_elementTypes.Row(element.nType);
    element.typeName = pRow ? pRow->pszName : Format("type %d", element.nType);
    element.id = AnsiToUtf8(QELGetElemId(hEngine, hElem));
    element.bHasRect = QELGetElemRect(hEngine, hElem, &element.rc) != 0;
    return element;
}

std::string RectText(const RECT& rc, const char* pszFormat)
{
    return Format(pszFormat, static_cast<int>(rc.left), static_cast<int>(rc.top),
                  static_cast<int>(rc.right), static_cast<int>(rc.bottom));
}

const char* JsonBool(bool bValue)
{
    return bValue ? "true" : "false";
}

// The colour is spelled RRGGBB, as --background takes it.
std::string ColorJson(const char* pszName, DWORD clr)
{
    return Format(", \"%s\": {\"rgb\": \"%02x%02x%02x\", \"blink\": %s}", pszName, GetRValue(clr),
                  GetGValue(clr), GetBValue(clr), JsonBool(clr & QEL_COLOR_BLINK));
}

std::string StyleJson(DWORD nStyle)
{
    constexpr DWORD DEFAULT_BORDER_WIDTH = 2;
    const char* pszBorder = "none";
    if (nStyle & QEL_STYLE_DOWN_BIT) pszBorder = "down";
    if (nStyle & QEL_STYLE_UP_BIT) pszBorder = "up"; // it wins when both are set
    const DWORD nWidth = nStyle >> 16;
    return Format("\"style\": {\"value\": %lu, \"fill\": %s, \"border\": \"%s\", "
                  "\"borderWidth\": %lu}",
                  nStyle, JsonBool(nStyle & QEL_STYLE_FILL), pszBorder,
                  nWidth ? nWidth : DEFAULT_BORDER_WIDTH);
}

std::string FlagsJson(DWORD nFlags)
{
    std::string names;
    for (const NamedBits& row : g_flags)
        if ((nFlags & row.nMask) == row.nBits)
            names += Format("%s\"%s\"", names.empty() ? "" : ", ", row.pszName);
    return Format(", \"flags\": {\"value\": %lu, \"names\": [", nFlags) + names + "]}";
}

std::string CrdJson(const QELSHAPEATTR& attr, int nType)
{
    const LONG* pnFirst = attr.nGeometry;
    auto nNumbers = static_cast<int>(std::strlen(g_elementTypes.Row(nType)->pForm->pszLayout));
    if (!nNumbers) { // the number of points, and the points
        const LONG nPoints = *pnFirst++;
        nNumbers = nPoints >= 0 && nPoints <= QEL_MAX_POINTS ? static_cast<int>(2 * nPoints) : 0;
    }
    std::string json = ", \"crd\": [";
    for (int n = 0; n < nNumbers; ++n) json += Format(n ? ", %ld" : "%ld", pnFirst[n]);
    return json + "]";
}

// The attributes of a shape, as the engine keeps them.
std::string ShapeJson(HQELENGINE hEngine, HQELELEM hElem, int nType)
{
    QELSHAPEATTR attr{};
    if (!QELGetElemAttr(hEngine, hElem, &attr, nullptr)) return "";
    std::string json =
        ", \"attributes\": {" + StyleJson(attr.nStyle) + Format(", \"draft\": %ld", attr.nDraft) +
        ColorJson("fg", attr.clrA) + ColorJson("bg", attr.clrB) + ColorJson("clr", attr.clrPen) +
        Format(", \"lineStyle\": %ld, \"lineWidth\": %ld", attr.nPenStyle, attr.nPenWidth) +
        CrdJson(attr, nType) + FlagsJson(attr.nFlags);
    if (nType == QEL_TYPE_TEXT) json += ", \"text\": " + JsonString(AnsiToUtf8(attr.szText));
    return json + "}";
}

// Elements nest at most 512 levels deep, so the walk may recurse.
void PrintTree(HQELENGINE hEngine, HQELELEM hElem, int nDepth)
{
    const Element element = Describe(hEngine, hElem);
    std::string line(static_cast<std::size_t>(nDepth) * INDENT, ' ');
    line += element.typeName;
    if (!element.id.empty()) line += " " + JsonString(element.id); // stays on its line
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
          Format("{\"type\": %d, \"typeName\": \"%s\", \"id\": ", element.nType,
                 element.typeName.c_str()) +
          JsonString(element.id));
    if (element.bHasRect) Print(", \"rect\": " + RectText(element.rc, "[%d, %d, %d, %d]"));
    if (IsShapeType(element.nType)) Print(ShapeJson(hEngine, hElem, element.nType));
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
          (*QELGetName(hEngine) ? ", name " + JsonString(AnsiToUtf8(QELGetName(hEngine))) : "") +
          "\n");
    const DWORD nMask = QELParamsSupported(hEngine);
    Print(Format("the host can set (mask 0x%lx):", nMask));
    bool bAny = false;
    for (const MaskRow& row : g_masks) {
        if ((nMask & row.nBits) != row.nBits) continue;
        Print(std::string(bAny ? "; " : " ") + row.pszMeaning);
        bAny = true;
    }
    Print(bAny ? "\n" : " nothing\n");
    PrintHostText(drawing);
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
        if (!row.pszName || !(nMask & row.nBits)) continue;
        Print(Format("%s\"%s\"", bAny ? ", " : "", row.pszName));
        bAny = true;
    }
    Print("],\n");
    PrintHostJson(drawing);
    Print("\"root\":\n");
    PrintTreeJson(hEngine, QELGetRootElem(hEngine), 0);
    Print("\n}\n");
}

} // namespace

const char* const g_infoHelp = R"(qel info IN [--json]

Lists what is in the drawing IN: its reference size, its kind and name, what the host can set, and
the tree of its elements, each with its type, identifier and rectangle (left,top..right,bottom in
drawing units; of a group, that of its children). IN - is standard input.

What the host can set: the numbers of the status elements, then each meter and scale with its id,
its type, whether its value shows, and the settings that its type follows with their present values,
colours as 0xBBGGRR. 'qel render --set ID.NAME=V' sets them.

  --json    the same as JSON in UTF-8, and the attributes of every shape: style, draft, fg, bg and
            clr (rgb as RRGGBB), lineStyle, lineWidth, crd, flags and a text's text; "params" and
            the names of the flags are the constants of QELEngine.h; "statusNumbers", "meters" and
            "scales" with their "settings", where "ofOther" marks one that is read from the element
            of the other kind with the same id

Exit status: 0 done; 2 the drawing cannot be read (the message is on standard error).

Examples:
  qel info pump.qel
  qel info pump.qel --json | python3 -m json.tool
  qel info - <pump.qel
)";

int RunInfo(const Arguments& arguments)
{
    Arguments names;
    bool bJson = false;
    CArgumentReader reader(arguments);
    while (reader.Next()) {
        if (!reader.IsOption()) {
            names.push_back(reader.Current());
        } else if (reader.Current() == L"--json") {
            bJson = true;
        } else {
            reader.RefuseOption();
        }
    }
    if (names.size() > 1) throw CTrouble("info takes one drawing");
    if (names.empty()) throw CTrouble("info wants a drawing: qel info IN");
    const CDrawing drawing(names[0]);
    if (bJson)
        PrintJson(drawing);
    else
        PrintText(drawing);
    return EXIT_CLEAN;
}
