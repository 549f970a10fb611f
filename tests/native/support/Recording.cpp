// Recorded GDI calls for the tests of the native build: what tests/support/Recording.h promises,
// kept by the stand-in for GDI.
#include "tests/support/Recording.h"

#include "tests/native/GdiDouble.h"

CRecording::CRecording() : m_hdc(gdi::CreateRecordingDc()) {}

CRecording::~CRecording()
{
    Calls();
}

const std::vector<std::string>& CRecording::Calls()
{
    if (!m_hdc) return m_calls;
    m_calls = gdi::EndRecording(m_hdc);
    m_hdc = nullptr;
    return m_calls;
}
