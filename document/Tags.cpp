// The table of element tags; see the header.
#include "document/Tags.h"

#include "document/KeyIndex.h"
#include "document/QELDocArc.h"
#include "document/QELDocChord.h"
#include "document/QELDocCircle.h"
#include "document/QELDocEllipse.h"
#include "document/QELDocGroup.h"
#include "document/QELDocLine.h"
#include "document/QELDocPie.h"
#include "document/QELDocPolygon.h"
#include "document/QELDocPolyline.h"
#include "document/QELDocQEL.h"
#include "document/QELDocRect.h"
#include "document/QELDocRoundRect.h"
#include "document/QELDocText.h"
#include "dynamic/QELDocDrawRgn.h"
#include "dynamic/QELDocFrame.h"
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocPattern.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/QELDocStatus.h"

#include <array>
#include <string_view>

namespace {

template <class T>
CQELDocElm* Make(XmlContext** ppXml, CPool* pPool)
{
    static_assert(alignof(T) <= alignof(void*), "a pool aligns to no more");
    CQELDocElm* pElm = new (pPool) T(ppXml);
    if (pElm && pElm->LacksMemory()) {
        delete pElm;
        pElm = nullptr;
    }
    return pElm;
}

constexpr auto SHAPE = &CQELDocShape::VisitAttrs;

constexpr TagRow g_rows[] = {
    {QEL_TYPE_ROOT, "qel", Make<CQELDocQEL>, &CQELDocQEL::VisitAttrs, "the drawing"},
    {QEL_TYPE_TEXT, "text", Make<CQELDocText>, SHAPE, "a text in a rectangle"},
    {QEL_TYPE_RECT, "rect", Make<CQELDocRect>, SHAPE, "a rectangle"},
    {QEL_TYPE_CHORD, "chord", Make<CQELDocChord>, SHAPE, "a segment of an ellipse"},
    {QEL_TYPE_PIE, "pie", Make<CQELDocPie>, SHAPE, "a sector of an ellipse"},
    {QEL_TYPE_ROUNDRECT, "rndrect", Make<CQELDocRoundRect>, SHAPE,
     "a rectangle with round corners"},
    {QEL_TYPE_ARC, "arc", Make<CQELDocArc>, SHAPE, "a part of an ellipse's outline"},
    {QEL_TYPE_ELLIPSE, "ellipse", Make<CQELDocEllipse>, SHAPE, "an ellipse"},
    {QEL_TYPE_CIRCLE, "circle", Make<CQELDocCircle>, SHAPE, "a circle"},
    {QEL_TYPE_LINE, "line", Make<CQELDocLine>, SHAPE, "a straight line"},
    {QEL_TYPE_POLYLINE, "polyline", Make<CQELDocPolyline>, SHAPE, "lines through up to 16 points"},
    {QEL_TYPE_POLYGON, "polygon", Make<CQELDocPolygon>, SHAPE,
     "a closed figure of up to 16 points"},
    {QEL_TYPE_PATH, "path", nullptr, nullptr, "known and skipped with its contents"},
    {QEL_TYPE_DEFS, "defs", nullptr, nullptr, "known and skipped with its contents"},
    {QEL_TYPE_USE, "use", nullptr, nullptr, "known and skipped with its contents"},
    {QEL_TYPE_GROUP, "g", Make<CQELDocGroup>, nullptr, "a group of elements"},
    {QEL_TYPE_STATUS, "status", Make<CQELDocStatus>, &CQELDocStatus::VisitAttrs,
     "shown at one status number"},
    {QEL_TYPE_FRAME, "frame", Make<CQELDocFrame>, nullptr, "a group that follows the frame colour"},
    {QEL_TYPE_SCALE, "scale", Make<CQELDocScale>, &CQELDocScale::VisitAttrs,
     "a scale with its value"},
    {QEL_TYPE_PATTERN, "pattern", Make<CQELDocPattern>, nullptr, "a group that follows the hatch"},
    {QEL_TYPE_DRAWRGN, "drawrgn", Make<CQELDocDrawRgn>, &CQELDocDrawRgn::VisitAttrs,
     "where the host paints"},
    {QEL_TYPE_METER, "meter", Make<CQELDocMeter>, &CQELDocMeter::VisitAttrs, "a dial or bar"},
    {KEYWORD_NONE, nullptr, nullptr, nullptr, nullptr}};
static_assert(IsSoundTable(g_rows), "types and tags are unique and the end mark is there");

// The tags by type, with their lengths.
constexpr std::array<std::string_view, QEL_TYPE_NONE> g_tagNames = [] {
    std::array<std::string_view, QEL_TYPE_NONE> names{};
    for (std::size_t n = 0; g_rows[n].pszName; ++n)
        names[static_cast<std::size_t>(g_rows[n].nId)] = g_rows[n].pszName;
    return names;
}();

constexpr CKeyIndex g_index(g_rows);

} // namespace

const TagRow* const g_tagRows = g_rows;

std::string_view TagName(int32_t nType)
{
    if (nType < 0 || nType >= QEL_TYPE_NONE) return {};
    return g_tagNames[static_cast<std::size_t>(nType)];
}

const TagRow* TagOf(XmlNode* pNode)
{
    if (pNode->pKnown) return static_cast<const TagRow*>(pNode->pKnown);
    const std::size_t nRow = g_index.Find(
        pNode->nKey, [&](std::size_t n) { return IsSameText(g_rows[n].pszName, pNode->pszName); });
    if (nRow == NO_ROW) return nullptr;
    pNode->pKnown = &g_rows[nRow];
    return &g_rows[nRow];
}

CQELDocElm* MakeDocElement(int32_t nType, XmlContext** ppXml, CPool* pPool)
{
    const TagRow* pRow = FindRow(g_rows, nType);
    return pRow && pRow->pfnMakeDoc ? pRow->pfnMakeDoc(ppXml, pPool) : nullptr;
}
