#include "tools/qel/HostElements.h"

#include "document/ShapeForms.h"
#include "dynamic/QELDocScale.h"
#include "tools/qel/Text.h"

#include <algorithm>

namespace qel {

namespace {

// Elements nest at most 512 levels deep, so the walks may recurse.
bool HasFace(HQELENGINE hEngine, HQELELEM hElem)
{
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h)) {
        const bool bLeaf = QELGetFirstChild(hEngine, h) == nullptr;
        if (bLeaf ? HasArea(QELGetElemType(hEngine, h)) : HasFace(hEngine, h)) return true;
    }
    return false;
}

std::string IdOf(HQELENGINE hEngine, HQELELEM hElem)
{
    return DrawingToUtf8(QELGetElemId(hEngine, hElem));
}

void AddMeter(const QELMETERATTR& attr, bool bFace, const std::string& id, HostElements* pFound)
{
    HostMeter meter{attr, HostReach::Reached, bFace, !HasRange(attr), id};
    if (meter.bRefused) {
        meter.attr = {};
        meter.attr.bUseScale = 1;
    }
    meter.reach = pFound->ids.AddMeter(meter.attr.nId);
    pFound->meters.push_back(meter);
}

bool HasShape(HQELENGINE hEngine, HQELELEM hElem)
{
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        if (IsShapeType(QELGetElemType(hEngine, h)) || HasShape(hEngine, h)) return true;
    return false;
}

// Bars and pies alone are painted with the hatch.
bool HasDraft(const HostMeter& meter)
{
    const MeterTypeRow* pType = MeterTypeOf(meter.attr.nType);
    if (!pType) return false;
    return pType->family == MeterFamily::Bar ? meter.bFace : pType->family == MeterFamily::Pie;
}

void AddFollowerOfParams(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    const int nType = QELGetElemType(hEngine, hElem);
    QELSHAPEATTR shape{};
    QELDRAWRGNATTR region{};
    if (nType == QEL_TYPE_FRAME) {
        pFound->bColorFollowed |= HasShape(hEngine, hElem);
    } else if (nType == QEL_TYPE_PATTERN) {
        pFound->bDraftFollowed |= HasShape(hEngine, hElem);
    } else if (nType == QEL_TYPE_DRAWRGN) {
        QELGetElemAttr(hEngine, hElem, &region, nullptr);
        pFound->bDraftFollowed |= (region.nStyle & QEL_STYLE_FILL_MASK) != 0;
    } else if (IsShapeType(nType) && QELGetElemAttr(hEngine, hElem, &shape, nullptr)) {
        pFound->bColorFollowed |= (shape.nFlags & QEL_FLAG_COLOR_PARAM) != 0;
        pFound->bDraftFollowed |=
            (shape.nFlags & QEL_FLAG_DRAFT_PARAM) && (shape.nStyle & QEL_STYLE_FILL_MASK);
    }
}

void Add(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    switch (QELGetElemType(hEngine, hElem)) {
    case QEL_TYPE_METER: {
        QELMETERATTR attr{};
        if (!QELGetElemAttr(hEngine, hElem, &attr, nullptr)) break;
        AddMeter(attr, HasFace(hEngine, hElem), IdOf(hEngine, hElem), pFound);
        pFound->bDraftFollowed |= HasDraft(pFound->meters.back());
        break;
    }
    case QEL_TYPE_SCALE: {
        HostScale scale{};
        if (!QELGetElemAttr(hEngine, hElem, &scale.attr, nullptr)) break;
        scale.reach = pFound->ids.AddScale(scale.attr.nId);
        scale.id = IdOf(hEngine, hElem);
        pFound->scales.push_back(scale);
        pFound->bDraftFollowed |= HasFill(scale.attr);
        break;
    }
    case QEL_TYPE_STATUS: {
        QELWORDATTR attr{};
        if (QELGetElemAttr(hEngine, hElem, &attr, nullptr)) pFound->statuses.insert(attr.nValue);
        break;
    }
    default:
        AddFollowerOfParams(hEngine, hElem, pFound);
        break;
    }
}

bool IsTextWithRun(HQELENGINE hEngine, HQELELEM hElem, int nType)
{
    QELSHAPEATTR shape{};
    return nType == QEL_TYPE_TEXT && QELGetElemAttr(hEngine, hElem, &shape, nullptr) &&
           HasNumberRun(shape.szText);
}

// Of these elements the shapes inside take colours by the element's identifier.
bool HoldsShapes(int nType)
{
    return nType == QEL_TYPE_ROOT || nType == QEL_TYPE_GROUP || nType == QEL_TYPE_FRAME ||
           nType == QEL_TYPE_PATTERN || nType == QEL_TYPE_STATUS;
}

void AddBearer(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    HostBearer bearer{IdOf(hEngine, hElem), QELGetElemType(hEngine, hElem), false, false, hElem};
    if (bearer.id.empty()) return;
    bearer.bColors =
        IsShapeType(bearer.nType) || (HoldsShapes(bearer.nType) && HasShape(hEngine, hElem));
    bearer.bRun = IsTextWithRun(hEngine, hElem, bearer.nType);
    pFound->bearers.push_back(bearer);
}

void Walk(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    Add(hEngine, hElem, pFound);
    AddBearer(hEngine, hElem, pFound);
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        Walk(hEngine, h, pFound);
}

} // namespace

HostElements FindHostElements(HQELENGINE hEngine)
{
    HostElements found;
    if (const HQELELEM hRoot = QELGetRootElem(hEngine)) Walk(hEngine, hRoot, &found);
    return found;
}

const HostMeter* HostElements::MeterAt(uint32_t nId) const
{
    for (const HostMeter& meter : meters)
        if (meter.reach == HostReach::Reached && meter.attr.nId == CHostIds::MeterOf(nId))
            return &meter;
    return nullptr;
}

const HostScale* HostElements::ScaleAt(uint32_t nId) const
{
    for (const HostScale& scale : scales)
        if (scale.reach == HostReach::Reached && static_cast<uint32_t>(scale.attr.nId) == nId)
            return &scale;
    return nullptr;
}

const HostMeter* HostElements::MeterNamed(const std::string& id) const
{
    for (const HostMeter& meter : meters)
        if (meter.id == id) return &meter;
    return nullptr;
}

const HostScale* HostElements::ScaleNamed(const std::string& id) const
{
    for (const HostScale& scale : scales)
        if (scale.id == id) return &scale;
    return nullptr;
}

bool HostElements::IsBorne(const std::string& id) const
{
    return std::any_of(bearers.begin(), bearers.end(),
                       [&id](const HostBearer& bearer) { return bearer.id == id; });
}

bool HostElements::HasClock() const
{
    return std::any_of(meters.begin(), meters.end(), [](const HostMeter& meter) {
        const MeterTypeRow* pType = MeterTypeOf(meter.attr.nType);
        return pType && pType->shows == MeterShows::Time && meter.attr.bUsePin;
    });
}

bool HasNumberRun(const std::string& text)
{
    return text.find('#') != std::string::npos;
}

bool MeterFollows(int32_t nType, const SelectorRow& row)
{
    return row.pszMeaning && (row.nMeterTypes & MeterTypeBit(nType));
}

bool ScaleFollows(int32_t nType, const SelectorRow& row)
{
    return row.pszForScale && (row.nId != QEL_SEL_START_CODE || nType >= SCALE_ROUND);
}

bool HasFill(const QELSCALEATTR& attr)
{
    return attr.nType < SCALE_ROUND || (attr.nStyle & QEL_STYLE_FILL_MASK) == 1;
}

} // namespace qel
