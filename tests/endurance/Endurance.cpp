// Whether a host can run for months: a million redraws and value changes, openings and edits by the
// hundred thousand, and what the process holds at the end as after the first hundredth.
//
//   qel_endurance [--quick]     a hundredth of all, for a look whether it works
//   qel_endurance --hour        the hour of updates alone
//
// Ends with 0 when nothing grew, with 1 when something did, with 2 when it could not be measured.
#include "tests/endurance/Measure.h"
#include "tests/endurance/Phases.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

// What may be more at the end: a few blocks that the system keeps for itself, such as the next page
// of a list of freed blocks. A block lost in every thousandth step would already be ten times that.
constexpr Tolerance TOLERANCE{32, 8 << 10, 1 << 20};
constexpr int LEAST_WARM = 400; // steps until every slot and table was filled once

double Seconds()
{
    LARGE_INTEGER nFrequency{};
    LARGE_INTEGER nCount{};
    ::QueryPerformanceFrequency(&nFrequency);
    ::QueryPerformanceCounter(&nCount);
    return static_cast<double>(nCount.QuadPart) / static_cast<double>(nFrequency.QuadPart);
}

void Say(const std::string& text)
{
    std::printf("%u-bit  %s\n", static_cast<unsigned>(8 * sizeof(void*)), text.c_str());
    std::fflush(stdout);
}

void Progress(const CPhase& phase, int nStep, int nSteps, double fBegan)
{
    char szLine[100];
    std::snprintf(szLine, sizeof szLine, "%s: %d of %d, %.0f s", phase.Name(), nStep, nSteps,
                  Seconds() - fBegan);
    Say(szLine);
}

bool Failed(const CPhase& phase, const std::string& why)
{
    Say(std::string(phase.Name()) + ": FAILED: " + why);
    return false;
}

bool Run(CPhase* pPhase, int nSteps)
{
    const double fBegan = Seconds();
    double fSaid = fBegan;
    const int nWarm = std::max(nSteps / 100, LEAST_WARM);
    Figures before;
    for (int nStep = 0; nStep < nSteps; ++nStep) {
        if (nStep == nWarm) {
            if (!pPhase->Settle()) return Failed(*pPhase, "not in order after the first steps");
            before = TakeFigures();
            Say(std::string(pPhase->Name()) + ": after " + std::to_string(nStep) + ":");
            Say("    " + FiguresText(before));
        }
        if (!pPhase->Step(nStep)) return Failed(*pPhase, "step " + std::to_string(nStep));
        if (nStep % 64 == 0 && Seconds() > fSaid + 10) {
            Progress(*pPhase, nStep, nSteps, fBegan);
            fSaid = Seconds();
        }
    }
    if (!pPhase->Settle()) return Failed(*pPhase, "not in order, or not in the same picture");
    const Figures after = TakeFigures();
    Progress(*pPhase, nSteps, nSteps, fBegan);
    Say("    " + FiguresText(after));
    Say("    " + pPhase->Done());
    if (const char* pszComplaint = pPhase->Complaint()) return Failed(*pPhase, pszComplaint);
    const std::string growth = Growth(before, after, TOLERANCE);
    return growth.empty() || Failed(*pPhase, growth);
}

struct Plan {
    std::unique_ptr<CPhase> (*pfnMake)();
    int nSteps;
};

const Plan g_plans[] = {
    {MakeRedraws, 1000000},
    {[] { return MakeCycles(false); }, 105000}, // some are files that do not open
    {[] { return MakeCycles(true); }, 105000},
    {MakeEdits, 2000000}, // of eight kinds
    {MakeHour, 108000},
};

} // namespace

int main(int argc, char** argv)
{
    const bool bQuick = argc == 2 && !std::strcmp(argv[1], "--quick");
    const bool bHour = argc == 2 && !std::strcmp(argv[1], "--hour");
    if (argc > 1 && !bQuick && !bHour) {
        std::fprintf(stderr, "usage: qel_endurance [--quick | --hour]\n");
        return 2;
    }
    const std::string blind = BlindSpot();
    if (!blind.empty()) {
        Say("cannot measure: " + blind);
        return 2;
    }
    bool bPassed = true;
    for (const Plan& plan : g_plans) {
        if (bHour && plan.pfnMake != MakeHour) continue;
        const std::unique_ptr<CPhase> pPhase = plan.pfnMake();
        bPassed = Run(pPhase.get(), bQuick ? plan.nSteps / 100 : plan.nSteps) && bPassed;
    }
    Say(bPassed ? "nothing grew" : "FAILED");
    return bPassed ? 0 : 1;
}
