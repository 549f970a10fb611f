// The view of a meter: its settings and which of them reach the renderer of which type, the place
// on the device, the life of the renderer, the face, values and pins, masks and copies. The code is
// dynamic/QELViewMeter.cpp, dynamic/MeterRenderer.cpp and dynamic/Selectors.cpp; what renderers
// paint is tested beside the meter folder.
#include "dynamic/QELViewMeter.h"
#include "engine/ElementTypes.h"

#include "dynamic/MeterRenderer.h"
#include "meter/BarMeter3D.h"
#include "meter/CircleMeter.h"
#include "meter/ClockMeter.h"
#include "meter/PieMeter.h"
#include "meter/RoundMeter.h"
#include "meter/SectorMeter.h"
#include "render/QELView.h"
#include "render/QELViewBox.h"
#include "tests/support/ViewSupport.h"

#include <cmath>
#include <map>
#include <sstream>

namespace {

constexpr int TYPES = 11;
constexpr bool IsBar(int nType)
{
    return nType < 4;
}
constexpr bool IsPie(int nType)
{
    return nType == 6 || nType == 9;
}

constexpr uint32_t FACE = 0x336699;
constexpr RECT QEL{0, 0, 200, 200}; // two pixels a unit of the drawings here

QELMETERATTR Attr(int nType)
{
    QELMETERATTR attr{
        sizeof attr, 0, 1, 1, nType, 100, 1, {50, 50, 40, 10, 10, 90, 90, 45, 315}, 0};
    if (IsBar(nType)) {
        const LONG bar[] = {10, 20, 40, 70};
        std::copy(bar, bar + 4, attr.nGeometry);
    }
    return attr;
}

// A meter in a view of 100 by 100 units.
class CTestMeter {
public:
    explicit CTestMeter(const QELMETERATTR& attr) : m_view(g_elementTypes, SIZE{100, 100})
    {
        EXPECT_EQ(1, m_view.NewTree());
        CQELViewElm* pElm = nullptr;
        EXPECT_EQ(1, m_view.CreateElement(m_view.Root(), nullptr, QEL_TYPE_METER, &pElm));
        m_pMeter = static_cast<CQELViewMeter*>(pElm);
        EXPECT_EQ(1, m_pMeter->SetAttrBlock(&attr));
    }
    explicit CTestMeter(int nType) : CTestMeter(Attr(nType)) {}
    CTestMeter(const CTestMeter&) = delete;
    CTestMeter& operator=(const CTestMeter&) = delete;

    CQELViewMeter* operator->() { return m_pMeter; }
    CQELView& View() { return m_view; }

    CQELViewElm* AddShape(int nType, const QELSHAPEATTR& attr, CQELViewElm* pParent = nullptr)
    {
        CQELViewElm* pShape = nullptr;
        EXPECT_EQ(1, m_view.CreateElement(pParent ? pParent : m_pMeter, nullptr, nType, &pShape));
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
        return pShape;
    }
    void AddFace(int l, int t, int r, int b)
    {
        QELSHAPEATTR attr = FilledAttr({l, t, r, b});
        attr.nPenWidth = 0;
        AddShape(QEL_TYPE_RECT, attr);
    }
    void Draw(const RECT& rcQel = QEL, uint32_t nFlags = QEL_DRAW_FULL)
    {
        CTestBitmap bitmap(250, 250);
        EXPECT_EQ(1, m_pMeter->Draw(bitmap.Dc(), rcQel, nFlags));
    }
    Lines Calls(uint32_t nFlags, const RECT& rcQel = QEL)
    {
        CRecording recording;
        EXPECT_EQ(1, m_pMeter->Draw(recording.Dc(), rcQel, nFlags));
        return recording.Calls();
    }
    template <class T>
    const T* As() // the renderer, which is of the type's class: see the test of that
    {
        EXPECT_NE(nullptr, m_pMeter->Renderer());
        return static_cast<const T*>(m_pMeter->Renderer());
    }
    uint32_t Get(uint32_t nSelector)
    {
        uint32_t nValue = 0xDEADBEEF;
        EXPECT_EQ(1, m_pMeter->GetProperty(nSelector, &nValue)) << nSelector;
        return nValue;
    }

private:
    CQELView m_view;
    CQELViewMeter* m_pMeter = nullptr;
};

// ---- settings ----

constexpr uint32_t GREY = 0xAAAAAA;

uint32_t DefaultOf(uint32_t nSelector)
{
    static const std::map<uint32_t, uint32_t> known = {
        {0, GREY},  {1, GREY}, {2, 10}, {4, 10},  {8, 1},     {9, 1},    {10, 1},
        {11, GREY}, {13, 10},  {14, 5}, {19, 10}, {20, GREY}, {21, GREY}};
    const auto found = known.find(nSelector);
    return found == known.end() ? 0 : found->second;
}

bool IsProperty(uint32_t nSelector)
{
    return nSelector < 34 && nSelector != 3 && nSelector != 6;
}

using Settings = std::map<uint32_t, uint32_t>; // by selector

Settings Defaults()
{
    Settings settings;
    for (uint32_t n = 0; n < 34; ++n)
        if (IsProperty(n)) settings[n] = DefaultOf(n);
    return settings;
}

Settings All(CTestMeter& meter)
{
    Settings settings;
    for (uint32_t n = 0; n < 34; ++n)
        if (IsProperty(n)) settings[n] = meter.Get(n);
    return settings;
}

TEST(MeterView, SettingsBeginWithTheirDefaultsInEveryType)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        CTestMeter meter(nType);
        EXPECT_EQ(Defaults(), All(meter));
        EXPECT_EQ(0.0F, meter->Base());
    }
}

TEST(MeterView, EverySettingIsKeptInEveryTypeWhateverItsRendererFollows)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        for (uint32_t n = 0; n < 34; ++n) {
            if (!IsProperty(n)) continue;
            SCOPED_TRACE(testing::Message() << "type " << nType << " selector " << n);
            CTestMeter meter(nType);
            const uint32_t nValue = n == 15 ? 1 : 12 + n;
            EXPECT_EQ(1, meter->SetProperty(n, nValue));
            Settings expected = Defaults();
            expected[n] = nValue;
            EXPECT_EQ(expected, All(meter));
        }
    }
}

TEST(MeterView, RefusesWhatIsNoSettingOfMeters)
{
    CTestMeter meter(4);
    // The value is set by a function of its own.
    for (const uint32_t n :
         {uint32_t{QEL_SEL_VALUE}, 3U, 34U, 35U, 1000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        uint32_t nValue = 77;
        EXPECT_EQ(0, meter->SetProperty(n, 1)) << n;
        EXPECT_EQ(0, meter->GetProperty(n, &nValue)) << n;
        EXPECT_EQ(77u, nValue) << n;
    }
}

TEST(MeterView, RefusedValuesChangeNothing)
{
    QELMETERATTR bare = Attr(5);
    bare.bUseScale = 0;
    bare.bUsePin = 0;
    const struct {
        QELMETERATTR attr;
        uint32_t nSelector;
        uint32_t nValue;
        int nResult;
    } rows[] = {
        {Attr(5), 2, 0, 0},  {Attr(5), 2, 1, 1},  {Attr(5), 2, 0xFFFFFFFF, 1},
        {bare, 8, 0, 0},     {bare, 8, 1, 0},     {Attr(5), 8, 0, 1},
        {bare, 9, 0, 0},     {bare, 9, 1, 0},     {Attr(5), 9, 0, 1},
        {Attr(4), 15, 0, 0}, {Attr(4), 15, 2, 0}, {Attr(4), 15, 0xFFFFFFFF, 0},
        {Attr(4), 15, 1, 1}, {Attr(0), 15, 0, 0}, {Attr(0), 15, 1, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nSelector << " = " << row.nValue);
        CTestMeter meter(row.attr);
        EXPECT_EQ(row.nResult, meter->SetProperty(row.nSelector, row.nValue));
        EXPECT_EQ(row.nResult ? row.nValue : DefaultOf(row.nSelector), meter.Get(row.nSelector));
    }
    CTestMeter meter(8);
    ASSERT_EQ(1, meter->SetProperty(15, 1));
    EXPECT_EQ(0, meter->SetProperty(15, 1)); // as it is already
    EXPECT_EQ(1, meter->SetProperty(15, 0));
}

TEST(MeterView, TheBaseValueHasTwoForms)
{
    CTestMeter meter(0);
    ASSERT_EQ(1, meter->SetProperty(24, 7));
    EXPECT_EQ(7.0F, meter->Base());
    ASSERT_EQ(1, meter->SetBase(3.75F));
    EXPECT_EQ(3.75F, meter->Base());
    EXPECT_EQ(3u, meter.Get(24));
    meter.Draw();
    EXPECT_EQ(3, meter->Renderer()->GetBaseValue());
    ASSERT_EQ(1, meter->SetBase(-8.5F));
    EXPECT_EQ(-8, static_cast<int32_t>(meter.Get(24)));
    EXPECT_EQ(-8, meter->Renderer()->GetBaseValue());
}

TEST(MeterView, TheAngleOffsetIsReadAsAWholeNumber)
{
    CTestMeter meter(4);
    for (const uint32_t n : {0U, 1U, 45U, 270U, 100000U}) {
        ASSERT_EQ(1, meter->SetProperty(26, n));
        EXPECT_EQ(n, meter.Get(26));
        meter.Draw();
        EXPECT_EQ(static_cast<double>(n), meter.As<CArcMeter>()->AngleOffset());
    }
}

// ---- what the renderers follow ----

using Fields = std::map<std::string, double>;

void Note(Fields& fields, std::istringstream names, std::initializer_list<double> values)
{
    std::string name;
    for (const double value : values)
        if (names >> name) fields[name] = value;
}

// Every setting of a renderer that a selector or a switch may reach.
Fields FieldsOf(const CMeter* p, int nType)
{
    Fields f;
    Note(f, std::istringstream("min max end start low high ticks major shift base font option"),
         {double(p->GetMin()), double(p->GetMax()), double(p->GetScaleEnd()),
          double(p->GetScaleStart()), double(p->GetLowLimit()), double(p->GetHighLimit()),
          double(p->GetTickCount()), double(p->GetMajorEvery()), double(p->GetDecimalShift()),
          double(p->GetBaseValue()), double(p->GetFontSize()), double(p->GetFrameOption())});
    Note(f,
         std::istringstream("show-pin show-scale show-axis show-labels show-fill show-alarm "
                            "show-frame show-value reverse use-base fill-only"),
         {double(p->GetShowPin()), double(p->GetShowScale()), double(p->GetShowAxis()),
          double(p->GetShowLabels()), double(p->GetShowFill()), double(p->GetShowAlarm()),
          double(p->GetShowFrame()), double(p->GetShowValue()), double(p->GetReverse()),
          double(p->GetUseBaseValue()), double(p->GetFillOnly())});
    if (const auto* pBar = IsBar(nType) ? static_cast<const CBarMeter*>(p) : nullptr)
        Note(f, std::istringstream("hatch hatch-fore hatch-back scale second empty label"),
             {double(pBar->BarStyle()), double(pBar->BarColor()), double(pBar->BackColor()),
              double(pBar->ScaleColor()), double(pBar->SecondScaleColor()),
              double(pBar->EmptyColor()), double(pBar->LabelColor())});
    if (const auto* pDial = IsBar(nType) ? nullptr : static_cast<const CArcMeter*>(p))
        Note(f,
             std::istringstream("face scale pin label low-colour high-colour pin-style axis-style "
                                "start-angle end-angle offset"),
             {double(pDial->FaceColor()), double(pDial->ScaleColor()), double(pDial->PinColor()),
              double(pDial->LabelColor()), double(pDial->LowColor()), double(pDial->HighColor()),
              double(pDial->PinStyle()), double(pDial->AxisStyle()), pDial->StartAngle(),
              pDial->EndAngle(), pDial->AngleOffset()});
    if (const auto* pPie = IsPie(nType) ? static_cast<const CPieMeter*>(p) : nullptr)
        Note(
            f, std::istringstream("hatch hatch-fore hatch-back"),
            {double(pPie->SectorStyle()), double(pPie->SectorColor()), double(pPie->EraseColor())});
    if (const auto* pSector = nType == 10 ? static_cast<const CSectorMeter*>(p) : nullptr)
        f["sectors"] = pSector->SectorCount();
    return f;
}

std::string Difference(const Fields& before, const Fields& after)
{
    std::string text;
    for (const auto& [name, value] : after)
        if (!before.contains(name) || before.at(name) != value)
            text += name + " " + std::to_string(value) + "; ";
    return text;
}

// A selector as the renderers are to see it: a value to set, the types that follow, one bit each,
// and the field that takes the value.
struct Route {
    uint32_t nSelector;
    uint32_t nValue;
    uint32_t nTypes;
    const char* pszField;
    const char* pszOfBars = nullptr; // where it is another one
};

constexpr uint32_t ALL = 0x7FF;
constexpr uint32_t TO_9 = 0x3FF;
constexpr uint32_t NO_PIES = ALL & ~0x240U;
constexpr uint32_t COLOR = 0x112233;

const Route g_routes[] = {
    {0, COLOR, TO_9, "pin", "second"},
    {1, COLOR, TO_9, "scale"},
    {2, 17, ALL, "ticks"},
    {4, 250, ALL, "max"},
    {5, static_cast<uint32_t>(-20), ALL, "min"},
    {7, COLOR, TO_9, "face", "empty"},
    {8, 0, ALL, "show-scale"}, // and the axis with it
    {9, 0, NO_PIES, "show-pin"},
    {10, 0, ALL, "show-labels"},
    {11, COLOR, ALL, "label"},
    {12, static_cast<uint32_t>(-5), ALL, "start"},
    {13, 500, ALL, "end"},
    {14, 3, ALL, "major"},
    {15, 1, 1 << 4 | 1 << 7 | 1 << 8 | 1 << 10, "full circle"}, // 0 to 360 degrees
    {16, 1, NO_PIES, "show-alarm"},
    {17, 2, ALL, "shift"},
    {18, 3, ALL, "low"},
    {19, 8, ALL, "high"},
    {20, COLOR, 1 << 4 | 1 << 5 | 1 << 8, "low-colour"},
    {21, COLOR, 1 << 4 | 1 << 5 | 1 << 8, "high-colour"},
    {22, 1, ALL, "reverse"},
    {23, 1, ALL, "use-base"},
    {24, 4, ALL, "base"},
    {25, 1, ALL, "fill-only"},
    {26, 45, 1 << 4 | 1 << 8, "offset"}, // with both ends of the dial
    {27, 2, 1 << 7 | 1 << 8, "pin-style"},
    {28, 2, 1 << 7 | 1 << 8 | 1 << 9, "axis-style"},
    {29, 1, 1 << 1 | 1 << 3, "show-frame"},
    {30, 1, 1 << 1 | 1 << 3 | 1 << 8 | 1 << 10, "show-value"},
    {31, 1, 1 << 1 | 1 << 3, "option"},
    {32, 5, 1 << 10, "sectors"},
    {33, 4, ALL, "font"},
};

void Apply(Fields& fields, const Route& route, int nType)
{
    if (!(route.nTypes >> nType & 1)) return;
    if (route.nSelector == 15) {
        fields["start-angle"] = 0;
        fields["end-angle"] = 360;
        return;
    }
    fields[IsBar(nType) && route.pszOfBars ? route.pszOfBars : route.pszField] =
        static_cast<int32_t>(route.nValue);
    if (route.nSelector == 8) fields["show-axis"] = 0;
    if (route.nSelector != 26) return;
    fields["start-angle"] += 45;
    fields["end-angle"] += 45;
}

// Whether a setting takes effect through a new renderer.
bool Rebuilds(uint32_t nSelector, int nType)
{
    return nSelector == 15 || (nSelector == 26 && (nType == 4 || nType == 5 || nType == 8));
}

TEST(MeterView, EachSettingReachesTheRenderersOfItsTypesAtOnceAndNothingElse)
{
    uint32_t nSeen = 0;
    for (const Route& route : g_routes) {
        for (int nType = 0; nType < TYPES; ++nType) {
            SCOPED_TRACE(testing::Message() << "type " << nType << " selector " << route.nSelector);
            CTestMeter meter(nType);
            meter.Draw();
            ASSERT_NE(nullptr, meter->Renderer());
            Fields expected = FieldsOf(meter->Renderer(), nType);
            Apply(expected, route, nType);
            ASSERT_EQ(1, meter->SetProperty(route.nSelector, route.nValue));
            if (Rebuilds(route.nSelector, nType)) {
                EXPECT_EQ(nullptr, meter->Renderer());
                meter.Draw();
            }
            EXPECT_EQ("", Difference(expected, FieldsOf(meter->Renderer(), nType)));
            // A new renderer has it too.
            meter.Draw({0, 0, 180, 180});
            EXPECT_EQ("", Difference(expected, FieldsOf(meter->Renderer(), nType)));
            ++nSeen;
        }
    }
    EXPECT_EQ(32u * TYPES, nSeen); // 0 to 33 without 3 and 6
}

TEST(MeterView, TheTableNamesTheTypesThatFollow)
{
    for (const Route& route : g_routes) {
        const SelectorRow* pRow = FindSelector(route.nSelector);
        ASSERT_NE(nullptr, pRow);
        uint32_t nTypes = route.nTypes;
        EXPECT_EQ(DefaultOf(route.nSelector), pRow->nDefault) << route.nSelector;
        EXPECT_NE(nullptr, pRow->pszMeaning) << route.nSelector;
        // What the pies never do is passed to them all the same, switched off; and the dial with
        // the angles of its own is made anew by an offset that it does not take.
        if (route.nSelector == 9 || route.nSelector == 16) nTypes |= pRow->nMeterTypes & 0x240;
        if (route.nSelector == 26) nTypes |= pRow->nMeterTypes & 0x20;
        EXPECT_EQ(nTypes, pRow->nMeterTypes) << route.nSelector;
    }
    EXPECT_EQ(nullptr, FindSelector(34));
    EXPECT_EQ(nullptr, FindSelector(0xFFFFFFFF));
    EXPECT_EQ(nullptr, FindSelector(3)->pszMeaning);
}

TEST(MeterView, FixedSwitchesGoByTheType)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        meter->SetProperty(16, 1);
        meter->SetProperty(30, 1);
        meter.Draw();
        const CMeter* p = meter->Renderer();
        EXPECT_EQ(IsBar(nType) || IsPie(nType) || nType == 10 ? 1 : 0, p->GetShowFill());
        EXPECT_EQ(nType == 9 ? 1 : 0, p->GetShowFrame());
        EXPECT_EQ(IsPie(nType) ? 0 : 1, p->GetShowAlarm());
        EXPECT_EQ(IsPie(nType) ? 0 : 1, p->GetShowPin());
    }
}

TEST(MeterView, WithoutScaleOrPinInTheRecordTheRendererShowsNone)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        QELMETERATTR attr = Attr(nType);
        attr.bUseScale = 0;
        attr.bUsePin = 0;
        CTestMeter meter(attr);
        meter.Draw();
        EXPECT_EQ(0, meter->Renderer()->GetShowScale()) << nType;
        EXPECT_EQ(0, meter->Renderer()->GetShowAxis()) << nType;
        EXPECT_EQ(0, meter->Renderer()->GetShowPin()) << nType;
        EXPECT_EQ(1, meter->Renderer()->GetShowLabels()) << nType;
    }
}

TEST(MeterView, NoMoreThanThirtyTwoSectors)
{
    for (const uint32_t n : {31U, 32U, 33U, 0x80000000U, 0xFFFFFFFFU}) {
        CTestMeter meter(10);
        meter.Draw();
        ASSERT_EQ(1, meter->SetProperty(32, n));
        EXPECT_EQ(n, meter.Get(32));
        EXPECT_EQ(n < 32 ? n : 32, meter.As<CSectorMeter>()->SectorCount());
    }
}

TEST(MeterView, HatchAndItsColorsReachBarsAndPies)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        meter.Draw();
        Fields expected = FieldsOf(meter->Renderer(), nType);
        if (IsBar(nType) || IsPie(nType)) {
            EXPECT_EQ(0, expected["hatch"]);
            EXPECT_EQ(0xFFFFFF, expected["hatch-fore"]);
            EXPECT_EQ(0x555555, expected["hatch-back"]);
            Note(expected, std::istringstream("hatch hatch-fore hatch-back"),
                 {37, 0x123456, 0x654321});
        }
        EXPECT_EQ(1, meter->SetDraftParam(37));
        EXPECT_EQ(1, meter->SetDraftForeParam(0x123456));
        EXPECT_EQ(1, meter->SetDraftBackParam(0x654321));
        for (const uint32_t n : {38U, 1000U, 0x80000000U, 0xFFFFFFFFU})
            EXPECT_EQ(0, meter->SetDraftParam(n)) << n;
        EXPECT_EQ("", Difference(expected, FieldsOf(meter->Renderer(), nType)));
        meter.Draw({0, 0, 180, 180});
        EXPECT_EQ("", Difference(expected, FieldsOf(meter->Renderer(), nType)));
    }
}

TEST(MeterView, HatchAndItsColorsStayWithTheMeterAndTheColorGoesToItsFace)
{
    CTestMeter meter(0);
    QELSHAPEATTR attr = FilledAttr({10, 10, 20, 20});
    attr.nFlags = QEL_FLAG_DRAFT_PARAM | QEL_FLAG_COLOR_PARAM;
    CQELViewElm* pShape = meter.AddShape(QEL_TYPE_RECT, attr);
    EXPECT_EQ(1, meter->SetDraftParam(7));
    EXPECT_EQ(1, meter->SetDraftForeParam(0x123456));
    EXPECT_EQ(1, meter->SetDraftBackParam(0x654321));
    QELSHAPEATTR after{};
    ASSERT_EQ(1, pShape->GetAttrBlock(&after));
    EXPECT_EQ(attr.nDraft, after.nDraft);
    EXPECT_EQ(attr.clrA, after.clrA);
    EXPECT_EQ(attr.clrB, after.clrB);
    EXPECT_EQ(1, meter->SetColorParam(0xABCDEF));
    ASSERT_EQ(1, pShape->GetAttrBlock(&after));
    EXPECT_EQ(0xABCDEFu, after.clrA);
}

TEST(MeterView, BlinkingColorsAreBlackInTheDarkPhase)
{
    const uint32_t nBlinking = 0x80445566;
    const struct {
        int nType;
        std::vector<uint32_t> selectors;
        std::vector<const char*> names;
    } rows[] = {
        {0, {0, 1, 7, 11}, {"second", "scale", "empty", "label"}},
        {5, {0, 1, 7, 11, 20, 21}, {"pin", "scale", "face", "label", "low-colour", "high-colour"}},
        {6, {}, {"hatch-fore", "hatch-back"}},
        {3, {}, {"hatch-fore", "hatch-back"}},
    };
    for (const auto& row : rows) {
        CTestMeter meter(row.nType);
        for (const uint32_t n : row.selectors) ASSERT_EQ(1, meter->SetProperty(n, nBlinking));
        meter->SetDraftForeParam(nBlinking);
        meter->SetDraftBackParam(nBlinking);
        for (const int nPhase : {0, 1, 0, 5}) {
            meter->SetBlink(nPhase);
            meter.Draw();
            const Fields fields = FieldsOf(meter->Renderer(), row.nType);
            for (const char* pszName : row.names)
                EXPECT_EQ(nPhase ? 0 : 0x445566, fields.at(pszName)) << pszName << " " << nPhase;
        }
        for (const uint32_t n : row.selectors) EXPECT_EQ(nBlinking, meter.Get(n));
    }
}

// ---- the place on the device ----

std::string PlaceOf(const QELMETERATTR& attr, const RECT& rcQel, int nRefW = 100, int nRefH = 100)
{
    const MeterPlace place = MapMeter(attr, rcQel, nRefW, nRefH);
    std::string text = RectText(place.rc);
    if (IsBar(attr.nType)) return text;
    return text + " centre " + std::to_string(place.ptCentre.x) + "," +
           std::to_string(place.ptCentre.y) + " radius " + std::to_string(place.nRadius);
}

QELMETERATTR Dial(int nType, const std::vector<LONG>& geometry, DWORD nFlags = 0)
{
    QELMETERATTR attr = Attr(nType);
    std::copy(geometry.begin(), geometry.end(), attr.nGeometry);
    attr.nFlags = nFlags;
    return attr;
}

TEST(MeterView, ABarIsMappedByItsFlags)
{
    for (int nType = 0; nType < 4; ++nType) {
        const std::vector<LONG> bar{10, 20, 40, 70};
        EXPECT_EQ("30,60,90,160", PlaceOf(Dial(nType, bar), SHAPE_QEL)); // stretched
        // 10 and 20 from left and top, 60 and 30 from right and bottom.
        EXPECT_EQ("20,40,150,190", PlaceOf(Dial(nType, bar, QEL_KEEP_ALL), SHAPE_QEL));
        // Left kept; between the borders, 30 of 100 wide.
        EXPECT_EQ("20,40,80,190", PlaceOf(Dial(nType, bar, QEL_KEEP_LEFT), SHAPE_QEL));
        EXPECT_EQ("0,0,0,0", PlaceOf(Dial(nType, {40, 20, 10, 70}), SHAPE_QEL));
        EXPECT_EQ("0,0,0,0", PlaceOf(Dial(nType, bar), SHAPE_QEL, 0, 100));
    }
}

TEST(MeterView, ADialWithoutFlagsKeepsItsDistanceFromAllBorders)
{
    for (const int nType : {4, 7, 8, 10}) {
        // The square 20,20,80,80 becomes 30,40,190,200, the layout 10,20,95,90 becomes
        // 20,40,205,210.
        const QELMETERATTR attr = Dial(nType, {50, 50, 30, 10, 20, 95, 90});
        EXPECT_EQ("20,40,205,210 centre 110,120 radius 80", PlaceOf(attr, SHAPE_QEL));
        // In 300 by 151 the square is 20,20,280,131: the smaller side is 111, its half 55.
        EXPECT_EQ("10,20,295,141 centre 150,75 radius 55", PlaceOf(attr, {0, 0, 300, 151}));
        // Stretched it is only with two anchors, which count as none: 40..160 and 30..120 of 200,
        // 150.
        EXPECT_EQ("20,30,190,135 centre 100,75 radius 45",
                  PlaceOf(Dial(nType, {50, 50, 30, 10, 20, 95, 90}, QEL_KEEP_LEFT | QEL_KEEP_TOP),
                          {0, 0, 200, 150}));
        // Left kept, 60 of 100 wide in 300: the square 20,20,200,131.
        EXPECT_EQ(
            "10,20,265,141 centre 110,75 radius 55",
            PlaceOf(Dial(nType, {50, 50, 30, 10, 20, 95, 90}, QEL_KEEP_LEFT), {0, 0, 300, 151}));
        // What reaches out of the drawing is cut before centre and radius are taken: 0,20,150,180.
        EXPECT_EQ("10,20,195,190 centre 75,100 radius 75",
                  PlaceOf(Dial(nType, {20, 50, 30, 10, 20, 95, 90}), QEL));
    }
}

TEST(MeterView, ADialThatCannotBeMappedHasNoPlace)
{
    for (const int nType : {4, 5, 6, 7, 8, 9, 10}) {
        const QELMETERATTR attr = Attr(nType);
        for (const SIZE ref : {SIZE{0, 100}, SIZE{100, 0}, SIZE{-5, 100}})
            EXPECT_EQ("0,0,0,0 centre 0,0 radius 0", PlaceOf(attr, QEL, ref.cx, ref.cy)) << nType;
        if (nType == 5 || IsPie(nType)) continue;
        for (const RECT& rc : {RECT{0, 0, 0, 200}, RECT{0, 0, 200, 0}, RECT{9, 9, 5, 200}})
            EXPECT_EQ("0,0,0,0 centre 0,0 radius 0", PlaceOf(attr, rc)) << nType;
    }
    for (const int nType : {5, 6, 9}) {
        for (const std::vector<LONG>& geometry : {std::vector<LONG>{50, 50, 0, 10, 10, 90, 90},
                                                  {50, 50, 40, 90, 10, 10, 90},
                                                  {50, 50, 40, 10, 10, 90, 10}}) {
            const QELMETERATTR attr = Dial(nType, geometry);
            EXPECT_EQ("0,0,0,0 centre 0,0 radius 0", PlaceOf(attr, QEL)) << nType;
            EXPECT_EQ(45.0F, MapMeter(attr, QEL, 100, 100).fStart); // the angles go on as they are
            EXPECT_EQ(315.0F, MapMeter(attr, QEL, 100, 100).fEnd);
        }
    }
}

TEST(MeterView, AnArcFollowsTheWidthBetweenItsTwoEnds)
{
    for (const int nType : {5, 6, 9}) {
        SCOPED_TRACE(nType);
        // Ends at 10,50 and 90,50. The layout keeps 10 from left, right and top and its
        // proportions: 10,10,190,190. The span of 80 becomes 180, so the radius 40 * 180 / 80 = 90,
        // the centre 90 from the left end; down it is 50 + (10 - 10) + (90 - 40).
        EXPECT_EQ("10,10,190,190 centre 100,100 radius 90",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 90, 270}), QEL));
        // Ends at 50 - trunc(40 sin 45) = 22 and 78: from 22 to 190 - 12 = 178, 156 for 56. Radius
        // 156 * 40 / 56 = 111, centre 28 * 156 / 56 + 22 = 100, and 50 + 0 + 71.
        EXPECT_EQ("10,10,190,190 centre 100,121 radius 111",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 45, 315}), QEL));
        // In 300 by 200 the layout is 290 - 10 = 280 wide and as high; what is below 200 is cut.
        EXPECT_EQ("10,10,290,200 centre 150,150 radius 140",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 90, 270}), {0, 0, 300, 200}));
        // Away from the origin: the layout 30,50,170 and, 140 * 70 / 40 high, 295, cut at 220. Ends
        // at 15 and 65: 15 - 20 + 30 = 25 and 170 - (60 - 65) = 175, so 150 for 50. Radius
        // 25 * 150 / 50, centre 25 * 150 / 50 + 25, and 60 + (50 - 30) + (75 - 25) down.
        EXPECT_EQ("30,50,170,220 centre 100,130 radius 75",
                  PlaceOf(Dial(nType, {40, 60, 25, 20, 30, 60, 100, 90, 270}), SHAPE_QEL));
        // Two ends above each other have no width to follow.
        EXPECT_EQ("10,10,190,190 centre 0,0 radius 0",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 0, 360}), QEL));
        EXPECT_EQ("10,10,190,190 centre 0,0 radius 0",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 0, 180}), QEL));
        // By flags: stretched to 20,10,180,90 of 200 by 100. From 20 to 180 again 160 for 80.
        EXPECT_EQ("20,10,180,90 centre 100,90 radius 80",
                  PlaceOf(Dial(nType, {50, 50, 40, 10, 10, 90, 90, 90, 270},
                               QEL_KEEP_LEFT | QEL_KEEP_TOP),
                          {0, 0, 200, 100}));
        const MeterPlace place =
            MapMeter(Dial(nType, {50, 50, 40, 10, 10, 90, 90, -30, 200}), QEL, 100, 100);
        EXPECT_EQ(-30.0F, place.fStart);
        EXPECT_EQ(200.0F, place.fEnd);
    }
}

TEST(MeterView, TheRendererStandsInThePlaceOfItsForm)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        QELMETERATTR attr = Attr(nType);
        attr.nGeometry[7] = 90;
        attr.nGeometry[8] = 270;
        CTestMeter meter(attr);
        meter.Draw();
        const MeterPlace place = MapMeter(attr, QEL, 100, 100);
        if (IsBar(nType)) {
            EXPECT_EQ("20,40,80,140", RectText(meter.As<CBarMeter>()->BarRect()));
            continue;
        }
        const auto* p = meter.As<CArcMeter>();
        EXPECT_EQ(place.ptCentre.x, p->Centre().x);
        EXPECT_EQ(place.ptCentre.y, p->Centre().y);
        EXPECT_EQ(place.nRadius, p->Radius());
        EXPECT_EQ(nType == 5 || IsPie(nType) ? 90.0F : 30.0F, p->StartAngle());
        EXPECT_EQ(nType == 5 || IsPie(nType) ? 270.0F : 330.0F, p->EndAngle());
        // 10 - 180 / 19 = 1, and 190 + (190 - 1) / 19 = 199.
        EXPECT_EQ(nType == 9 ? "1,10,199,190" : "10,10,190,190", RectText(p->MeterRect()));
    }
}

// ---- the life of the renderer ----

// Marks the renderer by a setting that no selector has touched: a new one does not have the mark.
void Mark(CTestMeter& meter)
{
    ASSERT_NE(nullptr, meter->Renderer());
    const_cast<CMeter*>(meter->Renderer())->SetLowLimit(777);
}
bool IsMarked(CTestMeter& meter)
{
    return meter->Renderer() && meter->Renderer()->GetLowLimit() == 777;
}

TEST(MeterView, TheRendererIsMadeByADrawAndKeptWhileTheRectangleStays)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        EXPECT_EQ(nullptr, meter->Renderer());
        meter.Draw();
        Mark(meter);
        meter.Draw();
        meter.Draw(QEL, 0);
        meter->SetProperty(4, 50);
        meter->SetValue(0, 5U);
        meter.Draw(QEL, 0);
        EXPECT_TRUE(IsMarked(meter));
        meter.Draw({0, 0, 200, 199});
        EXPECT_FALSE(IsMarked(meter));
        Mark(meter);
        meter.Draw({1, 0, 201, 199}, 0); // in a partial redraw as well
        EXPECT_FALSE(IsMarked(meter));
        EXPECT_EQ(50, meter->Renderer()->GetMax());
    }
}

// Objects of one class share their first word, the table of virtual operations.
const void* ClassOf(const CMeter& meter)
{
    return *reinterpret_cast<const void* const*>(&meter);
}

TEST(MeterView, TheTypeChoosesTheClass)
{
    const RECT rc{0, 0, 9, 9};
    const CUpBarMeter vert(nullptr, rc);
    const CUpBarMeter3D vert3d(nullptr, rc);
    const CLongBarMeter horz(nullptr, rc);
    const CLongBarMeter3D horz3d(nullptr, rc);
    const CCircleMeter round(9, false, 0);
    const CArcMeter arc(9, 0, 90, 0);
    const CPieMeter pie(9, 0, 90);
    const CClockMeter clock(9, false);
    const CRoundMeter roundUpgrade(9, false, 0);
    const CPieUpgradeMeter pieUpgrade(9, 0, 90);
    const CSectorMeter sector(9, false);
    const CMeter* const expected[] = {&vert, &vert3d, &horz,         &horz3d,     &round, &arc,
                                      &pie,  &clock,  &roundUpgrade, &pieUpgrade, &sector};
    for (int nType = 0; nType < TYPES; ++nType) {
        CTestMeter meter(nType);
        meter.Draw();
        ASSERT_NE(nullptr, meter->Renderer());
        EXPECT_EQ(ClassOf(*expected[nType]), ClassOf(*meter->Renderer())) << nType;
    }
    for (const int nType : {-1, 11, 1000}) { // only the face can be drawn
        CTestMeter meter(Attr(nType));
        meter.AddFace(1, 2, 5, 6);
        CRecording recording;
        meter->Draw(recording.Dc(), QEL, QEL_DRAW_FULL);
        EXPECT_EQ(nullptr, meter->Renderer());
        EXPECT_EQ((Lines{"PatBlt 2,4,10,12"}), recording.Only({"PatBlt"}));
    }
}

TEST(MeterView, ANewRecordThrowsTheRendererAway)
{
    CTestMeter meter(5);
    meter.Draw();
    QELMETERATTR attr = Attr(2);
    attr.nMin = 0;
    EXPECT_EQ(0, meter->SetAttrBlock(&attr)); // refused
    EXPECT_NE(nullptr, meter->Renderer());
    attr = Attr(2);
    EXPECT_EQ(1, meter->SetAttrBlock(&attr));
    EXPECT_EQ(nullptr, meter->Renderer());
    meter.Draw();
    EXPECT_EQ("20,40,80,140", RectText(meter.As<CBarMeter>()->BarRect()));
}

TEST(MeterView, RecordRulesAreThoseOfTheDocument)
{
    const struct {
        DWORD nSize;
        LONG nMin;
        LONG nMax;
        int nResult;
    } rows[] = {{68, 1, 1, 1}, {69, 1, 5, 1}, {67, 1, 5, 0}, {0, 1, 5, 0},
                {68, 0, 5, 0}, {68, 1, 0, 0}, {68, 6, 5, 0}, {68, -9, -8, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.nSize << ": " << row.nMin << ".." << row.nMax);
        CTestMeter meter(4);
        int nSize = 0;
        EXPECT_EQ(1, meter->GetAttrBlockSize(&nSize));
        EXPECT_EQ(68, nSize);
        QELMETERATTR attr{row.nSize, 9, 0, 0, 2, row.nMax, row.nMin, {1, 2, 3, 4, 5, 6, 7, 8, 9},
                          3};
        EXPECT_EQ(row.nResult, meter->SetAttrBlock(&attr));
        QELMETERATTR after{};
        EXPECT_EQ(1, meter->GetAttrBlock(&after));
        QELMETERATTR expected = row.nResult ? attr : Attr(4);
        expected.nSize = 68;
        EXPECT_EQ(0, std::memcmp(&expected, &after, sizeof after));
    }
}

// In an empty rectangle a dial paints nothing, and so keeps the position that it was given.
TEST(MeterView, ThePositionIsCarriedOverToANewRenderer)
{
    for (const int nType : {4, 5, 6, 8, 9, 10}) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        meter->SetProperty(4, 110);
        meter->SetProperty(5, 10);
        meter.Draw({0, 0, 0, 0});
        EXPECT_EQ(0, meter->Renderer()->GetLastValue()); // there was none before
        meter->SetValue(0, 30U);
        meter.Draw();
        EXPECT_EQ(30, meter->Renderer()->GetLastValue());
        meter->SetValue(0, 50U);
        meter.Draw({0, 0, 0, 0});
        EXPECT_EQ(30, meter->Renderer()->GetLastValue());
        // Reversed, 50 stands where 70 is: 70 is converted back, (110 - 70) + 10.
        meter->SetProperty(22, 1);
        meter.Draw();
        meter->SetValue(0, 20U);
        meter.Draw({0, 0, 0, 0});
        EXPECT_EQ(50, meter->Renderer()->GetLastValue());
        EXPECT_EQ(70, meter->Renderer()->GetShownValue());
    }
}

TEST(MeterView, ANewRendererErasesTheOldPointer)
{
    for (const uint32_t nReverse : {0U, 1U}) {
        QELMETERATTR attr = Attr(5);
        attr.nFlags = QEL_KEEP_ALL;
        CTestMeter meter(attr);
        for (const uint32_t n : {8U, 10U}) meter->SetProperty(n, 0);
        meter->SetProperty(7, FACE);
        meter->SetProperty(22, nReverse);
        meter->SetValue(0, 3U);
        meter.Draw();
        meter->SetValue(0, 8U);
        const Lines calls = meter.Calls(0, {0, 0, 180, 180});
        const MeterPlace place = MapMeter(attr, {0, 0, 180, 180}, 100, 100);
        // From the radius 5 to 21 less than that of the dial, at 3 or 10 - 3 of 10 on 45 to 315.
        const float fAngle = nReverse ? 45.0F + 270 * 0.7F : 45.0F + 270 * 0.3F;
        const POINT pt1 = PolarPoint(place.ptCentre, 5, fAngle);
        const POINT pt2 = PolarPoint(place.ptCentre, place.nRadius - 21, fAngle);
        const auto at = std::find(calls.begin(), calls.end(),
                                  "LineTo " + std::to_string(pt2.x) + "," + std::to_string(pt2.y));
        ASSERT_NE(calls.end(), at);
        EXPECT_EQ("MoveTo " + std::to_string(pt1.x) + "," + std::to_string(pt1.y), *(at - 1));
        EXPECT_NE(calls.end(), std::find(calls.begin(), at,
                                         std::string("CreatePen style 0 width 3 color 336699")));
    }
}

// ---- the face ----

TEST(MeterView, TheFaceIsDrawnInItsColorWithoutHatchInAFullDrawOnly)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        for (const uint32_t n : {8U, 9U, 10U}) meter->SetProperty(n, 0);
        meter->SetProperty(7, FACE);
        QELSHAPEATTR attr = FilledAttr({1, 2, 5, 6}); // clear of everything else
        attr.nDraft = 3;
        CQELViewElm* pShape = meter.AddShape(QEL_TYPE_RECT, attr);
        CTestBitmap drawn(220, 220);
        EXPECT_EQ(1, meter->Draw(drawn.Dc(), QEL, 0));
        EXPECT_EQ(RGB(255, 255, 255), drawn.At(5, 8));
        EXPECT_EQ(1, meter->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(6 * 6, CountPixels(drawn, FACE)); // 2,4..10,12 within an outline of one pixel
        QELSHAPEATTR after{};
        ASSERT_EQ(1, pShape->GetAttrBlock(&after));
        EXPECT_EQ(FACE, after.clrB);
        EXPECT_EQ(0, after.nDraft);
        EXPECT_EQ(attr.clrA, after.clrA);
    }
}

TEST(MeterView, TheFaceIsEveryShapeWithoutChildrenInDrawingOrder)
{
    CTestMeter meter(5);
    meter->SetProperty(7, FACE);
    CQELViewElm* pGroup = nullptr;
    ASSERT_EQ(1,
              meter.View().CreateElement(&*meter.operator->(), nullptr, QEL_TYPE_GROUP, &pGroup));
    meter.AddShape(QEL_TYPE_RECT, FilledAttr({0, 0, 1, 1}), pGroup);
    CQELViewElm* pParent = meter.AddShape(QEL_TYPE_RECT, FilledAttr({2, 2, 3, 3}));
    meter.AddShape(QEL_TYPE_RECT, FilledAttr({4, 4, 5, 5}), pParent);
    meter.AddShape(QEL_TYPE_RECT, FilledAttr({6, 6, 7, 7}));
    CRecording recording;
    ASSERT_EQ(1, meter->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ((Lines{"Rectangle 0,0,2,2", "Rectangle 8,8,10,10", "Rectangle 12,12,14,14"}),
              recording.Only({"Rectangle"}));
    QELSHAPEATTR after{};
    ASSERT_EQ(1, pParent->GetAttrBlock(&after));
    EXPECT_EQ(FilledAttr({}).clrB, after.clrB); // neither drawn nor recoloured
}

TEST(MeterView, AMeterThatAsksForItDrawsItsFaceEachTime)
{
    for (const uint32_t nFlags : {0U, 1U}) {
        QELMETERATTR attr = Attr(4);
        EXPECT_FALSE(CTestMeter(attr)->WantsFullRedraw());
        attr.nFlags = METER_FULL_REDRAW;
        CTestMeter meter(attr);
        EXPECT_TRUE(meter->WantsFullRedraw());
        meter.AddFace(1, 2, 5, 6);
        CRecording recording;
        ASSERT_EQ(1, meter->Draw(recording.Dc(), QEL, nFlags));
        EXPECT_EQ((Lines{"PatBlt 2,4,10,12"}), recording.Only({"PatBlt"}));
    }
}

TEST(MeterView, FillOnlyMakesTheFaceAnOutlineAndGivesItsFillBack)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        for (const uint32_t n : {8U, 9U, 10U}) meter->SetProperty(n, 0);
        meter->SetProperty(7, FACE);
        meter.AddShape(QEL_TYPE_RECT, FilledAttr({1, 2, 5, 6}));
        for (const uint32_t nFillOnly : {0U, 1U, 2U, 0U}) {
            ASSERT_EQ(1, meter->SetProperty(25, nFillOnly));
            CTestBitmap drawn(220, 220);
            EXPECT_EQ(1, meter->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
            EXPECT_EQ(nFillOnly ? RGB(255, 255, 255) : COLORREF{FACE}, drawn.At(6, 8));
            EXPECT_EQ(RGB(255, 0, 0), drawn.At(2, 4)); // the outline
        }
    }
}

TEST(MeterView, AShapeOfTheFaceThatIsGivenARecordHasItsFillAgain)
{
    CTestMeter meter(4);
    const QELSHAPEATTR attr = FilledAttr({1, 2, 5, 6});
    CQELViewElm* pShape = meter.AddShape(QEL_TYPE_RECT, attr);
    CTestView<CQELViewRect> alone(attr);
    ASSERT_EQ(1, meter->SetProperty(QEL_SEL_FILL_ONLY, 1));
    meter.Draw();
    CTestBitmap expected(220, 220), hollow(220, 220), drawn(220, 220);
    EXPECT_EQ(1, alone->Draw(expected.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(1, pShape->Draw(hollow.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_NE("", FirstDifference(expected, hollow));
    ASSERT_EQ(1, pShape->SetAttrBlock(&attr));
    EXPECT_EQ(1, pShape->Draw(drawn.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ("", FirstDifference(expected, drawn));
    // Drawn by the meter it is a part of the face as before.
    meter.Draw();
    CTestBitmap again(220, 220);
    EXPECT_EQ(1, pShape->Draw(again.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ("", FirstDifference(hollow, again));
}

TEST(MeterView, ANewRecordTakesTheFaceAsItIsThen)
{
    CTestMeter meter(0);
    QELSHAPEATTR face = FilledAttr({10, 20, 20, 40});
    face.nPenWidth = 0;
    CQELViewElm* pShape = meter.AddShape(QEL_TYPE_RECT, face);
    meter.Draw();
    face.nGeometry[2] = 30;
    ASSERT_EQ(1, pShape->SetAttrBlock(&face));
    const QELMETERATTR attr = Attr(0);
    ASSERT_EQ(1, meter->SetAttrBlock(&attr));
    meter.Draw();
    RECT rc{};
    ASSERT_NE(nullptr, meter.As<CBarMeter>()->Region());
    EXPECT_EQ(SIMPLEREGION, ::GetRgnBox(meter.As<CBarMeter>()->Region(), &rc));
    EXPECT_EQ("20,40,60,80", RectText(rc)); // twice the units
}

TEST(MeterView, TheRegionOfTheFaceClipsBarsAndHoldsTheSectors)
{
    for (int nType = 0; nType < 4; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        meter.Draw();
        EXPECT_EQ(nullptr, meter.As<CBarMeter>()->Region()); // without a face
        meter.AddFace(10, 20, 20, 40);
        meter.AddFace(30, 20, 40, 70);
        for (const RECT& rc : {QEL, RECT{0, 0, 100, 100}}) {
            meter.Draw(rc);
            const int nScale = rc.right / 100;
            const HRGN hExpected =
                ::CreateRectRgn(10 * nScale, 20 * nScale, 20 * nScale, 40 * nScale);
            const HRGN hSecond =
                ::CreateRectRgn(30 * nScale, 20 * nScale, 40 * nScale, 70 * nScale);
            ::CombineRgn(hExpected, hExpected, hSecond, RGN_OR);
            ASSERT_NE(nullptr, meter.As<CBarMeter>()->Region());
            EXPECT_TRUE(::EqualRgn(hExpected, meter.As<CBarMeter>()->Region()));
            ::DeleteObject(hExpected);
            ::DeleteObject(hSecond);
        }
    }
    // 50,50 with 40, all borders kept in 200 by 200: 10,10,190,190.
    CTestMeter bare(10);
    bare.Draw();
    EXPECT_EQ("10,10,190,190", RectText(bare.As<CSectorMeter>()->SectorRect()));
    CTestMeter faced(10);
    faced.AddFace(20, 30, 60, 50);
    faced.AddFace(50, 40, 70, 60);
    faced.Draw();
    EXPECT_EQ("40,60,140,120", RectText(faced.As<CSectorMeter>()->SectorRect()));
}

// What the renderer goes by: a bar's region, by rows, or the rectangle of the sectors.
std::string FaceOf(CTestMeter& meter, int nType)
{
    if (nType == 10) return RectText(meter.As<CSectorMeter>()->SectorRect());
    const HRGN hRegion = meter.As<CBarMeter>()->Region();
    if (!hRegion) return "none";
    CTestBitmap picture(220, 220);
    PaintRegion(picture, hRegion);
    std::string text;
    for (int y = 0; y < 220; ++y) {
        int nFrom = 220, nTo = -1, nCount = 0;
        for (int x = 0; x < 220; ++x) {
            if (picture.At(x, y) != 0) continue;
            nFrom = std::min(nFrom, x);
            nTo = x;
            ++nCount;
        }
        if (nCount)
            text += std::to_string(y) + ":" + std::to_string(nFrom) + "-" + std::to_string(nTo) +
                    "/" + std::to_string(nCount) + " ";
    }
    return text;
}

constexpr int FACE_TYPES[] = {0, 1, 2, 3, 10};

// A meter whose face is a rectangle with a raised border, an ellipse in a group and a polygon.
struct Faced {
    explicit Faced(int nType) : meter(nType)
    {
        QELSHAPEATTR attr = FilledAttr({10, 20, 30, 50});
        attr.nStyle = QEL_STYLE_FILL_3DUP | 5 << 16;
        pRect = meter.AddShape(QEL_TYPE_RECT, attr);
        EXPECT_EQ(
            1, meter.View().CreateElement(&*meter.operator->(), nullptr, QEL_TYPE_GROUP, &pGroup));
        pEllipse = meter.AddShape(QEL_TYPE_ELLIPSE, FilledAttr({40, 30, 70, 60}), pGroup);
        pPolygon = meter.AddShape(QEL_TYPE_POLYGON, FilledAttr({3, 20, 60, 60, 65, 30, 90}));
        pOther = nullptr;
        EXPECT_EQ(1,
                  meter.View().CreateElement(meter.View().Root(), nullptr, QEL_TYPE_RECT, &pOther));
    }
    CTestMeter meter;
    CQELViewElm *pRect, *pGroup = nullptr, *pEllipse, *pPolygon, *pOther;

    void Change(CQELViewElm* pShape, void (*change)(QELSHAPEATTR&))
    {
        QELSHAPEATTR attr{};
        EXPECT_EQ(1, pShape->GetAttrBlock(&attr));
        change(attr);
        EXPECT_EQ(1, pShape->SetAttrBlock(&attr));
    }
};

struct FaceChange {
    const char* pszWhat;
    void (*change)(Faced& f);
};
const FaceChange g_faceChanges[] = {
    {"moved across", [](Faced& f) { f.pRect->MoveX(-7); }},
    {"moved down", [](Faced& f) { f.pEllipse->MoveY(4); }},
    {"turned",
     [](Faced& f) {
         f.meter.View().Rotate(nullptr, {50, 50}, 90);
     }},
    {"a point", [](Faced& f) { f.Change(f.pPolygon, [](auto& a) { a.nGeometry[1] = 5; }); }},
    {"one point less", [](Faced& f) { f.Change(f.pPolygon, [](auto& a) { a.nGeometry[0] = 2; }); }},
    {"no border", [](Faced& f) { f.Change(f.pRect, [](auto& a) { a.nStyle = QEL_STYLE_FILL; }); }},
    {"another border",
     [](Faced& f) {
         f.Change(f.pRect, [](auto& a) { a.nStyle = QEL_STYLE_FILL_3DUP | 3 << 16; });
     }},
    {"a pen under no border",
     [](Faced& f) {
         f.Change(f.pRect, [](auto& a) { a.nStyle = QEL_STYLE_FILL, a.nPenWidth = 13; });
     }},
    {"kept", [](Faced& f) { f.Change(f.pEllipse, [](auto& a) { a.nFlags = QEL_KEEP_ALL; }); }},
    {"added",
     [](Faced& f) {
         f.meter.AddShape(QEL_TYPE_RECT, FilledAttr({5, 5, 15, 12}), f.pGroup);
     }},
    {"deleted", [](Faced& f) { f.meter.View().DeleteElement(f.pEllipse); }},
    {"out of the meter",
     [](Faced& f) { f.meter.View().MoveElement(f.pRect, f.meter.View().Root(), nullptr); }},
    {"out of the picture",
     [](Faced& f) { f.meter.View().MoveElement(f.pGroup, nullptr, nullptr); }},
    {"with a child", [](Faced& f) { f.meter.View().MoveElement(f.pRect, f.pPolygon, nullptr); }},
    {"hollow, then without border",
     [](Faced& f) {
         f.meter->SetProperty(QEL_SEL_FILL_ONLY, 1);
         f.meter.Draw();
     }},
    {"another size of the drawing",
     [](Faced& f) {
         f.meter.View().SetRefSize({80, 120});
     }},
    {"of one part", [](Faced& f) { f.pEllipse->SetRefSize(60, 60); }},
};

// The rectangle changes by nearly each of them; of two that pass each other it may stay.
TEST(MeterView, ARegionIsMadeAnewWhenWhatItIsMadeOfHasChanged)
{
    for (const int nType : FACE_TYPES) {
        int nOther = 0;
        for (const FaceChange& row : g_faceChanges) {
            SCOPED_TRACE(testing::Message() << nType << ": " << row.pszWhat);
            Faced f(nType);
            f.meter.Draw();
            const std::string before = FaceOf(f.meter, nType);
            row.change(f);
            f.meter.Draw(QEL, 0); // a partial redraw is enough
            const std::string after = FaceOf(f.meter, nType);
            // A window of another size and back: nothing that was kept is used again.
            f.meter.Draw({0, 0, 100, 100});
            f.meter.Draw(QEL, 0);
            EXPECT_TRUE(FaceOf(f.meter, nType) == after); // too long to be printed
            EXPECT_TRUE(nType == 10 || before != after);
            nOther += before != after;
        }
        EXPECT_LT(7, nOther);
    }
}

TEST(MeterView, AFaceThatIsGoneLeavesABarWithoutRegionAndAChartWithItsOwnSquare)
{
    for (const int nType : FACE_TYPES) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        CQELViewElm* pShape = meter.AddShape(QEL_TYPE_RECT, FilledAttr({10, 20, 30, 50}));
        meter.Draw();
        EXPECT_NE("none", FaceOf(meter, nType));
        meter.View().DeleteElement(pShape);
        meter.Draw(QEL, 0);
        // 50,50 with 40, all borders kept in 200 by 200.
        EXPECT_EQ(nType == 10 ? "10,10,190,190" : "none", FaceOf(meter, nType));
    }
}

TEST(MeterView, WhatDoesNotTouchTheFaceLeavesRegionAndRendererAsTheyAre)
{
    constexpr FaceChange rows[] = {
        {"nothing", [](Faced&) {}},
        {"a value", [](Faced& f) { f.meter->SetValue(0, 5U); }},
        {"colours",
         [](Faced& f) {
             f.Change(f.pRect, [](auto& a) { a.clrA = 1, a.clrB = 2, a.clrPen = 3, a.nDraft = 4; });
         }},
        {"the colour of the face",
         [](Faced& f) {
             f.meter->SetProperty(QEL_SEL_FACE_COLOR, FACE);
             f.meter.Draw();
         }},
        {"an element elsewhere", [](Faced& f) { f.pOther->MoveX(3); }},
        {"a new one elsewhere",
         [](Faced& f) { f.meter.AddShape(QEL_TYPE_RECT, FilledAttr({}), f.pOther->Parent()); }},
        {"there and back", [](Faced& f) { f.pRect->MoveX(3), f.pRect->MoveX(-3); }},
        {"another picture", [](Faced&) { Faced other(0); }},
    };
    for (const int nType : FACE_TYPES)
        for (const FaceChange& row : rows) {
            SCOPED_TRACE(testing::Message() << nType << ": " << row.pszWhat);
            Faced f(nType);
            f.meter.Draw();
            const CMeter* pRenderer = f.meter->Renderer();
            row.change(f);
            f.meter.Draw(QEL, 0);
            f.meter.Draw();
            EXPECT_EQ(pRenderer, f.meter->Renderer());
        }
}

// ---- values ----

TEST(MeterView, TheFormThatWasSetLastIsDrawn)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        CTestMeter meter(nType);
        const auto drawn = [&] {
            meter.Draw();
            return meter->Renderer()->GetLastValue();
        };
        EXPECT_EQ(0, drawn());
        EXPECT_EQ(1, meter->SetValue(0, 4U));
        EXPECT_EQ(4, drawn());
        EXPECT_EQ(1, meter->SetValue(0, 7.9F));
        EXPECT_EQ(7, drawn()); // cut to a whole number for the position
        uint32_t nValue = 0;
        float fValue = 0;
        EXPECT_EQ(1, meter->GetValue(0, &nValue));
        EXPECT_EQ(1, meter->GetValue(0, &fValue));
        EXPECT_EQ(4u, nValue); // each form keeps its own
        EXPECT_EQ(7.9F, fValue);
        EXPECT_EQ(1, meter->SetValue(3, 9U)); // a pin switches as well
        EXPECT_EQ(4, drawn());
        EXPECT_EQ(1, meter->SetValue(32, 1.5F));
        EXPECT_EQ(7, drawn());
        EXPECT_EQ(1, meter->SetProperty(4, 200)); // and nothing else does
        EXPECT_EQ(1, meter->SetProperty(24, 3));
        EXPECT_EQ(7, drawn());
        EXPECT_EQ(1, meter->SetValue(0, 0x80000000U));
        EXPECT_EQ(1, meter->SetBase(3.5F));
        EXPECT_EQ(INT32_MIN, drawn());
    }
}

TEST(MeterView, PinsAreNumberedFromOneToThirtyTwo)
{
    CTestMeter meter(10);
    for (uint32_t n = 1; n <= 32; ++n) {
        EXPECT_EQ(1, meter->SetValue(n, n * 10));
        EXPECT_EQ(1, meter->SetValue(n, n + 0.5F));
    }
    for (const uint32_t n : {33U, 34U, 1000U, 0xFFFFFFFFU}) {
        uint32_t nValue = 77;
        EXPECT_EQ(0, meter->SetValue(n, 1U)) << n;
        EXPECT_EQ(0, meter->SetValue(n, 1.0F)) << n;
        EXPECT_EQ(0, meter->GetValue(n, &nValue)) << n;
        EXPECT_EQ(77u, nValue) << n;
        float fValue = 7.5F;
        EXPECT_EQ(0, meter->GetValue(n, &fValue)) << n;
        EXPECT_EQ(7.5F, fValue) << n;
    }
    for (uint32_t n = 1; n <= 32; ++n) {
        uint32_t nValue = 0;
        float fValue = 0;
        EXPECT_EQ(1, meter->GetValue(n, &nValue));
        EXPECT_EQ(1, meter->GetValue(n, &fValue));
        EXPECT_EQ(n * 10, nValue);
        EXPECT_EQ(n + 0.5F, fValue);
    }
}

TEST(MeterView, PinsAreTheSharesOfTheChartInTheFormThatWasSetLast)
{
    CTestMeter meter(10);
    meter->SetProperty(32, 4);
    const auto shares = [&] {
        meter.Draw();
        Lines text;
        for (uint32_t n = 0; n < 4; ++n)
            text.push_back(std::to_string(std::lround(meter.As<CSectorMeter>()->Share(n) * 100)));
        return text;
    };
    EXPECT_EQ((Lines{"25", "25", "25", "25"}), shares()); // all are 0
    meter->SetValue(1, 10U), meter->SetValue(2, 30U), meter->SetValue(4, 60U);
    EXPECT_EQ((Lines{"10", "30", "0", "60"}), shares());
    meter->SetValue(0, 5U); // the main value after the pins: they are passed all the same
    EXPECT_EQ((Lines{"10", "30", "0", "60"}), shares());
    meter->SetValue(3, 2.5F);
    EXPECT_EQ((Lines{"0", "0", "100", "0"}), shares());
    meter->SetValue(1, 7.5F);
    EXPECT_EQ((Lines{"75", "0", "25", "0"}), shares());
    meter->SetValue(3, 100U);
    EXPECT_EQ((Lines{"5", "15", "50", "30"}), shares());
}

// ---- masks and copies ----

TEST(MeterView, MaskTellsWhatTheMeterFollows)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        for (int nCase = 0; nCase < 128; ++nCase) {
            const bool bScale = nCase & 1, bShowScale = nCase & 2, bPin = nCase & 4;
            const bool bShowPin = nCase & 8, bLabels = nCase & 16, bFace = nCase & 32;
            const uint32_t nFlags = nCase & 64 ? 0x100000 : 0;
            QELMETERATTR attr = Attr(nType);
            attr.bUseScale = 1;
            attr.bUsePin = 1;
            CTestMeter meter(attr);
            ASSERT_EQ(1, meter->SetProperty(8, bShowScale));
            ASSERT_EQ(1, meter->SetProperty(9, bShowPin));
            ASSERT_EQ(1, meter->SetProperty(10, bLabels));
            if (bFace) meter.AddFace(1, 1, 5, 5);
            attr.bUseScale = bScale;
            attr.bUsePin = bPin;
            attr.nFlags = nFlags;
            ASSERT_EQ(1, meter->SetAttrBlock(&attr));

            uint32_t nMask = bScale ? bShowScale ? 0x514 : 0x500 : 0;
            if (bPin) nMask |= bShowPin ? 0x202 : 0x200;
            if (bLabels) nMask |= 0x800;
            nMask |= 0x2060;
            const uint32_t ofType[] = {0,    0,        0,        0,        0x480080, 0x480080,
                                       0x80, 0x300081, 0x780081, 0x100080, 0};
            nMask |= ofType[nType];
            if (bFace && IsBar(nType)) nMask |= nType % 2 ? 0x800080 : 0x80;
            if (nType >= 4 && nType <= 9 && nFlags == 0) nMask |= 0x1000;
            ASSERT_EQ(nMask, meter->GetParamMask()) << "type " << nType << " case " << nCase;
        }
        for (const DWORD nKeep : {QEL_KEEP_ALL, QEL_KEEP_LEFT, QEL_KEEP_TOP, QEL_KEEP_RIGHT,
                                  QEL_KEEP_BOTTOM, QEL_AWAY_AS_GRAPH, QEL_ALONG_AS_QEL}) {
            QELMETERATTR attr = Attr(nType);
            attr.nFlags = nKeep;
            EXPECT_EQ(nKeep & QEL_KEEP_ANCHOR_MASK ? 0x1000u : 0u,
                      CTestMeter(attr)->GetParamMask() & 0x1000);
        }
    }
}

TEST(MeterView, MaskOfAnUnknownTypeTellsOfNoType)
{
    for (const int nType : {-1, TYPES, 1000}) {
        CTestMeter meter(0);
        meter.AddFace(1, 1, 5, 5);
        const uint32_t nBar = meter->GetParamMask();
        QELMETERATTR attr = Attr(0);
        attr.nType = nType;
        ASSERT_EQ(1, meter->SetAttrBlock(&attr));
        EXPECT_EQ(nBar & ~0x80U, meter->GetParamMask()) << nType; // what bars with a face have
    }
}

TEST(MeterView, ANullRecordIsRefused)
{
    CTestMeter meter(5);
    QELMETERATTR before{}, after{};
    ASSERT_EQ(1, meter->GetAttrBlock(&before));
    EXPECT_EQ(0, meter->GetAttrBlock(nullptr));
    EXPECT_EQ(0, meter->SetAttrBlock(nullptr));
    ASSERT_EQ(1, meter->GetAttrBlock(&after));
    EXPECT_EQ(0, std::memcmp(&before, &after, sizeof after));
}

TEST(MeterView, ACopyHasTheSettingsButNeitherPinsNorRenderer)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        QELMETERATTR attr = Attr(nType);
        attr.nId = 77;
        CTestMeter meter(attr);
        meter.AddFace(1, 1, 5, 5);
        for (const Route& route : g_routes)
            ASSERT_EQ(1, meter->SetProperty(route.nSelector, route.nValue));
        meter->SetBase(4.5F);
        meter->SetDraftParam(7);
        meter->SetDraftForeParam(0x123456);
        meter->SetDraftBackParam(0x654321);
        meter->SetValue(5, 55U);
        meter->SetValue(5, 5.5F);
        meter->SetValue(0, 33U);
        meter.Draw();

        CQELViewElm* pGroup = nullptr;
        ASSERT_EQ(
            1, meter.View().CreateElement(meter.View().Root(), nullptr, QEL_TYPE_GROUP, &pGroup));
        CQELViewElm* pElm = nullptr;
        ASSERT_EQ(1, meter->Duplicate(pGroup, &pElm));
        auto* pCopy = static_cast<CQELViewMeter*>(pElm);
        EXPECT_EQ(pGroup, pCopy->Parent());
        EXPECT_EQ(77u, pCopy->HostId());
        EXPECT_EQ(nullptr, pCopy->Renderer());
        ASSERT_NE(nullptr, pCopy->FirstChild());
        EXPECT_EQ(QEL_TYPE_RECT, pCopy->FirstChild()->Type());
        QELMETERATTR block{};
        ASSERT_EQ(1, pCopy->GetAttrBlock(&block));
        EXPECT_EQ(0, std::memcmp(&attr, &block, sizeof block));
        uint32_t nValue = 99;
        float fValue = 99;
        EXPECT_EQ(1, pCopy->GetValue(0, &nValue));
        EXPECT_EQ(33u, nValue);
        EXPECT_EQ(1, pCopy->GetValue(5, &nValue));
        EXPECT_EQ(0u, nValue);
        EXPECT_EQ(1, pCopy->GetValue(5, &fValue));
        EXPECT_EQ(0.0F, fValue);
        EXPECT_EQ(4.5F, pCopy->Base());
        for (const Route& route : g_routes) {
            EXPECT_EQ(1, pCopy->GetProperty(route.nSelector, &nValue));
            EXPECT_EQ(meter.Get(route.nSelector), nValue) << route.nSelector;
        }
        CTestBitmap bitmap(220, 220);
        ASSERT_EQ(1, pCopy->Draw(bitmap.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(
            "", Difference(FieldsOf(meter->Renderer(), nType), FieldsOf(pCopy->Renderer(), nType)));
        EXPECT_EQ(33, pCopy->Renderer()->GetLastValue());
    }
}

TEST(MeterView, LeavesTheDeviceContextAsItWas)
{
    for (int nType = 0; nType < TYPES; ++nType) {
        SCOPED_TRACE(nType);
        QELMETERATTR attr = Attr(nType);
        attr.nGeometry[7] = 45;
        CTestMeter meter(attr);
        meter.AddFace(5, 5, 95, 95);
        const uint32_t on[][2] = {{16, 1}, {29, 1}, {30, 1}, {31, 1}, {32, 3}, {0, 0xFF}};
        for (const auto& row : on) meter->SetProperty(row[0], row[1]);
        meter->SetValue(2, 3U);
        for (const bool bFloats : {false, true}) {
            bFloats ? meter->SetValue(0, 6.5F) : meter->SetValue(0, 6U);
            CTestBitmap bitmap(220, 220);
            ASSERT_EQ(1, meter->Draw(bitmap.Dc(), QEL, QEL_DRAW_FULL));
            bFloats ? meter->SetValue(0, 2.5F) : meter->SetValue(0, 2U);
            ::MoveToEx(bitmap.Dc(), 3, 4, nullptr);
            ::SetArcDirection(bitmap.Dc(), AD_CLOCKWISE);
            ::SetBkColor(bitmap.Dc(), RGB(1, 2, 3));
            ::SetTextColor(bitmap.Dc(), RGB(4, 5, 6));
            const std::string before = DcState(bitmap.Dc());
            ASSERT_EQ(1, meter->Draw(bitmap.Dc(), QEL, 0));
            EXPECT_EQ(before, DcState(bitmap.Dc()));
            EXPECT_FALSE(IsBlank(bitmap));
        }
    }
}

} // namespace

// ---- types that are none ----

TEST(MeterLayout, OfATypeThatIsNoneIsItsRectangleWithNothingOnIt)
{
    for (const int32_t nType : {-1, int32_t{METER_TYPE_COUNT}}) {
        QELMETERATTR attr{};
        attr.nType = nType;
        const RECT rc{10, 20, 60, 70};
        for (int n = 0; n < 4; ++n) attr.nGeometry[n] = (&rc.left)[n];
        const MeterLayout layout = LayoutOfMeter(attr);
        EXPECT_TRUE(::EqualRect(&rc, &layout.rc)) << nType;
        EXPECT_EQ(0U, layout.nKeep) << nType;
        MeterPlace place{};
        place.rc = rc;
        EXPECT_FALSE(IsOnMeter(attr, place, {30, 30})) << nType;
        attr.nType = METER_VERT;
        EXPECT_TRUE(IsOnMeter(attr, place, {30, 30}));
    }
}

TEST(MeterLayout, FlagsOfTheRecordComeBeforeThoseOfTheForm)
{
    for (int32_t nType = 0; nType < METER_TYPE_COUNT; ++nType) {
        QELMETERATTR attr{};
        attr.nType = nType;
        const bool bRectangle = MeterTypeOf(nType)->form == MeterForm::Rectangle;
        EXPECT_EQ(bRectangle, LayoutOfMeter(attr).nKeep == 0) << nType;
        attr.nFlags = QEL_KEEP_LEFT;
        EXPECT_EQ(uint32_t{QEL_KEEP_LEFT}, LayoutOfMeter(attr).nKeep) << nType;
    }
}

TEST(MeterTypes, EachHasABitOfItsOwnAndOthersHaveNone)
{
    uint32_t nAll = 0;
    for (int32_t nType = 0; nType < METER_TYPE_COUNT; ++nType) {
        EXPECT_EQ(0U, nAll & MeterTypeBit(nType)) << nType;
        nAll |= MeterTypeBit(nType);
    }
    EXPECT_EQ((1U << METER_TYPE_COUNT) - 1, nAll);
    for (const int32_t nType : {-1, int32_t{METER_TYPE_COUNT}}) EXPECT_EQ(0U, MeterTypeBit(nType));
}

// ---- types that there are not ----

TEST(MeterView, OfAnUnknownTypeKeepsItsSettingsAndDrawsNothingOfThem)
{
    CTestMeter meter(Attr(99));
    EXPECT_EQ(1, meter->SetProperty(QEL_SEL_MAX, 77));
    uint32_t nValue = 0;
    EXPECT_EQ(1, meter->GetProperty(QEL_SEL_MAX, &nValue));
    EXPECT_EQ(77U, nValue);
    CRecording recording;
    EXPECT_EQ(1, meter->Draw(recording.Dc(), QEL, QEL_DRAW_FULL));
    EXPECT_EQ(Lines{}, recording.Calls());
}

TEST(MeterView, InAnEmptyRectangleHasNoUnits)
{
    CTestMeter meter(4);
    UnitMap map{};
    EXPECT_TRUE(meter->MapUnits(QEL, &map));
    EXPECT_FALSE(meter->MapUnits({0, 0, 0, 200}, &map));
}

// Changes are counted by the root of a picture; without one every draw looks anew.
TEST(MeterView, OutsideOfAPictureIsDrawnAsInOne)
{
    const QELSHAPEATTR face = FilledAttr({40, 20, 60, 70});
    CTestMeter inside(0);
    inside.AddShape(QEL_TYPE_RECT, face);
    CQELViewMeter outside(100, 100);
    const QELMETERATTR attr = Attr(0);
    ASSERT_EQ(1, outside.SetAttrBlock(&attr));
    auto* pFace = new CQELViewRect(100, 100);
    ASSERT_EQ(1, pFace->SetAttrBlock(&face));
    outside.AppendChild(pFace);
    for (const int nValue : {3, 7}) {
        CRecording expected, actual;
        inside->SetValue(0, static_cast<uint32_t>(nValue));
        outside.SetValue(0, static_cast<uint32_t>(nValue));
        EXPECT_EQ(1, inside->Draw(expected.Dc(), QEL, QEL_DRAW_FULL));
        EXPECT_EQ(1, outside.Draw(actual.Dc(), QEL, QEL_DRAW_FULL));
        const Lines calls = actual.Calls();
        EXPECT_FALSE(calls.empty());
        EXPECT_EQ(expected.Calls(), calls);
    }
}
