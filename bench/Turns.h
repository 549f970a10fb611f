// Two things measured against each other in one process, by turns, so that what else the machine
// does falls on both; and the table of what came out.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct Measured {
    double fMine; // medians, nanoseconds
    double fFloor;
    double fRatio; // the median of the turns' ratios
    double fNoise; // half of the spread of the middle half of the ratios, as a part of the ratio
    double fMore;  // the median of the turns' differences, nanoseconds
    double fMoreNoise; // half of the spread of the middle half of them, as a part of it
};

double Now(); // nanoseconds

// Calls both nTurns times by turns. Each returns what it took, in nanoseconds.
Measured Compare(int nTurns, const std::function<double()>& mine,
                 const std::function<double()>& floor);
double Median(std::vector<double> values);

// The time of a call.
template <class F>
double TimeOf(const F& call)
{
    const double fStart = Now();
    call();
    return Now() - fStart;
}

class CTable {
public:
    // A row with a bar: missed when the ratio is above it by more than the noise.
    void Bar(const std::string& what, const Measured& measured, double fPer, double fBar);
    void Bar(const std::string& what, double fValue, double fNoise, double fBar);
    // A row whose bar is of the difference.
    void Difference(const std::string& what, const Measured& measured, double fPer, double fBar);
    void Note(const std::string& what, double fValue, const char* pszUnit);
    [[nodiscard]] int Missed() const { return m_nMissed; }

private:
    void Verdict(double fValue, double fNoise, double fBar);

    int m_nMissed = 0;
};
