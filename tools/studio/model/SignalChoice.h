// Which signals fit what can be set in a drawing, and what each begins with.
#pragma once

#include "tools/studio/model/LiveRows.h"
#include "tools/studio/model/Signals.h"

#include <vector>

namespace studio {

// All that can be set of a row, its value first.
std::vector<const LiveProperty*> AllOf(const LiveRow& row);

// Numbers and lists take any signal, what is on or off a square, and everything the column of a
// table. In the order of their kinds.
std::vector<SignalKind> SignalsFor(LiveProperty::Kind kind);

// How far a property of the row goes: its value as far as its scale does, a list over its choices,
// another number from nothing to what it is now.
LiveRange RangeFor(const LiveRow& row, const LiveProperty& property, const CValues& values);

// What a signal begins with.
SignalSetting FirstSetting(SignalKind kind, const LiveProperty& property, const LiveRange& range);

// Gives each value that slides and has no signal one of its own: numbers a sine, whole ones a ramp,
// neighbours of different periods. Result: how many.
int DriveValues(const CLiveRows& rows, const CValues& values, CSignals* pSignals);

} // namespace studio
