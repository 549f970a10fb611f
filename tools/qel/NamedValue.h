// Values by one name each, as files of values and lines of live data have them: what a name is of a
// drawing, and what its text sets there.
//
//   ID             the value of what bears the identifier
//   ID.SELECTOR    a setting of its scales and meters, by the selector's name
//   ID.text  ID.quality  ID.visible  ID.clr  ID.fg  ID.bg  ID.sector-1 ... ID.sector-32
//   #NUMBER        the value of the scale or meter of that number; #NUMBER.SELECTOR a setting
//   #status        the status number
//   #param.0 ...   the host parameters
//
// A name that is an identifier as a whole is that; else its last point divides.
#pragma once

#include "tools/qel/HostElements.h"
#include "tools/qel/LiveAction.h"

#include <string>
#include <unordered_set>

namespace qel {

struct NamedValue {
    std::string name; // in UTF-8, as the text is
    std::string text;
    bool bText = false; // it is a text, and no number in letters
};

// What identifiers and texts are converted by while it lives: the code page of a drawing.
class CPageScope {
public:
    explicit CPageScope(unsigned nPage);
    ~CPageScope();
    CPageScope(const CPageScope&) = delete;
    CPageScope& operator=(const CPageScope&) = delete;

private:
    unsigned m_nPrevious;
};

// The code page that the texts of an open drawing are in.
unsigned PageOf(HQELENGINE hEngine);

// The names of one drawing. It has to be made anew when the drawing has been opened anew, or
// edited.
class CNamedValues {
public:
    explicit CNamedValues(HQELENGINE hEngine); // of the page in force
    CNamedValues(HQELENGINE hEngine, HostElements elements);

    // Whether a name is one of something in the drawing.
    [[nodiscard]] bool Knows(const std::string& name) const;

    // What a value sets. CTrouble, with the option first, for a name of nothing and a text that is
    // no value of it.
    [[nodiscard]] LiveAction Read(const std::string& option, const NamedValue& value) const;

    // CTrouble when the drawing refuses it.
    void Set(const LiveAction& action) const;

    [[nodiscard]] const HostElements& Elements() const { return m_elements; }

private:
    // A name without what its text says.
    [[nodiscard]] LiveAction ReadName(const std::string& option, const std::string& name) const;
    [[nodiscard]] bool IsBorne(const std::string& id) const { return m_ids.contains(id); }
    [[nodiscard]] bool HasAlready(const LiveAction& action) const;

    HQELENGINE m_hEngine;
    HostElements m_elements;
    std::unordered_set<std::string> m_ids;
};

// "#RRGGBB", and behind a colour that blinks " glt".
std::string ColorText(COLORREF clr);

} // namespace qel
