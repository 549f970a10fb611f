// What the host of a drawing sets, one thing at a time: a number or an identifier says what it is
// for. It is handed to the engine, or refused with the reason.
#pragma once

#include "tools/qel/HostElements.h"
#include "tools/qel/LiveNumber.h"

#include <string>

namespace qel {

// One option, or one cell of a table, that sets something.
struct LiveAction {
    enum class Kind { Param, Status, Value, Selector, Text, Quality, Visible, Color, Pin } kind;
    std::string option; // as it was given, for messages
    std::string id{};   // the identifier that it is for, in UTF-8; empty: it goes by number
    DWORD nId = 0;      // of the parameter, of the scale or meter
    DWORD nSelector = QEL_SEL_VALUE;
    int nPlace = 0; // of a colour: 0 the outline, 1 "fg", 2 "bg"; the number of a pin
    LiveNumber value{};
    LiveNumber last{}; // of a range; value is its first
    bool bRange = false;
    std::string text{}; // in UTF-8

    [[nodiscard]] bool IsById() const { return !id.empty(); }
    [[nodiscard]] LiveNumber InFrame(int nFrame, int nFrames) const
    {
        return bRange ? Between(value, last, nFrame, nFrames) : value;
    }
};

// What a value or setting is for: digits, decimal or 0x hexadecimal, are the number of a scale or
// meter, and all else is an identifier. CTrouble for a number that none can have.
void ReadTarget(const std::string& text, LiveAction* pAction);

// CTrouble when the drawing refuses it, telling why. The elements are those of the drawing; without
// them they are looked for when it refuses.
void SetLive(HQELENGINE hEngine, const LiveAction& action, const LiveNumber& value,
             const HostElements* pElements = nullptr);

// CTrouble when nothing answers to what a value is for.
void RequireTarget(const HostElements& elements, const LiveAction& action);

} // namespace qel
