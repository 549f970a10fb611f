// What the host sets of a drawing by identifiers: each call reaches every element that bears the
// identifier, and tells how many took it; a get asks the first that has it.
#pragma once

#include "engine/Identifiers.h"
#include "render/LiveElement.h"

class CQELEngine;

class CLiveValues {
public:
    explicit CLiveValues(CQELEngine& engine) noexcept;

    template <class... Given, class... Taken>
    int Set(const char* pszId, int (CLiveElement::*pfnSet)(Given...), Taken... values)
    {
        int nReached = 0;
        for (const IdBearer* p = First(pszId); p; p = m_pIds->Next(p))
            nReached += (Element(p).*pfnSet)(values...);
        return nReached;
    }
    template <class... Given, class... Taken>
    int Get(const char* pszId, int (CLiveElement::*pfnGet)(Given...) const, Taken... values)
    {
        for (const IdBearer* p = First(pszId); p; p = m_pIds->Next(p))
            if ((Element(p).*pfnGet)(values...)) return 1;
        return 0;
    }

    // Why a set or a get came to nothing. That nobody bears the identifier is an answer:
    // QEL_ERROR_NONE. nCode: what it is when somebody does.
    [[nodiscard]] uint32_t WhyNot(const char* pszId, uint32_t nCode) const;

    int ResetAll();
    // How many are still on their way after that many milliseconds more.
    int Advance(uint32_t nTime);
    // The different identifiers by number, as the first that bears each; null past the end.
    [[nodiscard]] const IdBearer* IdAt(uint32_t nIndex) const;

private:
    [[nodiscard]] const IdBearer* First(const char* pszId) const;
    [[nodiscard]] CLiveElement Element(const IdBearer* pBearer) const;

    CQELEngine& m_engine;
    const CIdentifiers* m_pIds; // null without memory, and without a drawing
    const uint32_t m_nLacks;    // how often memory had run out before
};
