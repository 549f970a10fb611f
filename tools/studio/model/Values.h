// The values that the user, signals and data lines have set in a drawing, by name. They are kept
// while the drawing is read anew, and in a file beside it. What the names are:
// tools/qel/NamedValue.h.
#pragma once

#include "include/QELEngine.h"
#include "tools/qel/NamedValue.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace studio {

class CValues {
public:
    // Sets a value and remembers it. 0: the drawing refuses it, *pWhy tells why, and what was
    // remembered stays.
    int Set(HQELENGINE hEngine, const std::string& name, const std::string& text,
            std::string* pWhy);

    // Sets all in a drawing that was opened or edited since. Result: how many it takes; the others
    // are remembered all the same, for it may get their elements back.
    int Apply(HQELENGINE hEngine);

    // Takes back what goes by identifier, and forgets all.
    void Reset(HQELENGINE hEngine);

    // 0: the file is none of values, or cannot be read or written; *pWhy tells why. A load takes
    // the place of what was remembered, and is not applied.
    int Load(const std::wstring& path, std::string* pWhy);
    int Save(const std::wstring& path, std::string* pWhy);

    // What another one remembers, without setting it.
    void TakeFrom(const CValues& other);

    // Whether a name is of something in the drawing.
    bool Knows(HQELENGINE hEngine, const std::string& name);

    // What was set last; null: nothing.
    [[nodiscard]] const std::string* Find(const std::string& name) const;
    [[nodiscard]] const std::vector<qel::NamedValue>& All() const { return m_values; }
    // Whether something was set since the last load or save.
    [[nodiscard]] bool IsModified() const { return m_bModified; }

private:
    const qel::CNamedValues& NamesOf(HQELENGINE hEngine);
    void Remember(qel::NamedValue value);

    std::vector<qel::NamedValue> m_values; // in the order in which their names came first
    std::unordered_map<std::string, std::size_t> m_places;
    std::unique_ptr<qel::CNamedValues> m_pNames;
    HQELENGINE m_hNamed = nullptr; // the engine that they are of
    unsigned m_nPage = 0;          // the code page of its drawing
    bool m_bModified = false;
};

// Where the values of a drawing are kept: "pump.qel" has "pump.values.json" beside it.
std::wstring ValuesPath(const std::wstring& drawing);

} // namespace studio
