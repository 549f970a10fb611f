#include "bench/Session.h"

#include <cstdio>
#include <cstdlib>

bool g_bQuick = false;
CTable g_table;

void Die(const char* pszWhat)
{
    std::printf("the measurement cannot go on: %s\n", pszWhat);
    std::exit(2);
}

void WriteFileBytes(const std::string& text)
{
    std::FILE* pFile = std::fopen(PATH_IN, "wb");
    if (!pFile || std::fwrite(text.data(), 1, text.size(), pFile) != text.size() ||
        std::fclose(pFile) != 0)
        Die("no file could be written");
}

int TurnsFor(int nCount)
{
    const int n = nCount >= 1000000 ? 5 : nCount >= 100000 ? 9 : 31;
    return g_bQuick ? (n + 2) / 3 : n;
}

CEngine::CEngine() : m_h(CreateQELEngine())
{
    if (!m_h) Die("no engine");
}

void CEngine::Open() const
{
    if (!QELOpenFile(m_h, PATH_IN)) Die("the drawing could not be opened");
}

void CEngine::OpenShown(const std::string& text, const RECT& rc) const
{
    WriteFileBytes(text);
    Open();
    QELSetQELRect(m_h, &rc);
}

void CEngine::Draw(HDC hdc, DWORD nFlags, const RECT& rc) const
{
    if (!QELDraw(m_h, hdc, &rc, nFlags)) Die("the drawing could not be drawn");
}

double TimeOfUpdate(const CEngine& engine, HDC hdc, const char* pszId, HBRUSH hGround)
{
    static int s_nValue = 0;
    if (!QELSetValue(engine, pszId, ++s_nValue % 11)) Die("a value was refused");
    return TimeOf([&] {
        if (!QELUpdate(engine, hdc, hGround)) Die("nothing was updated");
    });
}
