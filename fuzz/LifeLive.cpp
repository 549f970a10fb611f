// The operations of a life that name elements by identifier and keep a picture right: what the
// answers promise of each other.
#include "fuzz/LargeBlocks.h"
#include "fuzz/Life.h"

#include <cmath>
#include <cstring>

namespace {

const RECT g_smallQel{0, 0, 120, 90};

} // namespace

// One that the drawing has, or any text.
std::string CLife::SomeId()
{
    char szId[QEL_TEXT_SIZE];
    const DWORD nIndex = m_input.Below(8);
    int nType = -1;
    if (!QELGetLiveId(m_hEngine, nIndex, szId, sizeof szId, &nType)) return m_input.Text();
    FUZZ_CHECK(nType >= QEL_TYPE_ROOT && nType < QEL_TYPE_NONE && *szId);
    FUZZ_CHECK(
        !QELGetLiveId(m_hEngine, nIndex, szId, static_cast<int>(std::strlen(szId)), nullptr));
    return szId;
}

// What was taken can be asked for again.
void CLife::SetLiveValue(const std::string& id)
{
    const double fValue = static_cast<double>(m_input.Real());
    double fBack = 0;
    if (QELSetValue(m_hEngine, id.c_str(), fValue)) {
        FUZZ_CHECK(QELGetValue(m_hEngine, id.c_str(), &fBack));
        FUZZ_CHECK(std::isfinite(fValue) ? fBack == fValue : std::isnan(fBack));
    }
    FUZZ_CHECK(!QELGetValue(m_hEngine, id.c_str(), nullptr));
    const int nPin = m_input.Number();
    const int nTaken = QELSetPin(m_hEngine, id.c_str(), nPin, fValue);
    FUZZ_CHECK(!nTaken || (nPin >= 1 && nPin <= 32));
    FUZZ_CHECK(!nTaken || QELGetPin(m_hEngine, id.c_str(), nPin, &fBack));
}

void CLife::SetLiveSelector(const std::string& id)
{
    const DWORD nSelector = m_input.Below(QEL_SEL_COUNT + 2);
    double fValue = static_cast<double>(m_input.Real());
    if (nSelector == QEL_SEL_TICKS && fValue > MAX_TICKS) fValue = MAX_TICKS;
    double fBack = 0;
    const int nTaken = QELSetSelector(m_hEngine, id.c_str(), nSelector, fValue);
    FUZZ_CHECK(!nTaken || (nSelector < QEL_SEL_COUNT && std::isfinite(fValue)));
    FUZZ_CHECK(!nTaken || QELGetSelector(m_hEngine, id.c_str(), nSelector, &fBack));
    FUZZ_CHECK(!QELGetSelector(m_hEngine, id.c_str(), nSelector, nullptr));
}

void CLife::SetLive()
{
    const std::string id = SomeId();
    const char* const psz = id.c_str();
    switch (m_input.Below(9)) {
    case 0:
        return SetLiveValue(id);
    case 1:
        return SetLiveSelector(id);
    case 2:
        QELSetText(m_hEngine, psz, m_input.Text().c_str());
        return SetWideTexts(id);
    case 3:
        QELSetVisible(m_hEngine, psz, m_input.Number());
        return;
    case 4: {
        const int nPlace = m_input.Number() % 5;
        FUZZ_CHECK(!QELSetColor(m_hEngine, psz, nPlace, m_input.Word()) ||
                   (nPlace >= 0 && nPlace < 3));
        return;
    }
    case 5: {
        const int nQuality = m_input.Number() % 5;
        FUZZ_CHECK(!QELSetQuality(m_hEngine, psz, nQuality) || (nQuality >= 0 && nQuality < 3));
        return;
    }
    case 6:
        QELSetEasing(m_hEngine, psz, m_input.Word());
        return;
    case 7:
        FUZZ_CHECK(QELAdvance(m_hEngine, m_input.Word()) >= 0);
        FUZZ_CHECK(QELAdvance(m_hEngine, 0xFFFFFFFF) == 0);
        return SetCrispness();
    default:
        FUZZ_CHECK(QELResetLive(m_hEngine, m_input.Below(3) ? psz : nullptr) >= 0);
    }
}

// After an update nothing is dirty that the surface has, and a second one paints nothing.
void CLife::Update()
{
    if (m_nDrawn + m_nCost > MAX_DRAW_WORK) return;
    m_nDrawn += m_nCost;
    const CLittleMemory little;
    FUZZ_CHECK(QELSetQELRect(m_hEngine, &g_smallQel));
    if (m_input.Below(3) == 0) {
        const RECT rc{m_input.Number(), m_input.Number(), m_input.Number(), m_input.Number()};
        QELInvalidate(m_hEngine, m_input.Below(2) ? &rc : nullptr);
    }
    RECT rcDirty{1, 2, 3, 4};
    const HRGN hRegion = ::CreateRectRgn(0, 0, 0, 0);
    const int nDirty = QELGetDirtyRect(m_hEngine, &rcDirty);
    FUZZ_CHECK(nDirty == (::IsRectEmpty(&rcDirty) ? 0 : 1));
    FUZZ_CHECK(QELGetDirtyRegion(m_hEngine, hRegion) == nDirty);
    ::DeleteObject(hRegion);
    const HBRUSH hBrush = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    const int nPainted = QELUpdate(m_hEngine, m_dc.Get(), m_input.Below(2) ? hBrush : nullptr);
    FUZZ_CHECK(!nPainted || nDirty);
    m_dc.CheckState();
    if (m_input.Below(4) == 0 && Root()) {
        FUZZ_CHECK(QELValidate(m_hEngine));
        FUZZ_CHECK(!QELGetDirtyRect(m_hEngine, &rcDirty));
        FUZZ_CHECK(!QELUpdate(m_hEngine, m_dc.Get(), nullptr));
    }
}
