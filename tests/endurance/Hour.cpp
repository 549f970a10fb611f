// An hour of a panel that lives by identifier: values by chance, thirty updates a second, and a
// picture that is that of a full draw at the end.
#include "tests/endurance/Phases.h"

#include <cstdio>

namespace {

constexpr DWORD FRAME_TIME = 33; // milliseconds
constexpr DWORD EASE_TIME = 300;

class CHour final : public CPhase {
public:
    CHour();
    ~CHour() override;

    [[nodiscard]] const char* Name() const override { return "an hour of updates"; }
    bool Step(int nStep) override;
    bool Settle() override;
    [[nodiscard]] std::string Done() const override;
    [[nodiscard]] const char* Complaint() const override
    {
        return 2 * m_nUpdates < m_nFrames ? "too few of the frames had an update" : nullptr;
    }

private:
    bool SetAnyValue();
    bool SetAllValues();
    bool Update();
    bool IsAsDrawnFully();

    CTestFolder m_folder;
    CTestBitmap m_screen{LIVE_PANEL_SIZE.cx, LIVE_PANEL_SIZE.cy, 0};
    CTestBitmap m_full{LIVE_PANEL_SIZE.cx, LIVE_PANEL_SIZE.cy, 0};
    std::unique_ptr<CTestBitmap> m_pFirst; // the picture of the state that is compared
    CDice m_dice{4};
    HBRUSH m_hBrush = ::CreateSolidBrush(0);
    HQELENGINE m_h = CreateQELEngine();
    int m_nFrames = 0;
    int m_nUpdates = 0;
    int m_nValues = 0;
    bool m_bOpened;
};

CHour::CHour()
{
    const std::string path = m_folder.Path("live.qel");
    m_bOpened = WriteBytes(path, LivePanel()) && QELOpenFile(m_h, path.c_str());
    for (int n = 0; n < LIVE_DIALS; ++n)
        m_bOpened = QELSetEasing(m_h, ("d" + std::to_string(n)).c_str(), EASE_TIME) && m_bOpened;
}

CHour::~CHour()
{
    DestroyQELEngine(m_h);
    ::DeleteObject(m_hBrush);
}

// A lamp, a dial or a number gets another value; now and then a quality, or none at all.
bool CHour::SetAnyValue()
{
    const uint32_t nWhich = m_dice.Roll(LIVE_LAMPS + LIVE_DIALS + LIVE_NUMBERS);
    const double fValue = m_dice.Roll(1000) / 10.0;
    ++m_nValues;
    if (nWhich < LIVE_LAMPS)
        return QELSetValue(m_h, ("l" + std::to_string(nWhich)).c_str(), m_dice.Roll(2)) == 1;
    const bool bDial = nWhich < LIVE_LAMPS + LIVE_DIALS;
    const std::string id =
        (bDial ? "d" : "n") + std::to_string(nWhich - LIVE_LAMPS - (bDial ? 0 : LIVE_DIALS));
    if (m_dice.OneIn(50) && QELSetQuality(m_h, id.c_str(), static_cast<int>(m_dice.Roll(3))) != 1)
        return false;
    return QELSetValue(m_h, id.c_str(), fValue) == 1;
}

bool CHour::Update()
{
    RECT rc{};
    if (!QELGetDirtyRect(m_h, &rc)) return true;
    ++m_nUpdates;
    return QELUpdate(m_h, m_screen.Dc(), m_hBrush) == 1;
}

bool CHour::Step(int)
{
    if (!m_bOpened) return false;
    ++m_nFrames;
    for (uint32_t n = m_dice.Roll(4); n > 0; --n)
        if (!SetAnyValue()) return false;
    QELAdvance(m_h, FRAME_TIME);
    return Update() && (!m_dice.OneIn(1000) || IsAsDrawnFully());
}

// A full draw shows the colour of a read-out one draw later, so it takes two.
bool CHour::IsAsDrawnFully()
{
    const RECT rc = m_full.Box();
    for (int n = 0; n < 2; ++n) {
        m_full.Fill(0);
        if (!QELDraw(m_h, m_full.Dc(), &rc, QEL_DRAW_FULL)) return false;
    }
    return FirstDifference(m_full, m_screen).empty();
}

bool CHour::SetAllValues()
{
    bool bAll = true;
    const auto setAll = [&](const char* pszKind, int nCount) {
        for (int n = 0; n < nCount; ++n) {
            const std::string id = pszKind + std::to_string(n);
            bAll = QELSetQuality(m_h, id.c_str(), 0) == 1 &&
                   QELSetValue(m_h, id.c_str(), *pszKind == 'l' ? n % 2 : 3.5 * n) == 1 && bAll;
        }
    };
    setAll("l", LIVE_LAMPS);
    setAll("d", LIVE_DIALS);
    setAll("n", LIVE_NUMBERS);
    return bAll && QELAdvance(m_h, EASE_TIME) == 0;
}

// The same values give the same picture, and it is that of a full draw.
bool CHour::Settle()
{
    if (!m_bOpened || !SetAllValues() || !Update() || IsBlank(m_screen) || !IsAsDrawnFully())
        return false;
    if (!m_pFirst) {
        m_pFirst = std::make_unique<CTestBitmap>(LIVE_PANEL_SIZE.cx, LIVE_PANEL_SIZE.cy, 0);
        ::BitBlt(m_pFirst->Dc(), 0, 0, LIVE_PANEL_SIZE.cx, LIVE_PANEL_SIZE.cy, m_screen.Dc(), 0, 0,
                 SRCCOPY);
    }
    return FirstDifference(*m_pFirst, m_screen).empty();
}

std::string CHour::Done() const
{
    return std::to_string(m_nFrames) + " frames, " + std::to_string(m_nValues) + " values, " +
           std::to_string(m_nUpdates) + " updates";
}

} // namespace

std::unique_ptr<CPhase> MakeHour()
{
    return std::make_unique<CHour>();
}
