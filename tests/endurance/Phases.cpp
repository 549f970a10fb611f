#include "tests/endurance/Phases.h"

#include <algorithm>
#include <cstdio>

namespace {

double Milliseconds()
{
    LARGE_INTEGER nFrequency{};
    LARGE_INTEGER nCount{};
    ::QueryPerformanceFrequency(&nFrequency);
    ::QueryPerformanceCounter(&nCount);
    return 1000.0 * static_cast<double>(nCount.QuadPart) / static_cast<double>(nFrequency.QuadPart);
}

// ---- redraws and values ----

// A panel for each type of meter as the live one, and one of scales, each painted in turn after a
// value of it has changed.
class CRedraws final : public CPhase {
public:
    CRedraws();
    ~CRedraws() override;

    [[nodiscard]] const char* Name() const override { return "redraws"; }
    bool Step(int nStep) override;
    bool Settle() override;
    [[nodiscard]] std::string Done() const override;
    [[nodiscard]] const char* Complaint() const override
    {
        return m_fLatestPace > MOST_SLOWER * m_fFirstPace ? "slower than at first" : nullptr;
    }

private:
    static constexpr double MOST_SLOWER = 3; // times; a busy machine is not to be mistaken for it
    static constexpr int ENGINES = METER_TYPES + 1; // the last one shows the scales

    bool ChangeValue(HQELENGINE h, bool bScales);
    bool ChangeOther(HQELENGINE h, bool bScales);
    void SetSelector(HQELENGINE h, DWORD nId, DWORD nSelector, uint32_t nBits);
    bool DrawOtherwise(HQELENGINE h);
    bool Draw(HQELENGINE h, DWORD nFlags);
    bool SetKnownState(HQELENGINE h);
    bool TakePace();

    CTestFolder m_folder;
    CTestBitmap m_bitmap{PANEL_SIZE.cx, PANEL_SIZE.cy};
    CDice m_dice{1};
    HQELENGINE m_engines[ENGINES]{};
    std::vector<std::vector<COLORREF>> m_pictures; // of the known state, once they were taken
    int m_nPartial = 0;
    int m_nFull = 0;
    int m_nValues = 0;
    int m_nSelectors = 0;    // that were taken
    double m_fFirstPace = 0; // milliseconds for a partial redraw in the known state
    double m_fLatestPace = 0;
    bool m_bOpened = true;
};

// Into memory, at a pixel scale and smoothly. What an engine keeps of it for the next time goes by
// the state that it was drawn in.
bool DrawCrisply(HQELENGINE h)
{
    constexpr int WIDTH = 60;
    constexpr int HEIGHT = 40;
    std::vector<DWORD> pixels(WIDTH * HEIGHT);
    return QELSetPixelScale(h, 200) && QELSetSmooth(h, 2) &&
           QELRenderBitmap(h, pixels.data(), WIDTH, HEIGHT, 4 * WIDTH, 0) &&
           QELSetPixelScale(h, 100) && QELSetSmooth(h, 0);
}

CRedraws::CRedraws()
{
    for (int n = 0; n < ENGINES; ++n) {
        const std::string path = m_folder.Path("panel.qel");
        m_engines[n] = CreateQELEngine();
        const RECT rc = m_bitmap.Box();
        m_bOpened = WriteBytes(path, n < METER_TYPES ? MeterPanel(n) : ScalePanel()) &&
                    QELOpenFile(m_engines[n], path.c_str()) && QELSetQELRect(m_engines[n], &rc) &&
                    Draw(m_engines[n], QEL_DRAW_FULL) && m_bOpened;
    }
}

CRedraws::~CRedraws()
{
    for (const HQELENGINE h : m_engines) DestroyQELEngine(h);
}

bool CRedraws::Step(int nStep)
{
    const int nEngine = nStep % ENGINES;
    const HQELENGINE h = m_engines[nEngine];
    const bool bScales = nEngine == METER_TYPES;
    if (!m_bOpened || !ChangeValue(h, bScales)) return false;
    if (m_dice.OneIn(4) && !ChangeOther(h, bScales)) return false;
    if (m_dice.OneIn(2000) && !DrawOtherwise(h)) return false;
    if (m_dice.OneIn(500) && !Draw(h, QEL_DRAW_FULL)) return false;
    return Draw(h, 0);
}

bool CRedraws::ChangeValue(HQELENGINE h, bool bScales)
{
    const DWORD nId = bScales ? FIRST_SCALE_ID + m_dice.Roll(SCALE_TYPES) : 0;
    const uint32_t nValue = m_dice.Roll(110);
    ++m_nValues;
    if (m_dice.OneIn(2)) return QELSetScaleStatus(h, nId, nValue) == 1;
    return QELSetScaleStatusf(h, nId, static_cast<float>(nValue) / 1.7F) == 1;
}

bool CRedraws::ChangeOther(HQELENGINE h, bool bScales)
{
    const uint32_t nBits = m_dice.Bits();
    switch (m_dice.Roll(8)) {
    case 0:
        return QELSetStatus(h, nBits % 4) == 1;
    case 1:
        return QELSetBlinkState(h, static_cast<int>(nBits % 2)) == 1;
    case 2:
        return QELSetParam(h, 1, nBits % 38) == 1;
    case 3: {
        constexpr int colors[] = {0, 2, 3};
        return QELSetParam(h, colors[nBits >> 24 & 1 ? 0 : 1 + nBits % 2], nBits & 0x80FFFFFF) == 1;
    }
    case 4: // the sectors of a share chart
        return bScales || QELSetScaleStatus(h, 1 + nBits % 32, nBits >> 8 & 63) == 1;
    case 5:
        return bScales || QELSetScaleParamf(h, 0, QEL_SEL_BASE_VALUE, nBits % 1000 / 10.0F) == 1;
    default:
        break;
    }
    if (bScales) {
        SetSelector(h, FIRST_SCALE_ID + nBits % SCALE_TYPES, nBits >> 8 & 3, m_dice.Bits());
    } else {
        const DWORD nId = nBits % 2 ? 0 : FIRST_METER_ID + nBits / 2 % METER_TYPES;
        SetSelector(h, nId, m_dice.Roll(QEL_SEL_COUNT), m_dice.Bits());
    }
    return true;
}

// A value that makes sense for the selector. Some sets are refused by rule: of the number that the
// live meter does not have, and of a full circle that is one already.
void CRedraws::SetSelector(HQELENGINE h, DWORD nId, DWORD nSelector, uint32_t nBits)
{
    DWORD nValue = nBits % 2;
    switch (nSelector) {
    case QEL_SEL_PIN_COLOR:
    case QEL_SEL_SCALE_COLOR:
    case QEL_SEL_FACE_COLOR:
    case QEL_SEL_LABEL_COLOR:
    case QEL_SEL_LOW_COLOR:
    case QEL_SEL_HIGH_COLOR:
        nValue = nBits & 0x80FFFFFF; // some blink
        break;
    case QEL_SEL_TICKS:
        nValue = 1 + nBits % 24;
        break;
    case QEL_SEL_MAX:
    case QEL_SEL_SCALE_END:
    case QEL_SEL_HIGH_LIMIT:
        nValue = 50 + nBits % 100;
        break;
    case QEL_SEL_MIN:
    case QEL_SEL_SCALE_START:
    case QEL_SEL_LOW_LIMIT:
        nValue = nBits % 40;
        break;
    case QEL_SEL_BASE_VALUE:
    case QEL_SEL_ANGLE_OFFSET:
        nValue = nBits % 360;
        break;
    case QEL_SEL_SECTOR_COUNT:
        nValue = nBits % 33;
        break;
    case QEL_SEL_START_CODE:
    case QEL_SEL_MAJOR_EVERY:
    case QEL_SEL_DECIMAL_SHIFT:
    case QEL_SEL_PIN_STYLE:
    case QEL_SEL_AXIS_STYLE:
    case QEL_SEL_FONT_SIZE:
        nValue = nBits % 8;
        break;
    default:
        break;
    }
    m_nSelectors += QELSetScaleParam(h, nId, nSelector, nValue);
}

// In another size, turned, and with texts as Unicode: every renderer is made anew, and again for
// the old size.
bool CRedraws::DrawOtherwise(HQELENGINE h)
{
    const RECT rcOther{3, 2, 120, 90};
    const RECT rc = m_bitmap.Box();
    return QELRotate(h, 90) && QELSetQELRect(h, &rcOther) && QELSetTextCodePage(h, 1) &&
           Draw(h, QEL_DRAW_FULL) && DrawCrisply(h) && QELRotate(h, 0) && QELSetQELRect(h, &rc) &&
           QELSetTextCodePage(h, 0) && Draw(h, QEL_DRAW_FULL);
}

bool CRedraws::Draw(HQELENGINE h, DWORD nFlags)
{
    ++(nFlags & QEL_DRAW_FULL ? m_nFull : m_nPartial);
    const RECT rc = m_bitmap.Box();
    return QELDraw(h, m_bitmap.Dc(), &rc, nFlags) == 1;
}

bool CRedraws::SetKnownState(HQELENGINE h)
{
    CDice dice(7);
    for (DWORD nSelector = 0; nSelector < QEL_SEL_COUNT; ++nSelector) {
        for (DWORD nId = 0; nId < FIRST_SCALE_ID + SCALE_TYPES; ++nId)
            if (nSelector != QEL_SEL_VALUE) SetSelector(h, nId, nSelector, dice.Bits());
    }
    for (DWORD nId = 0; nId < FIRST_SCALE_ID + SCALE_TYPES; ++nId) {
        QELSetScaleStatusf(h, nId, static_cast<float>(20 + nId));
        QELSetScaleStatus(h, nId, 20 + nId);
    }
    QELSetParam(h, 0, 0x20A0F0);
    QELSetParam(h, 1, 12);
    QELSetParam(h, 2, 0xFF8020);
    QELSetParam(h, 3, 0x102040);
    const RECT rc = m_bitmap.Box();
    return QELSetStatus(h, 1) && QELSetBlinkState(h, 0) && QELRotate(h, 0) && QELSetQELRect(h, &rc);
}

bool CRedraws::Settle()
{
    std::vector<std::vector<COLORREF>> pictures;
    for (const HQELENGINE h : m_engines) {
        m_bitmap.Fill(RGB(255, 255, 255));
        if (!SetKnownState(h) || !DrawCrisply(h) || !Draw(h, QEL_DRAW_FULL) || IsBlank(m_bitmap))
            return false;
        std::vector<COLORREF> picture;
        for (int nY = 0; nY < m_bitmap.Height(); ++nY)
            for (int nX = 0; nX < m_bitmap.Width(); ++nX)
                if (!::PtInRect(&CLOCK_CELL, {nX, nY})) picture.push_back(m_bitmap.At(nX, nY));
        pictures.push_back(picture);
    }
    if (m_pictures.empty()) m_pictures = pictures;
    return pictures == m_pictures && TakePace();
}

// The same work is to cost as much as at first: what is kept twice, or looked for in a list that
// grows, need not show in the memory. The quickest of several rounds, as others use the machine
// too.
bool CRedraws::TakePace()
{
    constexpr int ROUNDS = 10;
    constexpr int REDRAWS = 5;
    m_fLatestPace = 1e9;
    for (int nRound = 0; nRound < ROUNDS; ++nRound) {
        const double fBegan = Milliseconds();
        for (int n = 0; n < REDRAWS * ENGINES; ++n)
            if (!Draw(m_engines[n % ENGINES], 0)) return false;
        m_fLatestPace = std::min(m_fLatestPace, (Milliseconds() - fBegan) / (REDRAWS * ENGINES));
    }
    if (m_fFirstPace == 0) m_fFirstPace = m_fLatestPace;
    return true;
}

std::string CRedraws::Done() const
{
    char szPace[80];
    std::snprintf(szPace, sizeof szPace, "; %.3f ms for a redraw, at first %.3f ms", m_fLatestPace,
                  m_fFirstPace);
    return std::to_string(m_nPartial) + " partial and " + std::to_string(m_nFull) +
           " full redraws, " + std::to_string(m_nValues) + " values and " +
           std::to_string(m_nSelectors) + " other selectors set" + szPace;
}

// ---- open and close ----

// A few handles that open and close a few files, each for as long as chance will have it.
class CCycles final : public CPhase {
public:
    explicit CCycles(bool bShowOnly);
    ~CCycles() override;

    [[nodiscard]] const char* Name() const override
    {
        return m_bShowOnly ? "show-only cycles" : "cycles";
    }
    bool Step(int nStep) override;
    bool Settle() override;
    [[nodiscard]] std::string Done() const override;

private:
    static constexpr uint32_t FILES = 6;
    static constexpr uint32_t BROKEN = FILES; // the path after them opens as nothing
    static constexpr uint32_t SLOTS = 12;

    bool Work(HQELENGINE h);
    bool Destroy(uint32_t nSlot);

    CTestFolder m_folder;
    CTestBitmap m_bitmap{60, 45};
    CDice m_dice{2};
    std::string m_paths[FILES + 1];
    HQELENGINE m_handles[SLOTS]{};
    bool m_bShowOnly;
    int m_nOpened = 0;
    int m_nRefused = 0;
    int m_nDrawn = 0;
    int m_nSaved = 0;
    int m_nDestroyed = 0;
};

CCycles::CCycles(bool bShowOnly) : m_bShowOnly(bShowOnly)
{
    const std::string texts[FILES + 1] = {
        MeterPanel(4), ScalePanel(), ShapePanel(3),       ShapePanel(11),
        ShapePanel(1), "<qel/>",     "<qel><rect></qel>",
    };
    for (uint32_t n = 0; n <= FILES; ++n) {
        m_paths[n] = m_folder.Path("drawing-" + std::to_string(n) + ".qel");
        WriteBytes(m_paths[n], texts[n]);
    }
    QELShowOnly(bShowOnly);
}

CCycles::~CCycles()
{
    Settle();
    QELShowOnly(0);
}

// One opening, of a handle that is new, closed or open, and in half of the cases the end of
// another.
bool CCycles::Step(int)
{
    if (m_dice.OneIn(2)) {
        const uint32_t nSlot = m_dice.Roll(SLOTS);
        if (m_handles[nSlot] && m_dice.OneIn(3)) {
            if (!QELCloseFile(m_handles[nSlot])) return false;
        } else if (m_handles[nSlot] && !Destroy(nSlot)) {
            return false;
        }
    }
    HQELENGINE& h = m_handles[m_dice.Roll(SLOTS)];
    if (!h) h = CreateQELEngine();
    const uint32_t nFile = m_dice.OneIn(50) ? BROKEN : m_dice.Roll(FILES);
    std::string path = m_paths[nFile];
    if (m_dice.OneIn(3)) path.replace(path.size() - 4, 4, ".QEL"); // the same file
    const int nResult = QELOpenFile(h, path.c_str());
    ++(nResult ? m_nOpened : m_nRefused);
    if (nResult != (nFile == BROKEN ? 0 : 1)) return false;
    return !nResult || !m_dice.OneIn(8) || Work(h);
}

bool CCycles::Work(HQELENGINE h)
{
    const RECT rc = m_bitmap.Box();
    QELSetStatus(h, m_dice.Roll(3));
    QELSetScaleStatus(h, 0, m_dice.Roll(10));
    QELSetParam(h, 1, m_dice.Roll(38));
    if (!QELSetQELRect(h, &rc) || !QELDraw(h, m_bitmap.Dc(), &rc, QEL_DRAW_FULL)) return false;
    if (!QELDraw(h, m_bitmap.Dc(), &rc, 0)) return false;
    ++m_nDrawn;
    const HQELELEM hRoot = QELGetRootElem(h);
    if (m_bShowOnly) return !hRoot; // there the elements are not to be had
    for (HQELELEM hElem = QELGetFirstChild(h, hRoot); hElem; hElem = QELGetNextElem(h, hElem))
        QELSetElemId(h, hElem, "named");
    QELCopyElem(h, QELGetFirstChild(h, hRoot));
    if (!m_dice.OneIn(8)) return true;
    ++m_nSaved;
    return QELSaveFile(h, m_folder.Path("saved.qel").c_str()) == 1;
}

bool CCycles::Destroy(uint32_t nSlot)
{
    const HQELENGINE h = m_handles[nSlot];
    m_handles[nSlot] = nullptr;
    ++m_nDestroyed;
    return DestroyQELEngine(h) == 1;
}

// All handles are destroyed, in an order of chance.
bool CCycles::Settle()
{
    uint32_t order[SLOTS];
    for (uint32_t n = 0; n < SLOTS; ++n) order[n] = n;
    for (uint32_t n = SLOTS; n > 1; --n) std::swap(order[n - 1], order[m_dice.Roll(n)]);
    for (const uint32_t nSlot : order)
        if (m_handles[nSlot] && !Destroy(nSlot)) return false;
    return true;
}

std::string CCycles::Done() const
{
    return std::to_string(m_nOpened) + " opened, " + std::to_string(m_nRefused) + " refused, " +
           std::to_string(m_nDrawn) + " drawn, " + std::to_string(m_nSaved) + " saved, " +
           std::to_string(m_nDestroyed) + " destroyed";
}

// ---- edits ----

// One drawing that stays open while elements are made, copied, moved, taken out and back, changed
// and deleted.
class CEdits final : public CPhase {
public:
    CEdits();
    ~CEdits() override { DestroyQELEngine(m_h); }

    [[nodiscard]] const char* Name() const override { return "edits"; }
    bool Step(int nStep) override;
    bool Settle() override;
    [[nodiscard]] std::string Done() const override;
    [[nodiscard]] const char* Complaint() const override;

private:
    enum Operation { Create, Copy, Move, TakeOut, SetAttr, SetRect, SetId, Delete, OPERATIONS };
    static constexpr std::size_t MOST_ELEMENTS = 200;
    static constexpr int MOST_COPIED = 12; // else copies of copies would fill the memory

    int Edit(Operation nOperation);
    int SetRecord(HQELELEM hElem);
    HQELELEM AnyElem();
    HQELELEM AnyParent();
    int CountInside(HQELELEM hElem) const;
    void Keep(HQELELEM hElem);
    bool DrawAndSave();

    CTestFolder m_folder;
    CTestBitmap m_bitmap{60, 45};
    CDice m_dice{3};
    HQELENGINE m_h = CreateQELEngine();
    std::vector<HQELELEM> m_elements; // some of them are dead: deleted with what they were in
    int m_nTried[OPERATIONS]{};
    int m_nDone[OPERATIONS]{};
};

CEdits::CEdits()
{
    QELNewFile(m_h);
    const RECT rc = m_bitmap.Box();
    QELSetQELRect(m_h, &rc);
}

bool CEdits::Step(int nStep)
{
    const auto nOperation = static_cast<Operation>(nStep % OPERATIONS);
    ++m_nTried[nOperation];
    m_nDone[nOperation] += Edit(nOperation) ? 1 : 0;
    while (m_elements.size() > MOST_ELEMENTS) Edit(Delete);
    if (nStep % 64 == 0 && CountInside(QELGetRootElem(m_h)) > 4 * static_cast<int>(MOST_ELEMENTS) &&
        !Settle())
        return false;
    return nStep % 100 != 0 || DrawAndSave();
}

int CEdits::Edit(Operation nOperation)
{
    const HQELELEM hElem = AnyElem();
    switch (nOperation) {
    case Create:
    default: {
        const int nType = 1 + static_cast<int>(m_dice.Roll(QEL_TYPE_NONE - 1));
        const HQELELEM hMade = QELCreateElem(m_h, nType, AnyParent(), nullptr);
        Keep(hMade);
        return hMade && SetRecord(hMade);
    }
    case Copy: {
        const HQELELEM hCopy = CountInside(hElem) > MOST_COPIED ? nullptr : QELCopyElem(m_h, hElem);
        Keep(hCopy);
        return hCopy != nullptr;
    }
    case Move:
        return QELMoveElem(m_h, hElem, AnyParent(), nullptr);
    case TakeOut:
        return QELMoveElem(m_h, hElem, nullptr, nullptr);
    case SetAttr:
        return SetRecord(hElem);
    case SetRect: {
        const LONG nX = static_cast<LONG>(m_dice.Roll(50));
        const LONG nY = static_cast<LONG>(m_dice.Roll(40));
        const RECT rc{nX, nY, nX + 1 + static_cast<LONG>(m_dice.Roll(30)), nY + 20};
        return QELSetElemRect(m_h, hElem, &rc);
    }
    case SetId: {
        const std::string id(m_dice.Roll(40), static_cast<char>('a' + m_dice.Roll(26)));
        return QELSetElemId(m_h, hElem, id.c_str());
    }
    case Delete:
        return QELDeleteElem(m_h, hElem);
    }
}

// The element's own record with some of its words changed.
int CEdits::SetRecord(HQELELEM hElem)
{
    alignas(8) unsigned char record[QEL_MAX_ATTR_SIZE]{};
    int nSize = 0;
    if (!QELGetElemAttr(m_h, hElem, record, &nSize)) return 0;
    const int nType = QELGetElemType(m_h, hElem);
    if (nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON) {
        auto* pShape = reinterpret_cast<QELSHAPEATTR*>(record);
        pShape->nStyle = m_dice.Roll(6);
        pShape->nDraft = static_cast<LONG>(m_dice.Roll(38));
        pShape->clrA = m_dice.Bits() & 0x80FFFFFF;
        pShape->nFlags = m_dice.Bits() & 0x4081;
        std::snprintf(pShape->szText, sizeof pShape->szText, "%u", m_dice.Roll(1000));
        for (int n = 0; n < 3; ++n)
            pShape->nGeometry[n] = n || nType < QEL_TYPE_POLYLINE
                                       ? static_cast<LONG>(m_dice.Roll(50))
                                       : 2 + static_cast<LONG>(m_dice.Roll(15));
    } else if (nType == QEL_TYPE_METER) {
        auto* pMeter = reinterpret_cast<QELMETERATTR*>(record);
        pMeter->nId = m_dice.Roll(50);
        pMeter->nType = static_cast<LONG>(m_dice.Roll(METER_TYPES));
        const LONG geometry[9] = {25, 25, 20, 1, 1, 49, 49, 45, 315};
        std::copy(geometry, geometry + 9, pMeter->nGeometry);
    } else if (nType == QEL_TYPE_SCALE) {
        auto* pScale = reinterpret_cast<QELSCALEATTR*>(record);
        pScale->nId = m_dice.Roll(50);
        pScale->nType = static_cast<LONG>(m_dice.Roll(SCALE_TYPES));
    } else if (nType == QEL_TYPE_STATUS) {
        reinterpret_cast<QELWORDATTR*>(record)->nValue = static_cast<LONG>(m_dice.Roll(3));
    }
    return QELSetElemAttr(m_h, hElem, record, nSize);
}

// Dead ones are dropped from the list when they are met; null when the list is empty.
HQELELEM CEdits::AnyElem()
{
    while (!m_elements.empty()) {
        const std::size_t n = m_dice.Roll(static_cast<uint32_t>(m_elements.size()));
        if (QELGetElemType(m_h, m_elements[n]) != QEL_TYPE_NONE) return m_elements[n];
        m_elements[n] = m_elements.back();
        m_elements.pop_back();
    }
    return nullptr;
}

HQELELEM CEdits::AnyParent()
{
    const HQELELEM hElem = m_dice.OneIn(2) ? AnyElem() : nullptr;
    return hElem ? hElem : QELGetRootElem(m_h);
}

int CEdits::CountInside(HQELELEM hElem) const
{
    int nCount = hElem ? 1 : 0;
    for (HQELELEM h = QELGetFirstChild(m_h, hElem); h; h = QELGetNextElem(m_h, h))
        nCount += CountInside(h);
    return nCount;
}

void CEdits::Keep(HQELELEM hElem)
{
    if (hElem) m_elements.push_back(hElem);
}

bool CEdits::DrawAndSave()
{
    const RECT rc = m_bitmap.Box();
    QELSetStatus(m_h, m_dice.Roll(3));
    QELSetScaleStatus(m_h, m_dice.Roll(50), m_dice.Roll(10));
    QELSetParam(m_h, 1, m_dice.Roll(38));
    if (!QELDraw(m_h, m_bitmap.Dc(), &rc, m_dice.Roll(4))) return false;
    if (m_dice.OneIn(8) && !(QELRotate(m_h, 90) && QELRotate(m_h, 0))) return false;
    return !m_dice.OneIn(8) || QELSaveFile(m_h, m_folder.Path("saved.qel").c_str());
}

// Everything is deleted, what is out of the picture as well; the drawing stays open.
bool CEdits::Settle()
{
    while (const HQELELEM hElem = AnyElem())
        if (!QELDeleteElem(m_h, hElem)) return false;
    while (const HQELELEM hElem = QELGetFirstChild(m_h, QELGetRootElem(m_h)))
        if (!QELDeleteElem(m_h, hElem)) return false;
    return true;
}

std::string CEdits::Done() const
{
    constexpr const char* names[OPERATIONS] = {"created",    "copied", "moved", "taken out",
                                               "attributes", "rects",  "ids",   "deleted"};
    std::string text;
    for (int n = 0; n < OPERATIONS; ++n)
        text += (n ? ", " : "") + std::to_string(m_nDone[n]) + " " + names[n];
    return text;
}

const char* CEdits::Complaint() const
{
    for (int n = 0; n < OPERATIONS; ++n)
        if (2 * m_nDone[n] < m_nTried[n]) return "too many of the edits were refused";
    return nullptr;
}

} // namespace

std::unique_ptr<CPhase> MakeRedraws()
{
    return std::make_unique<CRedraws>();
}

std::unique_ptr<CPhase> MakeCycles(bool bShowOnly)
{
    return std::make_unique<CCycles>(bShowOnly);
}

std::unique_ptr<CPhase> MakeEdits()
{
    return std::make_unique<CEdits>();
}
