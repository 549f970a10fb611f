// What a drawing is played with; see the header.
#include "tools/studio/model/Play.h"

#include <cmath>

namespace studio {

namespace {

constexpr double BLINK_MS = 500; // of each phase
constexpr int QUARTER = 90;
constexpr int CIRCLE = 360;

bool IsThere(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

int CPlay::LoadBeside(const std::wstring& drawing, std::string* pWhy)
{
    const std::wstring path = ValuesPath(drawing);
    return IsThere(path) ? m_values.Load(path, pWhy) : 1;
}

void CPlay::TakeFrom(const CPlay& other)
{
    m_values.TakeFrom(other.m_values);
    m_signals = other.m_signals;
    m_bBlinks = other.m_bBlinks;
    m_nAngle = other.m_nAngle;
}

void CPlay::Opened(HQELENGINE hEngine)
{
    if (m_nAngle) QELRotate(hEngine, m_nAngle);
    QELSetBlinkState(hEngine, m_bDark);
    m_values.Apply(hEngine);
}

int CPlay::Tick(HQELENGINE hEngine, double fMilliseconds)
{
    int nChanged = 0;
    for (const qel::NamedValue& value : m_signals.Advance(fMilliseconds)) {
        m_signalFault.clear();
        nChanged |= m_values.Set(hEngine, value.name, value.text, &m_signalFault);
    }
    if (!m_bBlinks) return nChanged;
    m_fPhase += fMilliseconds;
    if (m_fPhase < BLINK_MS) return nChanged;
    const double fPhases = std::floor(m_fPhase / BLINK_MS);
    m_fPhase -= fPhases * BLINK_MS;
    if (std::fmod(fPhases, 2) == 0) return nChanged;
    m_bDark = !m_bDark;
    QELSetBlinkState(hEngine, m_bDark);
    return nChanged;
}

void CPlay::SetBlink(HQELENGINE hEngine, bool bBlinks)
{
    m_bBlinks = bBlinks;
    m_bDark = false;
    m_fPhase = 0;
    QELSetBlinkState(hEngine, 0);
}

void CPlay::Turn(HQELENGINE hEngine)
{
    m_nAngle = (m_nAngle + QUARTER) % CIRCLE;
    QELRotate(hEngine, m_nAngle);
}

} // namespace studio
