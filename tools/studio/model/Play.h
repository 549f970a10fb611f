// What a drawing is played with: its values, the signals that drive some of them, blinking and
// turns. It outlives the engine, which is another one after each reading of the file.
#pragma once

#include "tools/studio/model/Signals.h"
#include "tools/studio/model/Values.h"

namespace studio {

class CPlay {
public:
    // The values that stand beside a drawing, if there are any. 0: there are, and cannot be read.
    int LoadBeside(const std::wstring& drawing, std::string* pWhy);

    // All that another one has, for an engine of its own.
    void TakeFrom(const CPlay& other);

    // Sets all in an engine that has just opened the drawing.
    void Opened(HQELENGINE hEngine);

    // Lets time pass: signals that play, and blinking. 1: a value has changed.
    int Tick(HQELENGINE hEngine, double fMilliseconds);

    void SetBlink(HQELENGINE hEngine, bool bBlinks);
    [[nodiscard]] bool Blinks() const { return m_bBlinks; }

    // By a quarter counter-clockwise.
    void Turn(HQELENGINE hEngine);
    [[nodiscard]] int Angle() const { return m_nAngle; }

    [[nodiscard]] CValues& Values() { return m_values; }
    [[nodiscard]] const CValues& Values() const { return m_values; }
    [[nodiscard]] CSignals& Signals() { return m_signals; }
    [[nodiscard]] const CSignals& Signals() const { return m_signals; }
    // What was wrong with the last value of a signal; empty: nothing.
    [[nodiscard]] const std::string& SignalFault() const { return m_signalFault; }

private:
    CValues m_values;
    CSignals m_signals;
    std::string m_signalFault;
    bool m_bBlinks = true;
    bool m_bDark = false;
    double m_fPhase = 0; // milliseconds of the phase that have passed
    int m_nAngle = 0;
};

} // namespace studio
