// What the checker knows of scales and meters; see the header.
#include "tools/qel/LiveRules.h"

#include "base/WrapMath.h"
#include "dynamic/MeterRenderer.h"
#include "dynamic/QELDocMeter.h"
#include "dynamic/QELDocScale.h"
#include "dynamic/Selectors.h"
#include "engine/ElementTypes.h"
#include "tools/qel/Hint.h"

#include <cstring>

namespace qel {

namespace {

constexpr LONG METER_LAYOUT = 3; // the first geometry word of a dial's layout rectangle

bool IsMeter(const CQELDocElm& elm)
{
    return elm.Type() == QEL_TYPE_METER;
}

template <class Block>
Block BlockOf(const CQELDocElm& elm)
{
    Block block{};
    elm.GetAttr(&block);
    return block;
}

// Placed into a picture of the drawing's own size, an arc keeps its radius. It gets none when the
// engine cannot tell where it is: the two ends are what it goes by.
bool HasPlace(const QELMETERATTR& attr)
{
    constexpr LONG ANY_SIZE = 1000;
    return MapMeter(attr, {0, 0, ANY_SIZE, ANY_SIZE}, ANY_SIZE, ANY_SIZE).nRadius != 0;
}

constexpr char NO_DIAL[] = "the radius is 0: nothing of the dial is drawn";
constexpr char NO_RADIUS[] = "the radius is 0: nothing of the dial is drawn in its place, only "
                             "labels and a line out of place";

// Without a radius, some layers of "round" and "roundUpgrade" take one of their own.
bool ShowsLabels(LONG nType)
{
    constexpr LONG ROUND = 4;
    constexpr LONG ROUND_UPGRADE = 8;
    return nType == ROUND || nType == ROUND_UPGRADE;
}

std::string WhyMeterIsNotDrawn(const QELMETERATTR& attr)
{
    const LONG* n = attr.nGeometry;
    if (MeterFormOf(attr.nType) == MeterForm::Rectangle)
        return n[0] == n[2] || n[1] == n[3] ? "the rectangle is empty: no bar is drawn" : "";
    if (n[2] < 0) return ""; // told as an error
    if (n[2] == 0) return ShowsLabels(attr.nType) ? NO_RADIUS : NO_DIAL;
    if (MeterFormOf(attr.nType) == MeterForm::Circle) return "";
    const RECT rcLayout{n[METER_LAYOUT], n[METER_LAYOUT + 1], n[METER_LAYOUT + 2],
                        n[METER_LAYOUT + 3]};
    if (::IsRectEmpty(&rcLayout))
        return "the layout rectangle is empty: nothing of the dial is drawn";
    return HasPlace(attr) ? ""
                          : "start and end of the arc lie one above the other, as those of a full "
                            "circle do: nothing of the dial is drawn in its place, only labels "
                            "and a line out of place";
}

std::string WhyScaleIsNotDrawn(const QELSCALEATTR& attr)
{
    const LONG* n = attr.nGeometry;
    if (attr.nType >= SCALE_ROUND)
        return n[2] < 1 ? "the tick radius is below 1: nothing is drawn" : "";
    return n[0] == n[2] || n[1] == n[3] ? "the rectangle is empty: nothing is drawn" : "";
}

} // namespace

// Elements nest at most 512 levels deep, so the walk may recurse.
bool HasFigure(const XmlNode& node)
{
    for (const XmlNode* p = node.pFirstChild; p; p = p->pNext) {
        const ElementType* pRow =
            FindRow(g_elementTypes.Rows(), LookupKeyword(g_elementTypes.Rows(), p->pszName));
        if (!pRow || !pRow->pfnMakeDoc) continue; // skipped with all that is in it
        if (p->pFirstChild ? HasFigure(*p) : HasArea(pRow->nId)) return true;
    }
    return false;
}

const CrdForm& LiveCrdForm(const CQELDocElm& elm)
{
    return IsMeter(elm) ? CQELDocMeter::CrdFormOf(BlockOf<QELMETERATTR>(elm).nType)
                        : CQELDocScale::CrdFormOf(BlockOf<QELSCALEATTR>(elm).nType);
}

std::size_t NeededNumbers(const CQELDocElm& elm, const CrdForm& form)
{
    constexpr std::size_t ANGLES = 2;
    const bool bArc =
        IsMeter(elm) && MeterFormOf(BlockOf<QELMETERATTR>(elm).nType) == MeterForm::Arc;
    return std::strlen(form.pszLayout) - (bArc ? ANGLES : 0);
}

std::string WhyLiveIsNotDrawn(const CQELDocElm& elm)
{
    return IsMeter(elm) ? WhyMeterIsNotDrawn(BlockOf<QELMETERATTR>(elm))
                        : WhyScaleIsNotDrawn(BlockOf<QELSCALEATTR>(elm));
}

bool LacksFace(const CQELDocElm& elm, const XmlNode& node)
{
    if (!IsMeter(elm)) return false;
    const MeterTypeRow* pType = MeterTypeOf(BlockOf<QELMETERATTR>(elm).nType);
    return pType && pType->family == MeterFamily::Bar && !HasFigure(node);
}

// A dial shows around its centre; its layout rectangle may be smaller or stand apart.
RECT LiveRect(const CQELDocElm& elm)
{
    RECT rc{};
    elm.GetRect(&rc);
    if (!IsMeter(elm)) return rc;
    const auto attr = BlockOf<QELMETERATTR>(elm);
    if (MeterFormOf(attr.nType) == MeterForm::Rectangle) return rc;
    const LONG* n = attr.nGeometry;
    const RECT rcDial{WrapSub(n[0], n[2]), WrapSub(n[1], n[2]), WrapAdd(n[0], n[2]),
                      WrapAdd(n[1], n[2])};
    RECT rcBoth{};
    ::UnionRect(&rcBoth, &rc, &rcDial);
    return rcBoth;
}

std::vector<std::string> WordsOfForm(const AttrForm& form)
{
    if (&form == &g_formMeterType) return WordsOf(g_meterTypeRows);
    if (&form == &g_formScaleType) return WordsOf(g_scaleTypeRows);
    return {};
}

std::string RangeFault(const CQELDocElm& elm)
{
    if (!IsMeter(elm)) {
        const auto attr = BlockOf<QELSCALEATTR>(elm);
        return attr.nMin > attr.nMax ? "min is above max: the number of divisions is always max"
                                     : "";
    }
    const auto attr = BlockOf<QELMETERATTR>(elm);
    if (HasRange(attr)) return "";
    const bool bMaxStays = attr.nMax >= 1 && attr.nMin <= attr.nMax;
    return "imin " + std::to_string(attr.nMin) + " and imax " + std::to_string(attr.nMax) +
           " are no range from 1 up: the element is drawn with its defaults, and saving drops " +
           (bMaxStays ? "imin" : "both");
}

void CIdRules::Add(const CQELDocElm& elm, std::size_t nOffset)
{
    if (elm.Type() == QEL_TYPE_SCALE) {
        const auto nId = static_cast<uint32_t>(BlockOf<QELSCALEATTR>(elm).nId);
        m_entries.push_back({false, nId, m_ids.AddScale(nId), nOffset});
    } else if (IsMeter(elm)) {
        const auto attr = BlockOf<QELMETERATTR>(elm);
        // Without a range the picture's meter has its defaults, the id among them.
        const uint32_t nId = HasRange(attr) ? attr.nId : 0;
        m_entries.push_back({true, nId, m_ids.AddMeter(nId), nOffset});
    }
}

std::string CIdRules::Fault(const Entry& entry) const
{
    const std::string id = std::to_string(entry.nId);
    if (entry.reach == HostReach::Pin)
        return "the host does not reach the meter with mtid " + id +
               ": the ids 1 to 32 are the values of the meter with mtid 0";
    if (entry.reach == HostReach::Second)
        return std::string("a ") + (entry.bMeter ? "meter" : "scale") + " before has the " +
               (entry.bMeter ? "mtid " : "scid ") + id +
               " already: the host does not reach this one";
    if (!entry.bMeter && m_ids.HasMeter(entry.nId))
        return "what the host sets of the scale with scid " + id + " goes to the meter with mtid " +
               std::to_string(CHostIds::MeterOf(entry.nId)) + " as well";
    return "";
}

void CIdRules::Tell(std::vector<Finding>* pFindings) const
{
    for (const Entry& entry : m_entries) {
        const std::string fault = Fault(entry);
        if (!fault.empty()) pFindings->push_back({entry.nOffset, false, fault});
    }
}

} // namespace qel
