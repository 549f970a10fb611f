// Styles that cost too much; see the header.
#include "tools/qel/CostRules.h"

#include "base/DrawLimits.h"
#include "brush/Gradient.h"
#include "document/Attributes.h"
#include "document/ShapeForms.h"
#include "engine/ElementTypes.h"
#include "include/QELEngine.h"
#include "render/Border3D.h"
#include "tools/qel/HostIds.h"

#include <algorithm>
#include <cmath>

namespace qel {

namespace {

// Pixels: many times what a border or an outline has on the largest screen, and still drawn in a
// millisecond or so.
constexpr int32_t MAX_BORDER = 256;
constexpr LONG MAX_PEN = 256;

// Of a gradient in a picture of the drawing's own size or of a million pixels: four large screens.
constexpr double MAX_PIXELS = 4.0 * 1024 * 1024;
constexpr double PICTURE = 1e6;

bool HasBorder(DWORD nStyle)
{
    return (nStyle & (QEL_STYLE_UP_BIT | QEL_STYLE_DOWN_BIT)) != 0;
}

std::string BorderFault(DWORD nStyle)
{
    const int32_t nWidth = BorderWidthOf(nStyle);
    if (!HasBorder(nStyle) || nWidth <= MAX_BORDER) return {};
    return "a 3D border of " + std::to_string(nWidth) +
           " pixels holds up the host: it is drawn ring by ring";
}

std::string PenFault(LONG nWidth)
{
    if (nWidth <= MAX_PEN) return {};
    const std::string head =
        "an outline of " + std::to_string(nWidth) + " pixels holds up the host";
    return nWidth > MAX_PEN_WIDTH
               ? head + "; no more than " + std::to_string(MAX_PEN_WIDTH) + " are drawn"
               : head;
}

std::string Whole(double fNumber)
{
    return std::to_string(std::llround(fNumber));
}

// The pixels of the pattern in a picture of that scale: gradients that run in one direction only
// have one row or one column.
double PatternPixels(int nKind, const RECT& rc, double fScale)
{
    const double fWidth = fScale * (double{1} * rc.right - rc.left);
    const double fHeight = fScale * (double{1} * rc.bottom - rc.top);
    switch (nKind) {
    case 0:
    case 4:
        return fWidth;
    case 1:
    case 5:
        return fHeight;
    default:
        return fWidth * fHeight;
    }
}

std::string GradientFault(const QELSHAPEATTR& attr, const RECT& rc, SIZE refSize)
{
    if (!(attr.nStyle & QEL_STYLE_FILL_MASK) || attr.nDraft < DRAFT_GRADIENT ||
        attr.nDraft >= DRAFT_COUNT || ::IsRectEmpty(&rc))
        return {};
    const double fRef = double{1} * std::max<LONG>(refSize.cx, 1) * std::max<LONG>(refSize.cy, 1);
    const double fScale = fRef < PICTURE ? std::sqrt(PICTURE / fRef) : 1;
    const double fPixels = PatternPixels((attr.nDraft - DRAFT_GRADIENT) / 2, rc, fScale);
    if (fPixels <= MAX_PIXELS) return {};
    const std::string head = "a gradient over " + std::to_string(int64_t{rc.right} - rc.left) +
                             " x " + std::to_string(int64_t{rc.bottom} - rc.top) + " units, " +
                             Whole(fPixels / PICTURE) + " million pixels in a picture of " +
                             Whole(fScale * refSize.cx) + " x " + Whole(fScale * refSize.cy) + ",";
    return fPixels > static_cast<double>(MAX_GRADIENT_PIXELS)
               ? head + " is too large: there is none of it"
               : head + " holds up the host";
}

template <class Block>
Block BlockOf(const CQELDocElm& elm)
{
    Block block{};
    elm.GetAttr(&block);
    return block;
}

void Tell(std::vector<CostFinding>* pFindings, int32_t nAttr, const std::string& fault)
{
    if (!fault.empty()) pFindings->push_back({nAttr, fault});
}

void TellShape(std::vector<CostFinding>* pFindings, const CQELDocElm& elm, SIZE refSize)
{
    const auto attr = BlockOf<QELSHAPEATTR>(elm);
    const bool bBorder = elm.Type() == QEL_TYPE_RECT && HasBorder(attr.nStyle);
    RECT rc{};
    elm.GetRect(&rc);
    if (bBorder)
        Tell(pFindings, ATTR_STYLE, BorderFault(attr.nStyle));
    else
        Tell(pFindings, ATTR_LNWID, PenFault(attr.nPenWidth));
    if (HasArea(elm.Type())) Tell(pFindings, ATTR_DR, GradientFault(attr, rc, refSize));
}

} // namespace

std::vector<CostFinding> CostFindings(const CQELDocElm& elm, SIZE refSize)
{
    std::vector<CostFinding> findings;
    if (IsShapeType(elm.Type()) && elm.Type() != QEL_TYPE_TEXT) // a text has no pen or brush
        TellShape(&findings, elm, refSize);
    else if (elm.Type() == QEL_TYPE_DRAWRGN)
        Tell(&findings, ATTR_STYLE,
             BorderFault(static_cast<DWORD>(BlockOf<QELDRAWRGNATTR>(elm).nStyle)));
    return findings;
}

} // namespace qel
