#include "render/LiveElement.h"

#include "render/HostDriven.h"
#include "render/QELViewElm.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr double LEAST_WORD = -2147483648.0; // as a number with a sign
constexpr double MOST_WORD = 4294967295.0;   // as one without, as colours are

double AsNumber(double fValue) // infinity is none
{
    return std::isfinite(fValue) ? fValue : std::numeric_limits<double>::quiet_NaN();
}

bool HoldsShapes(int32_t nType)
{
    switch (nType) {
    case QEL_TYPE_ROOT:
    case QEL_TYPE_GROUP:
    case QEL_TYPE_FRAME:
    case QEL_TYPE_PATTERN:
    case QEL_TYPE_STATUS:
        return true;
    default:
        return false;
    }
}

} // namespace

int SetHostSelector(CHostDriven& host, uint32_t nSelector, double fValue)
{
    if (nSelector == QEL_SEL_BASE_VALUE) return host.SetBase(static_cast<float>(fValue));
    fValue = std::trunc(fValue);
    if (fValue < LEAST_WORD || fValue > MOST_WORD) return 0;
    return host.SetProperty(nSelector, static_cast<uint32_t>(static_cast<int64_t>(fValue)));
}

CLiveElement::CLiveElement(CLiveLayer& layer, CQELViewElm& elm) noexcept
    : m_layer(layer), m_elm(elm), m_pHost(elm.HostSide())
{
}

LiveState* CLiveElement::State() const
{
    if (LiveState* pState = Known()) return pState;
    return m_elm.IsLive() ? m_layer.Find(&m_elm) : nullptr;
}

LiveState* CLiveElement::MakeState() const
{
    if (LiveState* pState = Known()) return pState;
    LiveState* pState = m_layer.Make(&m_elm);
    if (!pState) {
        m_layer.NoteLack();
        return nullptr;
    }
    m_elm.SetLive(true);
    if (m_ppKnown) *m_ppKnown = pState;
    return pState;
}

int CLiveElement::Lack() const
{
    m_layer.NoteLack();
    return 0;
}

// From what is shown now, be it on its way or not. Without a time there is no way, and nobody asks
// for its beginning.
void CLiveElement::BeginMove(LiveState* pState, double fValue) const
{
    LiveMove& move = pState->move;
    if (!pState->nEaseTime) {
        move.nGone = move.nTime;
        return;
    }
    const double fFrom = pState->IsMoving() ? pState->ShownValue() : m_pHost->ShownNumber();
    move = {0, 0, fFrom, 0, 0};
    if (!m_pHost->CanMove() || fFrom == fValue) return;
    move.nTime = pState->nEaseTime;
    const double fTurn = m_pHost->FullTurn(&move.fLow);
    const auto isOn = [&](double f) { return f >= move.fLow && f <= move.fLow + fTurn; };
    if (fTurn > 0 && isOn(fFrom) && isOn(fValue)) move.fTurn = fTurn;
}

int CLiveElement::SetNow(double fValue)
{
    m_layer.HandOver();
    if (!(m_pHost ? m_pHost->FollowsNumber() : m_elm.Type() == QEL_TYPE_TEXT)) return 0;
    LiveState* pState = MakeState();
    if (!pState) return 0;
    const LiveQuality nQuality = pState->ShownQuality();
    fValue = AsNumber(fValue);
    const bool bIsNumber = !std::isnan(fValue);
    if (m_pHost && bIsNumber) {
        BeginMove(pState, fValue);
        m_pHost->ShowNumber(fValue);
    } else {
        pState->move.nGone = pState->move.nTime;
    }
    pState->fValue = fValue;
    pState->bHasValue = true;
    m_elm.Touch();
    pState->bIsNumber = bIsNumber;
    if (pState->ShownQuality() != nQuality) m_elm.PaintChanged();
    return 1;
}

int CLiveElement::GetValue(double* pfValue) const
{
    const LiveState* pState = State();
    if (pState && pState->bHasValue) {
        *pfValue = pState->fValue;
        return 1;
    }
    if (!m_pHost || !m_pHost->KeepsNumber()) return 0;
    *pfValue = m_pHost->ShownNumber();
    return 1;
}

// The pins with what they have now; a pin that is set by number later changes its own here.
int CLiveElement::MakePins(LiveState* pState) const
{
    if (pState->pfPins) return 1;
    pState->pfPins = static_cast<double*>(std::malloc(LIVE_PINS * sizeof(double)));
    if (!pState->pfPins) return Lack();
    for (int n = 0; n < LIVE_PINS; ++n)
        pState->pfPins[n] = m_pHost->ShownPin(static_cast<uint32_t>(n + 1));
    return 1;
}

int CLiveElement::SetPin(int nPin, double fValue)
{
    if (nPin < 1 || nPin > LIVE_PINS) return 0;
    if (!m_pHost || !m_pHost->HasPins()) return 0;
    LiveState* pState = MakeState();
    if (!pState || !MakePins(pState)) return 0;
    const auto n = static_cast<uint32_t>(nPin);
    const LiveQuality nQuality = pState->ShownQuality();
    pState->pfPins[n - 1] = AsNumber(fValue);
    if (pState->ShownQuality() != nQuality) m_elm.PaintChanged();
    if (std::isfinite(fValue)) m_pHost->ShowPin(n, fValue);
    m_elm.Touch();
    return 1;
}

int CLiveElement::GetPin(int nPin, double* pfValue) const
{
    if (nPin < 1 || nPin > LIVE_PINS) return 0;
    if (!m_pHost || !m_pHost->HasPins()) return 0;
    const LiveState* pState = State();
    const auto n = static_cast<uint32_t>(nPin);
    *pfValue = pState && pState->pfPins ? pState->pfPins[n - 1] : m_pHost->ShownPin(n);
    return 1;
}

int CLiveElement::SetSelector(uint32_t nSelector, double fValue)
{
    if (!m_pHost || !m_pHost->KnowsSelector(nSelector) || !std::isfinite(fValue)) return 0;
    if (nSelector == QEL_SEL_VALUE) return SetValue(fValue);
    return SetHostSelector(*m_pHost, nSelector, fValue);
}

int CLiveElement::GetSelector(uint32_t nSelector, double* pfValue) const
{
    if (!m_pHost || !m_pHost->KnowsSelector(nSelector)) return 0;
    if (nSelector == QEL_SEL_VALUE) return GetValue(pfValue);
    if (nSelector == QEL_SEL_BASE_VALUE) {
        float fBase = 0;
        m_pHost->GetBase(&fBase); // what knows the selector has one
        *pfValue = static_cast<double>(fBase);
        return 1;
    }
    uint32_t nValue = 0;
    if (!m_pHost->GetProperty(nSelector, &nValue)) return 0;
    *pfValue =
        m_pHost->HasSign(nSelector) ? static_cast<int32_t>(nValue) : static_cast<double>(nValue);
    return 1;
}

// A text with a mnemonic sign paints in another place than one without.
int CLiveElement::SetText(const char* pszText)
{
    if (m_elm.Type() != QEL_TYPE_TEXT || !pszText || std::strlen(pszText) >= QEL_TEXT_SIZE)
        return 0;
    LiveState* pState = MakeState();
    if (!pState) return 0;
    m_elm.TouchPlace();
    if (!CLiveLayer::SetText(pState, pszText)) return Lack();
    m_elm.PlaceChanged();
    m_elm.Touch();
    return 1;
}

int CLiveElement::SetVisible(bool bVisible)
{
    LiveState* pState = bVisible ? State() : MakeState();
    if (!pState) return bVisible ? 1 : 0;
    if (pState->bHidden != bVisible) return 1;
    pState->bHidden = !bVisible;
    m_elm.PaintChanged();
    m_elm.Touch();
    return 1;
}

// Every shape inside is marked, so that it looks at what it is in.
int CLiveElement::SetColor(int nPlace, uint32_t clr)
{
    if (nPlace < 0 || nPlace >= LIVE_COLOR_COUNT) return 0;
    bool bAny = m_elm.IsShape();
    if (!bAny && !HoldsShapes(m_elm.Type())) return 0;
    LiveState* pState = MakeState();
    if (!pState) return 0;
    for (CQELViewElm* p = m_elm.NextInTree(&m_elm); p; p = p->NextInTree(&m_elm)) {
        if (!p->IsShape()) continue;
        p->SetLive(true);
        bAny = true;
    }
    if (bAny) pState->colors[nPlace] = {clr, m_layer.NextSerial()};
    m_elm.Touch();
    return bAny ? 1 : 0;
}

int CLiveElement::SetQuality(int nQuality)
{
    if (nQuality < QUALITY_GOOD || nQuality >= QUALITY_COUNT) return 0;
    LiveState* pState = MakeState();
    if (!pState) return 0;
    if (pState->nQuality == nQuality) return 1;
    pState->nQuality = static_cast<LiveQuality>(nQuality);
    m_elm.PaintChanged();
    m_elm.Touch();
    return 1;
}

// A way that has begun goes on as it was.
int CLiveElement::SetEasing(uint32_t nTime)
{
    if (!m_pHost || !m_pHost->CanMove()) return 0;
    LiveState* pState = MakeState();
    if (!pState) return 0;
    pState->nEaseTime = nTime;
    return 1;
}

// The mark stays: it may be in something that has colours for it.
int CLiveElement::Reset()
{
    if (State()) {
        m_elm.TouchPlace();
        m_elm.PlaceChanged();
        m_elm.Touch();
    }
    m_layer.Drop(&m_elm);
    if (m_pHost) m_pHost->ResetValues();
    return 1;
}
