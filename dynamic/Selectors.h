// The selectors by which a host addresses values of meters and scales: one row each, with the name
// that people write, what it means to a meter and to a scale, the default, the meter types that
// follow it, and how it reaches their renderer. The views, the command line and the documentation
// all go by these rows.
#pragma once

#include "base/Keywords.h"
#include "dynamic/MeterTypes.h"

#include <cstdint>

class CMeter;

enum class SelectorForm { Number, Count, Switch, Color, Code };

constexpr uint32_t METER_ALL = (1U << METER_TYPE_COUNT) - 1;

// The state of a meter that its renderer follows.
struct MeterSettings {
    int32_t nType = 0;
    bool bUseScale = true;
    bool bUsePin = false;
    bool bDark = false;                 // blinking colours are black now
    const uint32_t* pnValues = nullptr; // by selector
    int32_t nDraft = 0;
    uint32_t clrDraftFore = 0;
    uint32_t clrDraftBack = 0;

    [[nodiscard]] int32_t Number(int32_t nSelector) const
    {
        return static_cast<int32_t>(pnValues[nSelector]);
    }
    [[nodiscard]] uint32_t Color(int32_t nSelector) const { return Resolved(pnValues[nSelector]); }
    [[nodiscard]] uint32_t Resolved(uint32_t clr) const;
};

struct SelectorRow {
    int32_t nId;
    const char* pszName;
    SelectorForm form;
    uint32_t nDefault;    // of meters
    uint32_t nMeterTypes; // the types whose renderer follows, one bit each; 0: not for meters
    // Hands the setting to a renderer of one of these types; null when it decides how the renderer
    // is made, or is no setting of it.
    void (*pfnPass)(CMeter* pMeter, const MeterSettings& settings);
    const char* pszMeaning;  // for meters; null: not known to them
    const char* pszForScale; // null: not known to scales
};

extern const SelectorRow* const g_selectorRows;

// The row of a selector, null for 34 and above.
const SelectorRow* FindSelector(uint32_t nSelector);
// The keywords of "sctype".
extern const KeywordRow* const g_scaleTypeRows;

// A new renderer's own settings: everything that its type follows, and the fixed switches.
void PassAll(CMeter* pMeter, const MeterSettings& settings);
// The hatch and its two colours, to the types that have them: bars and pies.
void PassDraft(CMeter* pMeter, const MeterSettings& settings);
// The colours alone, when the blink phase has changed.
void PassColors(CMeter* pMeter, const MeterSettings& settings);
