// A drawing as its file spells it: the elements that the engine makes of it, in the same order,
// with their attributes as they were read and the lines on which they stand.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace studio {

struct SourceAttr {
    std::wstring name;
    std::wstring value;
    std::size_t nLine; // from 1
};

struct SourceElement {
    int nType; // QEL_TYPE_...
    std::size_t nOffset;
    std::size_t nLine;
    std::vector<SourceAttr> attrs;
    std::wstring text; // what stands in the element
    std::size_t nTextLine;
};

struct SourceFinding {
    bool bError;
    std::size_t nLine;
    std::size_t nColumn;
    int nElement; // of the list of elements; -1: of none
    std::wstring text;
};

struct Source {
    std::vector<SourceElement> elements; // in the order of the file, the root first
    std::vector<SourceFinding> findings;
};

// Of the bytes of a file. A drawing that is broken has the elements before the place.
Source ReadSource(const std::string& bytes);

// The name of a kind of elements as files spell it; empty for a number that is none.
std::wstring KindName(int nType);

} // namespace studio
