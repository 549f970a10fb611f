#include "dynamic/Selectors.h"

#include "include/QELEngine.h"
#include "meter/ArcMeter.h"
#include "meter/BarMeter.h"
#include "meter/PieMeter.h"
#include "meter/SectorMeter.h"

namespace {

constexpr uint32_t Types(std::initializer_list<int32_t> types)
{
    uint32_t nBits = 0;
    for (const int32_t nType : types) nBits |= MeterTypeBit(nType);
    return nBits;
}

constexpr uint32_t PIES = Types({METER_PIE, METER_PIE_UPGRADE});
constexpr uint32_t BARS_3D = Types({METER_VERT3D, METER_HORZ3D});
constexpr uint32_t BARS_AND_DIALS = METER_ALL & ~Types({METER_SECTOR});
constexpr uint32_t ALARMED = Types({METER_ROUND, METER_ARC, METER_ROUND_UPGRADE});
constexpr uint32_t GREY = 0xAAAAAA;

bool IsBar(const MeterSettings& settings)
{
    return MeterTypeOf(settings.nType)->family == MeterFamily::Bar;
}

CArcMeter* Dial(CMeter* pMeter)
{
    return static_cast<CArcMeter*>(pMeter);
}

CBarMeter* Bar(CMeter* pMeter)
{
    return static_cast<CBarMeter*>(pMeter);
}

// A setting that goes to one setter of the base, as it is.
template <int32_t SELECTOR, class Value, void (CMeter::*SETTER)(Value)>
void Plain(CMeter* pMeter, const MeterSettings& settings)
{
    (pMeter->*SETTER)(static_cast<Value>(settings.pnValues[SELECTOR]));
}

// A setting of dials only.
template <int32_t SELECTOR, void (CArcMeter::*SETTER)(int32_t)>
void DialNumber(CMeter* pMeter, const MeterSettings& settings)
{
    (Dial(pMeter)->*SETTER)(settings.Number(SELECTOR));
}

template <int32_t SELECTOR, void (CArcMeter::*SETTER)(COLORREF)>
void DialColor(CMeter* pMeter, const MeterSettings& settings)
{
    (Dial(pMeter)->*SETTER)(settings.Color(SELECTOR));
}

// A colour that bars and dials have under different names.
template <int32_t SELECTOR, void (CBarMeter::*BAR)(COLORREF), void (CArcMeter::*DIAL)(COLORREF)>
void AnyColor(CMeter* pMeter, const MeterSettings& settings)
{
    if (IsBar(settings))
        (Bar(pMeter)->*BAR)(settings.Color(SELECTOR));
    else
        (Dial(pMeter)->*DIAL)(settings.Color(SELECTOR));
}

void PassScale(CMeter* pMeter, const MeterSettings& settings)
{
    const int32_t bShow = settings.bUseScale && settings.Number(QEL_SEL_SHOW_SCALE) ? 1 : 0;
    pMeter->SetShowScale(bShow);
    pMeter->SetShowAxis(bShow);
}

void PassPin(CMeter* pMeter, const MeterSettings& settings)
{
    const bool bShow = settings.bUsePin && settings.Number(QEL_SEL_SHOW_PIN) &&
                       !(MeterTypeBit(settings.nType) & PIES);
    pMeter->SetShowPin(bShow ? 1 : 0);
}

void PassSectors(CMeter* pMeter, const MeterSettings& settings)
{
    static_cast<CSectorMeter*>(pMeter)->SetSectorCount(settings.pnValues[QEL_SEL_SECTOR_COUNT]);
}

using F = SelectorForm;

constexpr SelectorRow g_rows[] = {
    {QEL_SEL_PIN_COLOR, "pin-color", F::Color, GREY, BARS_AND_DIALS,
     AnyColor<QEL_SEL_PIN_COLOR, &CBarMeter::SetSecondScaleColor, &CArcMeter::SetPinColor>,
     "colour of the pointer; of 3D bars, of the far edges", "colour of the pointer"},
    {QEL_SEL_SCALE_COLOR, "scale-color", F::Color, GREY, BARS_AND_DIALS,
     AnyColor<QEL_SEL_SCALE_COLOR, &CBarMeter::SetScaleColor, &CArcMeter::SetScaleColor>,
     "colour of axis and ticks", "colour of base line, circle and ticks"},
    {QEL_SEL_TICKS, "ticks", F::Count, 10, METER_ALL,
     Plain<QEL_SEL_TICKS, uint32_t, &CMeter::SetTickCount>,
     "number of intervals between ticks; 0 is refused",
     "number of divisions, held between `min` and `max`; below 1 is refused"},
    {QEL_SEL_START_CODE, "start-code", F::Code, 0, 0, nullptr, nullptr,
     "where a round scale begins: 0 top, 1 bottom, 2 left, 3 right, clockwise; 4 to 7 the same, "
     "counter-clockwise; an arc counts back from its end with 0 to 3"},
    {QEL_SEL_MAX, "max", F::Number, 10, METER_ALL, Plain<QEL_SEL_MAX, int32_t, &CMeter::SetMax>,
     "value at the end of the scale", "value at the end of the scale"},
    {QEL_SEL_MIN, "min", F::Number, 0, METER_ALL, Plain<QEL_SEL_MIN, int32_t, &CMeter::SetMin>,
     "value at the start of the scale", "value at the start of the scale"},
    {QEL_SEL_VALUE, "value", F::Number, 0, METER_ALL, nullptr,
     "the current value: of the meter with `mtid` 0 by id 0, and its sector values 1 to 32 by "
     "these "
     "ids; also as a float",
     "the current value; also as a float"},
    {QEL_SEL_FACE_COLOR, "face-color", F::Color, 0, BARS_AND_DIALS,
     AnyColor<QEL_SEL_FACE_COLOR, &CBarMeter::SetEmptyColor, &CArcMeter::SetFaceColor>,
     "colour of the face's shapes, of the empty part of bars, and of what erases a needle",
     nullptr},
    {QEL_SEL_SHOW_SCALE, "scale", F::Switch, 1, METER_ALL, PassScale,
     "show axis and ticks; refused when `usc` is 0", nullptr},
    {QEL_SEL_SHOW_PIN, "pin", F::Switch, 1, METER_ALL, PassPin,
     "show the pointer; refused when `upin` is 0; never for the pie types", nullptr},
    {QEL_SEL_SHOW_LABELS, "labels", F::Switch, 1, METER_ALL,
     Plain<QEL_SEL_SHOW_LABELS, int32_t, &CMeter::SetShowLabels>, "show the numbers", nullptr},
    {QEL_SEL_LABEL_COLOR, "label-color", F::Color, GREY, METER_ALL,
     AnyColor<QEL_SEL_LABEL_COLOR, &CBarMeter::SetLabelColor, &CArcMeter::SetLabelColor>,
     "colour of the numbers", nullptr},
    {QEL_SEL_SCALE_START, "scale-start", F::Number, 0, METER_ALL,
     Plain<QEL_SEL_SCALE_START, int32_t, &CMeter::SetScaleStart>,
     "number that stands at the start of the scale", nullptr},
    {QEL_SEL_SCALE_END, "scale-end", F::Number, 10, METER_ALL,
     Plain<QEL_SEL_SCALE_END, int32_t, &CMeter::SetScaleEnd>,
     "number that stands at the end of the scale", nullptr},
    {QEL_SEL_MAJOR_EVERY, "major-every", F::Count, 5, METER_ALL,
     Plain<QEL_SEL_MAJOR_EVERY, uint32_t, &CMeter::SetMajorEvery>,
     "every which tick is a major one with a number; 0: none", nullptr},
    {QEL_SEL_FULL_CIRCLE, "full-circle", F::Switch, 0,
     Types({METER_ROUND, METER_CLOCK, METER_ROUND_UPGRADE, METER_SECTOR}), nullptr,
     "1: the scale runs all around, 0: from 30 to 330 degrees; anything else, and the current "
     "value, is refused",
     nullptr},
    {QEL_SEL_SHOW_ALARM, "alarm", F::Switch, 0, METER_ALL & ~PIES,
     Plain<QEL_SEL_SHOW_ALARM, int32_t, &CMeter::SetShowAlarm>,
     "show the alarm zones, and colour the read-out by zone", nullptr},
    {QEL_SEL_DECIMAL_SHIFT, "decimals", F::Count, 0, METER_ALL,
     Plain<QEL_SEL_DECIMAL_SHIFT, uint32_t, &CMeter::SetDecimalShift>,
     "numbers are printed divided by 10 to this power; above 9 counts as 9", nullptr},
    {QEL_SEL_LOW_LIMIT, "low-limit", F::Number, 0, METER_ALL,
     Plain<QEL_SEL_LOW_LIMIT, int32_t, &CMeter::SetLowLimit>, "values below are in the low zone",
     nullptr},
    {QEL_SEL_HIGH_LIMIT, "high-limit", F::Number, 10, METER_ALL,
     Plain<QEL_SEL_HIGH_LIMIT, int32_t, &CMeter::SetHighLimit>, "values above are in the high zone",
     nullptr},
    {QEL_SEL_LOW_COLOR, "low-color", F::Color, GREY, ALARMED,
     DialColor<QEL_SEL_LOW_COLOR, &CArcMeter::SetLowColor>, "colour of the low zone", nullptr},
    {QEL_SEL_HIGH_COLOR, "high-color", F::Color, GREY, ALARMED,
     DialColor<QEL_SEL_HIGH_COLOR, &CArcMeter::SetHighColor>, "colour of the high zone", nullptr},
    {QEL_SEL_REVERSE, "reverse", F::Switch, 0, METER_ALL,
     Plain<QEL_SEL_REVERSE, int32_t, &CMeter::SetReverse>,
     "the scale runs from the maximum to the minimum", nullptr},
    {QEL_SEL_USE_BASE, "use-base", F::Switch, 0, METER_ALL,
     Plain<QEL_SEL_USE_BASE, int32_t, &CMeter::SetUseBaseValue>,
     "bars grow from the base value instead of from the minimum", nullptr},
    {QEL_SEL_BASE_VALUE, "base", F::Number, 0, METER_ALL,
     Plain<QEL_SEL_BASE_VALUE, int32_t, &CMeter::SetBaseValue>,
     "the base value of bars; also as a float", nullptr},
    {QEL_SEL_FILL_ONLY, "fill-only", F::Switch, 0, METER_ALL,
     Plain<QEL_SEL_FILL_ONLY, int32_t, &CMeter::SetFillOnly>,
     "bars paint no empty part, and the face's shapes are drawn as outlines", nullptr},
    {QEL_SEL_ANGLE_OFFSET, "angle", F::Number, 0, ALARMED, nullptr,
     "degrees by which the dial is turned clockwise (\"round\" and \"roundUpgrade\"; an \"Arc\" "
     "has its angles in the file)",
     nullptr},
    {QEL_SEL_PIN_STYLE, "pin-style", F::Code, 0, Types({METER_CLOCK, METER_ROUND_UPGRADE}),
     DialNumber<QEL_SEL_PIN_STYLE, &CArcMeter::SetPinStyle>,
     "style of needle or hands, 0 to 4; above, none is drawn", nullptr},
    {QEL_SEL_AXIS_STYLE, "axis-style", F::Code, 0,
     Types({METER_CLOCK, METER_ROUND_UPGRADE, METER_PIE_UPGRADE}),
     DialNumber<QEL_SEL_AXIS_STYLE, &CArcMeter::SetAxisStyle>, "style of bands and ticks, 0 to 3",
     nullptr},
    {QEL_SEL_SHOW_FRAME, "frame", F::Switch, 0, BARS_3D,
     Plain<QEL_SEL_SHOW_FRAME, int32_t, &CMeter::SetShowFrame>, "show the outline of the 3D body",
     nullptr},
    {QEL_SEL_SHOW_VALUE, "read-out", F::Switch, 0,
     BARS_3D | Types({METER_ROUND_UPGRADE, METER_SECTOR}),
     Plain<QEL_SEL_SHOW_VALUE, int32_t, &CMeter::SetShowValue>, "show the value as a number",
     nullptr},
    {QEL_SEL_FRAME_OPTION, "frame-option", F::Code, 0, BARS_3D,
     Plain<QEL_SEL_FRAME_OPTION, int32_t, &CMeter::SetFrameOption>,
     "1: the 3D body is a cylinder, else a box", nullptr},
    {QEL_SEL_SECTOR_COUNT, "sectors", F::Count, 0, Types({METER_SECTOR}), PassSectors,
     "number of sectors, at most 32", nullptr},
    {QEL_SEL_FONT_SIZE, "font", F::Code, 0, METER_ALL,
     Plain<QEL_SEL_FONT_SIZE, uint32_t, &CMeter::SetFontSize>,
     "size of the numbers: 0 by the meter's size, 1 to 10 a fixed cell", nullptr},
    {KEYWORD_NONE, nullptr, F::Number, 0, 0, nullptr, nullptr, nullptr}};
static_assert(IsSoundTable(g_rows), "selectors and names are unique and the end mark is there");

consteval bool StandsInOrder()
{
    for (int32_t n = 0; n < QEL_SEL_COUNT; ++n)
        if (g_rows[n].nId != n) return false;
    return sizeof g_rows / sizeof g_rows[0] == QEL_SEL_COUNT + 1;
}
static_assert(StandsInOrder(), "a selector is the place of its row");

constexpr KeywordRow g_scaleTypes[] = {{0, "vrtleft"},         {1, "vrtright"}, {2, "horizup"},
                                       {3, "horizdn"},         {4, "round"},    {5, "Arc"},
                                       {KEYWORD_NONE, nullptr}};
static_assert(IsSoundTable(g_scaleTypes));

} // namespace

const SelectorRow* const g_selectorRows = g_rows;
const KeywordRow* const g_scaleTypeRows = g_scaleTypes;

uint32_t MeterSettings::Resolved(uint32_t clr) const
{
    return bDark && (clr & QEL_COLOR_BLINK) ? 0 : clr & ~QEL_COLOR_BLINK;
}

const SelectorRow* FindSelector(uint32_t nSelector)
{
    return nSelector < QEL_SEL_COUNT ? &g_rows[nSelector] : nullptr;
}

void PassAll(CMeter* pMeter, const MeterSettings& settings)
{
    const uint32_t nType = MeterTypeBit(settings.nType);
    PassDraft(pMeter, settings);
    for (const SelectorRow& row : g_rows)
        if (row.pfnPass && (row.nMeterTypes & nType)) row.pfnPass(pMeter, settings);
    pMeter->SetShowFill(MeterTypeOf(settings.nType)->family == MeterFamily::Dial ? 0 : 1);
    if (settings.nType == METER_PIE_UPGRADE) pMeter->SetShowFrame(1);
}

void PassDraft(CMeter* pMeter, const MeterSettings& settings)
{
    const uint32_t clrFore = settings.Resolved(settings.clrDraftFore);
    const uint32_t clrBack = settings.Resolved(settings.clrDraftBack);
    if (IsBar(settings)) {
        Bar(pMeter)->SetBarStyle(settings.nDraft);
        Bar(pMeter)->SetBarColor(clrFore);
        Bar(pMeter)->SetBackColor(clrBack);
    } else if (MeterTypeBit(settings.nType) & PIES) {
        auto* pPie = static_cast<CPieMeter*>(pMeter);
        pPie->SetSectorStyle(settings.nDraft);
        pPie->SetSectorColor(clrFore);
        pPie->SetEraseColor(clrBack);
    }
}

void PassColors(CMeter* pMeter, const MeterSettings& settings)
{
    PassDraft(pMeter, settings);
    for (const SelectorRow& row : g_rows)
        if (row.form == SelectorForm::Color && row.pfnPass &&
            (row.nMeterTypes & MeterTypeBit(settings.nType)))
            row.pfnPass(pMeter, settings);
}
