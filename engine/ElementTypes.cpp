// The one table of element types. It stands where all classes are known, and is handed down to the
// document and the view, which know none of those above them.
#include "engine/ElementTypes.h"

#include "document/QELDocLeaves.h"
#include "document/QELDocQEL.h"
#include "dynamic/QELDocDrawRgn.h"
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/QELDocStatus.h"
#include "dynamic/QELViewContainers.h"
#include "dynamic/QELViewDrawRgn.h"
#include "dynamic/QELViewMeter.h"
#include "dynamic/QELViewScale.h"
#include "dynamic/QELViewStatus.h"
#include "render/QELViewBox.h"
#include "render/QELViewCircle.h"
#include "render/QELViewGroup.h"
#include "render/QELViewPoints.h"
#include "render/QELViewQEL.h"
#include "render/QELViewRadial.h"
#include "render/QELViewText.h"

namespace {

template <class T>
CQELDocElm* MakeDocOf(DocContext* pContext, CPool* pPool)
{
    static_assert(alignof(T) <= alignof(void*), "a pool aligns to no more");
    CQELDocElm* pElm = new (pPool) T(DocMaking(pContext, pPool));
    if (pElm && pElm->LacksMemory()) {
        delete pElm;
        pElm = nullptr;
    }
    return pElm;
}

template <class Doc, class View>
constexpr ElementType Row(int32_t nId, const char* pszName, uint32_t nTraits,
                          const char* pszMeaning)
{
    ElementType row{nId,       pszName,        nTraits,         sizeof(typename Doc::Record),
                    nullptr,   MakeDocOf<Doc>, MakeWhole<View>, nullptr,
                    pszMeaning};
    if (IsShapeType(nId)) row.pForm = &ShapeFormOf(nId);
    if constexpr (requires { Doc::FORM; }) row.pForm = &Doc::FORM;
    if constexpr (requires { Doc::VisitAttrs(nullptr, nullptr); })
        row.pfnVisitAttrs = &Doc::VisitAttrs;
    return row;
}

// Known by its tag, without a class.
constexpr ElementType Skipped(int32_t nId, const char* pszName)
{
    return {nId,     pszName, 0,
            0,       nullptr, nullptr,
            nullptr, nullptr, "known and skipped with its contents"};
}

constexpr uint32_t BOX = TRAIT_SHAPE | TRAIT_ANCHORED | TRAIT_SHIFTS | TRAIT_AREA;
constexpr uint32_t RADIAL = TRAIT_SHAPE | TRAIT_SHIFTS | TRAIT_AREA;

constexpr ElementType g_rows[] = {
    Row<CQELDocQEL, CQELViewQEL>(QEL_TYPE_ROOT, "qel", 0, "the drawing"),
    Row<CQELDocText, CQELViewText>(QEL_TYPE_TEXT, "text",
                                   TRAIT_SHAPE | TRAIT_ANCHORED | TRAIT_SHIFTS | TRAIT_TEXT,
                                   "a text in a rectangle"),
    Row<CQELDocRect, CQELViewRect>(QEL_TYPE_RECT, "rect", BOX, "a rectangle"),
    Row<CQELDocChord, CQELViewChord>(QEL_TYPE_CHORD, "chord", RADIAL, "a segment of an ellipse"),
    Row<CQELDocPie, CQELViewPie>(QEL_TYPE_PIE, "pie", RADIAL, "a sector of an ellipse"),
    Row<CQELDocRoundRect, CQELViewRoundRect>(QEL_TYPE_ROUNDRECT, "rndrect", BOX,
                                             "a rectangle with round corners"),
    Row<CQELDocArc, CQELViewArc>(QEL_TYPE_ARC, "arc", TRAIT_SHAPE | TRAIT_OUTLINE | TRAIT_SHIFTS,
                                 "a part of an ellipse's outline"),
    Row<CQELDocEllipse, CQELViewEllipse>(QEL_TYPE_ELLIPSE, "ellipse", BOX, "an ellipse"),
    Row<CQELDocCircle, CQELViewCircle>(QEL_TYPE_CIRCLE, "circle", BOX, "a circle"),
    Row<CQELDocLine, CQELViewLine>(QEL_TYPE_LINE, "line", TRAIT_SHAPE | TRAIT_OUTLINE,
                                   "a straight line"),
    Row<CQELDocPolyline, CQELViewPolyline>(QEL_TYPE_POLYLINE, "polyline",
                                           TRAIT_SHAPE | TRAIT_OUTLINE,
                                           "lines through up to 16 points"),
    Row<CQELDocPolygon, CQELViewPolygon>(QEL_TYPE_POLYGON, "polygon", TRAIT_SHAPE | TRAIT_AREA,
                                         "a closed figure of up to 16 points"),
    Skipped(QEL_TYPE_PATH, "path"),
    Skipped(QEL_TYPE_DEFS, "defs"),
    Skipped(QEL_TYPE_USE, "use"),
    Row<CQELDocGroup, CQELViewGroup>(QEL_TYPE_GROUP, "g", 0, "a group of elements"),
    Row<CQELDocStatus, CQELViewStatus>(QEL_TYPE_STATUS, "status", TRAIT_HOST_VALUES,
                                       "shown at one status number"),
    Row<CQELDocFrame, CQELViewFrame>(QEL_TYPE_FRAME, "frame", TRAIT_HOST_VALUES,
                                     "a group that follows the frame colour"),
    Row<CQELDocScale, CQELViewScale>(QEL_TYPE_SCALE, "scale", TRAIT_HOST_VALUES,
                                     "a scale with its value"),
    Row<CQELDocPattern, CQELViewPattern>(QEL_TYPE_PATTERN, "pattern", TRAIT_HOST_VALUES,
                                         "a group that follows the hatch"),
    Row<CQELDocDrawRgn, CQELViewDrawRgn>(
        QEL_TYPE_DRAWRGN, "drawrgn", TRAIT_ANCHORED | TRAIT_HOST_VALUES, "where the host paints"),
    Row<CQELDocMeter, CQELViewMeter>(QEL_TYPE_METER, "meter", TRAIT_ANCHORED | TRAIT_HOST_VALUES,
                                     "a dial or bar"),
    {KEYWORD_NONE, nullptr, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr}};
static_assert(IsSoundTypeTable(g_rows), "a row for each number, with both makers or with none");

} // namespace

constinit const CElementTypes g_elementTypes(g_rows);
