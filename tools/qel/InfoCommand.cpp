// qel info: what is in a drawing, and what the host can set.
#include "document/ShapeForms.h"
#include "engine/ElementTypes.h"
#include "tools/qel/Command.h"
#include "tools/qel/Drawing.h"
#include "tools/qel/HostListing.h"
#include "tools/qel/IdListing.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cstring>
#include <utility>
#include <vector>

namespace qel {

using nlohmann::ordered_json;

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
    element.typeName = pRow ? pRow->pszName : fmt::format("type {}", element.nType);
    element.id = DrawingToUtf8(QELGetElemId(hEngine, hElem));
    element.bHasRect = QELGetElemRect(hEngine, hElem, &element.rc) != 0;
    return element;
}

std::string RectText(const RECT& rc)
{
    return fmt::format("{},{}..{},{}", rc.left, rc.top, rc.right, rc.bottom);
}

// The colour is spelled RRGGBB, as --background takes it.
ordered_json ColorJson(DWORD clr)
{
    return {
        {"rgb", fmt::format("{:02x}{:02x}{:02x}", GetRValue(clr), GetGValue(clr), GetBValue(clr))},
        {"blink", (clr & QEL_COLOR_BLINK) != 0}};
}

ordered_json StyleJson(DWORD nStyle)
{
    constexpr DWORD DEFAULT_BORDER_WIDTH = 2;
    const char* pszBorder = "none";
    if (nStyle & QEL_STYLE_DOWN_BIT) pszBorder = "down";
    if (nStyle & QEL_STYLE_UP_BIT) pszBorder = "up"; // it wins when both are set
    const DWORD nWidth = nStyle >> 16;
    return {{"value", nStyle},
            {"fill", (nStyle & QEL_STYLE_FILL) != 0},
            {"border", pszBorder},
            {"borderWidth", nWidth ? nWidth : DEFAULT_BORDER_WIDTH}};
}

ordered_json FlagsJson(DWORD nFlags)
{
    ordered_json names = ordered_json::array();
    for (const NamedBits& row : g_flags)
        if ((nFlags & row.nMask) == row.nBits) names.push_back(row.pszName);
    return {{"value", nFlags}, {"names", names}};
}

ordered_json CrdJson(const QELSHAPEATTR& attr, int nType)
{
    const LONG* pnFirst = attr.nGeometry;
    auto nNumbers = static_cast<int>(std::strlen(g_elementTypes.Row(nType)->pForm->pszLayout));
    if (!nNumbers) { // the number of points, and the points
        const LONG nPoints = *pnFirst++;
        nNumbers = nPoints >= 0 && nPoints <= QEL_MAX_POINTS ? static_cast<int>(2 * nPoints) : 0;
    }
    return std::vector<LONG>(pnFirst, pnFirst + nNumbers);
}

// The attributes of a shape, as the engine keeps them.
ordered_json ShapeJson(const QELSHAPEATTR& attr, int nType)
{
    ordered_json json{{"style", StyleJson(attr.nStyle)}, {"draft", attr.nDraft},
                      {"fg", ColorJson(attr.clrA)},      {"bg", ColorJson(attr.clrB)},
                      {"clr", ColorJson(attr.clrPen)},   {"lineStyle", attr.nPenStyle},
                      {"lineWidth", attr.nPenWidth},     {"crd", CrdJson(attr, nType)},
                      {"flags", FlagsJson(attr.nFlags)}};
    if (nType == QEL_TYPE_TEXT) json["text"] = DrawingToUtf8(attr.szText);
    return json;
}

// Elements nest at most 512 levels deep, so the walk may recurse.
void PrintTree(HQELENGINE hEngine, HQELELEM hElem, int nDepth)
{
    const Element element = Describe(hEngine, hElem);
    std::string line(static_cast<std::size_t>(nDepth) * INDENT, ' ');
    line += element.typeName;
    if (!element.id.empty()) line += " " + Quoted(element.id);
    if (element.bHasRect) line += "  " + RectText(element.rc);
    Print(line + "\n");
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        PrintTree(hEngine, h, nDepth + 1);
}

ordered_json TreeJson(HQELENGINE hEngine, HQELELEM hElem)
{
    const Element element = Describe(hEngine, hElem);
    const RECT& rc = element.rc;
    ordered_json json{{"type", element.nType}, {"typeName", element.typeName}, {"id", element.id}};
    if (element.bHasRect) json["rect"] = {rc.left, rc.top, rc.right, rc.bottom};
    QELSHAPEATTR attr{};
    if (IsShapeType(element.nType) && QELGetElemAttr(hEngine, hElem, &attr, nullptr))
        json["attributes"] = ShapeJson(attr, element.nType);
    ordered_json children = ordered_json::array();
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        children.push_back(TreeJson(hEngine, h));
    if (!children.empty()) json["children"] = std::move(children);
    return json;
}

void PrintText(const CDrawing& drawing)
{
    const HQELENGINE hEngine = drawing.Engine();
    const SIZE size = drawing.RefSize();
    Print(fmt::format("size {} x {}, kind {}", size.cx, size.cy, QELGetType(hEngine)));
    if (*QELGetName(hEngine)) Print(", name " + Quoted(DrawingToUtf8(QELGetName(hEngine))));
    const DWORD nMask = QELParamsSupported(hEngine);
    Print(fmt::format("\nthe host can set (mask {:#x}):", nMask));
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
    const DWORD nMask = QELParamsSupported(hEngine);
    ordered_json params = ordered_json::array();
    for (const MaskRow& row : g_masks)
        if (row.pszName && (nMask & row.nBits)) params.push_back(row.pszName);
    ordered_json json{{"width", size.cx},
                      {"height", size.cy},
                      {"kind", QELGetType(hEngine)},
                      {"name", DrawingToUtf8(QELGetName(hEngine))},
                      {"paramsMask", nMask},
                      {"params", params}};
    json.update(HostJson(drawing));
    json["root"] = TreeJson(hEngine, QELGetRootElem(hEngine));
    Print(json.dump(INDENT) + "\n");
}

constexpr char ABOUT[] =
    R"(Lists what is in the drawing IN: its reference size, its kind and name, what the host can set, and
the tree of its elements, each with its type, identifier and rectangle (left,top..right,bottom in
drawing units; of a group, that of its children). IN - is standard input.

What the host can set: the numbers of the status elements, then each meter and scale with its id,
its type, whether its value shows, and the settings that its type follows with their present values,
colours as 0xBBGGRR. 'qel render --set ID.NAME=V' sets them. Then each identifier with the types of
the elements that bear it and what these take by it: value, pins (the sectors of a share chart),
selectors (the settings listed below it), text, colours, quality. All elements can be hidden by it,
too.)";

constexpr char NOTES[] =
    R"(Exit status: 0 done; 2 the drawing cannot be read (the message is on standard error).

Examples:
  qel info pump.qel
  qel info pump.qel --json | python3 -m json.tool
  qel info - <pump.qel)";

constexpr OptionRow JSON{
    OptionRow::Takes::Nothing, "--json", "", "Options",
    "the same as JSON in UTF-8, and the attributes of every shape: style, draft, fg, bg and clr "
    "(rgb as RRGGBB), lineStyle, lineWidth, crd, flags and a text's text; \"params\" and the names "
    "of the flags are the constants of QELEngine.h; \"statusNumbers\", \"meters\" and \"scales\" "
    "with their \"settings\", where \"ofOther\" marks one that is read from the element of the "
    "other kind with the same id; \"identifiers\" with \"types\", \"takes\" and \"selectors\""};

int RunInfo(const CommandLine& given)
{
    if (given.names.size() > 1) throw CTrouble("info takes one drawing");
    if (given.names.empty()) throw CTrouble("info wants a drawing: qel info IN");
    const CDrawing drawing(given.names[0]);
    if (!given.options.empty()) // --json is the only one
        PrintJson(drawing);
    else
        PrintText(drawing);
    return EXIT_CLEAN;
}

} // namespace

CommandRow InfoCommand()
{
    return {"info",  "IN [--json]", "size, kind, elements, what the host can set", ABOUT, NOTES,
            {&JSON}, RunInfo};
}

} // namespace qel
