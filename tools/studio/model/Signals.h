// Signals that drive values while they play, each by a name: constant, ramp, sine, square, random
// walk, and a column of a table.
#pragma once

#include "tools/qel/NamedValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace studio {

enum class SignalKind { Constant, Ramp, Sine, Square, Walk, Column };

struct SignalSetting {
    SignalKind kind = SignalKind::Constant;
    double fLow = 0; // a constant has this one
    double fHigh = 100;
    double fPeriod = 10;              // seconds: of one wave; of a column, of one row
    bool bWhole = false;              // values are rounded
    std::vector<std::string> cells{}; // of a column; an empty one leaves the value as it is
};

// Values over time. It has the same ones whenever it runs from its beginning.
class CSignal {
public:
    explicit CSignal(SignalSetting setting);

    // Lets time pass. A negative or infinite one is none.
    void Advance(double fMilliseconds);
    // What it is at now, as the text of a value. Empty: it has none.
    [[nodiscard]] std::string Text() const;

    [[nodiscard]] const SignalSetting& Setting() const { return m_setting; }

private:
    [[nodiscard]] double Phase() const; // 0 to below 1
    [[nodiscard]] double Value() const;
    [[nodiscard]] std::string Cell() const;
    void Walk();

    SignalSetting m_setting;
    double m_fTime = 0; // seconds
    double m_fWalk = 0; // 0 to 1
    double m_fStepsDone = 0;
    uint32_t m_nRandom;
};

// A number of a range as its text: with as many digits as are seen, so that all of a range have a
// point, or none when they are whole ones. Meters draw the two kinds differently.
std::string RangeText(double fValue, double fLow, double fHigh, bool bWhole);

// All signals of a drawing.
class CSignals {
public:
    // In the place of one that drives the same name.
    void Set(const std::string& name, SignalSetting setting);
    void Remove(const std::string& name);
    void Clear();
    [[nodiscard]] const SignalSetting* Find(const std::string& name) const; // null: none drives it
    [[nodiscard]] bool IsEmpty() const { return m_driven.empty(); }

    void Play(bool bPlay) { m_bPlays = bPlay; }
    [[nodiscard]] bool IsPlaying() const { return m_bPlays; }
    // How many times as fast as time; held between 0.1 and 10.
    void SetSpeed(double fSpeed);
    [[nodiscard]] double Speed() const { return m_fSpeed; }

    // Lets time pass while they play: the values that have changed, and at first all.
    std::vector<qel::NamedValue> Advance(double fMilliseconds);
    // Of all that repeat, in seconds; of a column all its rows. 0: none does.
    [[nodiscard]] double LongestPeriod() const;
    // All from their beginning.
    void Rewind();

private:
    struct Driven {
        std::string name;
        CSignal signal;
        std::string text; // told last
    };

    std::vector<Driven> m_driven;
    std::unordered_map<std::string, std::size_t> m_places; // of the names among them
    bool m_bPlays = false;
    double m_fSpeed = 1;
};

// The columns of a table between commas, whose first row has their names. 0: it is none, and *pWhy
// tells why.
struct SignalColumn {
    std::string name;
    std::vector<std::string> cells;
};
int ReadColumns(const std::wstring& path, std::vector<SignalColumn>* pColumns, std::string* pWhy);

} // namespace studio
