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

std::vector<std::string> CRecording::Only(const std::vector<std::string>& words)
{
    std::vector<std::string> found;
    for (const std::string& call : Calls())
        for (const std::string& word : words)
            if (call.rfind(word, 0) == 0) {
                found.push_back(call);
                break;
            }
    return found;
}
