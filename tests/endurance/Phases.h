// What the long run does: phases of many small steps, each with a state that it comes back to
// whenever what the process holds is to be compared.
#pragma once

#include "include/QELEngine.h"
#include "tests/endurance/Panels.h"
#include "tests/support/Bitmap.h"
#include "tests/support/Files.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

// The same numbers in every run and under every compiler, which the distributions of the library do
// not promise.
class CDice {
public:
    explicit CDice(uint32_t nSeed) : m_engine(nSeed) {}
    uint32_t Roll(uint32_t nBelow) { return m_engine() % nBelow; }
    uint32_t Bits() { return m_engine(); }
    bool OneIn(uint32_t n) { return Roll(n) == 0; }

private:
    std::mt19937 m_engine;
};

class CPhase {
public:
    virtual ~CPhase() = default;

    [[nodiscard]] virtual const char* Name() const = 0;
    // One step; false when the engine answered what it must not.
    virtual bool Step(int nStep) = 0;
    // Comes back to the state that is compared: the same drawings, values and sizes every time.
    // False when what is shown then is not what was shown the first time.
    virtual bool Settle() = 0;
    // How often what was done, for the report; and what is wrong with it, null for nothing.
    [[nodiscard]] virtual std::string Done() const = 0;
    [[nodiscard]] virtual const char* Complaint() const { return nullptr; }
};

std::unique_ptr<CPhase> MakeRedraws();
std::unique_ptr<CPhase> MakeCycles(bool bShowOnly);
std::unique_ptr<CPhase> MakeEdits();
std::unique_ptr<CPhase> MakeHour(); // of updates, thirty a second
