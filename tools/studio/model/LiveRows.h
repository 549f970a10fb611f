// What the run panel shows of a drawing: a row for every identifier, and for every meter, scale,
// status number and parameter that goes by number, with what each takes.
#pragma once

#include "include/QELEngine.h"

#include <optional>
#include <string>
#include <vector>

namespace studio {

class CValues;

// Something of a row that can be set.
struct LiveProperty {
    enum class Kind { Number, Whole, Switch, Color, Choice, Text };

    std::string name;  // as values are named: "pump.speed.max"
    std::string label; // what stands behind its last point; of a value "value"
    Kind kind = Kind::Number;
    std::string text;                 // what it has now, as its text; empty: it has nothing yet
    std::vector<std::string> choices; // the texts that a choice has
};

struct LiveRow {
    std::string name; // of its value: "pump.speed", "#0", "#status", "#param.0"
    std::string kind; // "meter round, text"
    std::optional<LiveProperty> value;
    double fMin = 0; // how far its value goes, as the drawing has it
    double fMax = 0;
    std::vector<LiveProperty> properties;

    [[nodiscard]] bool HasSlider() const
    {
        return value && (value->kind == LiveProperty::Kind::Number ||
                         value->kind == LiveProperty::Kind::Whole);
    }
};

struct LiveRange {
    double fMin;
    double fMax;
};

class CLiveRows {
public:
    CLiveRows() = default;
    // Of an open drawing, with the values that it has now.
    explicit CLiveRows(HQELENGINE hEngine);

    [[nodiscard]] const std::vector<LiveRow>& Rows() const { return m_rows; }
    [[nodiscard]] const LiveRow* Find(const std::string& name) const; // null: there is none

private:
    std::vector<LiveRow> m_rows;
};

// What a property has: what was set last, else what the drawing has.
const std::string& TextOf(const LiveProperty& property, const CValues& values);

// How far the value of a row goes, when its scale has been set, too. Its end is above its start.
LiveRange RangeOf(const LiveRow& row, const CValues& values);

} // namespace studio
