// Lines of live data: NAME=TEXT, with the names of tools/qel/NamedValue.h. A line that is wrong is
// counted, and ends nothing.
#pragma once

#include "include/QELEngine.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace studio {

class CValues;

enum class LineKind { Value, Blank, Bad };

struct DataLine {
    LineKind kind = LineKind::Blank;
    std::string name;
    std::string text;
    std::string why; // a bad one is one
};

using NameTest = std::function<bool(const std::string& name)>;

// Takes a line apart. Names and texts may have '=' in them: the first one divides whose left side
// is known, and when none is, the first. Spaces and tabs around the name are not of it; all behind
// the
// '=' is the text. A mark of UTF-8 in front and a carriage return at the end are not of the line.
DataLine ReadDataLine(const std::string& line, const NameTest& isKnown);

// An open drawing that takes lines.
struct DataTarget {
    HQELENGINE hEngine;
    CValues* pValues;
};

// Sets the values of lines in drawings, and counts.
class CDataLine {
public:
    // 1: the line has set a value, in one drawing at least. 0: it is blank or bad; the reason is
    // that of the first drawing.
    int Take(const std::vector<DataTarget>& targets, const std::string& line);
    int Take(HQELENGINE hEngine, CValues* pValues, const std::string& line)
    {
        return Take({{hEngine, pValues}}, line);
    }
    // A line that was refused before it got here.
    void NoteBad(std::string why);

    [[nodiscard]] uint64_t Good() const { return m_nGood; }
    [[nodiscard]] uint64_t Bad() const { return m_nBad; }
    [[nodiscard]] const std::string& LastFault() const { return m_lastFault; }

private:
    uint64_t m_nGood = 0;
    uint64_t m_nBad = 0;
    std::string m_lastFault; // why the last bad line was refused
};

} // namespace studio
