#include "bench/Turns.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

double Now()
{
    static const double s_fTick = [] {
        LARGE_INTEGER nFrequency{};
        ::QueryPerformanceFrequency(&nFrequency);
        return 1e9 / static_cast<double>(nFrequency.QuadPart);
    }();
    LARGE_INTEGER nCount{};
    ::QueryPerformanceCounter(&nCount);
    return s_fTick * static_cast<double>(nCount.QuadPart);
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

namespace {

// Half of the spread of the middle half, as a part of the median.
double NoiseOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return (values[n - 1 - n / 4] - values[n / 4]) / 2 / Median(values);
}

} // namespace

Measured Compare(int nTurns, const std::function<double()>& mine,
                 const std::function<double()>& floor)
{
    mine(); // warms caches and heap
    floor();
    std::vector<double> mines;
    std::vector<double> floors;
    std::vector<double> ratios;
    std::vector<double> differences;
    for (int n = 0; n < nTurns; ++n) {
        mines.push_back(mine());
        floors.push_back(floor());
        ratios.push_back(mines.back() / floors.back());
        differences.push_back(mines.back() - floors.back());
    }
    return {Median(mines),   Median(floors),      Median(ratios),
            NoiseOf(ratios), Median(differences), NoiseOf(differences)};
}

void CTable::Verdict(double fValue, double fNoise, double fBar)
{
    const bool bMissed = fValue * (1 - fNoise) > fBar;
    m_nMissed += bMissed;
    std::printf(" | %8.3f | +-%4.1f %% | %7.2f | %s\n", fValue, 100 * fNoise, fBar,
                bMissed ? "MISSED" : "held");
    std::fflush(stdout);
}

void CTable::Bar(const std::string& what, const Measured& measured, double fPer, double fBar)
{
    std::printf("%-58s | %11.1f | %11.1f", what.c_str(), measured.fMine / fPer,
                measured.fFloor / fPer);
    Verdict(measured.fRatio, measured.fNoise, fBar);
}

void CTable::Bar(const std::string& what, double fValue, double fNoise, double fBar)
{
    std::printf("%-58s | %11s | %11s", what.c_str(), "", "");
    Verdict(fValue, fNoise, fBar);
}

void CTable::Difference(const std::string& what, const Measured& measured, double fPer, double fBar)
{
    std::printf("%-58s | %11.1f | %11.1f", what.c_str(), measured.fMine / fPer,
                measured.fFloor / fPer);
    Verdict(measured.fMore / fPer, measured.fMoreNoise, fBar);
}

void CTable::Note(const std::string& what, double fValue, const char* pszUnit)
{
    std::printf("%-58s | %11.1f | %s\n", what.c_str(), fValue, pszUnit);
    std::fflush(stdout);
}
