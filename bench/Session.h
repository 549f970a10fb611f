// What all measurements share: the engine with a drawing, the number of turns and the table.
#pragma once

#include "bench/Scene.h"
#include "bench/Turns.h"

#include <string>

constexpr const char* PATH_IN = "qel_bench_in.qel";
constexpr RECT DEVICE{0, 0, SCENE_SIZE.cx, SCENE_SIZE.cy};

extern bool g_bQuick;
extern CTable g_table;

[[noreturn]] void Die(const char* pszWhat);
void WriteFileBytes(const std::string& text);
// How often two things are measured that cost as much as so many elements.
int TurnsFor(int nCount);

class CEngine {
public:
    CEngine();
    ~CEngine() { DestroyQELEngine(m_h); }
    CEngine(const CEngine&) = delete;
    CEngine& operator=(const CEngine&) = delete;
    operator HQELENGINE() const { return m_h; }
    void Open() const;
    void OpenShown(const std::string& text, const RECT& rc = DEVICE) const;
    void Draw(HDC hdc, DWORD nFlags, const RECT& rc = DEVICE) const;

private:
    HQELENGINE m_h;
};

// The update of a meter that has got another value. hGround: what it stands on, null for as it is.
double TimeOfUpdate(const CEngine& engine, HDC hdc, const char* pszId, HBRUSH hGround = nullptr);
