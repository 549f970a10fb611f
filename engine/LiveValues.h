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

    int ResetAll();
    // How many are still on their way after that many milliseconds more.
    int Advance(uint32_t nTime);
    // The different identifiers by number, with the type of the first that bears it. 0 past the
    // end, or when the buffer is too small for the text and its zero.
    int IdAt(uint32_t nIndex, char* pszOut, int nSize, int* pnType) const;

private:
    [[nodiscard]] const IdBearer* First(const char* pszId) const;
    [[nodiscard]] CLiveElement Element(const IdBearer* pBearer) const;

    CQELEngine& m_engine;
    const CIdentifiers* m_pIds; // null without memory, and without a drawing
};
