// The elements that the host sets values of; see the header.
#include "tools/qel/HostElements.h"

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

void AddMeter(const QELMETERATTR& attr, bool bFace, HostElements* pFound)
{
    HostMeter meter{attr, HostReach::Reached, bFace, !HasRange(attr)};
    if (meter.bRefused) {
        meter.attr = {};
        meter.attr.bUseScale = 1;
    }
    meter.reach = pFound->ids.AddMeter(meter.attr.nId);
    pFound->meters.push_back(meter);
}

void Add(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    switch (QELGetElemType(hEngine, hElem)) {
    case QEL_TYPE_METER: {
        QELMETERATTR attr{};
        if (QELGetElemAttr(hEngine, hElem, &attr, nullptr))
            AddMeter(attr, HasFace(hEngine, hElem), pFound);
        break;
    }
    case QEL_TYPE_SCALE: {
        HostScale scale{};
        if (!QELGetElemAttr(hEngine, hElem, &scale.attr, nullptr)) break;
        scale.reach = pFound->ids.AddScale(scale.attr.nId);
        pFound->scales.push_back(scale);
        break;
    }
    case QEL_TYPE_STATUS: {
        QELWORDATTR attr{};
        if (QELGetElemAttr(hEngine, hElem, &attr, nullptr)) pFound->statuses.insert(attr.nValue);
        break;
    }
    default:
        break;
    }
}

void Walk(HQELENGINE hEngine, HQELELEM hElem, HostElements* pFound)
{
    Add(hEngine, hElem, pFound);
    for (HQELELEM h = QELGetFirstChild(hEngine, hElem); h; h = QELGetNextElem(hEngine, h))
        Walk(hEngine, h, pFound);
}

} // namespace

HostElements FindHostElements(const CDrawing& drawing)
{
    HostElements found;
    if (const HQELELEM hRoot = QELGetRootElem(drawing.Engine()))
        Walk(drawing.Engine(), hRoot, &found);
    return found;
}

} // namespace qel
