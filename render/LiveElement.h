// One element as the host reaches it by its identifier: what it takes of values, texts, colours and
// the like, kept in the drawing's live layer above what the element has. A set answers 1 when the
// element took it, a get when it has such a thing.
#pragma once

#include "render/LiveLayer.h"

#include <bit>
#include <cmath>
#include <cstdint>

class CHostDriven;

// A setting but the value, by the selector's own rule: the base is a real number, the others are
// truncated toward zero. 0: not known, or refused.
int SetHostSelector(CHostDriven& host, uint32_t nSelector, double fValue);

class CLiveElement {
public:
    CLiveElement(CLiveLayer& layer, CQELViewElm& elm) noexcept;
    // The same with what is known already: what the host drives of it, and where its state was
    // last, which is kept up.
    CLiveElement(CLiveLayer& layer, CQELViewElm& elm, CHostDriven* pHost,
                 LiveState** ppKnown) noexcept
        : m_layer(layer), m_elm(elm), m_pHost(pHost), m_ppKnown(ppKnown)
    {
    }

    // What is no number, or infinite, is kept, shows nothing of itself and counts as bad.
    int SetValue(double fValue)
    {
        LiveState* pState = Known();
        const bool bMayWait = pState && pState->MayWait() && std::isfinite(fValue);
        return bMayWait ? SetLater(pState, fValue) : SetNow(fValue);
    }
    int GetValue(double* pfValue) const;
    int SetPin(int nPin, double fValue); // 1 to LIVE_PINS
    int GetPin(int nPin, double* pfValue) const;
    int SetSelector(uint32_t nSelector, double fValue);
    int GetSelector(uint32_t nSelector, double* pfValue) const;
    int SetText(const char* pszText);
    int SetVisible(bool bVisible);
    int SetColor(int nPlace, uint32_t clr); // of what holds others: of every shape inside
    int SetQuality(int nQuality);
    int SetEasing(uint32_t nTime);
    int Reset();

private:
    [[nodiscard]] LiveState* Known() const // null when its state stands elsewhere
    {
        LiveState* pState = m_ppKnown ? *m_ppKnown : nullptr;
        return pState && pState->pElm == &m_elm ? pState : nullptr;
    }
    [[nodiscard]] LiveState* State() const;     // null while there is none
    [[nodiscard]] LiveState* MakeState() const; // null without memory
    // The same bits as before are no other value.
    int SetLater(LiveState* pState, double fValue) const
    {
        const bool bSame =
            std::bit_cast<uint64_t>(pState->fValue) == std::bit_cast<uint64_t>(fValue);
        if (!bSame) m_layer.Await(pState, fValue);
        return 1;
    }
    int SetNow(double fValue);
    int MakePins(LiveState* pState) const;
    [[nodiscard]] int Lack() const; // 0, the result of a set that memory is not there for
    void BeginMove(LiveState* pState, double fValue) const;

    CLiveLayer& m_layer;
    CQELViewElm& m_elm;
    CHostDriven* m_pHost;
    LiveState** m_ppKnown = nullptr;
};
